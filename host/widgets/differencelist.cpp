// SPDX-License-Identifier: MIT
#include "host/widgets/differencelist.h"

#include <QHeaderView>
#include <QPainter>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

namespace {

enum DifferenceColumn { NameColumn, WhatColumn, ThereColumn, HereColumn, DifferenceColumnCount };

constexpr int NameColumnWidth = 260; // pixels
constexpr int ValueColumnWidth = 170;

// A screen reader reads the first cell only.
QTreeWidgetItem* newRow(const ListedDifference& difference)
{
    auto* row = new QTreeWidgetItem({difference.name, difference.what, difference.there, difference.here});
    row->setData(NameColumn, Qt::AccessibleTextRole,
        DifferenceList::tr("%1, %2: %3, now %4")
            .arg(difference.name, difference.what, difference.there, difference.here));
    for (int column = 0; column < DifferenceColumnCount; ++column)
        row->setToolTip(column, row->text(column));
    return row; // for the list, which becomes the owner
}

} // namespace

DifferenceList::DifferenceList(Show show, QWidget* parent)
    : QTreeWidget(parent)
    , m_show(std::move(show))
{
    setObjectName(QStringLiteral("differenceList"));
    setAccessibleName(tr("Differences"));
    setColumnCount(DifferenceColumnCount);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setFrameShape(QFrame::NoFrame);
    header()->resizeSection(NameColumn, NameColumnWidth);
    header()->resizeSection(ThereColumn, ValueColumnWidth);
    setOther({});
    // The first row becomes the current one when the list gets the focus, but nobody has selected it.
    connect(this, &QTreeWidget::itemSelectionChanged, this, [this] { showRow(selectedItems().value(0)); });
    connect(this, &QTreeWidget::itemActivated, this, &DifferenceList::showRow);
}

void DifferenceList::setOther(const QString& name)
{
    setHeaderLabels({tr("Resource or site"), tr("What differs"), name, tr("Now")});
}

void DifferenceList::setDifferences(std::vector<ListedDifference> differences)
{
    const int before = indexOfTopLevelItem(currentItem());
    const ListedDifference current = before < 0 ? ListedDifference() : m_differences[static_cast<std::size_t>(before)];
    m_differences = std::move(differences);
    const QSignalBlocker silence(this); // nobody has chosen another row
    clear();
    QList<QTreeWidgetItem*> rows;
    for (const ListedDifference& difference : m_differences)
        rows.append(newRow(difference));
    addTopLevelItems(rows);
    const int same = before < 0 ? -1 : rowOf(current);
    if (same >= 0)
        setCurrentItem(topLevelItem(same));
    viewport()->update();
}

int DifferenceList::rowOf(const ListedDifference& difference) const
{
    const auto found = std::find_if(m_differences.begin(), m_differences.end(),
        [&](const ListedDifference& other) { return other.name == difference.name && other.what == difference.what; });
    return found == m_differences.end() ? -1 : static_cast<int>(found - m_differences.begin());
}

void DifferenceList::setSentence(const QString& sentence)
{
    m_sentence = sentence;
    viewport()->update();
}

void DifferenceList::showRow(QTreeWidgetItem* row)
{
    const int index = row ? indexOfTopLevelItem(row) : -1;
    if (index < 0)
        return;
    const ListedDifference difference = m_differences[static_cast<std::size_t>(index)]; // the rows may change meanwhile
    m_show(difference);
}

void DifferenceList::paintEvent(QPaintEvent* event)
{
    QTreeWidget::paintEvent(event);
    if (!m_differences.empty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, m_sentence);
}

} // namespace mirn::zelchip
