// SPDX-License-Identifier: MIT
#include "graphics/zelgraphicitemattribute.h"
#include "host/drawing/elementprobe.h"
#include "platform/contract/zelgraphicrecords.h"
#include "tests/engine/openengine.h"
#include "tests/soak/gesturewindow.h"

#include <QAction>
#include <QGraphicsItem>
#include <QRubberBand>
#include <QScreen>
#include <QScrollBar>
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

// A scrolled edge between two pixels may be off by one level of a colour for each element that ends there.
bool areAlike(const QImage& one, const QImage& other)
{
    if (one.size() != other.size())
        return false;
    for (int y = 0; y < one.height(); ++y) {
        const auto* first = one.constScanLine(y);
        const auto* second = other.constScanLine(y);
        const auto isNear = [](uchar a, uchar b) { return std::abs(a - b) <= 3; };
        if (!std::equal(first, first + one.width() * int(sizeof(QRgb)), second, isNear))
            return false;
    }
    return true;
}

// {1 2 3}
QString textOf(const QSet<int>& ids)
{
    QStringList texts;
    for (const int id : ids)
        texts.append(QString::number(id));
    texts.sort();
    if (texts.size() > MostIds)
        texts = texts.mid(0, MostIds) << QStringLiteral("... (%1)").arg(ids.size());
    return '{' + texts.join(' ') + '}';
}

} // namespace

void GestureWindow::expectIds(const char* what, const QSet<int>& found, const QSet<int>& expected)
{
    expect(found == expected, what + textOf(found) + " instead of " + textOf(expected));
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
        expect(problem.isEmpty(), "undo: " + problem);
        if (!problem.isEmpty())
            return;
    }
    const QString difference = differenceOf(state(), m_earliest);
    expect(difference.isEmpty(), "after undoing everything there is " + difference);
}

QStringList GestureWindow::state() const
{
    return factsOf(editor().engine());
}

void GestureWindow::checkDesign()
{
    expect(window->isWindowModified() == editor().isModified(), "the window's title does not tell what is unsaved");
    const zelengine::Design& design = editor().engine().design();
    for (const int index : design.all()) {
        const int site = design.resource(index).site;
        expect(site < 0 || design.occupant(site) == index, "a site knows nothing of its resource");
    }
}

void GestureWindow::checkModes()
{
    int checked = 0;
    for (const int mode : {ACTION_SELECT, ACTION_ZOOM, ACTION_PAN})
        checked += database().getAction(mode)->isChecked() ? 1 : 0;
    expect(checked == 1, QStringLiteral("%1 mouse modes at a time").arg(checked));
    expect(m_isPressed || !view()->findChild<QRubberBand*>()->isVisible(), "a rubber band stays");
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
    QWindow* handle = window->windowHandle();
    const QRect part(viewport->mapTo(window.get(), QPoint()), viewport->size());
    if (!window->isVisible() || !viewport->isVisible() || viewport->size().isEmpty() || !window->rect().contains(part))
        return;
    const auto inOneFormat
        = [](const QPixmap& pixmap) { return pixmap.toImage().convertToFormat(QImage::Format_RGB32); };
    const QImage shown = inOneFormat(handle->screen()->grabWindow(handle->winId())).copy(part);
    const QImage kept = inOneFormat(viewport->grab());
    // Of no effect on a screen, but with other hints the view paints everything anew.
    const QPainter::RenderHint hint = QPainter::LosslessImageRendering;
    view()->setRenderHint(hint, !view()->renderHints().testFlag(hint));
    const QImage anew = inOneFormat(viewport->grab());
    expect(areAlike(shown, kept), "the screen does not show what the view does");
    expect(areAlike(kept, anew), "the picture that the view keeps is out of date");
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
        expect(inOneFormat(items.viewport()->grab()) == anew, "the view paints otherwise than its items");
    window->activateWindow();
}
