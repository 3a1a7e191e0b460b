// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QTableWidget>

namespace mirn::zelchipview {

// The table of the "Usage" dock: one read-only row per resource kind, with the figures that the engine reports. The
// window owns it; it computes nothing.
class ZELCHIPGUI_EXPORT ZelResTable : public QTableWidget
{
public:
    // The table has column titles from the start, but no rows.
    explicit ZelResTable(QWidget* parent);
    ~ZelResTable() override;

    // Replaces all rows with the engine's. The first text of a row becomes its label.
    void refresh();

private:
    void fillRow(int row, const QStringList& texts);
};

} // namespace mirn::zelchipview
