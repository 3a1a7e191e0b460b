// SPDX-License-Identifier: MIT
#include "host/widgets/problemlistmodel.h"

#include <QApplication>
#include <QIcon>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

namespace {

QString severityText(ListedProblem::Severity severity)
{
    return severity == ListedProblem::Severity::Error ? ProblemListModel::tr("Error") : ProblemListModel::tr("Warning");
}

QIcon severityIcon(ListedProblem::Severity severity)
{
    return QApplication::style()->standardIcon(
        severity == ListedProblem::Severity::Error ? QStyle::SP_MessageBoxCritical : QStyle::SP_MessageBoxWarning);
}

} // namespace

ProblemListModel::ProblemListModel(QObject* parent)
    : QAbstractTableModel(parent)
{ }

void ProblemListModel::setProblems(std::vector<ListedProblem> problems)
{
    beginResetModel();
    m_problems = std::move(problems);
    endResetModel();
}

int ProblemListModel::rowOf(const QString& sentence) const
{
    const auto it = std::find_if(m_problems.begin(), m_problems.end(),
        [&sentence](const ListedProblem& problem) { return problem.sentence == sentence; });
    return it == m_problems.end() ? -1 : static_cast<int>(it - m_problems.begin());
}

int ProblemListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_problems.size());
}

int ProblemListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

// A screen reader reads the first cell only.
QVariant ProblemListModel::data(const QModelIndex& index, int role) const
{
    const ListedProblem& shown = problem(index.row());
    const bool isFirst = index.column() == SeverityColumn;
    switch (role) {
    case Qt::DisplayRole:
        return isFirst ? severityText(shown.severity) : shown.sentence;
    case Qt::DecorationRole:
        return isFirst ? QVariant(severityIcon(shown.severity)) : QVariant();
    case Qt::ToolTipRole:
        return shown.sentence;
    case Qt::AccessibleTextRole:
        return isFirst ? QVariant(tr("%1: %2").arg(severityText(shown.severity), shown.sentence)) : QVariant();
    default:
        return {};
    }
}

QVariant ProblemListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == SeverityColumn ? tr("Severity") : tr("Problem");
}

} // namespace mirn::zelchip
