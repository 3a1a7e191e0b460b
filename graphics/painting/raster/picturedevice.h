// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPaintDevice>

namespace mirn::zelchipview {

// A paint device that draws on an image but that QPainter takes for a widget. The only difference is in fonts that are
// antialiased with the red, green and blue of a screen's pixels: on other images QPainter antialiases them in grey.
class PictureDevice final : public QPaintDevice
{
public:
    explicit PictureDevice(QImage* image) // not owned; must outlive this object
        : m_image(image)
    { }

    [[nodiscard]] int devType() const override { return QInternal::Widget; }
    [[nodiscard]] QPaintEngine* paintEngine() const override { return m_image->paintEngine(); }

protected:
    [[nodiscard]] QPaintDevice* redirected(QPoint*) const override { return m_image; }
    [[nodiscard]] int metric(PaintDeviceMetric which) const override;

private:
    QImage* const m_image;
};

} // namespace mirn::zelchipview
