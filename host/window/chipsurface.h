// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class QString;
class QWidget;

namespace mirn::zelchipview {
class ZelChipGUI;
class ZelGraphicsView;
} // namespace mirn::zelchipview

namespace mirn::zelchip {

class DrawingFit;
class FindBox;
class ProjectSession;

// An open project on the screen: the session, the chip view that shows it, and the order in which they come and go.
// There is one at a time, because the chip view has one controller in a process.
class ChipSurface final
{
public:
    // `parent` becomes the parent of the chip view, which takes part in its layout as any widget.
    ChipSurface(std::unique_ptr<ProjectSession> session, QWidget* parent);

    // Deletes the chip view, then its controller, then closes the session.
    ~ChipSurface();

    // Ends the chip view, and gives back the session, not active any more. All that is left is to delete the surface.
    [[nodiscard]] std::unique_ptr<ProjectSession> takeSession();

    ChipSurface(const ChipSurface&) = delete;
    ChipSurface& operator=(const ChipSurface&) = delete;

    [[nodiscard]] const ProjectSession& session() const { return *m_session; }
    [[nodiscard]] zelchipview::ZelChipGUI* chipView() const { return m_chipView.get(); }
    [[nodiscard]] zelchipview::ZelGraphicsView* graphicsView() const { return m_graphicsView; }

    // Above the tree, in the place of its dock's title. The dock's.
    [[nodiscard]] FindBox* findBox() const { return m_findBox; }

    // Shows the whole drawing.
    void fit();

    // In place of a drawing.
    void showSentence(const QString& text);

    // Shows the selected elements; false when none is selected.
    bool zoomToSelection();

    // Gives the docks their first sizes. To be called when the chip view is shown.
    void arrangeDocks();

private:
    void endChipView();
    void arrangeTree();
    void arrangeTable();
    void addFindBox();

    std::unique_ptr<ProjectSession> m_session;
    std::unique_ptr<zelchipview::ZelChipGUI> m_chipView;
    zelchipview::ZelGraphicsView* m_graphicsView; // the chip view's
    FindBox* m_findBox = nullptr;
    DrawingFit* m_fit; // child of the graphics view
};

} // namespace mirn::zelchip
