// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

class QCheckBox;

namespace mirn::zelchipview {

// The submenu with the filter's check boxes, each in a QWidgetAction that the menu owns. It scrolls if the boxes do not
// fit on the screen, and it stays fast with ten thousand of them. It does not know what a box means.
class FilterMenu final : public QMenu
{
public:
    FilterMenu(const QString& title, QWidget* parent);
    ~FilterMenu() override;

    // Appends a check box and returns it; the menu owns it. `label` is shown literally: an "&" in it is no mnemonic.
    QCheckBox* addBox(const QString& label);

protected:
    void hideEvent(QHideEvent* event) override;
};

} // namespace mirn::zelchipview
