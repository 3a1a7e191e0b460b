// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace mirn::zelchip {

// What the colours of marked elements mean, as a row of swatches for the status bar.
class Legend final : public QWidget
{
    Q_OBJECT
public:
    explicit Legend(QWidget* parent);
};

} // namespace mirn::zelchip
