// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>
#include <QString>

class QAction;

namespace mirn::zelchipview {
class NameLayer;
}

namespace mirn::zelchip {

class DrawingArea;

// The aids for placing by hand that an open project has on its drawing: moves and swaps in the drawing, ghosts of what
// is dragged, names on the sites, and what is said meanwhile. It is a child of the drawing's view.
class MoveAids final : public QObject
{
    Q_OBJECT
public:
    // The action shows and hides the names; it is not owned.
    MoveAids(DrawingArea& area, QAction* names);

    // Call it when the design has changed.
    void refresh();

Q_SIGNALS:
    // Why a drop would do nothing, and which command it would send; see DragReason.
    void changed(const QString& reason, QPoint globalPosition);
    void commandChanged(const QString& command);
    // Why nothing was moved.
    void refused(const QString& reason, QPoint globalPosition);

private:
    zelchipview::NameLayer* m_names; // child of the view
};

} // namespace mirn::zelchip
