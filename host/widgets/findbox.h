// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>
#include <QTimer>

#include <functional>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace mirn::zelchip {

// Narrows the resource tree to the rows whose path contains the typed text, ignoring case, and to their parents. A host
// can let further properties of a resource match. Enter selects the first match, then the next; Escape clears the text.
// If nothing matches, a sentence in the tree says so. Rows that are added later are narrowed as well. It is a child of
// the title bar of the tree's dock.
class FindBox final : public QLineEdit
{
    Q_OBJECT
public:
    // The tree is not owned and must live as long as the box.
    FindBox(QTreeWidget* tree, QWidget* parent);

    // Decides whether a resource, by its name, matches the typed text by something else than its path.
    using Matcher = std::function<bool(const QString& resource, const QString& sought)>;
    void setMatcher(Matcher matcher);

    // The matching rows in the order of the tree; all rows for an empty text.
    [[nodiscard]] QList<QTreeWidgetItem*> matches() const;

Q_SIGNALS:
    // Emitted when Enter has selected a row.
    void chosen();
    // Emitted when Enter finds no row to select, with a sentence for users.
    void notFound(const QString& sentence);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void narrow();
    bool narrowBranch(QTreeWidgetItem* item);
    void showWhetherFound(bool isFound);
    [[nodiscard]] bool isMatch(const QTreeWidgetItem* item) const;
    void choose();
    [[nodiscard]] QString sought() const;
    [[nodiscard]] QString nothingMatches() const;

    QTreeWidget* const m_tree;
    QLabel* const m_nothing; // child of the tree's viewport
    Matcher m_matcher;
    QTimer m_narrowAgain; // fires once after a series of new rows
};

} // namespace mirn::zelchip
