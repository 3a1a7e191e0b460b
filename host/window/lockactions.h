// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QAction;
class QMenu;

namespace mirn::zelengine {
class ReferenceEngine;
}

namespace mirn::zelchip {

class DrawingArea;
class RowMenu;

// Locks and unlocks the resource of a row of the tree: by the actions of the Edit menu, which work on the selected row,
// and by the row's own menu. It is a child of the drawing area's view.
class LockActions final : public QObject
{
    Q_OBJECT
public:
    // The area, the actions and the menu must live as long.
    LockActions(DrawingArea& area, QAction* lock, QAction* unlock, RowMenu* rowMenu);

Q_SIGNALS:
    // A command that the host is to run; its error is a sentence for users.
    void commandRequested(const QString& command);
    // Something was asked for that is not possible; a sentence for users.
    void refused(const QString& sentence);

private:
    void addTo(QMenu* menu, const QString& resource);
    void onSelected(QString (*command)(const QString& resource));

    DrawingArea& m_area;
    const zelengine::ReferenceEngine& m_engine;
};

} // namespace mirn::zelchip
