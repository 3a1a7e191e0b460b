// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>
#include <QPointF>
#include <QString>

#include <string>
#include <vector>

class QTreeWidget;
class QTreeWidgetItem;
class zelchipengine;

namespace mirn::zelchipview {

class SiteCursor;
class ZelGraphicsScene;
class ZelGraphicsView;
struct SiteChoice;

// Places a resource without a mouse: opens the list of the sites and does what the list asks for. The site that one has
// come to is framed, and lit like a probable site if it is legal. The command is the one that a drop would send.
//
// A site is near if it is near to one of the placed resources with the same parent. If there are none, it is near if it
// is near to the middle of the part of the drawing that is visible when the list opens.
// It asks the engine for its sites and what they take (zelplanengine): without answers the list is empty.
class ZELCHIPGUI_EXPORT PlaceOn final : public QObject
{
    Q_OBJECT
public:
    // It is a child of the view; all others must live as long. Without a cursor of the host it makes one of its own.
    PlaceOn(ZelGraphicsView* view, ZelGraphicsScene* scene, QTreeWidget* tree, zelchipengine& engine,
        SiteCursor* cursor = nullptr);

    // Opens the list over the tree, for a resource by name or for the selected row of the tree.
    void open(const QString& resource);
    void openForRow();

    // Returns one sentence that says why no list opens for a resource; empty if one does.
    [[nodiscard]] QString refusal(const QString& resource) const;

Q_SIGNALS:
    // No list was opened; a sentence for users.
    void refused(const QString& sentence);

private:
    [[nodiscard]] QTreeWidgetItem* rowOf(const QString& resource) const;
    [[nodiscard]] std::vector<QPointF> placedNeighbours(const QString& resource) const;
    [[nodiscard]] std::vector<SiteChoice> choices(
        const std::string& resource, const std::vector<QPointF>& origins) const;
    [[nodiscard]] QString reason(const QString& resource, int site) const;
    [[nodiscard]] QString place(const QString& resource, int site) const;
    void show(const SiteChoice* site) const;

    ZelGraphicsView* const m_view;
    ZelGraphicsScene* const m_scene;
    QTreeWidget* const m_tree;
    zelchipengine& m_engine;
    SiteCursor* const m_cursor;
};

} // namespace mirn::zelchipview
