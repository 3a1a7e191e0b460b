// SPDX-License-Identifier: MIT
#include "benchmarks/subjects/chipwindow.h"

#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "platform/contract/mirnprojectmanager.h"
#include "platform/contract/svgparser.h"

#include <QApplication>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

using namespace mirn::zelchipview;

namespace zelbench {

namespace {

void openProject(const std::string& folder)
{
    auto project = std::make_unique<MirnProject>("benchmark");
    project->addImplementation(std::make_unique<MirnImplementation>("impl", folder));
    project->setDefaultImplementation("impl");
    MirnProjectManager::getProjectManager()->setProject(std::move(project));
}

} // namespace

ChipWindow::ChipWindow(const std::string& drawingFile, const std::string& folder)
{
    openProject(folder);
    m_engine.device.drawing = drawingFile;
    m_engine.device.filter = folder + "/filter.txt";
    m_engine.addCell(nullptr, "ip");
    m_window = std::make_unique<ZelChipGUI>(&m_engine, nullptr);
    m_window->setItemsOnDemand(true);
    view()->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view()->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_window->show();
    m_window->resize(m_window->size() + QSize(Width, Height) - view()->viewport()->size());
    m_painted.watch(view()->viewport());
    settle();
}

ChipWindow::~ChipWindow()
{
    m_window.reset();
    ZELChipViewDatabase::destoryInstance();
    MirnProjectManager::getProjectManager()->setProject(nullptr);
}

bool ChipWindow::load()
{
    return m_window->initGrahpicView() && ZELChipViewDatabase::getInstance()->getSVGParser()->graphicItemCount() > 0;
}

void ChipWindow::show(double zoom)
{
    const QSizeF drawing = scene()->sceneRect().size();
    m_scale = zoom * std::min(Width / drawing.width(), Height / drawing.height());
    view()->resetTransform();
    view()->setCurrentScale(m_scale);
    view()->centerOn(scene()->sceneRect().center());
}

void ChipWindow::changeScaleALittle()
{
    constexpr double Little = 1 + 1e-6;
    const double factor = m_isScaleChanged ? 1 / Little : Little;
    view()->scale(factor, factor);
    m_isScaleChanged = !m_isScaleChanged;
}

void ChipWindow::repaint()
{
    view()->viewport()->repaint();
}

void ChipWindow::deliver()
{
    QCoreApplication::sendPostedEvents();
}

int ChipWindow::settle()
{
    int paints = 0;
    for (int quietTurns = 0; quietTurns < 2 && paints < LongestUnrest; ++quietTurns) {
        m_painted.take();
        QCoreApplication::processEvents();
        const int now = m_painted.take().paints;
        paints += now;
        if (now > 0)
            quietTurns = 0;
    }
    return paints;
}

void ChipWindow::mouse(QEvent::Type type, QPoint position)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, position, view()->viewport()->mapToGlobal(position), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(view()->viewport(), &event);
}

void ChipWindow::click(QPoint position)
{
    mouse(QEvent::MouseButtonPress, position);
    mouse(QEvent::MouseButtonRelease, position);
}

QImage ChipWindow::picture() const
{
    return view()->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QImage ChipWindow::pictureOfItems() const
{
    QGraphicsView plain(scene());
    plain.setFrameShape(QFrame::NoFrame);
    plain.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    plain.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    plain.setRenderHints(view()->renderHints());
    plain.setTransformationAnchor(QGraphicsView::NoAnchor);
    plain.setResizeAnchor(QGraphicsView::NoAnchor);
    plain.setAlignment(view()->alignment());
    plain.setBackgroundBrush(view()->backgroundBrush());
    plain.setSceneRect(view()->sceneRect());
    plain.resize(Width, Height);
    plain.show();
    plain.setTransform(view()->transform());
    plain.horizontalScrollBar()->setRange(
        view()->horizontalScrollBar()->minimum(), view()->horizontalScrollBar()->maximum());
    plain.verticalScrollBar()->setRange(view()->verticalScrollBar()->minimum(), view()->verticalScrollBar()->maximum());
    plain.horizontalScrollBar()->setValue(view()->horizontalScrollBar()->value());
    plain.verticalScrollBar()->setValue(view()->verticalScrollBar()->value());
    if (plain.viewportTransform() != view()->viewportTransform())
        qFatal("the two views do not show the same");
    return plain.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

ZelGraphicsScene* ChipWindow::scene() const
{
    return ZELChipViewDatabase::getInstance()->getScene(nullptr);
}

ZelGraphicsView* ChipWindow::view() const
{
    return ZELChipViewDatabase::getInstance()->getView(scene());
}

} // namespace zelbench
