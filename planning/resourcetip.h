// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>

class zelchipengine;

namespace mirn::zelchipview {

class ZelGraphicsView;

// Adds what the engine says of a resource to the tooltip of the element that it is on. Elements without a resource keep
// the tooltip that the view shows. It is a child of the view; the engine must live as long.
class ZELCHIPGUI_EXPORT ResourceTip final : public QObject
{
    Q_OBJECT
public:
    ResourceTip(ZelGraphicsView* view, zelchipengine& engine);

    // Returns the whole tooltip for a position of the viewport; empty if there is no resource.
    [[nodiscard]] QString textAt(QPoint position) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ZelGraphicsView* const m_view;
    const QObject* const m_viewport; // only compared: the view is half destroyed when its viewport goes
    zelchipengine& m_engine;
};

} // namespace mirn::zelchipview
