// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelviewlayer.h"
#include "planning/elementprobe.h"
#include "planning/overviewmap.h"
#include "platform/contract/zelgraphicrecords.h"
#include "tests/engine/openengine.h"
#include "tests/host/shownwindow.h"
#include "tests/program/sampleproject.h"
#include "tests/support/itemsview.h"

#include <QAction>
#include <QGraphicsItem>
#include <QLabel>
#include <QPainter>
#include <QRubberBand>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cstdlib>

using namespace mirn;
using namespace mirn::zelchip;
using namespace mirn::zelchipview;

// The program's window on a copy of the sample project, and what should be the case in it: the window is held against
// what Qt, the engine and the window's own full picture say.
class CheckedWindow : protected ShownWindow
{
protected:
    CheckedWindow() = default;
    ~CheckedWindow() { window.reset(); } // before the project goes

    void expect(bool isTrue, const QString& fault)
    {
        if (!isTrue && m_fault.isEmpty())
            m_fault = fault;
    }

    void expectIds(const char* what, const QSet<int>& found, const QSet<int>& expected)
    {
        expect(found == expected, what + textOf(found) + " instead of " + textOf(expected));
    }

    // The ids that a band must select, as Qt finds its elements.
    [[nodiscard]] QSet<int> idsTouchedBy(const QRect& band) const
    {
        QSet<int> ids;
        const QRectF area = view()->mapToScene(band).boundingRect();
        qobject_cast<ZelGraphicsScene*>(view()->scene())->makeItemsIn(area);
        for (const QGraphicsItem* item : view()->scene()->items(area, Qt::IntersectsItemShape)) {
            if (const ZELGraphicItemAttribute* attribute = attributeOf(item))
                ids.insert(attribute->itemId);
        }
        return ids;
    }

    [[nodiscard]] QSet<int> idsClickedAt(QPoint position) const
    {
        const QRectF pixel = view()->mapToScene(QRect(position, QSize(1, 1))).boundingRect();
        qobject_cast<ZelGraphicsScene*>(view()->scene())->makeItemsIn(pixel);
        for (const QGraphicsItem* item : view()->items(position)) {
            const ZELGraphicItemAttribute* attribute = attributeOf(item);
            if (attribute && attribute->kind != ZEL_GRAPHIC_TEXT)
                return {attribute->itemId};
        }
        return {};
    }

    // The site of the row's resource; where it has none, the sites of the rows below it.
    [[nodiscard]] QSet<int> idsOf(const QTreeWidgetItem& row) const
    {
        const auto siteOf = [&](const QTreeWidgetItem& item) {
            const int index = design().find(item.data(0, RESOURCENAME).toString());
            return index < 0 ? -1 : design().resource(index).site;
        };
        QSet<int> ids{siteOf(row)};
        for (int i = 0; siteOf(row) < 0 && i < row.childCount(); ++i)
            ids.insert(siteOf(*row.child(i)));
        ids.remove(-1);
        return ids;
    }

    [[nodiscard]] const zelengine::Design& design() const { return editor().engine().design(); }
    [[nodiscard]] QStringList state() const { return factsOf(editor().engine()); }
    [[nodiscard]] static ZELChipViewDatabase& database() { return *ZELChipViewDatabase::getInstance(); }

    void checkDesign()
    {
        expect(window->isWindowModified() == editor().isModified(), "the window's title does not tell what is unsaved");
        for (const int index : design().all()) {
            const int site = design().resource(index).site;
            expect(site < 0 || design().occupant(site) == index, "a site knows nothing of its resource");
        }
    }

    void checkModes()
    {
        int checked = 0;
        for (const int mode : {ACTION_SELECT, ACTION_ZOOM, ACTION_PAN})
            checked += database().getAction(mode)->isChecked() ? 1 : 0;
        expect(checked == 1, QString("%1 mouse modes at a time").arg(checked));
        expect(m_isPressed || !view()->findChild<QRubberBand*>()->isVisible(), "a rubber band stays");
    }

    // Checks that the tree shows the design as it is.
    void checkRows()
    {
        std::size_t rows = 0;
        for (QTreeWidgetItemIterator row(tree()); *row; ++row, ++rows) {
            const int index = design().find((*row)->data(0, RESOURCENAME).toString());
            const zelengine::Site* site
                = index < 0 ? nullptr : editor().engine().device().site(design().resource(index).site);
            expect(index >= 0 && (*row)->text(1) == (site ? site->name : QString()),
                QString("the row of %1 says %2").arg((*row)->data(0, RESOURCENAME).toString(), (*row)->text(1)));
        }
        expect(rows == design().all().size(), QString("%1 rows of %2").arg(rows).arg(design().all().size()));
    }

    // Checks that the screen shows what the view keeps, what the view would paint anew, and what the items paint.
    void checkPicture()
    {
        // These cover parts of the drawing, and so does the map.
        window->findChild<QLabel*>("pointerNote")->hide();
        view()->viewport()->findChild<QWidget*>("siteFrame")->hide();
        auto* map = window->findChild<OverviewMap*>();
        map->setOn(false);
        QCoreApplication::processEvents();
        QWidget* viewport = view()->viewport();
        QWindow* handle = window->windowHandle();
        const QRect part(viewport->mapTo(window.get(), QPoint()), viewport->size());
        if (!window->isVisible() || !viewport->isVisible() || viewport->size().isEmpty()
            || !window->rect().contains(part))
            return;
        const auto imageOf = [](const QPixmap& map) { return map.toImage().convertToFormat(QImage::Format_RGB32); };
        const QImage shown = imageOf(handle->screen()->grabWindow(handle->winId())).copy(part);
        const QImage kept = imageOf(viewport->grab());
        // The hint has no effect on a screen, but with other hints the view paints everything anew.
        const QPainter::RenderHint hint = QPainter::LosslessImageRendering;
        view()->setRenderHint(hint, !view()->renderHints().testFlag(hint));
        const QImage anew = imageOf(viewport->grab());
        expect(areAlike(shown, kept), "the screen does not show what the view does");
        expect(areAlike(kept, anew), "the picture that the view keeps is out of date");
        const zeltest::ItemsView items(*view());
        if (items.viewportTransform() == view()->viewportTransform())
            expect(withLayers(imageOf(items.viewport()->grab())) == anew, "the view paints otherwise than its items");
        map->setOn(true);
        window->activateWindow();
    }

    std::unique_ptr<SampleProject> m_project;
    QString m_fault; // the first that was found
    bool m_isPressed = false; // the left button

private:
    // What lies over the drawing is no item.
    [[nodiscard]] QImage withLayers(QImage picture) const
    {
        for (ZelViewLayer* layer : view()->findChildren<ZelViewLayer*>(QString(), Qt::FindDirectChildrenOnly)) {
            QPainter painter(&picture);
            painter.setFont(view()->viewport()->font());
            if (layer->isShown())
                layer->paint(painter, view()->viewport()->rect());
        }
        return picture;
    }

    // A scrolled edge between two pixels may be off by one level of a colour for each element that ends there.
    static bool areAlike(const QImage& one, const QImage& other)
    {
        if (one.size() != other.size())
            return false;
        const auto isNear = [](uchar a, uchar b) { return std::abs(a - b) <= 3; };
        return std::equal(one.constBits(), one.constBits() + one.sizeInBytes(), other.constBits(), isNear);
    }

    // {1 2 3}
    static QString textOf(const QSet<int>& ids)
    {
        constexpr int MostIds = 12;
        QStringList texts;
        for (const int id : ids)
            texts.append(QString::number(id));
        texts.sort();
        if (texts.size() > MostIds)
            texts = texts.mid(0, MostIds) << QString("... (%1)").arg(ids.size());
        return '{' + texts.join(' ') + '}';
    }
};
