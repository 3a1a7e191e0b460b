// SPDX-License-Identifier: MIT
#include "host/window/rowkeeper.h"

#include "graphics/zelconstants.h"

#include <QItemSelectionModel>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace mirn::zelchip {

RowKeeper::RowKeeper(QTreeWidget* tree)
    : QObject(tree)
    , m_tree(tree)
{
    m_restoring.setSingleShot(true);
    connect(&m_restoring, &QTimer::timeout, this, &RowKeeper::restore);
    connect(tree->model(), &QAbstractItemModel::rowsInserted, this, [this] { m_restoring.start(0); });
    // The tree's own signals are blocked while it is refilled, and rows that go make others the current one.
    connect(tree, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        if (item)
            m_current = item->data(0, zelchipview::RESOURCENAME).toString();
    });
}

void RowKeeper::restore()
{
    if (m_current.isEmpty() || m_tree->currentItem())
        return;
    for (QTreeWidgetItemIterator row(m_tree); *row; ++row) {
        if ((*row)->data(0, zelchipview::RESOURCENAME).toString() != m_current)
            continue;
        m_tree->setCurrentItem(*row, 0, QItemSelectionModel::NoUpdate);
        return;
    }
}

} // namespace mirn::zelchip
