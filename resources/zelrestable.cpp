// SPDX-License-Identifier: MIT
#include "resources/zelrestable.h"

#include "resources/treecontroller.h"

#include <QHeaderView>

namespace mirn::zelchipview {

ZelResTable::ZelResTable(QWidget* parent)
    : QTableWidget(parent)
{
    setShowGrid(true);
    setAlternatingRowColors(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    const QStringList& head = TreeController::current().getResTableHead();
    setColumnCount(head.size());
    setHorizontalHeaderLabels(head);
    horizontalHeader()->setStretchLastSection(true);
}

ZelResTable::~ZelResTable() = default;

void ZelResTable::refresh()
{
    setRowCount(0);
    const QList<QStringList> rows = TreeController::current().getResTableItems();
    setRowCount(rows.size());
    for (int row = 0; row < rows.size(); ++row)
        fillRow(row, rows[row]);
    // Resizing turns off the stretching of the last column until it is set again.
    horizontalHeader()->setStretchLastSection(false);
    resizeColumnsToContents();
    horizontalHeader()->setStretchLastSection(true);
}

void ZelResTable::fillRow(int row, const QStringList& texts)
{
    if (texts.isEmpty())
        return;
    setVerticalHeaderItem(row, new QTableWidgetItem(texts.first())); // owned by the table
    for (int column = 0; column < columnCount() && column + 1 < texts.size(); ++column)
        setItem(row, column, new QTableWidgetItem(texts[column + 1])); // owned by the table
}

} // namespace mirn::zelchipview
