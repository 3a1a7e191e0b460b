// SPDX-License-Identifier: MIT
#pragma once

#include "planning/siteplaces.h"

#include <QList>
#include <QObject>

#include <functional>
#include <vector>

class QKeyEvent;
class zelchipengine;

namespace mirn::zelchipview {

class ZelGraphicsScene;
class ZelGraphicsView;

class SiteFrame;

// A keyboard cursor that goes from site to site in the drawing and changes nothing else, neither the selection nor the
// mouse mode. The arrow keys move it unless a scroll bar needs them, and with Ctrl always; Enter and Space open what a
// double click would. It appears when Tab comes to the drawing and at the first of these keys: at a selected site, else
// where it was, else in the middle of the view. It is hidden while the focus is in another widget and after a click
// into the drawing. It is a child of the view.
class ZELCHIPGUI_EXPORT SiteCursor final : public QObject
{
    Q_OBJECT
public:
    // What the cursor asks of its host.
    struct Host
    {
        std::function<std::vector<int>()> sites; // the element ids of all sites; asked when the visible layers change
        std::function<QString(int id)> describe; // kind, state and occupant of a site, in one line
    };

    // The view becomes the owner.
    SiteCursor(ZelGraphicsView* view, ZelGraphicsScene* scene, Host host);

    // Asks the engine, which must live as long, for the sites and says their names, kinds and occupants. It finds none
    // if the engine does not derive from zelplanengine.
    SiteCursor(ZelGraphicsView* view, ZelGraphicsScene* scene, zelchipengine& engine);

    // Goes to a site, scrolls the drawing until it is visible, and shows the cursor whatever has the focus. If the
    // drawing does not show the site, the cursor is hidden.
    void goTo(int id);
    void hide();

    // The element id of the site with the cursor, or -1 if the cursor is hidden.
    [[nodiscard]] int site() const;

    // Watches the view and its viewport.
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // `middle` is in scene units.
    void moved(const QPointF& middle, const QString& description);
    // The cursor was to do something that it cannot; a sentence for users.
    void refused(const QString& sentence);

private:
    bool handleKey(const QKeyEvent& event);
    [[nodiscard]] bool isFree(const QKeyEvent& event) const;
    void begin();
    void move(Direction direction);
    void goTo(const SitePlace& place);
    void open();
    void placeFrame();
    [[nodiscard]] const std::vector<SitePlace>& places();
    [[nodiscard]] QPoint pointOn(const SitePlace& place) const;

    ZelGraphicsView* const m_view;
    ZelGraphicsScene* const m_scene;
    const Host m_host;
    SiteFrame* const m_frame; // child of the viewport
    std::vector<SitePlace> m_places; // of all sites on the layers below
    QList<int> m_layers;
    SitePlace m_current; // meaningful once the cursor has been anywhere
    bool m_hasCurrent = false;
};

} // namespace mirn::zelchipview
