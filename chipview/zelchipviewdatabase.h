// SPDX-License-Identifier: MIT
#pragma once

#include "dialogs/dynamicvalues.h"
#include "graphics/elementidset.h"
#include "graphics/zelconstants.h"
#include "platform/contract/zelexport.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include <memory>

class QAction;
class QGraphicsSceneDragDropEvent;
class QIcon;
class QMenu;
class QTreeWidgetItem;
class SVGParser;
class zelchipengine;
struct zeltreeviewcell;

namespace mirn::zelchipview {

class DropQuery;
class HoverText;
class PlacementHighlighter;
class ResourceTreeModel;
class ToolActions;
class TreeMenus;
class UsageRows;
class ViewFilter;
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
class ZELCHIPGUI_EXPORT ZELChipViewDatabase : public QObject
{
    Q_OBJECT
public:
    // Made on first use; the caller ends it with destoryInstance().
    static ZELChipViewDatabase* getInstance();
    static void destoryInstance();

    // Null where getInstance() would make a new one.
    [[nodiscard]] static ZELChipViewDatabase* existingInstance();

    // Set-up. The engine is not owned; setting it builds the filter menu and the filter action. The parent widget is
    // the host's, for dialogs.
    void setChipEngine(zelchipengine* engine);
    void setParent(QWidget* parent);
    ZelGraphicsScene* getScene(QObject* parent);
    ZelGraphicsView* getView(ZelGraphicsScene* scene);
    ZelTree* getTree(QWidget* parent);
    ZelResTable* getResTable(QWidget* parent);
    SVGParser* getSVGParser();

    // Tells the engine, then reloads tree, scene and table in this order as `kind` says; other kinds reach only the
    // engine. Always true.
    bool refresh(Enum_ChipView_Refresh_Type kind);
    [[nodiscard]] int getDirtyFlag() const { return m_dirtyFlag; }
    void clearDirtyFlag() { m_dirtyFlag = 0; }

    // Mouse modes and tool actions.
    [[nodiscard]] int getMouseMode() const;
    [[nodiscard]] QAction* getAction(int id) const; // null for an unknown id
    [[nodiscard]] QMap<int, QAction*>& actions();

    // Attributes of graphic elements by load number; null for an unknown one. A replaced attribute is the caller's.
    [[nodiscard]] ZELGraphicItemAttribute* getGraphicItemAttribute(int id) const;
    void setGraphicAttribute(int id, ZELGraphicItemAttribute* attribute);

    // Resource tree.
    QStringList& getTreeHead();
    QList<QTreeWidgetItem*>& getTreeItems();
    QTreeWidgetItem* parseTree(zeltreeviewcell* cell, QTreeWidgetItem* parent);
    [[nodiscard]] QIcon& getIconFromType(const QString& type);
    [[nodiscard]] int getResourceType(const QString& name) const;
    [[nodiscard]] QMenu* getTreePopupMenu(QTreeWidgetItem* item) const; // null: no menu
    void getAllChildren(QTreeWidgetItem* item, QVector<QTreeWidgetItem*>& out) const;

    // Usage table.
    QStringList& getResTableHead();
    [[nodiscard]] QList<QStringList> getResTableItems() const;

    // Selected elements, by element id.
    void addSelctedItem(int id, bool selectInTree);
    void removeSelectedItem(int id);
    [[nodiscard]] ElementIdSet& selectedIds() { return m_selectedIds; }

    // Placement. canDrop(rsc, id) is true when the engine allows it, canDrop(event, id) when the drop must be refused.
    // place() and drop() give the host's answer, non-zero for success.
    [[nodiscard]] bool canDrop(const QString& rsc, const QString& id) const;
    [[nodiscard]] bool canDrop(QGraphicsSceneDragDropEvent* event, int id) const;
    int place(const QString& rsc, const QString& id);
    int drop(int id);
    [[nodiscard]] int getCurrentDragDropItemId() const; // -1: nothing under the pointer

    // Highlighting of probable sites, by element id.
    bool highlightProbPlaceItems(QGraphicsSceneDragDropEvent* event, int id);
    bool highlightProbPlaceItems();
    void clearHighlightedProbPlaceItems();
    void stopHighlightTimer();
    [[nodiscard]] ElementIdSet& highlightedIds();

    // Commands on one resource; non-zero when something changed.
    int resetResource(const QString& name);
    int removeResource(const QString& name);
    int configResource(const QString& name);

    // Dynamic values; pointers are valid until the next call.
    QMap<QString, GraphicItemDynamicAttribute>& getGraphicsDynamicInfo();
    QMap<QString, QVector<QString>>* getDynamicValueList(Enum_Dynamic_Dialog_Type type, int id);
    bool setDynamicValue(const QMap<QString, QString>& valueMap, int id, Enum_Dynamic_Dialog_Type type);
    void showDynamicDlg(const QPoint& pos, Enum_Dynamic_Dialog_Type type); // view coordinates
    void showDCUSettingDlg(const QPoint& pos);

    // View filter. The menu is built once; null when the filter file could not be opened then.
    QMenu* getViewFilterMenu();
    [[nodiscard]] bool isFilterEnable() const;
    [[nodiscard]] ElementIdSet& filteredIds();

    // The floating text beside a drag.
    [[nodiscard]] HoverText& hoverText() { return *m_hoverText; }

public Q_SLOTS:
    void treeItemClicked();
    void expandIP();
    void collapseIP();
    void resetIP();
    void removeIP();
    void configIP();
    void onSelect(bool);
    void onPan(bool);
    void onZoom(bool);
    void onHighlightProbPlaceItems();
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
    [[nodiscard]] QTreeWidgetItem* selectedTreeItem() const;
    [[nodiscard]] QString selectedResource() const;
    void runOnSelected(int (ZELChipViewDatabase::*command)(const QString&));

    static ZELChipViewDatabase* m_object;

    zelchipengine* m_engine = nullptr;
    QPointer<QWidget> m_parentWidget;
    int m_dirtyFlag = 0;
    ElementIdSet m_selectedIds;
    bool m_isRowShown = false; // the selected ids are known to be those of the selected row
    QMap<int, ZELGraphicItemAttribute*> m_attributes;

    std::unique_ptr<SVGParser> m_parser;
    std::unique_ptr<ResourceTreeModel> m_treeModel;
    std::unique_ptr<UsageRows> m_usageRows;
    std::unique_ptr<DropQuery> m_dropQuery;
    std::unique_ptr<PlacementHighlighter> m_highlighter;
    std::unique_ptr<DynamicValues> m_dynamicValues;
    std::unique_ptr<ViewFilter> m_filter;
    std::unique_ptr<ToolActions> m_toolActions;
    std::unique_ptr<TreeMenus> m_treeMenus;
    std::unique_ptr<HoverText> m_hoverText;

    QPointer<ZelGraphicsScene> m_scene;
    QPointer<ZelGraphicsView> m_view;
    QPointer<ZelTree> m_tree;
    QPointer<ZelResTable> m_table;
};

} // namespace mirn::zelchipview
