// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/filelayer.h"
#include "host/pictures/picturerequest.h"

#include <functional>

namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// Called now and then with the share of a picture that is painted, from 0 to 1; it is 1 while the painted picture is
// written. If it returns false, the export is cancelled. It may process events.
using PictureGoesOn = std::function<bool(double share)>;

// Returns the size that a request without one stands for, in the units of its format.
[[nodiscard]] QSizeF usualSize(const zelchipview::ZelGraphicsView& view, PictureRequest::Format format);

// Writes a picture of the view's drawing into the file of the request, whose size must be right. Returns an empty text,
// or a sentence that says why there is no new file; then an old one is as it was, and nothing else is left.
[[nodiscard]] QString exportPicture(zelchipview::ZelGraphicsView& view, const PictureRequest& request,
    const PictureGoesOn& goesOn = {}, FileLayer& files = FileLayer::system());

} // namespace mirn::zelchip
