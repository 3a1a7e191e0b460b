// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

class QString;
class QWidget;

namespace mirn::zelchipview {
class OverviewMap;
class ZelChipGUI;
class ZelGraphicsScene;
class ZelGraphicsView;
class ZelResTable;
class ZelTree;
} // namespace mirn::zelchipview

namespace mirn::zelchip {

class DrawingFit;
class LockMarks;
class FindBox;
class ProjectSession;
class RowKeeper;
class ViewHistory;

// An open project on the screen: the session and the chip view that shows it, created and deleted in the right order.
// The main window owns it. Only one exists at a time, because a process has only one controller of the chip view.
class DrawingArea final
{
public:
    // `parent` becomes the parent of the chip view, which takes part in its layout like any widget.
    DrawingArea(std::unique_ptr<ProjectSession> session, QWidget* parent);

    // Deletes the chip view, then its controller, and closes the session.
    ~DrawingArea();

    // Deletes the chip view and returns the session, deactivated. After that the area can only be deleted.
    [[nodiscard]] std::unique_ptr<ProjectSession> takeSession();

    DrawingArea(const DrawingArea&) = delete;
    DrawingArea& operator=(const DrawingArea&) = delete;

    [[nodiscard]] const ProjectSession& session() const { return *m_session; }
    [[nodiscard]] zelchipview::ZelChipGUI* chipView() const { return m_chipView.get(); }
    [[nodiscard]] zelchipview::ZelGraphicsScene* scene() const { return m_scene; }
    [[nodiscard]] zelchipview::ZelGraphicsView* graphicsView() const { return m_graphicsView; }
    [[nodiscard]] zelchipview::ZelTree* tree() const { return m_tree; }
    [[nodiscard]] zelchipview::ZelResTable* table() const { return m_table; }

    // The find box in the title bar of the tree's dock, which owns it.
    [[nodiscard]] FindBox* findBox() const { return m_findBox; }

    [[nodiscard]] ViewHistory* history() const { return m_history; }
    [[nodiscard]] zelchipview::OverviewMap* overview() const { return m_overview; }

    // Brings tree, drawing and table up to date with the design. The selected row stays selected.
    void refresh();

    // Shows the whole drawing.
    void fit();

    // Does at once what is due since the view was resized or zoomed.
    void settle();

    // Shows a sentence instead of a drawing.
    void showSentence(const QString& text);

    // Zooms to the selected elements; returns false if none is selected.
    bool zoomToSelection();

    // Selects these elements and no others, and zooms to them; leaves out those that the drawing has not.
    void selectAndZoom(const std::vector<int>& ids);

    // Selects the row of a resource in the tree, if there is one.
    void selectRow(const QString& resource);

    // Sets the initial sizes of the docks. Call it once the chip view is visible.
    void arrangeDocks();

private:
    void endChipView();
    void arrangeTree();
    void arrangeTable();
    void addFindBox();

    std::unique_ptr<ProjectSession> m_session;
    std::unique_ptr<zelchipview::ZelChipGUI> m_chipView;
    // The chip view's parts.
    zelchipview::ZelGraphicsScene* m_scene;
    zelchipview::ZelGraphicsView* m_graphicsView;
    zelchipview::ZelTree* m_tree;
    zelchipview::ZelResTable* m_table;
    FindBox* m_findBox = nullptr;
    DrawingFit* m_fit; // child of the graphics view, like the history
    ViewHistory* m_history;
    zelchipview::OverviewMap* m_overview; // child of the viewport
    RowKeeper* m_rows; // child of the tree
    LockMarks* m_locks; // child of the graphics view
};

} // namespace mirn::zelchip
