// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelconstants.h"
#include "platform/contract/zelexport.h"

#include <QMainWindow>
#include <QMap>

#include <memory>
#include <string>

class QAction;
class SVGParser;
class zelchipengine;

namespace mirn::zelchipview {

// The chip-planning view: what a host embeds. The floorplan is the central widget, the resource tree is in the
// "Placement" dock and the usage figures are in the "Usage" dock. Everything is held together by the controller, which
// the host ends with ZELChipViewDatabase::destoryInstance() after deleting the window.
//
// Life cycle: construct; initGrahpicView(); refresh(REFRESH_ALL); use; delete; destoryInstance(). GUI thread only.
class ZELCHIPGUI_EXPORT ZelChipGUI : public QMainWindow
{
    Q_OBJECT
public:
    // `engine` is not owned and must outlive the window. A QMainWindow is a top-level window also with a parent: a host
    // that wants it inside another one calls setWindowFlags(Qt::Widget).
    ZelChipGUI(zelchipengine* engine, QWidget* parent);
    ~ZelChipGUI() override;

    // Does nothing and returns true: the tree fills itself.
    bool initTreeView();

    // Loads the chip drawing into the scene; to be called once, before the first refresh(). False only when there is
    // no open project or it has no default implementation; a drawing that cannot be read leaves what could be read.
    bool initGrahpicView();

    // One step, within the drawing's limits; nothing beyond.
    void zoomIn();
    void zoomOut();

    // Back by whole steps to the scale at which the drawing opened, wherever its rectangle then lies.
    void zoomFit();

    // Shows the scene's zoom items; nothing while it has none.
    void zoomTo();

    // Tells the engine, then reloads tree, drawing and table as `kind` says; other kinds than the four reach only the
    // engine. Always true.
    bool refresh(Enum_ChipView_Refresh_Type kind);

    // 4 after the settings dialog wrote values into the engine, else 0. Commands do not count: the host ran them.
    [[nodiscard]] int getDirtyFlag();

    // The host has saved, or does not care.
    void clearDirtyFlag();

    // The view's actions by ZelChipViewActionId, for the host's tool bar: always the same map, owned by the controller.
    [[nodiscard]] QMap<int, QAction*>* getActions();

    // All rows of the resource tree, at every depth.
    void expandAllTreeItems();
    void collapseAllTreeItems();

Q_SIGNALS:
    // Run this Tcl command. To be connected directly: before it returns, the receiver sets `ret`, which comes as 0, to
    // something else for success (the opposite of Tcl's own codes), and may leave a text in `result`.
    void sigRunTclCmd(const QString& cmd, int& ret, QString& result);

private:
    void addDock(const QString& name, const QString& title, QWidget* content);
    void loadDrawing(SVGParser& parser, const std::string& drawingFile, const std::string& workingPath);

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
