// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QTreeWidget;

namespace mirn::zelchip {

// Lets work go on from the row that is selected in the resource tree: a row that a refresh made anew is selected again,
// and a click on a row that is selected already marks its elements again. It is a child of the tree.
class RowKeeper final : public QObject
{
    Q_OBJECT
public:
    explicit RowKeeper(QTreeWidget* tree);

    // Selects the row that was selected last, unless one is. Call it after a refresh. The selected elements stay as
    // they are.
    void restore();

Q_SIGNALS:
    // Emitted after a click that did not change the selection.
    void clickedAgain();

private:
    QTreeWidget* const m_tree;
    QString m_resource; // the selected row's; a refresh removes all rows without a signal
    bool m_isChanged = false; // whether the selection has changed since the last click
};

} // namespace mirn::zelchip
