// SPDX-License-Identifier: MIT
#include "host/look/icons.h"

#include "host/look/palettes.h"

#include <QImage>
#include <QPixmap>

namespace mirn::zelchip {

namespace {

constexpr double DisabledShare = 0.35; // of the opacity

QPixmap lightened(const QPixmap& pixmap, double share)
{
    QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            const int opacity = qRound(color.alpha() * share);
            image.setPixelColor(
                x, y, QColor::fromHsl(color.hslHue(), color.hslSaturation(), 255 - color.lightness(), opacity));
        }
    }
    return QPixmap::fromImage(image);
}

} // namespace

QIcon fittingIcon(const QIcon& icon, const QPalette& palette)
{
    if (!isDark(palette))
        return icon;
    QIcon result;
    const QList<QSize> sizes = icon.availableSizes();
    for (const QSize& size : sizes) {
        const QPixmap pixmap = icon.pixmap(size);
        result.addPixmap(lightened(pixmap, 1.0));
        result.addPixmap(lightened(pixmap, DisabledShare), QIcon::Disabled);
    }
    return result;
}

} // namespace mirn::zelchip
