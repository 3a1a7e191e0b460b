// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelchip {

// A problem as a ProblemList shows it.
struct ListedProblem
{
    enum class Severity { Error, Warning };

    Severity severity = Severity::Error;
    QString sentence; // for users
    QStringList resources; // the names of those that it concerns
    std::vector<int> sites; // the element ids of those that it concerns
};

// The rows of a ProblemList, in the order in which they are given.
class ProblemListModel final : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { SeverityColumn, SentenceColumn, ColumnCount };

    explicit ProblemListModel(QObject* parent);

    void setProblems(std::vector<ListedProblem> problems);
    [[nodiscard]] const ListedProblem& problem(int row) const { return m_problems[static_cast<std::size_t>(row)]; }
    // Returns -1 if no row has this sentence.
    [[nodiscard]] int rowOf(const QString& sentence) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ListedProblem> m_problems;
};

} // namespace mirn::zelchip
