// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QGraphicsView;

namespace mirn::zelchip {

// What a drawing lies on: gives the view's background and its viewport's palette the colours that fit the window, and
// follows the window's palette. It is a child of the view.
class DrawingGround final : public QObject
{
public:
    explicit DrawingGround(QGraphicsView* view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();

    QGraphicsView* const m_view;
};

} // namespace mirn::zelchip
