// SPDX-License-Identifier: MIT
#pragma once

#include "host/widgets/problemlistmodel.h"

#include <QTreeView>

#include <functional>
#include <vector>

namespace mirn::zelchip {

// A list of problems, each with its severity and its sentence. Enter or a double click shows what the current one
// concerns. It knows no window, no engine and no drawing: the host gives it plain rows and a function that shows.
class ProblemList final : public QTreeView
{
    Q_OBJECT
public:
    using Show = std::function<void(const ListedProblem& problem)>;

    ProblemList(Show show, QWidget* parent);

    // The current row stays the current one if its problem is still there, else its place does.
    void setProblems(std::vector<ListedProblem> problems);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ProblemListModel* const m_model; // child of the list
};

} // namespace mirn::zelchip
