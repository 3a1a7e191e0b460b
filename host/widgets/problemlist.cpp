// SPDX-License-Identifier: MIT
#include "host/widgets/problemlist.h"

#include <QHeaderView>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

ProblemList::ProblemList(Show show, QWidget* parent)
    : QTreeView(parent)
    , m_model(new ProblemListModel(this))
{
    setObjectName(QStringLiteral("problemList"));
    setAccessibleName(tr("Problems"));
    setModel(m_model);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setFrameShape(QFrame::NoFrame);
    header()->setSectionResizeMode(ProblemListModel::SeverityColumn, QHeaderView::ResizeToContents);
    connect(this, &QTreeView::activated, this, [this, show = std::move(show)](const QModelIndex& index) {
        const ListedProblem problem = m_model->problem(index.row()); // a copy, because the rows may change meanwhile
        show(problem);
    });
}

void ProblemList::setProblems(std::vector<ListedProblem> problems)
{
    const int before = currentIndex().row();
    const QString sentence = before < 0 ? QString() : m_model->problem(before).sentence;
    m_model->setProblems(std::move(problems));
    if (before < 0 || m_model->rowCount() == 0)
        return;
    const int same = m_model->rowOf(sentence);
    const int row = same < 0 ? std::min(before, m_model->rowCount() - 1) : same;
    setCurrentIndex(m_model->index(row, ProblemListModel::SeverityColumn));
}

void ProblemList::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (m_model->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, tr("There are no problems."));
}

} // namespace mirn::zelchip
