// SPDX-License-Identifier: MIT
#include "host/widgets/findbox.h"

#include "graphics/zelconstants.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include <utility>

namespace mirn::zelchip {

FindBox::FindBox(QTreeWidget* tree, QWidget* parent)
    : QLineEdit(parent)
    , m_tree(tree)
    , m_nothing(new QLabel(tree->viewport()))
{
    setObjectName(QStringLiteral("find"));
    setPlaceholderText(tr("Find (Ctrl+F)"));
    setClearButtonEnabled(true);
    setAccessibleName(tr("Find resource"));
    setToolTip(tr("Show only the resources with this name, kind or site; Enter selects and zooms to the next one"));
    m_nothing->setObjectName(QStringLiteral("nothingFound"));
    m_nothing->setTextFormat(Qt::PlainText);
    m_nothing->setWordWrap(true);
    m_nothing->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_nothing->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_nothing->hide();
    auto* layout = new QVBoxLayout(tree->viewport()); // owned by the viewport
    layout->addWidget(m_nothing);
    m_narrowAgain.setSingleShot(true);
    connect(&m_narrowAgain, &QTimer::timeout, this, &FindBox::narrow);
    connect(this, &QLineEdit::textChanged, this, &FindBox::narrow);
    connect(tree->model(), &QAbstractItemModel::rowsInserted, this, [this] {
        if (!sought().isEmpty())
            m_narrowAgain.start(0);
    });
}

void FindBox::setMatcher(Matcher matcher)
{
    m_matcher = std::move(matcher);
    narrow();
}

QString FindBox::sought() const
{
    return text().trimmed();
}

QString FindBox::nothingMatches() const
{
    return tr("No resource has “%1” in its name, kind or site.").arg(sought());
}

bool FindBox::isMatch(const QTreeWidgetItem* item) const
{
    // The first component is the design's own name, which all paths have in common.
    const QString path = item->data(0, zelchipview::RESOURCENAME).toString();
    const bool isInPath = path.indexOf(sought(), path.indexOf(QLatin1Char('/')), Qt::CaseInsensitive) >= 0;
    return isInPath || (m_matcher && m_matcher(path, sought()));
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
    bool isFound = false;
    m_tree->setUpdatesEnabled(false);
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        isFound = narrowBranch(m_tree->topLevelItem(i)) || isFound;
    m_tree->setUpdatesEnabled(true);
    showWhetherFound(isFound || sought().isEmpty());
}

// Who listens instead of looking hears the sentence, because the label is announced as an alert.
void FindBox::showWhetherFound(bool isFound)
{
    m_nothing->setText(isFound ? QString() : nothingMatches());
    m_nothing->setVisible(!isFound);
    setAccessibleDescription(m_nothing->text());
    if (isFound)
        return;
    QAccessibleEvent alert(m_nothing, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
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
    if (sought().isEmpty())
        return;
    const QList<QTreeWidgetItem*> rows = matches();
    if (rows.isEmpty()) {
        Q_EMIT notFound(nothingMatches());
        return;
    }
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
