// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>
#include <QString>

class QTreeWidget;

namespace mirn::zelengine {
class ReferenceEngine;
}
namespace mirn::zelchipview {
class DragWatch;
class ZelGraphicsView;
struct DropPlan;
} // namespace mirn::zelchipview

namespace mirn::zelchip {

// Says during a drag over the drawing what a drop would do: the command that it would send, or why the site under the
// pointer does not accept the resource. It also says why a row of the tree cannot be dragged, and clears the
// highlighted probable sites when the drag ends. It is a child of the view; engine and tree must live as long.
class DragReason final : public QObject
{
    Q_OBJECT
public:
    // The watch is the view's.
    DragReason(zelchipview::ZelGraphicsView* view, QTreeWidget* tree, const zelchipview::DragWatch* watch,
        const zelengine::ReferenceEngine& engine);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // Emitted with an empty reason if there is no objection: the site accepts the resource, there is no site, or the
    // drag ended. The command is empty unless a drop would send one.
    void changed(const QString& reason, const QString& command, QPoint globalPosition);

    // Emitted when a drag has ended and placed nothing, or a row cannot be dragged, for this reason. After a drag it
    // follows the last changed().
    void refused(const QString& reason, QPoint globalPosition);

private:
    void follow(const zelchipview::DropPlan& plan, QPoint position);
    void end(bool isOverDrawing);
    void watchTree(QEvent* event);
    [[nodiscard]] int draggedResource() const;
    [[nodiscard]] QString reasonFor(const zelchipview::DropPlan& plan, QPoint position) const;
    [[nodiscard]] QString reasonToStay() const;
    void tell(const QString& reason, const QString& command, QPoint position);

    zelchipview::ZelGraphicsView* const m_view;
    QTreeWidget* const m_tree;
    const zelengine::ReferenceEngine& m_engine;
    QString m_reason;
    QString m_command;
    QPoint m_position; // of the pointer on the screen
    bool m_isRowChecked = false; // whether the row was looked at since the button went down on it
};

} // namespace mirn::zelchip
