// SPDX-License-Identifier: MIT
#include "graphics/painting/raster/picturedevice.h"

namespace mirn::zelchipview {

int PictureDevice::metric(PaintDeviceMetric which) const
{
    switch (which) {
    case PdmWidth:
        return m_image->width();
    case PdmHeight:
        return m_image->height();
    case PdmDepth:
        return m_image->depth();
    case PdmDpiX:
    case PdmPhysicalDpiX:
        return m_image->logicalDpiX();
    case PdmDpiY:
    case PdmPhysicalDpiY:
        return m_image->logicalDpiY();
    default:
        return QPaintDevice::metric(which);
    }
}

} // namespace mirn::zelchipview
