// SPDX-License-Identifier: MIT
#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "engine/referenceengine.h"
#include "engine/resourceparameter.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsview.h"
#include "host/drawing/elementprobe.h"
#include "host/project/projectsession.h"
#include "host/window/mainwindow.h"
#include "platform/contract/zelgraphicrecords.h"
#include "tests/soak/gesturewindow.h"

#include <QAction>
#include <QGraphicsItem>
#include <QRubberBand>
#include <QScreen>
#include <QScrollBar>
#include <QTreeWidget>
#include <QWindow>

#include <algorithm>
#include <cstdlib>

// What should be the case, and whether it is.

using namespace mirn;
using namespace mirn::zelchip;
using namespace mirn::zelchipview;

namespace {

ZELChipViewDatabase& database()
{
    return *ZELChipViewDatabase::getInstance();
}

constexpr int MostIds = 12; // in one text

// A scrolled edge between two pixels may be off by one level of a colour.
bool areAlike(const QImage& one, const QImage& other)
{
    if (one.size() != other.size())
        return false;
    for (int y = 0; y < one.height(); ++y) {
        const auto* first = one.constScanLine(y);
        const auto* second = other.constScanLine(y);
        const auto isNear = [](uchar a, uchar b) { return std::abs(a - b) <= 1; };
        if (!std::equal(first, first + one.width() * int(sizeof(QRgb)), second, isNear))
            return false;
    }
    return true;
}

} // namespace

QString textOf(const QSet<int>& ids)
{
    QStringList texts;
    for (const int id : ids)
        texts.append(QString::number(id));
    texts.sort();
    if (texts.size() > MostIds)
        texts = texts.mid(0, MostIds) << QStringLiteral("... (%1)").arg(ids.size());
    return QLatin1Char('{') + texts.join(QLatin1Char(' ')) + QLatin1Char('}');
}

// As Qt finds them.
QSet<int> GestureWindow::idsTouchedBy(const QRect& band) const
{
    QSet<int> ids;
    const QRectF area = view()->mapToScene(band).boundingRect();
    const QList<QGraphicsItem*> items = view()->scene()->items(area, Qt::IntersectsItemShape);
    for (const QGraphicsItem* item : items) {
        if (const ZELGraphicItemAttribute* attribute = attributeOf(item))
            ids.insert(attribute->itemId);
    }
    return ids;
}

QSet<int> GestureWindow::idsClickedAt(QPoint position) const
{
    const QList<QGraphicsItem*> items = view()->items(position);
    for (const QGraphicsItem* item : items) {
        const ZELGraphicItemAttribute* attribute = attributeOf(item);
        if (attribute && attribute->kind != ZEL_GRAPHIC_TEXT)
            return {attribute->itemId};
    }
    return {};
}

// The site of the row's resource, else those of the rows below it.
QSet<int> GestureWindow::idsOf(const QTreeWidgetItem& row) const
{
    const zelengine::Design& design = editor().engine().design();
    const auto siteOf = [&](const QTreeWidgetItem& item) {
        const int index = design.find(item.data(0, RESOURCENAME).toString());
        return index < 0 ? -1 : design.resource(index).site;
    };
    QSet<int> ids{siteOf(row)};
    for (int i = 0; siteOf(row) < 0 && i < row.childCount(); ++i)
        ids.insert(siteOf(*row.child(i)));
    ids.remove(-1);
    return ids;
}

void GestureWindow::takeEverythingBack()
{
    while (editor().undoStack().canUndo()) {
        const QString problem = editor().undo();
        expect(problem.isEmpty(), QStringLiteral("undo: ") + problem);
        if (!problem.isEmpty())
            return;
    }
    const QStringList now = state();
    const auto missing = [](QStringList lines, const QStringList& others) {
        for (const QString& line : others)
            lines.removeOne(line);
        return lines.join(QStringLiteral(", "));
    };
    expect(now == m_earliest,
        QStringLiteral("after undoing everything there is %1 instead of %2")
            .arg(missing(now, m_earliest), missing(m_earliest, now)));
}

// A line for each resource, for each one that was removed, and for each setting that was changed.
QStringList GestureWindow::state() const
{
    const zelengine::ReferenceEngine& engine = editor().engine();
    const zelengine::Design& design = engine.design();
    QStringList lines = design.removedPaths();
    for (const int index : design.all()) {
        const zelengine::Resource& resource = design.resource(index);
        lines.append(QStringLiteral("%1 %2 %3").arg(resource.path).arg(resource.site).arg(resource.fixed));
        for (const zelengine::ResourceParameter& parameter : zelengine::parametersOf(resource.type))
            lines.append(resource.path + QLatin1Char(' ') + design.parameter(index, parameter.key));
    }
    const zelengine::SettingChanges& settings = engine.settings().changes();
    for (auto site = settings.cbegin(); site != settings.cend(); ++site) {
        for (auto setting = site->cbegin(); setting != site->cend(); ++setting)
            lines.append(QStringLiteral("%1 %2 %3").arg(QString::number(site.key()), setting.key(), setting.value()));
    }
    lines.sort();
    return lines;
}

void GestureWindow::checkDesign()
{
    expect(m_window->isWindowModified() == editor().isModified(),
        QStringLiteral("the window's title does not tell what is unsaved"));
    const zelengine::Design& design = editor().engine().design();
    for (const int index : design.all()) {
        const int site = design.resource(index).site;
        expect(site < 0 || design.occupant(site) == index, QStringLiteral("a site knows nothing of its resource"));
    }
}

void GestureWindow::checkModes()
{
    int checked = 0;
    for (const int mode : {ACTION_SELECT, ACTION_ZOOM, ACTION_PAN})
        checked += database().getAction(mode)->isChecked() ? 1 : 0;
    expect(checked == 1, QStringLiteral("%1 mouse modes at a time").arg(checked));
    expect(m_isPressed || !view()->findChild<QRubberBand*>()->isVisible(), QStringLiteral("a rubber band stays"));
}

// The tree shows the design as it is.
void GestureWindow::checkRows()
{
    const zelengine::Design& design = editor().engine().design();
    std::size_t rows = 0;
    for (QTreeWidgetItemIterator row(tree()); *row; ++row, ++rows) {
        const int index = design.find((*row)->data(0, RESOURCENAME).toString());
        const zelengine::Site* site
            = index < 0 ? nullptr : editor().engine().device().site(design.resource(index).site);
        expect(index >= 0 && (*row)->text(1) == (site ? site->name : QString()),
            QStringLiteral("the row of %1 says %2").arg((*row)->data(0, RESOURCENAME).toString(), (*row)->text(1)));
    }
    expect(rows == design.all().size(), QStringLiteral("%1 rows of %2").arg(rows).arg(design.all().size()));
}

// What is on the screen, what the view keeps and what it would paint anew are the same, and what the items paint.
void GestureWindow::checkPicture()
{
    QWidget* viewport = view()->viewport();
    QWindow* handle = m_window->windowHandle();
    const QRect part(viewport->mapTo(m_window.get(), QPoint()), viewport->size());
    if (!m_window->isVisible() || !viewport->isVisible() || viewport->size().isEmpty()
        || !m_window->rect().contains(part))
        return;
    const auto inOneFormat
        = [](const QPixmap& pixmap) { return pixmap.toImage().convertToFormat(QImage::Format_RGB32); };
    const QImage shown = inOneFormat(handle->screen()->grabWindow(handle->winId())).copy(part);
    const QImage kept = inOneFormat(viewport->grab());
    // Of no effect on a screen, but with other hints the view paints everything anew.
    const QPainter::RenderHint hint = QPainter::LosslessImageRendering;
    view()->setRenderHint(hint, !view()->renderHints().testFlag(hint));
    const QImage anew = inOneFormat(viewport->grab());
    expect(areAlike(shown, kept), QStringLiteral("the screen does not show what the view does"));
    expect(areAlike(kept, anew), QStringLiteral("the picture that the view keeps is out of date"));
    QGraphicsView items(view()->scene());
    items.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    items.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    items.setRenderHints(view()->renderHints());
    items.setBackgroundBrush(view()->backgroundBrush());
    items.setFrameShape(QFrame::NoFrame);
    items.resize(viewport->size());
    items.setTransform(view()->transform());
    items.setAttribute(Qt::WA_DontShowOnScreen);
    items.show();
    items.horizontalScrollBar()->setValue(view()->horizontalScrollBar()->value());
    items.verticalScrollBar()->setValue(view()->verticalScrollBar()->value());
    if (items.viewportTransform() == view()->viewportTransform())
        expect(
            inOneFormat(items.viewport()->grab()) == anew, QStringLiteral("the view paints otherwise than its items"));
    m_window->activateWindow();
}
