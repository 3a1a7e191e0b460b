// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace mirn::zelchip {

// A label that never asks for room. A text that is too long ends in "...", and the tooltip is the whole of it.
class ElidedLabel final : public QLabel
{
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget* parent);

    // Returns the width that the whole text would need, in pixels.
    [[nodiscard]] int widthOf(const QString& text) const;

Q_SIGNALS:
    void clicked();

protected:
    bool event(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace mirn::zelchip
