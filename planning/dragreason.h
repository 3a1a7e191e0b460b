// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>
#include <QPoint>
#include <QString>

#include <string>
#include <vector>

class QTreeWidget;
class zelchipengine;

namespace mirn::zelchipview {

class DragWatch;
class ZelGraphicsView;
struct DropPlan;

// Says during a drag over the drawing why the site under the pointer does not accept the resource, or which command a
// drop would send; also why a row of the tree cannot be dragged. It clears the highlighted probable sites when the drag
// ends. It is a child of the view; engine and tree must live as long.
class ZELCHIPGUI_EXPORT DragReason final : public QObject
{
    Q_OBJECT
public:
    // The engine's own sentences are reported as they are; an engine that does not say why reports none.
    // The watch is of the same view.
    DragReason(ZelGraphicsView* view, QTreeWidget* tree, const DragWatch* watch, zelchipengine& engine);

    // Watches the viewport of the tree.
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // Emitted with an empty text if there is nothing to say: the site accepts the resource, there is no site, or the
    // drag ended.
    void changed(const QString& reason, QPoint globalPosition);

    // Emitted when a drag has ended and placed nothing, or a row cannot be dragged, for this reason. After a drag it
    // follows the last changed().
    void refused(const QString& reason, QPoint globalPosition);

    // Emitted when the command that a drop would send has changed, after changed(); empty if it would send none.
    void commandChanged(const QString& command);

private:
    void follow(const DropPlan& plan, QPoint position);
    void watchTree(QEvent* event);
    [[nodiscard]] std::string draggedResource() const;
    [[nodiscard]] QString reasonFor(const DropPlan& plan, QPoint position) const;
    [[nodiscard]] QString reasonToStay() const;
    [[nodiscard]] bool isSite(int id) const;
    void beginDrag();
    void tell(const QString& reason, const QString& command, QPoint position);
    void end(bool isOverDrawing);

    ZelGraphicsView* const m_view;
    QTreeWidget* const m_tree;
    zelchipengine& m_engine;
    std::vector<int> m_sites; // the ids of all sites, ascending, during a drag; none if the engine does not tell them
    QString m_reason;
    QString m_command;
    QPoint m_position; // of the pointer on the screen
    bool m_isDragging = false; // over the drawing
    bool m_isRowChecked = false; // whether the row was looked at since the button went down on it
};

} // namespace mirn::zelchipview
