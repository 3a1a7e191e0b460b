// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPaintDevice>

namespace mirn::zelchipview {

// An image that QPainter takes for a widget, which it makes one difference for: fonts that are smoothed with the red,
// green and blue of a screen's pixels are so on widgets only, and on other images in grey.
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
