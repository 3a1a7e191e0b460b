// SPDX-License-Identifier: MIT
#pragma once

#include "host/pictures/svgengine.h"

#include <QPaintDevice>
#include <QSizeF>

namespace mirn::zelchip {

// A paint device whose picture is an SVG file; see SvgEngine for what it can draw. One QPainter may draw on it, once.
class SvgPicture final : public QPaintDevice
{
public:
    // `size` is in pixels, of which an inch has `resolution`. The file is not owned and must be open.
    SvgPicture(QIODevice& file, const QSizeF& size, int resolution);

    [[nodiscard]] QPaintEngine* paintEngine() const override { return &m_engine; }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric which) const override;

private:
    mutable SvgEngine m_engine; // Qt asks a constant device for it
    const QSizeF m_size;
    const int m_resolution;
};

} // namespace mirn::zelchip
