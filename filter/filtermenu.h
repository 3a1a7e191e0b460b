// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

class QCheckBox;

namespace mirn::zelchipview {

// The submenu with the filter's check boxes, each in a QWidgetAction that the menu owns. With more of them than the
// screen has room for it scrolls, and it stays quick with ten thousand.
class FilterMenu final : public QMenu
{
public:
    FilterMenu(const QString& title, QWidget* parent);
    ~FilterMenu() override;

    // At the end; `label` as it is to be read. Gives the new box, which is the menu's.
    QCheckBox* addBox(const QString& label);

protected:
    void hideEvent(QHideEvent* event) override;
};

} // namespace mirn::zelchipview
