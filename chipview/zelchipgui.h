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

// The chip-planning view that a host embeds. The floorplan is the central widget, the resource tree is in the
// "Placement" dock and the usage figures are in the "Usage" dock. The controller connects these parts and owns most of
// them; the host ends it with ZELChipViewDatabase::destoryInstance() after deleting the window.
//
// Life cycle: construct; initGrahpicView(); refresh(REFRESH_ALL); use; delete; destoryInstance(). GUI thread only.
class ZELCHIPGUI_EXPORT ZelChipGUI : public QMainWindow
{
    Q_OBJECT
public:
    // `engine` is not owned and must outlive the window. A QMainWindow is a top-level window even if it has a parent: a
    // host that wants it inside another window calls setWindowFlags(Qt::Widget).
    ZelChipGUI(zelchipengine* engine, QWidget* parent);
    ~ZelChipGUI() override;

    // Does nothing and returns true: the tree fills itself.
    bool initTreeView();

    // Loads the chip drawing into the scene. Call it once, before the first refresh(). Returns false only if no project
    // is open or the project has no default implementation. If the drawing cannot be read completely, the view shows
    // what could be read.
    bool initGrahpicView();

    // Decides whether the drawing gets graphics items only when they are asked for; see
    // ZelGraphicsScene::setItemsOnDemand(). Call it before initGrahpicView(); off by default.
    void setItemsOnDemand(bool isOn);

    // These zoom by one step, or do nothing if the step would leave the drawing's limits.
    void zoomIn();
    void zoomOut();

    // Zooms back by whole steps until the transform is close to 1, and makes the drawing's initial scale current; see
    // ZelGraphicsView::zoomFit(). It does not scroll.
    void zoomFit();

    // Zooms to the scene's zoom items, or does nothing if there are none.
    void zoomTo();

    // Tells the engine, then reloads tree, drawing and table as `kind` says. A kind other than these four reaches only
    // the engine. Always returns true.
    bool refresh(Enum_ChipView_Refresh_Type kind);

    // Returns 4 after the settings dialog has written values into the engine, otherwise 0. Tcl commands do not count,
    // because the host ran them itself.
    [[nodiscard]] int getDirtyFlag();

    // Sets the dirty flag to 0, for example after the host has saved.
    void clearDirtyFlag();

    // Returns the view's actions by ZelChipViewActionId, for the host's tool bar. It is always the same map, and the
    // controller owns it.
    [[nodiscard]] QMap<int, QAction*>* getActions();

    // These expand or collapse all rows of the resource tree, at every depth.
    void expandAllTreeItems();
    void collapseAllTreeItems();

Q_SIGNALS:
    // Asks the host to run a Tcl command. Connect it directly: before it returns, the receiver sets `ret`, which starts
    // as 0, to another value for success (the opposite of Tcl's own codes), and may leave a text in `result`.
    void sigRunTclCmd(const QString& cmd, int& ret, QString& result);

private:
    void addDock(const QString& name, const QString& title, QWidget* content);
    void loadDrawing(SVGParser& parser, const std::string& drawingFile, const std::string& workingPath);

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
