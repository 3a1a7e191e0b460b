// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointF>
#include <QTimer>
#include <QTransform>

#include <vector>

namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// The part of the drawing that a view shows.
struct ViewedPart
{
    QTransform transform;
    double currentScale = 1.0; // the value that the ranges of layers are compared with
    QPointF center; // in scene units

    [[nodiscard]] bool operator==(const ViewedPart& other) const;
    [[nodiscard]] bool operator!=(const ViewedPart& other) const { return !(*this == other); }
};

[[nodiscard]] ViewedPart viewedPart(const zelchipview::ZelGraphicsView& view);
void showPart(zelchipview::ZelGraphicsView& view, const ViewedPart& part);

// Remembers the parts of the drawing at which the view came to rest, so that a user can go back to them and forward
// again. It is a child of the view.
class ViewHistory final : public QObject
{
    Q_OBJECT
public:
    explicit ViewHistory(zelchipview::ZelGraphicsView* view);

    // These do nothing at either end.
    void back();
    void forward();

    // Replaces the current part by the one that the view shows now. Call it when only the size of the view has changed
    // what it shows.
    void replace();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void note();
    void show(std::size_t index);

    zelchipview::ZelGraphicsView* const m_view;
    QTimer m_rest; // runs out when the view has not moved for a moment
    std::vector<ViewedPart> m_parts; // oldest first
    std::size_t m_current = 0;
};

} // namespace mirn::zelchip
