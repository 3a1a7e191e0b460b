// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace mirn::zelchipview {

// The visible keyboard cursor: a frame around a site. It is a child of the viewport and takes up the pixels of the
// frame only, so that moving it repaints little of the drawing and its presence nothing. Screen readers see it as the
// site: its accessible name is to be the description of the site, it counts as focused while the drawing has the focus,
// and it can be pressed.
class SiteFrame final : public QWidget
{
    Q_OBJECT
public:
    explicit SiteFrame(QWidget* viewport);

    // Shows the frame around an area of the viewport.
    void surround(const QRect& area);

    // Tells screen readers that the cursor has come to the site that is the accessible name.
    void announce();

Q_SIGNALS:
    // A screen reader wants to open what the site offers.
    void pressed();

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace mirn::zelchipview
