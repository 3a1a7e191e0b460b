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
// subsystem. Every part of the component reaches the others through it, and it alone sends Tcl commands to the host.
//
// It owns the scene, the tree and its rows, the parser, the menus and the attributes; the view, the table and the hover
// text belong to the window that shows them. Factories make a new object when the one before died with its window.
class ZELCHIPGUI_EXPORT ZELChipViewDatabase : public QObject,
                                              public DrawingController,
                                              public TreeController,
                                              public SettingsController
{
    Q_OBJECT
public:
    // Made on first use, with the flow name of that moment; the host ends it with destoryInstance().
    static ZELChipViewDatabase* getInstance();

    // Deletes the controller with what it owns, without asking the engine anything; nothing when there is none.
    static void destoryInstance();

    // Null where getInstance() would make a new one.
    [[nodiscard]] static ZELChipViewDatabase* existingInstance();

    // Not owned; null is allowed and answers nothing. Builds the filter menu, if there is none, and makes the filter
    // action anew.
    void setChipEngine(zelchipengine* engine);

    // The parent of the dialogs, usually the host's window; not owned, and not the controller's own parent.
    void setParent(QWidget* parent);

    // The scene, owned by the controller. The parent counts only when it is made.
    ZelGraphicsScene* getScene(QObject* parent);

    // The view, with its navigator and the hover text; made without a parent, for the window to take. The scene counts
    // only when it is made.
    ZelGraphicsView* getView(ZelGraphicsScene* scene);

    // The resource tree, owned by the controller and filled when it is made. The parent counts only then.
    ZelTree* getTree(QWidget* parent);

    // The usage table, owned by its parent, which counts only when it is made. Without rows before the first refresh.
    ZelResTable* getResTable(QWidget* parent);

    // What SVGParser::create() makes; owned by the controller.
    SVGParser* getSVGParser();

    // Tells the engine, then reloads tree, scene and table in this order as `kind` says; other kinds reach only the
    // engine. Always true.
    bool refresh(Enum_ChipView_Refresh_Type kind);

    // 4 after setDynamicValue() wrote something, else 0.
    [[nodiscard]] int getDirtyFlag() const;
    void clearDirtyFlag();

    // ACTION_SELECT, ACTION_ZOOM or ACTION_PAN.
    [[nodiscard]] int getMouseMode() const override;

    // By ZelChipViewActionId; null for an unknown id, and for the filter before setChipEngine(). Owned by the
    // controller.
    [[nodiscard]] QAction* getAction(int id) const;
    [[nodiscard]] QMap<int, QAction*>& actions();

    // By load number, not by element id; null for an unknown one. Owned by the controller. What is changed in it shows
    // at the next repaint; an attribute that was asked for is looked at in every repaint from then on.
    [[nodiscard]] ZELGraphicItemAttribute* getGraphicItemAttribute(int id) const;

    // Takes the attribute over. The one that it replaces, if any, is the caller's from now on.
    void setGraphicAttribute(int id, ZELGraphicItemAttribute* attribute);

    // For those that change nothing, or tell of it themselves.
    [[nodiscard]] AttributeRegistry& attributes() override;

    // The titles of the tree's columns; the engine is asked while there are none.
    QStringList& getTreeHead() override;

    // Deletes all rows, with what a host has hung below them, and builds them anew from the engine's tree: rows of
    // every depth, children before their parents, null for a null cell. Owned by the controller until the next call. A
    // tree that shows the old ones loses them: to bring it up to date, refresh().
    QList<QTreeWidgetItem*>& getTreeItems() override;

    // The row of a cell, with those of its descendants below it; null for a null cell. The descendants belong to the
    // controller, a row without parent to the caller.
    QTreeWidgetItem* parseTree(zeltreeviewcell* cell, QTreeWidgetItem* parent);

    // The design's icon for an unknown kind of resource. Valid as long as the controller.
    [[nodiscard]] QIcon& getIconFromType(const QString& type);

    // A zel_resource_type, of a resource name or of an element id in decimal.
    [[nodiscard]] int getResourceType(const QString& name) const override;

    // The context menu of a row: null where it has none, and maybe empty. Owned by the controller.
    [[nodiscard]] QMenu* getTreePopupMenu(QTreeWidgetItem* item) const override;

    // Appends the descendants of a row, every branch before the next; nothing for null.
    void getAllChildren(QTreeWidgetItem* item, QVector<QTreeWidgetItem*>& out) const;

    // The titles of the usage table's columns; the engine is asked while there are none.
    QStringList& getResTableHead() override;

    // One list per row, label first. The engine is asked every time.
    [[nodiscard]] QList<QStringList> getResTableItems() const override;

    // Selects one more element, by element id. With `selectInTree` its row, if there is one, becomes the current one.
    // Without the row each such call connects the tree's itemSelectionChanged() to treeItemClicked() once more.
    void addSelctedItem(int id, bool selectInTree) override;
    void addSelctedItems(
        const std::vector<int>& ids) override; // as one by one with their rows, but for all of them together
    void removeSelectedItem(int id) override;

    // The selected elements, by element id. A change repaints what it touches. Valid as long as the controller.
    [[nodiscard]] ElementIdSet& selectedIds() override;

    // True when the engine allows the resource (by resource name) on the element (by element id in decimal).
    [[nodiscard]] bool canDrop(const QString& rsc, const QString& id) const;

    // The other way round: true when a drop of the tree's selected row on the element must be *refused*, also when
    // there is no such row. The event is not looked at and may be null.
    [[nodiscard]] bool canDrop(QGraphicsSceneDragDropEvent* event, int id) const override;

    // Sends the place command; the host's answer, non-zero for success. Refreshes nothing.
    int place(const QString& rsc, const QString& id);

    // Places the tree's selected row on the element; 0 when there is none, else as place().
    int drop(int id) override;

    // The load number of the topmost element under the mouse pointer, 0 for an item that is none, -1 when nothing is
    // there.
    [[nodiscard]] int getCurrentDragDropItemId() const;

    // The drag entered an element: asks the engine for the probable sites once it has rested there for 400 ms. Always
    // true.
    bool highlightProbPlaceItems(QGraphicsSceneDragDropEvent* event, int id) override;

    // The drag moved: over nothing, the highlight ends. Always true.
    bool highlightProbPlaceItems() override;

    // Ends the countdown and the highlight.
    void clearHighlightedProbPlaceItems() override;

    // The probable sites, by element id. A change repaints what it touches. Valid as long as the controller.
    [[nodiscard]] ElementIdSet& highlightedIds() override;

    // Sends the reset command; the host's answer, non-zero for success.
    int resetResource(const QString& name);

    // Asks the user first. The host's answer to the remove command, 0 when the user declined.
    int removeResource(const QString& name);

    // The engine's own configuration; non-zero when something changed.
    int configResource(const QString& name);

    // Colours and tooltips from the engine, by element id in decimal. One map for the process; its content is valid
    // until the next call.
    QMap<QString, GraphicItemDynamicAttribute>& getGraphicsDynamicInfo() override;

    // The values that the settings dialog of an element offers, by key, the one in force first. Null for another type
    // than DYNAMIC_DIALOG_DCU and for an element without; else valid until the next call.
    QMap<QString, QVector<QString>>* getDynamicValueList(Enum_Dynamic_Dialog_Type type, int id) override;

    // Writes values, by key, into the engine, raises the dirty flag for each, and refreshes everything, also when there
    // are none. Always true.
    bool setDynamicValue(const QMap<QString, QString>& valueMap, int id, Enum_Dynamic_Dialog_Type type) override;

    // Opens the settings dialog of the element at a position of the view, if it has one, and returns when it is closed.
    // Other types than DYNAMIC_DIALOG_DCU open nothing.
    void showDynamicDlg(const QPoint& pos, Enum_Dynamic_Dialog_Type type) override;
    void showDCUSettingDlg(const QPoint& pos);

    // The filter menu, built at the first call and the same ever after; null at a first call that could not open the
    // filter file. Owned by the controller, unless the view was its parent and took it along.
    QMenu* getViewFilterMenu() override;

    // Whether "(Select All)" is ticked or partly so.
    [[nodiscard]] bool isFilterEnable() const override;

    // The elements of the ticked kinds, by element id. A change repaints what it touches. Valid as long as the
    // controller.
    [[nodiscard]] ElementIdSet& filteredIds() override;

    [[nodiscard]] QObject* asObject() override { return this; }

    // The floating text beside a drag. Valid as long as the controller.
    [[nodiscard]] HoverText& hoverText() override;

public Q_SLOTS:
    // Selects the elements of the tree's selected row: its own, or else those of its direct children.
    void treeItemClicked();

    // Opens the whole branch of the selected row.
    void expandIP();

    // Closes the selected row; what is below keeps its state.
    void collapseIP();

    // Commands on the selected row. Everything is refreshed when they worked; resetIP() forgets the selected elements
    // even when not.
    void resetIP();
    void removeIP();
    void configIP();

    // The mouse mode changed: sets the view's cursor.
    void onSelect(bool);
    void onPan(bool);
    void onZoom(bool);

    // The drag has rested: asks the engine for the probable sites, unless it refuses the present one.
    void onHighlightProbPlaceItems();

    // A box of the filter menu, the sender, changed its state.
    void checkboxItemCliked();

Q_SIGNALS:
    // To be answered synchronously: see ZelChipGUI::sigRunTclCmd().
    void sigRunTclCmd(const QString& cmd, int& ret, QString& result);

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
