// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>
#include <QTimer>

class QTreeWidget;
class QTreeWidgetItem;

namespace mirn::zelchip {

// Narrows the resource tree to the rows whose path contains what is typed, whatever the case, and the rows above them.
// Enter selects the first of them, then the next; Escape clears. Rows that come later are narrowed as well.
class FindBox final : public QLineEdit
{
    Q_OBJECT
public:
    // The tree is not owned and must live as long.
    FindBox(QTreeWidget* tree, QWidget* parent);

    // The rows that match, in the order of the tree; all rows for an empty text.
    [[nodiscard]] QList<QTreeWidgetItem*> matches() const;

Q_SIGNALS:
    // A row was selected by Enter.
    void chosen();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void narrow();
    bool narrowBranch(QTreeWidgetItem* item);
    [[nodiscard]] bool isMatch(const QTreeWidgetItem* item) const;
    void choose();
    [[nodiscard]] QString sought() const;

    QTreeWidget* const m_tree;
    QTimer m_narrowAgain; // once after a series of new rows
};

} // namespace mirn::zelchip
