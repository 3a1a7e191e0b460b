// SPDX-License-Identifier: MIT
#include "host/widgets/findbox.h"

#include "graphics/zelconstants.h"

#include <QAction>
#include <QKeyEvent>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace mirn::zelchip {

FindBox::FindBox(QTreeWidget* tree, QWidget* parent)
    : QLineEdit(parent)
    , m_tree(tree)
{
    setObjectName(QStringLiteral("find"));
    setPlaceholderText(tr("Find (Ctrl+F)"));
    setClearButtonEnabled(true);
    setToolTip(tr("Show only the resources whose name contains this; Enter selects and zooms to the next one"));
    m_narrowAgain.setSingleShot(true);
    connect(&m_narrowAgain, &QTimer::timeout, this, &FindBox::narrow);
    connect(this, &QLineEdit::textChanged, this, &FindBox::narrow);
    connect(tree->model(), &QAbstractItemModel::rowsInserted, this, [this] {
        if (!sought().isEmpty())
            m_narrowAgain.start(0);
    });
}

QString FindBox::sought() const
{
    return text().trimmed();
}

bool FindBox::isMatch(const QTreeWidgetItem* item) const
{
    // The first component is the design's own name, which all paths have in common.
    const QString path = item->data(0, zelchipview::RESOURCENAME).toString();
    return path.indexOf(sought(), path.indexOf(QLatin1Char('/')), Qt::CaseInsensitive) >= 0;
}

QList<QTreeWidgetItem*> FindBox::matches() const
{
    QList<QTreeWidgetItem*> rows;
    for (QTreeWidgetItemIterator row(m_tree); *row; ++row) {
        if (isMatch(*row))
            rows.append(*row);
    }
    return rows;
}

void FindBox::narrow()
{
    m_tree->setUpdatesEnabled(false);
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        narrowBranch(m_tree->topLevelItem(i));
    m_tree->setUpdatesEnabled(true);
}

// Returns whether any row of the branch stays visible.
bool FindBox::narrowBranch(QTreeWidgetItem* item)
{
    bool hasMatchBelow = false;
    for (int i = 0; i < item->childCount(); ++i)
        hasMatchBelow = narrowBranch(item->child(i)) || hasMatchBelow;
    const bool stays = hasMatchBelow || isMatch(item);
    if (item->isHidden() == stays)
        item->setHidden(!stays);
    if (hasMatchBelow && !sought().isEmpty() && !item->isExpanded())
        item->setExpanded(true);
    return stays;
}

void FindBox::choose()
{
    const QList<QTreeWidgetItem*> rows = sought().isEmpty() ? QList<QTreeWidgetItem*>() : matches();
    if (rows.isEmpty())
        return;
    const auto current = rows.indexOf(m_tree->currentItem());
    m_tree->setCurrentItem(rows[(current + 1) % rows.size()]);
    m_tree->scrollToItem(m_tree->currentItem());
    Q_EMIT chosen();
}

void FindBox::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose();
        break;
    case Qt::Key_Escape:
        clear();
        break;
    case Qt::Key_Down:
        m_tree->setFocus();
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

} // namespace mirn::zelchip
