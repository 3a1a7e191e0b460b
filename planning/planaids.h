// SPDX-License-Identifier: MIT
#pragma once

#include "planning/planmark.h"
#include "platform/contract/zelexport.h"

#include <QObject>

#include <memory>

class QPainter;
class QPoint;
class QRectF;
class QTreeWidget;
class zelchipengine;

namespace mirn::zelchipview {

class ZelGraphicsView;

// Shows on the drawing what decides the placement of the selected resource: lines to all that it needs and feeds, and
// the sites that would take it. It listens to the selection of the view and of the tree, and answers a pointer that
// rests on a line, or on a site that would not take the resource, with a tool tip. The host says when the design may
// have changed. With an engine that is no zelplanengine it shows nothing.
class ZELCHIPGUI_EXPORT PlanAids final : public QObject
{
    Q_OBJECT
public:
    enum class Connections { Off, OfSelection, All };

    using Mark = PlanMark;
    using Marks = PlanMarks;

    // A child of the view. The engine is not owned and must live as long as the view; `tree`, whose selected row counts
    // as well, may be null.
    PlanAids(ZelGraphicsView* view, QTreeWidget* tree, zelchipengine& engine);
    ~PlanAids() override;

    // Those of the selection are shown at first.
    [[nodiscard]] Connections connections() const;
    void setConnections(Connections shown);

    // Whether the sites for a selected unplaced resource are tinted; true at first. They are not while something is
    // dragged over the drawing.
    [[nodiscard]] bool areCandidatesShown() const;
    void setCandidatesShown(bool areShown);

    // What is there to be seen, at whatever scale, for a legend.
    [[nodiscard]] Marks marks() const;

    // Paints a mark as it looks on the drawing, for a legend.
    static void paintSample(QPainter& painter, const QRectF& area, Mark mark);

    // Call it whenever the design may have changed, after the view's own refresh.
    void refresh();

    // A change of the selection shows when the event loop is reached; this shows it at once.
    void settle();

    // Returns what a tool tip at a position of the viewport says; empty if the drawing's own is to be shown.
    [[nodiscard]] QString toolTipAt(QPoint position);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void marksChanged();

private:
    void update();
    void showConnections();
    void showCandidates();

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
