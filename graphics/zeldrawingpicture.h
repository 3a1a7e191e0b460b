// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QImage>
#include <QSizeF>

#include <functional>
#include <memory>

class QPainter;

namespace mirn::zelchipview {

class ZelGraphicsView;

// A picture of a view's drawing for somewhere else than the screen, such as a file or a printer. It has the elements in
// their present states and colours, and what the view's layers show. Items of a host and a background that its view
// draws by itself are left out.
class ZELCHIPGUI_EXPORT ZelDrawingPicture final
{
public:
    // How much of the drawing is in the picture.
    enum class Part {
        Whole, // what a viewport of the picture's size shows when the whole drawing fits into it
        Visible // what the viewport shows now, larger or smaller; in another shape, more on two sides
    };

    // What is in the picture, and how large it is.
    struct Options
    {
        Part part = Part::Whole; // how much of the drawing
        // In pixels, which are the painter's units; empty stands for the viewport's size.
        QSizeF size;
        bool hasLayers = true; // whether the ZelViewLayers of the view are painted too
        double margin = 0; // of the whole drawing on each side, as a fraction of its larger side
    };

    // The view is not owned. What it shows counts when the picture is painted.
    ZelDrawingPicture(ZelGraphicsView& view, const Options& options);
    ~ZelDrawingPicture();

    // Called now and then with the share that is done, from 0 to 1; if it returns false, the painting stops. It may
    // process events: if the drawing changes or the view is deleted meanwhile, the painting stops as well.
    using GoesOn = std::function<bool(double share)>;

    // Paints all as vectors and texts, element by element, at the painter's origin. The memory that it takes itself
    // does not depend on the number of elements. Returns false if it was stopped, or if the view has no chip scene.
    [[nodiscard]] bool paint(QPainter& painter, const GoesOn& goesOn = {}) const;

    // Returns the picture in pixels, the same as on the screen, in whole pixels of the size. It is null if there is too
    // little memory for it, or no chip scene.
    [[nodiscard]] QImage image() const;

private:
    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
