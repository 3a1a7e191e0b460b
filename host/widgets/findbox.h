// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>
#include <QTimer>

class QTreeWidget;
class QTreeWidgetItem;

namespace mirn::zelchip {

// Narrows the resource tree to the rows whose path contains the typed text, ignoring case, and to their parents. Enter
// selects the first match, then the next; Escape clears the text. Rows that are added later are narrowed as well. It is
// a child of the title bar of the tree's dock.
class FindBox final : public QLineEdit
{
    Q_OBJECT
public:
    // The tree is not owned and must live as long as the box.
    FindBox(QTreeWidget* tree, QWidget* parent);

    // The matching rows in the order of the tree; all rows for an empty text.
    [[nodiscard]] QList<QTreeWidgetItem*> matches() const;

Q_SIGNALS:
    // Emitted when Enter has selected a row.
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
    QTimer m_narrowAgain; // fires once after a series of new rows
};

} // namespace mirn::zelchip
