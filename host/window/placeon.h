// SPDX-License-Identifier: MIT
#pragma once

#include "host/widgets/sitelistmodel.h"

#include <QObject>
#include <QPointF>
#include <QString>

#include <vector>

class QTreeWidget;

namespace mirn::zelengine {
class ReferenceEngine;
}
namespace mirn::zelchipview {
class ZelGraphicsScene;
class ZelGraphicsView;
} // namespace mirn::zelchipview

namespace mirn::zelchip {

class SiteCursor;

// Places a resource without a mouse: opens the list of the sites and does what the list asks for. The site that one has
// come to is framed, and lit like a probable site if it is legal. The command is the one that a drop would send.
//
// A site is near if it is near to one of the placed resources with the same parent. If there are none, it is near if it
// is near to the middle of the part of the drawing that is visible when the list opens.
class PlaceOn final : public QObject
{
    Q_OBJECT
public:
    // It is a child of the view; all others must live as long.
    PlaceOn(zelchipview::ZelGraphicsView* view, zelchipview::ZelGraphicsScene* scene, QTreeWidget* tree,
        const zelengine::ReferenceEngine& engine, SiteCursor* cursor);

    // Opens the list over the tree, for a resource by name or for the selected row of the tree.
    void open(const QString& resource);
    void openForRow();

    // Returns one sentence that says why no list opens for a resource; empty if one does.
    [[nodiscard]] QString refusal(const QString& resource) const;

Q_SIGNALS:
    // No list was opened; a sentence for users.
    void refused(const QString& sentence);

private:
    [[nodiscard]] std::vector<QPointF> placedNeighbours(int resource) const;
    [[nodiscard]] std::vector<SiteChoice> choices(int resource, const std::vector<QPointF>& origins) const;
    [[nodiscard]] QString reason(const QString& resource, int site) const;
    [[nodiscard]] QString place(const QString& resource, int site) const;
    void show(const SiteChoice* site) const;

    zelchipview::ZelGraphicsView* const m_view;
    zelchipview::ZelGraphicsScene* const m_scene;
    QTreeWidget* const m_tree;
    const zelengine::ReferenceEngine& m_engine;
    SiteCursor* const m_cursor;
};

} // namespace mirn::zelchip
