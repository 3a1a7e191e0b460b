// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace mirn::zelchip {

// Shows the lines of a table that were refused, which may be many, in a dialog that deletes itself, and returns at
// once.
void openRefusedLines(QWidget* parent, const QString& title, const QString& summary, const QStringList& lines);

} // namespace mirn::zelchip
