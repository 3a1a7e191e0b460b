// SPDX-License-Identifier: MIT
#pragma once

#include "host/window/listdock.h"

namespace mirn::zelchip {

class ProblemList;
struct ListedProblem;

// Lists what is wrong with the open design and what is left to place. While it is hidden it only counts.
class ProblemsDock final : public ListDock
{
    Q_OBJECT
public:
    ProblemsDock(QMainWindow* window, QDockWidget* console, Area area);

    // Checks the design again. Call it after a series of changes.
    void refresh() override;

Q_SIGNALS:
    void counted(int errors, int warnings);

private:
    void show(const ListedProblem& problem);

    ProblemList* m_list; // child of the dock
};

} // namespace mirn::zelchip
