// SPDX-License-Identifier: MIT
#pragma once

#include "dialogs/settingscontroller.h"
#include "graphics/elements/drawingcontroller.h"
#include "graphics/elements/elementidset.h"
#include "graphics/elements/graphicitemdynamicattribute.h"
#include "graphics/zelconstants.h"
#include "platform/contract/zelexport.h"
#include "resources/treecontroller.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include <memory>
#include <vector>

class QAction;
class QGraphicsSceneDragDropEvent;
class QIcon;
class QMenu;
class QTreeWidgetItem;
class SVGParser;
class zelchipengine;
struct zeltreeviewcell;

namespace mirn::zelchipview {

class AttributeRegistry;
class HoverText;
class ZELGraphicItemAttribute;
class ZelGraphicsScene;
class ZelGraphicsView;
class ZelResTable;
class ZelTree;

// The controller of the chip view: one per process, a facade over the small classes that hold the state of each
// subsystem. Every part of the component reaches the others through it, and only the controller sends Tcl commands to
// the host.
//
// It owns the scene, the tree and its rows, the parser, the menus and the attributes. The view, the table and the hover
// text belong to the window that shows them. A factory creates a new object if the previous one was deleted with its
// window.
class ZELCHIPGUI_EXPORT ZELChipViewDatabase : public QObject,
                                              public DrawingController,
                                              public TreeController,
                                              public SettingsController
{
    Q_OBJECT
public:
    // Returns the controller, which is created on first use with the flow name of that moment. The host deletes it with
    // destoryInstance().
    static ZELChipViewDatabase* getInstance();

    // Deletes the controller and what it owns, without calling the engine. Does nothing if there is no controller.
    static void destoryInstance();

    // Tells that the program is about to end: what the system frees quicker by itself, the elements of a large drawing
    // above all, is not deleted by destoryInstance() any more, provided that the window is gone by then.
    static void programEnds();

    // Returns null if getInstance() would create a new controller.
    [[nodiscard]] static ZELChipViewDatabase* existingInstance();

    // `engine` is not owned; it may be null, and all queries then have empty results. Builds the filter menu if there
    // is none, and replaces the filter action.
    void setChipEngine(zelchipengine* engine);

    // Sets the parent of the dialogs, usually the host's window. It is not owned, and it is not the controller's own
    // parent.
    void setParent(QWidget* parent);

    // Returns the scene, which the controller owns. `parent` is used only when the scene is created.
    ZelGraphicsScene* getScene(QObject* parent);

    // Returns the view with its navigator and the hover text. It is created without a parent, for the window to take.
    // `scene` is used only when the view is created.
    ZelGraphicsView* getView(ZelGraphicsScene* scene);

    // Returns the resource tree, which the controller owns and fills when it creates it. `parent` is used only then.
    ZelTree* getTree(QWidget* parent);

    // Returns the usage table, which its parent owns. `parent` is used only when the table is created. The table has no
    // rows before the first refresh.
    ZelResTable* getResTable(QWidget* parent);

    // Returns the parser, which SVGParser::create() has made and the controller owns.
    SVGParser* getSVGParser();

    // Tells the engine, then reloads tree, scene and table in this order as `kind` says. A kind other than these four
    // reaches only the engine. Always returns true.
    bool refresh(Enum_ChipView_Refresh_Type kind);

    // The dirty flag is 4 after setDynamicValue() has written something, otherwise 0.
    [[nodiscard]] int getDirtyFlag() const;
    void clearDirtyFlag();

    // Returns ACTION_SELECT, ACTION_ZOOM or ACTION_PAN.
    [[nodiscard]] int getMouseMode() const override;

    // The actions by ZelChipViewActionId, owned by the controller. getAction() returns null for an unknown id, and for
    // the filter before setChipEngine().
    [[nodiscard]] QAction* getAction(int id) const;
    [[nodiscard]] QMap<int, QAction*>& actions();

    // Returns the attribute with a load number (not an element id), or null if there is none. The controller owns it. A
    // change of its values is shown at the next repaint: from this call on, every repaint checks the attribute for
    // changes.
    [[nodiscard]] ZELGraphicItemAttribute* getGraphicItemAttribute(int id) const;

    // Takes ownership of the attribute. An attribute that it replaces belongs to the caller from now on.
    void setGraphicAttribute(int id, ZELGraphicItemAttribute* attribute);

    // For callers that do not change attributes, or report the change themselves.
    [[nodiscard]] AttributeRegistry& attributes() override;

    // Returns the column titles of the tree; asks the engine while there are none.
    QStringList& getTreeHead() override;

    // Deletes all rows, including those that a host has added below them, and builds them anew from the engine's tree.
    // Returns the rows of every depth, children before their parents, with null for a null cell. The controller owns
    // them until the next call. A tree that shows the old rows loses them, so call refresh() to bring it up to date.
    QList<QTreeWidgetItem*>& getTreeItems() override;

    // Returns the row of a cell, with its descendants below it; null for a null cell. The controller owns the
    // descendants; a row without a parent belongs to the caller.
    QTreeWidgetItem* parseTree(zeltreeviewcell* cell, QTreeWidgetItem* parent);

    // Returns the icon of a resource kind; the design's icon for an unknown kind. Valid as long as the controller.
    [[nodiscard]] QIcon& getIconFromType(const QString& type);

    // Returns the zel_resource_type of a resource name or of an element id in decimal.
    [[nodiscard]] int getResourceType(const QString& name) const override;

    // Returns the context menu of a row, or null if it has none. The menu may be empty. Owned by the controller.
    [[nodiscard]] QMenu* getTreePopupMenu(QTreeWidgetItem* item) const override;

    // Appends all descendants of a row to `out`, each branch completely before the next. Does nothing for null.
    void getAllChildren(QTreeWidgetItem* item, QVector<QTreeWidgetItem*>& out) const;

    // Returns the column titles of the usage table; asks the engine while there are none.
    QStringList& getResTableHead() override;

    // Returns one list per row of the usage table, label first. Asks the engine at every call.
    [[nodiscard]] QList<QStringList> getResTableItems() const override;

    // These add elements to the selection or remove one, by element id. With `selectInTree`, the element's row, if
    // there is one, becomes the tree's current row; if there is none, each call connects the tree's
    // itemSelectionChanged() to treeItemClicked() once more.
    void addSelctedItem(int id, bool selectInTree) override;
    void addSelctedItems(
        const std::vector<int>& ids) override; // like single calls with `selectInTree`, but for all ids at once
    void removeSelectedItem(int id) override;

    // Returns the ids of the selected elements. Changing the set repaints those elements. Valid as long as the
    // controller.
    [[nodiscard]] ElementIdSet& selectedIds() override;

    // Returns true if the engine *allows* the resource (by resource name) on the element (by element id in decimal).
    [[nodiscard]] bool canDrop(const QString& rsc, const QString& id) const;

    // The opposite of the other overload: returns true if a drop of the tree's selected row on the element must be
    // *refused*, or if no row is selected. The event is not used and may be null.
    [[nodiscard]] bool canDrop(QGraphicsSceneDragDropEvent* event, int id) const override;

    // Sends the place command. Returns the host's answer, non-zero for success. Does not refresh anything.
    int place(const QString& rsc, const QString& id);

    // Sends the command that exchanges the sites of two placed resources. Returns the host's answer, non-zero for
    // success. The view itself never sends it; aids around it do. Does not refresh anything.
    int swap(const QString& rsc, const QString& other);

    // Places the tree's selected row on the element and returns what place() returns, or 0 if no row is selected.
    int drop(int id) override;

    // Returns the load number of the topmost element under the mouse pointer, 0 if the item there is no element, or -1
    // if there is no item.
    [[nodiscard]] int getCurrentDragDropItemId() const;

    // Call this when a drag has entered an element. The engine is asked for the probable sites after the drag has
    // rested there for 400 ms. Always returns true.
    bool highlightProbPlaceItems(QGraphicsSceneDragDropEvent* event, int id) override;

    // Call this when a drag has moved. The highlight ends if the pointer is over nothing. Always returns true.
    bool highlightProbPlaceItems() override;

    // Stops the countdown and ends the highlight.
    void clearHighlightedProbPlaceItems() override;

    // Returns the element ids of the probable sites. Changing the set repaints those elements. Valid as long as the
    // controller.
    [[nodiscard]] ElementIdSet& highlightedIds() override;

    // Sends the reset command. Returns the host's answer, non-zero for success.
    int resetResource(const QString& name);

    // Asks the user, then sends the remove command. Returns the host's answer, non-zero for success, or 0 if the user
    // declined.
    int removeResource(const QString& name);

    // Opens the engine's own configuration of a resource. Returns non-zero if something changed.
    int configResource(const QString& name);

    // Returns the engine's colours and tooltips by element id in decimal. There is one map for the process; its content
    // is valid until the next call.
    QMap<QString, GraphicItemDynamicAttribute>& getGraphicsDynamicInfo() override;

    // Returns the values that the settings dialog of an element offers, by key, the current value first. Returns null
    // for a type other than DYNAMIC_DIALOG_DCU and for an element without values. The map is valid until the next call.
    QMap<QString, QVector<QString>>* getDynamicValueList(Enum_Dynamic_Dialog_Type type, int id) override;

    // Writes the values, by key, into the engine, sets the dirty flag if there are any, and refreshes everything in any
    // case. Always returns true.
    bool setDynamicValue(const QMap<QString, QString>& valueMap, int id, Enum_Dynamic_Dialog_Type type) override;

    // Opens the settings dialog of the element at a position of the view (in viewport pixels), if it has one, and
    // returns when the dialog is closed. Types other than DYNAMIC_DIALOG_DCU open nothing.
    void showDynamicDlg(const QPoint& pos, Enum_Dynamic_Dialog_Type type) override;
    void showDCUSettingDlg(const QPoint& pos);

    // Returns the filter menu, which is built at the first call and then stays the same. The first call returns null if
    // it cannot open the filter file. The controller owns the menu, unless the view was its parent and has deleted it.
    QMenu* getViewFilterMenu() override;

    // Returns whether "(Select All)" is ticked, fully or partly.
    [[nodiscard]] bool isFilterEnable() const override;

    // Returns the element ids of the ticked kinds. Changing the set repaints those elements. Valid as long as the
    // controller.
    [[nodiscard]] ElementIdSet& filteredIds() override;

    // Returns this object, for the parts that connect to its signals.
    [[nodiscard]] QObject* asObject() override { return this; }

    // Returns the floating text beside a drag. Valid as long as the controller.
    [[nodiscard]] HoverText& hoverText() override;

public Q_SLOTS:
    // Selects the elements of the tree's selected row: its own, or else those of its direct children.
    void treeItemClicked();

    // Expands the whole branch of the selected row.
    void expandIP();

    // Collapses the selected row; the rows below keep their state.
    void collapseIP();

    // These run a command on the selected row, and refresh everything if it succeeds. resetIP() clears the selected
    // elements even if it fails.
    void resetIP();
    void removeIP();
    void configIP();

    // The mouse mode has changed: sets the view's cursor.
    void onSelect(bool);
    void onPan(bool);
    void onZoom(bool);

    // The drag has rested: asks the engine for the probable sites, unless a drop on the current site is refused.
    void onHighlightProbPlaceItems();

    // A check box of the filter menu, the sender, has changed its state.
    void checkboxItemCliked();

Q_SIGNALS:
    // Must be answered synchronously; see ZelChipGUI::sigRunTclCmd().
    void sigRunTclCmd(const QString& cmd, int& ret, QString& result);

    // The set of selected elements has changed. Many changes in a row emit it once for each.
    void selectedElementsChanged();

private:
    ZELChipViewDatabase();
    ~ZELChipViewDatabase() override;

    void buildTreeMenus();
    void connectModeActions();
    int runTclCommand(const QString& command);
    void updateCursor();
    void watchRows();
    [[nodiscard]] QTreeWidgetItem* selectedTreeItem() const;
    [[nodiscard]] QString selectedResource() const;
    void runOnSelected(int (ZELChipViewDatabase::*command)(const QString&));

    static ZELChipViewDatabase* m_object;

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
