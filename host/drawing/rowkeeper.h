// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QTreeWidget;

namespace mirn::zelchip {

// Keeps the selected row of the resource tree in use. A refresh makes all rows anew; restore() then selects the row of
// the same resource. A click on a row that is selected already changes no selection; it is reported, so that the row's
// elements can be selected again. It is a child of the tree.
class RowKeeper final : public QObject
{
    Q_OBJECT
public:
    explicit RowKeeper(QTreeWidget* tree);

    // Selects the row that was selected last, unless a row is selected. Call it after a refresh. The selected elements
    // stay as they are.
    void restore();

Q_SIGNALS:
    // Emitted after a click that did not change the selection.
    void clickedAgain();

private:
    QTreeWidget* const m_tree;
    QString m_resource; // of the row that was selected last; a refresh removes all rows without a signal
    bool m_isChanged = false; // whether the selection has changed since the last click
};

} // namespace mirn::zelchip
