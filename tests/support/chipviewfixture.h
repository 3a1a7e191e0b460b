// SPDX-License-Identifier: MIT
#pragma once

#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "platform/contract/mirnprojectmanager.h"
#include "resources/zeltree.h"
#include "tests/support/drawing.h"
#include "tests/support/events.h"
#include "tests/support/fakeengine.h"
#include "tests/support/testmain.h"

#include <QApplication>
#include <QFile>
#include <QGraphicsItem>
#include <QImage>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace zeltest {

using namespace mirn::zelchipview;

// An engine, an open project in a temporary folder, a drawing, and a window on them. They end as a host ends them:
// first the window, then the controller.
class ChipView
{
public:
    ChipView()
    {
        auto project = std::make_unique<MirnProject>("project");
        project->addImplementation(
            std::make_unique<MirnImplementation>("impl", QFile::encodeName(folder.path()).toStdString()));
        project->setDefaultImplementation("impl");
        MirnProjectManager::getProjectManager()->setProject(std::move(project));
        drawing.install();
        const QString filter = folder.filePath("filter.txt");
        writeFile(filter, {});
        engine.device.filter = QFile::encodeName(filter).toStdString();
    }

    // Opens a view of grey rects, each with its id.
    ChipView(std::initializer_list<std::pair<int, QRectF>> rects)
        : ChipView()
    {
        for (const auto& [id, rect] : rects)
            drawing.addRect(id, rect.x(), rect.y(), rect.width(), rect.height());
        open();
    }

    ~ChipView()
    {
        window.reset();
        ZELChipViewDatabase::destoryInstance();
    }

    // Makes the window, loads the drawing and shows it, with one device pixel per scene unit.
    void open()
    {
        createWindow();
        if (!window->initGrahpicView())
            qFatal("the drawing was not loaded");
        window->resize(700, 500);
        window->show();
        QCoreApplication::processEvents();
    }

    // The same tests run twice: with all items at once, and with items on demand.
    void createWindow()
    {
        window = std::make_unique<ZelChipGUI>(&engine, nullptr);
        window->setItemsOnDemand(qEnvironmentVariableIsSet("ZEL_TEST_ITEMS_ON_DEMAND"));
    }

    // The engine has these values for an element from now on, and the drawing is refreshed.
    void refresh(unsigned int id, std::map<std::string, std::string> values)
    {
        engine.device.addRecord(id, std::move(values));
        window->refresh(REFRESH_GRAPHIC);
    }

    static ZELChipViewDatabase* database() { return ZELChipViewDatabase::getInstance(); }
    static ZelGraphicsScene* scene() { return database()->getScene(nullptr); }
    static ZelGraphicsView* view() { return database()->getView(scene()); }

    static ZelTree* tree() { return database()->getTree(nullptr); }

    // The attribute of the element that was loaded as the nth; null when there is none.
    static ZELGraphicItemAttribute* attribute(int loadNumber)
    {
        return database()->getGraphicItemAttribute(loadNumber);
    }

    // The tree's row of a resource; null when there is none.
    static QTreeWidgetItem* rowNamed(const char* resourceName)
    {
        for (QTreeWidgetItemIterator row(tree()); *row; ++row) {
            if ((*row)->data(0, RESOURCENAME).toString() == QLatin1String(resourceName))
                return *row;
        }
        return nullptr;
    }

    // The item that was loaded as the nth, from 1; null when there is none.
    static QGraphicsItem* item(int loadNumber)
    {
        if (ZELChipViewDatabase::existingInstance() && qEnvironmentVariableIsSet("ZEL_TEST_ITEMS_ON_DEMAND"))
            scene()->makeItemsIn(scene()->sceneRect());
        for (QGraphicsItem* candidate : scene()->items()) {
            if (candidate->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt() == loadNumber)
                return candidate;
        }
        return nullptr;
    }

    // The picture that the view shows, one image pixel per device pixel.
    static QImage picture()
    {
        QImage image(view()->viewport()->size(), QImage::Format_RGB32);
        view()->viewport()->render(&image);
        return image;
    }

    // The colour that the view shows at a point of the scene.
    static QColor colorAt(QPointF scenePoint) { return picture().pixelColor(view()->mapFromScene(scenePoint)); }

    static void mouse(QEvent::Type type, QPoint position, Qt::MouseButton button = Qt::LeftButton)
    {
        const Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
        sendMouse(view()->viewport(), type, position, type == QEvent::MouseMove ? Qt::NoButton : button, buttons);
    }

    static void drag(QPointF fromScene, QPointF toScene)
    {
        dragPixels(view()->mapFromScene(fromScene), view()->mapFromScene(toScene));
    }

    static void dragPixels(QPoint from, QPoint to)
    {
        mouse(QEvent::MouseButtonPress, from);
        mouse(QEvent::MouseMove, to);
        mouse(QEvent::MouseButtonRelease, to);
    }

    static void click(QPointF scenePoint)
    {
        const QPoint position = view()->mapFromScene(scenePoint);
        mouse(QEvent::MouseButtonPress, position);
        mouse(QEvent::MouseButtonRelease, position);
    }

    // The values of the scroll bars.
    static QPoint scrolled() { return {view()->horizontalScrollBar()->value(), view()->verticalScrollBar()->value()}; }

    // The part of the scene that the view shows.
    static QRectF shownPart() { return view()->mapToScene(view()->viewport()->rect()).boundingRect(); }

    // The fill colour of the element that was loaded as the nth.
    static unsigned int fillOf(int loadNumber)
    {
        return *static_cast<unsigned int*>(attribute(loadNumber)->getAttribute(ATTR_FILL_COLOR));
    }

    // Selects a top-level row of the tree, as a press on it would.
    static void selectRow(int row) { tree()->setCurrentItem(tree()->topLevelItem(row)); }

    static QSet<int> selected() { return database()->selectedIds().ids(); }

    QTemporaryDir folder;
    FakeEngine engine;
    Drawing drawing;
    std::unique_ptr<ZelChipGUI> window;
};

} // namespace zeltest
