// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>
#include <QString>

#include <functional>

class QMainWindow;

namespace mirn::zelchip {

class DrawingArea;

// A dock with a list that is counted in its title. It is a child of the main window, in a tab with the console, and
// hidden until somebody asks for it.
class ListDock : public QDockWidget
{
    Q_OBJECT
public:
    // Returns the present drawing area; null while a project is being opened.
    using Area = std::function<DrawingArea*()>;

    // Brings the list up to date. Call it after a series of changes; the dock does when it is shown.
    virtual void refresh() = 0;

    // Shows the dock in front of the console, with the focus in the list.
    void come();

    // The part that takes the focus; the dock owns it.
    [[nodiscard]] QWidget* list() const { return widget(); }

protected:
    struct Titles
    {
        QString plain;
        QString counted; // %1 is the count
        QString menu;
    };

    // Adds itself to the bottom of the window, and the console before it. `name` is the object name.
    ListDock(QMainWindow* window, QDockWidget* console, const QString& name, Titles titles, Area area);

    [[nodiscard]] DrawingArea* area() const { return m_area(); }
    void setCount(int count);
    void showEvent(QShowEvent* event) override;

private:
    QDockWidget* const m_console; // child of the window
    const Titles m_titles;
    const Area m_area;
    bool m_hasCome = false; // whether it has been put beside the console; later it stays where people move it
};

} // namespace mirn::zelchip
