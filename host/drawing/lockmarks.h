// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QTreeWidget;

namespace mirn::zelengine {
class Design;
}

namespace mirn::zelchipview {
class LockLayer;
class ZelGraphicsView;
} // namespace mirn::zelchipview

namespace mirn::zelchip {

// The padlocks of locked resources: on their sites in the drawing, and in their rows of the tree beside the site. It is
// a child of the view.
class LockMarks final : public QObject
{
    Q_OBJECT
public:
    // The design must live as long as the view and the tree.
    LockMarks(zelchipview::ZelGraphicsView* view, QTreeWidget* tree, const zelengine::Design& design);

    // Brings the drawing up to date with the design; the tree asks by itself.
    void refresh();

private:
    const zelengine::Design& m_design;
    zelchipview::LockLayer* const m_layer; // child of the view
};

} // namespace mirn::zelchip
