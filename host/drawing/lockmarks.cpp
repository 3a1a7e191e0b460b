// SPDX-License-Identifier: MIT
#include "host/drawing/lockmarks.h"

#include "engine/model/design.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsview.h"
#include "planning/locklayer.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include <algorithm>
#include <vector>

namespace mirn::zelchip {

namespace {

constexpr int SiteColumn = 1; // of the tree
constexpr int PadlockPixels = 64; // of the icon, which is scaled to the row

QIcon padlockIcon(const QColor& color)
{
    QPixmap pixmap(PadlockPixels, PadlockPixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    zelchipview::LockLayer::paintPadlock(painter, QRectF(0, 0, PadlockPixels, PadlockPixels), color);
    painter.end();
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected); // no style tints it
    return icon;
}

// Shows a padlock before the site in the cells of locked resources. It asks the design while it paints, so it needs no
// news of changes.
class LockedSiteDelegate final : public QStyledItemDelegate
{
public:
    LockedSiteDelegate(QTreeWidget* tree, const zelengine::Design& design)
        : QStyledItemDelegate(tree)
        , m_design(design)
    { }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const QString name = index.sibling(index.row(), 0).data(zelchipview::RESOURCENAME).toString();
        const int resource = m_design.find(name);
        if (resource < 0 || !m_design.resource(resource).locked)
            return;
        const bool isSelected = option->state.testFlag(QStyle::State_Selected);
        const QPalette::ColorRole role = isSelected ? QPalette::HighlightedText : QPalette::Text;
        const int size = option->fontMetrics.ascent();
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon = padlockIcon(option->palette.color(role));
        option->decorationSize = QSize(size, size);
    }

private:
    const zelengine::Design& m_design;
};

} // namespace

LockMarks::LockMarks(zelchipview::ZelGraphicsView* view, QTreeWidget* tree, const zelengine::Design& design)
    : QObject(view)
    , m_design(design)
    , m_layer(new zelchipview::LockLayer(view))
{
    tree->setItemDelegateForColumn(SiteColumn, new LockedSiteDelegate(tree, design)); // child of the tree
    refresh();
}

void LockMarks::refresh()
{
    std::vector<int> sites;
    const QHash<int, int>& occupants = m_design.occupants();
    for (auto it = occupants.cbegin(); it != occupants.cend(); ++it) {
        if (m_design.resource(it.value()).locked)
            sites.push_back(it.key());
    }
    std::sort(sites.begin(), sites.end());
    m_layer->setElements(sites);
}

} // namespace mirn::zelchip
