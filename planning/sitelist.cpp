// SPDX-License-Identifier: MIT
#include "planning/sitelist.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QVBoxLayout>

#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr int SentenceLines = 3; // room for a long reason, so that the list does not jump

bool isTyping(const QKeyEvent& event)
{
    const bool isPlain = !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    const bool isText = !event.text().isEmpty() && event.text().at(0).isPrint();
    return isPlain && (isText || event.key() == Qt::Key_Backspace);
}

bool isMoving(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

} // namespace

SiteList::SiteList(
    const QString& resource, const QString& order, std::vector<SiteChoice> sites, Host host, QWidget* parent)
    : QDialog(parent)
    , m_model(new SiteListModel(std::move(sites), host.reason, this))
    , m_rows(new QSortFilterProxyModel(this))
    , m_text(new QLineEdit(this))
    , m_list(new QTreeView(this))
    , m_sentence(new QLabel(this))
    , m_placeButton(new QPushButton(tr("&Place"), this))
    , m_host(std::move(host))
{
    setObjectName(QStringLiteral("siteList"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Place %1 on").arg(resource));
    m_rows->setSourceModel(m_model);
    m_rows->setFilterRole(SiteListModel::SoughtRole);
    m_rows->setFilterKeyColumn(SiteListModel::NameColumn);
    m_rows->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_list->setModel(m_rows);
    arrange(order);
    m_text->installEventFilter(this);
    m_list->installEventFilter(this);
    connect(m_text, &QLineEdit::textChanged, this, &SiteList::narrow);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &SiteList::showCurrent);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &SiteList::followSelection);
    connect(m_list, &QTreeView::doubleClicked, this, &SiteList::placeCurrent);
    connect(m_placeButton, &QPushButton::clicked, this, &SiteList::placeCurrent);
    m_list->setFocus();
    narrow({});
}

// The children outlive this part of the dialog and report that their rows go.
SiteList::~SiteList()
{
    m_list->selectionModel()->disconnect(this);
}

void SiteList::arrange(const QString& order)
{
    m_text->setPlaceholderText(tr("Type to narrow the list"));
    m_text->setAccessibleName(tr("Name or kind of a site"));
    m_text->setClearButtonEnabled(true);
    m_list->setAccessibleName(tr("Sites"));
    m_list->setAccessibleDescription(summary() + QLatin1Char(' ') + order);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->header()->setSectionResizeMode(SiteListModel::NameColumn, QHeaderView::ResizeToContents);
    m_sentence->setObjectName(QStringLiteral("sentence"));
    m_sentence->setTextFormat(Qt::PlainText);
    m_sentence->setWordWrap(true);
    m_sentence->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_sentence->setMinimumHeight(SentenceLines * m_sentence->fontMetrics().lineSpacing());
    auto* orderLabel = new QLabel(summary() + QLatin1Char(' ') + order, this);
    orderLabel->setTextFormat(Qt::PlainText);
    orderLabel->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(m_placeButton, QDialogButtonBox::ActionRole); // a refusal must not close the list
    connect(buttons->addButton(QDialogButtonBox::Cancel), &QPushButton::clicked, this, &QDialog::reject);
    m_placeButton->setDefault(true);

    auto* layout = new QVBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(orderLabel), static_cast<QWidget*>(m_text)})
        layout->addWidget(part);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_sentence);
    layout->addWidget(buttons);
}

bool SiteList::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        placeCurrent();
        return true;
    }
    // The focus stays where it is: in the list, a screen reader follows the rows.
    if (watched == m_list && isTyping(*key))
        return QCoreApplication::sendEvent(m_text, event);
    if (watched == m_text && isMoving(key->key())) {
        m_list->setFocus();
        return QCoreApplication::sendEvent(m_list, event);
    }
    return QDialog::eventFilter(watched, event);
}

void SiteList::narrow(const QString& text)
{
    m_rows->setFilterFixedString(text.trimmed());
    m_list->setCurrentIndex(m_rows->index(0, SiteListModel::NameColumn));
    m_list->scrollToTop();
    showCurrent();
}

const SiteChoice* SiteList::current() const
{
    const QModelIndex index = m_rows->mapToSource(m_list->currentIndex());
    return index.isValid() ? &m_model->site(index.row()) : nullptr;
}

// A screen reader selects a row without making it the current one.
void SiteList::followSelection()
{
    const QModelIndexList selected = m_list->selectionModel()->selectedRows();
    if (!selected.isEmpty() && selected.first().row() != m_list->currentIndex().row())
        m_list->setCurrentIndex(selected.first());
}

void SiteList::showCurrent()
{
    const SiteChoice* site = current();
    m_placeButton->setEnabled(site && site->isLegal());
    m_host.show(site);
    if (site)
        m_sentence->setText(site->isLegal() ? tr("Enter places it on %1.").arg(site->name) : m_host.reason(site->id));
    else
        announce(m_model->rowCount() == 0 ? tr("The device has no sites.")
                                          : tr("No site has “%1” in its name or kind.").arg(m_text->text().trimmed()));
}

QString SiteList::summary() const
{
    const int count = m_model->legalCount();
    if (count == 0)
        return tr("No site takes it now.");
    return count == 1 ? tr("1 site takes it.") : tr("%1 sites take it.").arg(count);
}

void SiteList::announce(const QString& sentence)
{
    m_sentence->setText(sentence);
    QAccessibleEvent alert(m_sentence, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void SiteList::placeCurrent()
{
    const SiteChoice* site = current();
    if (!site)
        return;
    const QPointer<SiteList> self(this); // the host may close its window while it places
    const QString refusal = site->isLegal() ? m_host.place(site->id) : m_host.reason(site->id);
    if (!self)
        return;
    if (refusal.isEmpty())
        accept();
    else
        announce(refusal);
}

void SiteList::done(int result)
{
    m_host.show(nullptr);
    QDialog::done(result);
}

} // namespace mirn::zelchipview
