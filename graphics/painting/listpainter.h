// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/displaylist.h"
#include "graphics/painting/painttarget.h"

#include <QList>
#include <QRect>
#include <QTransform>

#include <functional>
#include <memory>
#include <vector>

namespace mirn::zelchipview {

class PaintThreads;

// Paints a display list into an image. The result equals what the elements' items would paint one by one. Frequent
// shapes go straight into the pixels, everything unusual through QPainter. The view's canvas owns the painter.
class ListPainter final
{
public:
    using States = PaintStates;
    using Target = PaintTarget;

    // What painters keep from paint to paint: texts that are ready to be drawn, and memory. Painters of one list may
    // share it if they do not paint at the same time.
    struct Memory;

    // The list is not owned. Without a memory the painter makes its own.
    explicit ListPainter(DisplayList& list, std::shared_ptr<Memory> memory = {});
    ~ListPainter();

    [[nodiscard]] const std::shared_ptr<Memory>& memory() const { return m_memory; }

    // How many threads paint a part with many elements, the calling one included; 1 at first. The others last as long
    // as the paint, or wait for the next one if they are kept, because a new thread may have to wait for a processor
    // longer than a small part takes to paint.
    void setThreads(int count);
    void keepThreads(bool isOn);

    void paint(const Target& target, const QList<int>& layers, const States& states);

    // `bounds` is what the primitive may cover, in image pixels.
    using TouchVisitor = std::function<void(const Primitive& primitive, const QRectF& bounds, const QRect& strip)>;

    // Says without effort, and before the bounds are known, that a primitive need not be visited.
    using TouchFilter = std::function<bool(const Primitive& primitive)>;

    // Visits the primitives of the shown layers that touch strips of the image (in image pixels) and pass the filter. A
    // primitive that touches several strips is visited once for each.
    void visitTouching(const QTransform& sceneToImage, const std::vector<QRect>& strips, const QList<int>& layers,
        const TouchFilter& filter, const TouchVisitor& visitor);

private:
    [[nodiscard]] int bandsFor(const Target& target) const;

    DisplayList& m_list;
    const std::shared_ptr<Memory> m_memory;
    std::unique_ptr<PaintThreads> m_helpers; // without the calling thread
    int m_threads = 1;
    bool m_keepsThreads = false;
};

} // namespace mirn::zelchipview
