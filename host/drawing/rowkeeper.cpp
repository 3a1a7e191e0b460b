// SPDX-License-Identifier: MIT
#include "host/drawing/rowkeeper.h"

#include "graphics/zelconstants.h"

#include <QSignalBlocker>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <utility>

namespace mirn::zelchip {

namespace {

QString resourceOf(const QTreeWidgetItem* row)
{
    return row ? row->data(0, zelchipview::RESOURCENAME).toString() : QString();
}

QTreeWidgetItem* rowOf(QTreeWidget* tree, const QString& resource)
{
    QTreeWidgetItemIterator row(tree);
    while (*row && resourceOf(*row) != resource)
        ++row;
    return *row;
}

} // namespace

RowKeeper::RowKeeper(QTreeWidget* tree)
    : QObject(tree)
    , m_tree(tree)
{
    connect(tree, &QTreeWidget::itemSelectionChanged, this, [this] {
        m_isChanged = true;
        m_resource = resourceOf(m_tree->selectedItems().value(0));
    });
    connect(tree, &QTreeWidget::itemClicked, this, [this] {
        if (!std::exchange(m_isChanged, false))
            Q_EMIT clickedAgain();
    });
}

void RowKeeper::restore()
{
    if (m_resource.isEmpty() || !m_tree->selectedItems().isEmpty())
        return;
    // The signals would select the row's elements, and the tree would scroll away from where the user is.
    const QSignalBlocker silence(m_tree);
    const bool hasAutoScroll = m_tree->hasAutoScroll();
    m_tree->setAutoScroll(false);
    if (QTreeWidgetItem* row = rowOf(m_tree, m_resource))
        m_tree->setCurrentItem(row);
    m_tree->setAutoScroll(hasAutoScroll);
}

} // namespace mirn::zelchip
