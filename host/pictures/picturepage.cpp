// SPDX-License-Identifier: MIT
#include "host/pictures/picturepage.h"

#include <limits>

namespace mirn::zelchip {

PicturePage::PicturePage(QPaintEngine& engine, const QSizeF& size, int resolution)
    : m_engine(engine)
    , m_size(size)
    , m_resolution(resolution)
{ }

QPaintEngine::PaintEngineFeatures PicturePage::features()
{
    return QPaintEngine::PrimitiveTransform | QPaintEngine::PixmapTransform | QPaintEngine::PainterPaths
        | QPaintEngine::LinearGradientFill | QPaintEngine::AlphaBlend | QPaintEngine::ConstantOpacity
        | QPaintEngine::Antialiasing | QPaintEngine::BrushStroke;
}

int PicturePage::metric(PaintDeviceMetric which) const
{
    constexpr double MillimetresPerInch = 25.4;
    switch (which) {
    case PdmWidth:
        return qRound(m_size.width());
    case PdmHeight:
        return qRound(m_size.height());
    case PdmWidthMM:
        return qRound(m_size.width() * MillimetresPerInch / m_resolution);
    case PdmHeightMM:
        return qRound(m_size.height() * MillimetresPerInch / m_resolution);
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return m_resolution;
    case PdmNumColors:
        return std::numeric_limits<int>::max();
    case PdmDepth:
        return 32;
    case PdmDevicePixelRatio:
        return 1;
    default:
        return QPaintDevice::metric(which);
    }
}

} // namespace mirn::zelchip
