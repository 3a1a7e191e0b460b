// SPDX-License-Identifier: MIT
#include "benchmarks/subjects/yardsticks.h"

#include "benchmarks/subjects/barepainter.h"
#include "benchmarks/subjects/chipwindow.h"
#include "benchmarks/subjects/device.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"

#include <QImage>
#include <QPainter>

#include <memory>

namespace zelbench {

namespace {

std::shared_ptr<QImage> newPicture()
{
    return std::make_shared<QImage>(ChipWindow::Width, ChipWindow::Height, QImage::Format_RGB32);
}

} // namespace

Side bareSide(Device& device)
{
    const ChipWindow& window = device.window();
    const auto paint = [&bare = device.bare(), picture = newPicture(), transform = window.view()->viewportTransform(),
                           layers = window.view()->getVisibleLayers()] {
        return secondsOf([&] { bare.paint(*picture, transform, layers); });
    };
    return {paint, 1, {}, {}};
}

Side itemsSide(Device& device)
{
    ChipWindow& window = device.window();
    window.scene()->makeAllItems();
    const auto paint = [scene = window.scene(), picture = newPicture(),
                           shown = window.view()->mapToScene(QRect(0, 0, ChipWindow::Width, ChipWindow::Height))] {
        return secondsOf([&] {
            picture->fill(Qt::white);
            QPainter painter(picture.get());
            painter.setRenderHint(QPainter::Antialiasing, true);
            scene->render(&painter, picture->rect(), shown.boundingRect());
        });
    };
    return {paint, 1, {}, [&window] { window.settle(); }};
}

} // namespace zelbench
