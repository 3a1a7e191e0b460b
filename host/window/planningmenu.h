// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

class QAction;
class QActionGroup;
class QMainWindow;

namespace mirn::zelchipview {
class PlanAids;
}

namespace mirn::zelchip {

class DrawingArea;
class Legend;

// The planning aids on the drawing and the actions that show and hide them. The actions outlive the projects; the aids
// come with each drawing. It is a child of the window.
class PlanningMenu final : public QObject
{
    Q_OBJECT
public:
    explicit PlanningMenu(QMainWindow* window);

    // What belongs into the View menu.
    [[nodiscard]] QList<QAction*> menuActions() const { return {m_connectionsMenu, m_candidates}; }
    // The choices to be remembered, by their object names; those that exclude each other have a group.
    [[nodiscard]] QList<QAction*> choices() const;

    // Puts the aids on a new drawing.
    void begin(const DrawingArea& area, Legend* legend);
    // The design may have changed.
    void refresh();
    // Shows at once what would otherwise be shown when the program is next idle.
    void settle();

    // The words for what is shown: "off", "selected" and "all".
    [[nodiscard]] static QStringList connectionWords();
    [[nodiscard]] QString connections() const;
    void setConnections(const QString& word);
    [[nodiscard]] QAction* candidates() const { return m_candidates; }

private:
    void apply();

    QActionGroup* const m_connections;
    QAction* m_connectionsMenu;
    QAction* m_candidates;
    QPointer<zelchipview::PlanAids> m_aids; // child of the view
};

} // namespace mirn::zelchip
