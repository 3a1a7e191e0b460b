// SPDX-License-Identifier: MIT
#include "host/window/windowtcl.h"

#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "host/drawing/drawingfit.h"
#include "host/drawing/siteplaces.h"
#include "host/tcl/arguments.h"

#include <QAction>
#include <QGraphicsItem>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QWindow>

#include <algorithm>

namespace mirn::zelchip {

using zelchipview::ZELChipViewDatabase;
using zelchipview::ZelGraphicsScene;

WindowAccess::~WindowAccess() = default;

namespace {

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

TclResult where(WindowAccess& window, const QStringList& words)
{
    Arguments arguments(words, QStringLiteral("zel_view where -id N"), {IdOption});
    const int id = arguments.number(IdOption);
    arguments.positional(0, 0);
    if (!arguments.isOk())
        return arguments.error();
    const QGraphicsItem* item = outlineOf(*window.scene(), id);
    if (!item)
        return TclResult::error(QStringLiteral("there is no element %1").arg(id));
    zelchipview::ZelGraphicsView* view = window.graphicsView();
    return screenPosition(
        view->viewport(), view->mapFromScene(item->sceneBoundingRect().center()), QStringLiteral("element %1").arg(id));
}

// Converts the words to element ids and calls the function with them; an unknown id is an error.
TclResult withIds(WindowAccess& window, const QStringList& words, const char* verb, int least,
    const std::function<void(const QList<int>&)>& function)
{
    QList<int> ids;
    for (const QString& word : words) {
        bool isNumber = false;
        ids.append(word.toInt(&isNumber));
        if (!isNumber)
            return TclResult::error(QStringLiteral("expected integer but got \"%1\"").arg(word));
        if (!outlineOf(*window.scene(), ids.last()))
            return TclResult::error(QStringLiteral("there is no element %1").arg(word));
    }
    if (ids.size() < least)
        return TclResult::error(QStringLiteral("wrong # args: should be \"zel_view %1 ID ?ID ...?\"").arg(verb));
    function(ids);
    return TclResult::value();
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
TclResult mode(const QStringList& words)
{
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    if (words.isEmpty())
        return TclResult::value(modes().key(database->getMouseMode()));
    if (words.size() > 1 || !modes().contains(words.first()))
        return TclResult::error(QStringLiteral("wrong # args: should be \"zel_view mode ?select|zoom|pan?\""));
    database->getAction(modes().value(words.first()))->trigger();
    return TclResult::value();
}

std::function<TclResult(const QStringList&)> plain(const QString& usage, const std::function<void()>& function)
{
    return [=](const QStringList& words) {
        if (!words.isEmpty())
            return TclResult::error(QStringLiteral("wrong # args: should be \"%1\"").arg(usage));
        function();
        return TclResult::value();
    };
}

std::function<TclResult(const QStringList&)> withFile(
    const QString& usage, const std::function<QString(const QString&)>& function)
{
    return [=](const QStringList& words) {
        return words.size() == 1 ? resultOf(function(words.first()))
                                 : TclResult::error(QStringLiteral("wrong # args: should be \"%1\"").arg(usage));
    };
}

Subcommands viewCommands(WindowAccess& window)
{
    return {
        {QStringLiteral("fit"), plain(QStringLiteral("zel_view fit"), [&] { window.fit(); })},
        {QStringLiteral("in"), plain(QStringLiteral("zel_view in"), [&] { window.chipView()->zoomIn(); })},
        {QStringLiteral("out"), plain(QStringLiteral("zel_view out"), [&] { window.chipView()->zoomOut(); })},
        {QStringLiteral("zoom"),
            [&](const QStringList& words) {
                return withIds(window, words, "zoom", 1, [&](const QList<int>& ids) { zoomTo(window, ids); });
            }},
        {QStringLiteral("select"),
            [&](const QStringList& words) {
                return withIds(window, words, "select", 0, [&](const QList<int>& ids) { select(window, ids); });
            }},
        {QStringLiteral("selected"), [](const QStringList&) { return selected(); }},
        {QStringLiteral("mode"), [](const QStringList& words) { return mode(words); }},
        {QStringLiteral("snapshot"),
            withFile(QStringLiteral("zel_view snapshot FILE"),
                [&](const QString& file) { return window.saveSnapshot(file); })},
        {QStringLiteral("where"), [&](const QStringList& words) { return where(window, words); }},
    };
}

// Finds a row of the tree by its resource name, scrolls to it and calls the function with it.
TclResult withRow(WindowAccess& window, const QStringList& words, const char* verb,
    const std::function<TclResult(QTreeWidgetItem*)>& function)
{
    Arguments arguments(words, QStringLiteral("zel_tree %1 -rsc NAME").arg(QLatin1String(verb)), {ResourceOption});
    const QString name = arguments.text(ResourceOption);
    arguments.positional(0, 0);
    if (!arguments.isOk())
        return arguments.error();
    for (QTreeWidgetItemIterator row(window.tree()); *row; ++row) {
        if ((*row)->data(0, zelchipview::RESOURCENAME).toString() != name)
            continue;
        window.tree()->scrollToItem(*row);
        return function(*row);
    }
    return TclResult::error(QStringLiteral("there is no resource \"%1\"").arg(name));
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

Subcommands treeCommands(WindowAccess& window)
{
    return {
        {QStringLiteral("where"),
            [&](const QStringList& words) {
                return withRow(window, words, "where", [&](QTreeWidgetItem* row) { return whereRow(window, row); });
            }},
        {QStringLiteral("select"),
            [&](const QStringList& words) {
                return withRow(window, words, "select", [&](QTreeWidgetItem* row) {
                    window.tree()->setCurrentItem(row);
                    return TclResult::value();
                });
            }},
        {QStringLiteral("expand"),
            plain(QStringLiteral("zel_tree expand"), [&] { window.chipView()->expandAllTreeItems(); })},
        {QStringLiteral("collapse"),
            plain(QStringLiteral("zel_tree collapse"), [&] { window.chipView()->collapseAllTreeItems(); })},
    };
}

} // namespace

void addWindowCommands(TclInterpreter& interpreter, WindowAccess& window)
{
    interpreter.addCommand(QStringLiteral("zel_view"), ensemble(viewCommands(window)));
    interpreter.addCommand(QStringLiteral("zel_tree"), ensemble(treeCommands(window)));
}

void addWindowlessCommands(TclInterpreter& interpreter)
{
    for (const char* name : {"zel_view", "zel_tree"}) {
        interpreter.addCommand(QLatin1String(name), [](const QStringList& words) {
            return TclResult::error(QStringLiteral("%1: this run has no window").arg(words.first()));
        });
    }
}

} // namespace mirn::zelchip
