// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDockWidget>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

class QMainWindow;
class QMenu;

namespace mirn::zelengine {
class ReferenceEngine;
}

namespace mirn::zelchip {

class DesignEditor;
class DifferenceList;
class DrawingArea;
struct ListedDifference;

// Lists how the placement differs from another one of the same design: the saved one at first, or one that is chosen
// from a menu. It follows the changes of the design, and those of the file. It is a child of the main window, in a tab
// with the console, and hidden until somebody asks for it.
class CompareDock final : public QDockWidget
{
    Q_OBJECT
public:
    // Returns the present drawing area; null while a project is being opened.
    using Area = std::function<DrawingArea*()>;

    // Adds itself to the bottom of the window.
    CompareDock(QMainWindow* window, QDockWidget* console, Area area);
    ~CompareDock() override;

    // Fills the menu with what the open design can be compared with, each time it opens. The menu must live as long.
    void setMenu(QMenu* menu);

    // Compares again. Call it after a series of changes.
    void refresh();

    // The part that takes the focus; the dock owns it.
    [[nodiscard]] QWidget* list() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    // What is compared with: a file, or the saved placement if the name is empty.
    struct Other
    {
        QString file;
        QString name; // for users
    };

    void fillMenu(QMenu* menu);
    void chooseFile();
    void compareWith(const Other& other);
    void come();
    void setCount(int count);
    [[nodiscard]] QString readAgain(const DesignEditor& editor);
    void show(const ListedDifference& difference);

    QDockWidget* const m_console; // child of the window
    const Area m_area;
    DifferenceList* m_list; // child of the dock
    Other m_other;
    QPointer<const DesignEditor> m_editor; // of the design to which it belongs
    QByteArray m_content; // the hash of the file that was read; empty if none was
    std::unique_ptr<zelengine::ReferenceEngine> m_read; // null if it could not be read
    QString m_error; // why not
    bool m_hasCome = false; // whether it has been put beside the console; later it stays where people move it
};

} // namespace mirn::zelchip
