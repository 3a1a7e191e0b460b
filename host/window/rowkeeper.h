// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class QTreeWidget;

namespace mirn::zelchip {

// Keeps the current row of the resource tree when it is refilled, by resource name, so that who works with the keyboard
// stays where he was. Selection and drawing do not change. It is a child of the tree.
class RowKeeper final : public QObject
{
    Q_OBJECT
public:
    explicit RowKeeper(QTreeWidget* tree);

private:
    void restore();

    QTreeWidget* const m_tree;
    QString m_current; // the resource whose row was last the current one
    QTimer m_restoring; // fires once after a series of new rows
};

} // namespace mirn::zelchip
