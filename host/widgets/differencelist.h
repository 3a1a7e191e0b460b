// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTreeWidget>

#include <functional>
#include <vector>

namespace mirn::zelchip {

// A difference as a DifferenceList shows it, in words for users.
struct ListedDifference
{
    QString name; // of the resource or site
    QString what;
    QString there; // in the placement that is compared with
    QString here;
    std::vector<int> sites; // the ids of the elements that it concerns
};

// A list of the differences between two placements. It shows what a row concerns as soon as the row is selected,
// and again on Enter or a double click. It knows no window, no engine and no drawing: the host gives it plain rows
// and a function that shows.
class DifferenceList final : public QTreeWidget
{
    Q_OBJECT
public:
    using Show = std::function<void(const ListedDifference& difference)>;

    DifferenceList(Show show, QWidget* parent);

    // The current row stays the current one if its difference is still there, and is not shown again.
    void setDifferences(std::vector<ListedDifference> differences);

    // Names the placement that is compared with, for the title of its column.
    void setOther(const QString& name);

    // What is shown while there are no rows.
    void setSentence(const QString& sentence);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showRow(QTreeWidgetItem* row);
    [[nodiscard]] int rowOf(const ListedDifference& difference) const;

    const Show m_show;
    std::vector<ListedDifference> m_differences; // one a row
    QString m_sentence;
};

} // namespace mirn::zelchip
