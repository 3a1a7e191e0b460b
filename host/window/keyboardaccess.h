// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointF>
#include <QString>

class QAction;

namespace mirn::zelengine {
class ReferenceEngine;
}
namespace mirn::zelchipview {
class PlaceOn;
}

namespace mirn::zelchip {

class AutoPlace;
class CompareDock;
class ConsoleDock;
class DrawingArea;
class ProblemsDock;
class RowMenu;

// All that the program does for people who use it without a mouse or without seeing it: the keyboard cursor in the
// drawing, "Place on...", the menu of a row, the order of Tab, accessible names, and what Find knows of a resource. It
// wires the parts of one open project together and is a child of its graphics view.
class KeyboardAccess final : public QObject
{
    Q_OBJECT
public:
    // `placeOn` opens the list for the selected row of the tree. The area, the action, the other way of placing and the
    // docks must live as long.
    KeyboardAccess(DrawingArea& area, QAction* placeOn, AutoPlace* autoPlace, ConsoleDock* console,
        ProblemsDock* problems, CompareDock* comparison);

    // The menu of the tree rows, to which others may add.
    [[nodiscard]] RowMenu* rowMenu() const { return m_rowMenu; }

Q_SIGNALS:
    // The keyboard cursor has come to a site; `middle` is in scene units.
    void pointed(const QPointF& middle, const QString& description);
    // Something was asked for that is not possible; a sentence for users. Empty if an earlier one does not hold any
    // more.
    void told(const QString& sentence);

private:
    void makeCursorAndList(QAction* placeOn);
    void makeRowMenu();
    void nameWidgets();
    void connectFindBox();
    void orderTabs(ConsoleDock* console, ProblemsDock* problems, CompareDock* comparison);
    void sayWhetherPlaced();
    [[nodiscard]] bool matches(const QString& resource, const QString& sought) const;

    DrawingArea& m_area;
    const zelengine::ReferenceEngine& m_engine;
    zelchipview::PlaceOn* m_placeOn = nullptr; // child of the view
    AutoPlace* const m_autoPlace;
    RowMenu* m_rowMenu = nullptr; // child of the tree
};

} // namespace mirn::zelchip
