// SPDX-License-Identifier: MIT
#pragma once

#include "host/window/listdock.h"

#include <QByteArray>
#include <QPointer>
#include <QString>

#include <memory>

class QMenu;

namespace mirn::zelengine {
class ReferenceEngine;
}

namespace mirn::zelchip {

class DesignEditor;
class DifferenceList;
struct ListedDifference;

// Lists how the placement differs from another one of the same design: the saved one at first, or one that is chosen
// from a menu. It follows the changes of the design, and those of the file. While it is hidden it compares
// nothing.
class CompareDock final : public ListDock
{
    Q_OBJECT
public:
    CompareDock(QMainWindow* window, QDockWidget* console, Area area);
    ~CompareDock() override;

    // Fills the menu with what the open design can be compared with, each time it opens. The menu must live as long.
    void setMenu(QMenu* menu);

    // Compares again. Call it after a series of changes.
    void refresh() override;

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
    [[nodiscard]] QString readAgain(const DesignEditor& editor);
    void show(const ListedDifference& difference);

    DifferenceList* m_list; // child of the dock
    Other m_other;
    QPointer<const DesignEditor> m_editor; // of the design to which it belongs
    QByteArray m_content; // the hash of the file that was read; empty if none was
    std::unique_ptr<zelengine::ReferenceEngine> m_read; // null if it could not be read
    QString m_error; // why not
};

} // namespace mirn::zelchip
