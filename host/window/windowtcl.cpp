// SPDX-License-Identifier: MIT
#include "host/window/windowtcl.h"

#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "host/design/elementname.h"
#include "host/drawing/drawingfit.h"
#include "host/pictures/picturerequest.h"
#include "host/tcl/arguments.h"
#include "host/window/planningmenu.h"
#include "planning/siteplaces.h"

#include <QAction>
#include <QGraphicsItem>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QWindow>

#include <algorithm>
#include <functional>
#include <utility>

namespace mirn::zelchip {

using zelchipview::ZELChipViewDatabase;
using zelchipview::ZelGraphicsScene;

WindowAccess::~WindowAccess() = default;

namespace {

const QString ViewCommand = QStringLiteral("zel_view");
const QString TreeCommand = QStringLiteral("zel_tree");
const QString ResourceOption = QStringLiteral("-rsc");
const QString IdOption = QStringLiteral("-id");

const QMap<QString, int>& modes()
{
    static const QMap<QString, int> byName{{QStringLiteral("select"), zelchipview::ACTION_SELECT},
        {QStringLiteral("zoom"), zelchipview::ACTION_ZOOM}, {QStringLiteral("pan"), zelchipview::ACTION_PAN}};
    return byName;
}

// Returns the position on the screen in device pixels, as a list of two numbers.
TclResult screenPosition(QWidget* viewport, QPoint position, const QString& what)
{
    if (!viewport->rect().contains(position))
        return TclResult::error(QStringLiteral("%1 is outside of what the window shows").arg(what));
    const QPointF global = QPointF(viewport->mapToGlobal(position)) * viewport->devicePixelRatioF();
    return TclResult::value(
        QStringLiteral("%1 %2").arg(QString::number(qRound(global.x())), QString::number(qRound(global.y()))));
}

TclResult noSuchElement(const QString& text)
{
    return TclResult::error(QStringLiteral("there is no element %1").arg(text));
}

TclResult where(WindowAccess& window, const Arguments& arguments)
{
    const QString text = arguments.text(IdOption);
    const NamedElement element = NamedElement::find(window.device(), text);
    if (!element.error.isEmpty())
        return TclResult::error(element.error);
    const QGraphicsItem* item = zelchipview::outlineOf(*window.scene(), element.id);
    if (!item)
        return noSuchElement(text);
    zelchipview::ZelGraphicsView* view = window.graphicsView();
    return screenPosition(view->viewport(), view->mapFromScene(item->sceneBoundingRect().center()),
        QStringLiteral("element %1").arg(text));
}

// Calls the function with the ids of the elements; an unknown one is an error.
CommandHandler withElements(WindowAccess& window, void (*function)(WindowAccess& window, const QList<int>& ids))
{
    return [&window, function](const Arguments& arguments) {
        QList<int> ids;
        for (const QString& text : arguments.positional()) {
            const NamedElement element = NamedElement::find(window.device(), text);
            if (!element.error.isEmpty())
                return TclResult::error(element.error);
            if (!zelchipview::outlineOf(*window.scene(), element.id))
                return noSuchElement(text);
            ids.append(element.id);
        }
        function(window, ids);
        return TclResult::value();
    };
}

void zoomTo(WindowAccess& window, const QList<int>& ids)
{
    QList<QGraphicsItem*> items;
    for (int id : ids)
        items += window.scene()->itemsOf(id);
    zoomToItems(*window.graphicsView(), items);
}

void select(WindowAccess& window, const QList<int>& ids)
{
    window.scene()->clearSelectedItems();
    for (int id : ids)
        ZELChipViewDatabase::getInstance()->addSelctedItem(id, true);
    Q_UNUSED(window)
}

TclResult selected()
{
    QList<int> ids = ZELChipViewDatabase::getInstance()->selectedIds().ids().values();
    std::sort(ids.begin(), ids.end());
    QStringList texts;
    for (int id : std::as_const(ids))
        texts.append(QString::number(id));
    return TclResult::value(texts.join(QLatin1Char(' ')));
}

// Without an argument this returns the mode.
TclResult mode(const Arguments& arguments)
{
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    if (arguments.positional().isEmpty())
        return TclResult::value(modes().key(database->getMouseMode()));
    if (!modes().contains(arguments.positional().first()))
        return arguments.error();
    database->getAction(modes().value(arguments.positional().first()))->trigger();
    return TclResult::value();
}

// Without an argument this returns what is shown.
TclResult connections(WindowAccess& window, const Arguments& arguments)
{
    if (arguments.positional().isEmpty())
        return TclResult::value(window.planning().connections());
    const QString word = arguments.positional().first();
    if (!PlanningMenu::connectionWords().contains(word))
        return arguments.error();
    window.planning().setConnections(word);
    return TclResult::value();
}

// The same for an aid that is on or off.
TclResult toggle(QAction* action, const Arguments& arguments)
{
    if (arguments.positional().isEmpty())
        return TclResult::value(action->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    const QString word = arguments.positional().first();
    if (word != QLatin1String("0") && word != QLatin1String("1"))
        return arguments.error();
    action->setChecked(word == QLatin1String("1"));
    return TclResult::value();
}

// What is not said is as in the request; the first mistake counts.
TclResult exportPicture(WindowAccess& window, const Arguments& arguments)
{
    using Setter = QString (PictureRequest::*)(const QString& text);
    const std::pair<QString, Setter> options[] = {{QStringLiteral("-part"), &PictureRequest::setPart},
        {QStringLiteral("-overlays"), &PictureRequest::setOverlays},
        {QStringLiteral("-size"), &PictureRequest::setSize}};
    PictureRequest request;
    QString error = request.setFile(arguments.positional().first());
    for (const auto& [option, set] : options) {
        if (error.isEmpty() && arguments.has(option))
            error = (request.*set)(arguments.text(option));
    }
    if (error.isEmpty())
        error = request.sizeError();
    return resultOf(error.isEmpty() ? window.exportPicture(request) : error);
}

CommandHandler plain(const std::function<void()>& function)
{
    return [function](const Arguments&) {
        function();
        return TclResult::value();
    };
}

Subcommands viewCommands(WindowAccess& window)
{
    return {
        {QStringLiteral("fit"), plain([&] { window.fit(); })},
        {QStringLiteral("in"), plain([&] { window.chipView()->zoomIn(); })},
        {QStringLiteral("out"), plain([&] { window.chipView()->zoomOut(); })},
        {QStringLiteral("zoom"), withElements(window, &zoomTo)},
        {QStringLiteral("select"), withElements(window, &select)},
        {QStringLiteral("selected"), [](const Arguments&) { return selected(); }},
        {QStringLiteral("mode"), &mode},
        {QStringLiteral("names"), [&](const Arguments& arguments) { return toggle(window.names(), arguments); }},
        {QStringLiteral("overview"), [&](const Arguments& arguments) { return toggle(window.overview(), arguments); }},
        {QStringLiteral("connections"), [&](const Arguments& arguments) { return connections(window, arguments); }},
        {QStringLiteral("candidates"),
            [&](const Arguments& arguments) { return toggle(window.planning().candidates(), arguments); }},
        {QStringLiteral("snapshot"),
            [&](const Arguments& arguments) { return resultOf(window.saveSnapshot(arguments.positional().first())); }},
        {QStringLiteral("export"), [&](const Arguments& arguments) { return exportPicture(window, arguments); }},
        {QStringLiteral("where"), [&](const Arguments& arguments) { return where(window, arguments); }},
    };
}

// Finds a row of the tree by its resource name, scrolls to it and calls the function with it.
CommandHandler withRow(WindowAccess& window, TclResult (*function)(WindowAccess& window, QTreeWidgetItem* row))
{
    return [&window, function](const Arguments& arguments) {
        const QString name = arguments.text(ResourceOption);
        for (QTreeWidgetItemIterator row(window.tree()); *row; ++row) {
            if ((*row)->data(0, zelchipview::RESOURCENAME).toString() != name)
                continue;
            window.tree()->scrollToItem(*row);
            return function(window, *row);
        }
        return TclResult::error(QStringLiteral("there is no resource \"%1\"").arg(name));
    };
}

// Returns a point in the visible part of the row, near its name, in device pixels of the screen.
TclResult whereRow(WindowAccess& window, QTreeWidgetItem* row)
{
    QWidget* viewport = window.tree()->viewport();
    const QRect area = window.tree()->visualItemRect(row).intersected(viewport->rect());
    const QString what = QStringLiteral("the row of \"%1\"").arg(row->data(0, zelchipview::RESOURCENAME).toString());
    if (area.isEmpty())
        return TclResult::error(QStringLiteral("%1 is not shown").arg(what));
    return screenPosition(viewport, {area.left() + area.width() / 8, area.center().y()}, what);
}

TclResult selectRow(WindowAccess& window, QTreeWidgetItem* row)
{
    window.tree()->setCurrentItem(row);
    return TclResult::value();
}

Subcommands treeCommands(WindowAccess& window)
{
    return {
        {QStringLiteral("where"), withRow(window, &whereRow)},
        {QStringLiteral("select"), withRow(window, &selectRow)},
        {QStringLiteral("expand"), plain([&] { window.chipView()->expandAllTreeItems(); })},
        {QStringLiteral("collapse"), plain([&] { window.chipView()->collapseAllTreeItems(); })},
    };
}

// Places and sizes are those that the user would see now.
TclInterpreter::Command settled(WindowAccess& window, TclInterpreter::Command command)
{
    return [&window, command = std::move(command)](const QStringList& words) {
        window.settle();
        return command(words);
    };
}

} // namespace

void addWindowCommands(TclInterpreter& interpreter, WindowAccess& window)
{
    interpreter.addCommand(ViewCommand, settled(window, ensemble(ViewCommand, viewCommands(window))));
    interpreter.addCommand(TreeCommand, settled(window, ensemble(TreeCommand, treeCommands(window))));
}

void addWindowlessCommands(TclInterpreter& interpreter)
{
    for (const QString& name : {ViewCommand, TreeCommand}) {
        interpreter.addCommand(name, [](const QStringList& words) {
            return TclResult::error(QStringLiteral("%1: this run has no window").arg(words.first()));
        });
    }
}

} // namespace mirn::zelchip
