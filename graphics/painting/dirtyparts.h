// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <vector>

namespace mirn::zelchipview {

// The parts of a picture that have to be painted anew, in its pixels. They may overlap.
class DirtyParts final
{
public:
    [[nodiscard]] bool isEmpty() const { return m_parts.empty(); }
    [[nodiscard]] const std::vector<QRect>& all() const { return m_parts; }
    void clear();

    // Adds a part, unless it is empty.
    void add(const QRect& part);

    // Adds parts of a picture of this size. Where they crowd, the rectangle around them takes their place, because
    // whatever touches several parts is painted in each of them.
    void add(const std::vector<QRect>& parts, QSize picture);

    // Replaces the parts by pieces of a picture of which all has to be painted, the last one first.
    void setPieces(std::vector<QRect> pieces);

    // Removes and returns the part that was added last.
    [[nodiscard]] QRect takeLast();

    void move(QPoint way);

    // Returns whether painting all of a picture of this size is no more work than painting the parts that were added.
    [[nodiscard]] bool areMostOf(QSize picture) const;

private:
    std::vector<QRect> m_parts;
    double m_pixels = 0; // the sum over all that were added; overlaps count twice
};

} // namespace mirn::zelchipview
