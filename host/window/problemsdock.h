// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>

#include <functional>

class QMainWindow;

namespace mirn::zelchip {

class DrawingArea;
class ProblemList;
struct ListedProblem;

// Lists what is wrong with the open design and what is left to place. It is a child of the main window, in a tab with
// the console, and hidden until somebody asks for it. While it is hidden it only counts.
class ProblemsDock final : public QDockWidget
{
    Q_OBJECT
public:
    // Returns the present drawing area; null while a project is being opened.
    using Area = std::function<DrawingArea*()>;

    // Adds the console and itself to the bottom of the window.
    ProblemsDock(QMainWindow* window, QDockWidget* console, Area area);

    // Checks the design again. Call it after a series of changes.
    void refresh();

    // Shows the dock in front of the console, with the focus in the list.
    void come();

    // The part that takes the focus; the dock owns it.
    [[nodiscard]] QWidget* list() const;

Q_SIGNALS:
    void counted(int errors, int warnings);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void setCount(int count);
    void show(const ListedProblem& problem);

    QDockWidget* const m_console; // child of the window
    const Area m_area;
    ProblemList* m_list; // child of the dock
    bool m_hasCome = false; // whether it has been put beside the console; later it stays where people move it
};

} // namespace mirn::zelchip
