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

class ZelGraphicsView;

// Watches drags from the tree to the drawing. It reports why the site under the pointer does not accept the resource,
// or why a row cannot be dragged, and clears the highlighted probable sites when the drag ends. It is a child of the
// view; engine and tree must live as long.
class ZELCHIPGUI_EXPORT DragReason final : public QObject
{
    Q_OBJECT
public:
    // The engine's own sentences are reported as they are; an engine that does not say why reports none.
    DragReason(ZelGraphicsView* view, QTreeWidget* tree, zelchipengine& engine);

    // Watches the viewports of view and tree.
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // Emitted with an empty text if there is nothing to say: the site accepts the resource, there is no site, or the
    // drag ended.
    void changed(const QString& reason, QPoint globalPosition);

    // Emitted when a drag has ended and placed nothing, or a row cannot be dragged, for this reason. After a drag it
    // follows the last changed().
    void refused(const QString& reason, QPoint globalPosition);

private:
    void watchDrawing(QEvent* event);
    void watchTree(QEvent* event);
    [[nodiscard]] std::string draggedResource() const;
    [[nodiscard]] QString reasonAt(QPoint position) const;
    [[nodiscard]] QString reasonToStay() const;
    [[nodiscard]] bool isSite(int id) const;
    void beginDrag();
    void tell(const QString& reason, QPoint position);
    void end(bool isOverDrawing);

    ZelGraphicsView* const m_view;
    const QObject* const m_viewport; // only compared: the view is half destroyed when its viewport goes
    QTreeWidget* const m_tree;
    zelchipengine& m_engine;
    std::vector<int> m_sites; // the ids of all sites, ascending, during a drag; none if the engine does not tell them
    QString m_reason;
    QPoint m_position; // of the pointer on the screen
    bool m_isDragging = false; // over the drawing
    bool m_isRowChecked = false; // whether the row was looked at since the button went down on it
};

} // namespace mirn::zelchipview
