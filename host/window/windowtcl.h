// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QAction;
class QTreeWidget;

namespace mirn::zelengine {
class Device;
}

namespace mirn::zelchipview {
class ZelChipGUI;
class ZelGraphicsScene;
class ZelGraphicsView;
} // namespace mirn::zelchipview

namespace mirn::zelchip {

struct PictureRequest;
class PlanningMenu;
class TclInterpreter;

// The parts of the window that the commands on the view and on the project need. The pointers belong to the project
// that is open at the time of the call. A QString result is empty for success, else a sentence that says what went
// wrong.
class WindowAccess
{
public:
    virtual ~WindowAccess();

    [[nodiscard]] virtual zelchipview::ZelChipGUI* chipView() = 0;
    [[nodiscard]] virtual zelchipview::ZelGraphicsScene* scene() = 0;
    [[nodiscard]] virtual zelchipview::ZelGraphicsView* graphicsView() = 0;
    [[nodiscard]] virtual QTreeWidget* tree() = 0;
    [[nodiscard]] virtual const zelengine::Device& device() const = 0;
    // Shows and hides the names on sites.
    [[nodiscard]] virtual QAction* names() = 0;
    // Has the overview map come when only a part of the drawing is shown.
    [[nodiscard]] virtual QAction* overview() = 0;
    [[nodiscard]] virtual PlanningMenu& planning() = 0;
    // Does at once what would otherwise happen when the program is next idle: new sizes, and what depends on them.
    virtual void settle() = 0;
    virtual void fit() = 0;
    virtual QString saveSnapshot(const QString& file) = 0;
    virtual QString exportPicture(const PictureRequest& request) = 0;
};

// Adds zel_view and zel_tree. The window must outlive the interpreter.
void addWindowCommands(TclInterpreter& interpreter, WindowAccess& window);

// Adds the same commands for a run without a window; each returns an error that says so.
void addWindowlessCommands(TclInterpreter& interpreter);

} // namespace mirn::zelchip
