// SPDX-License-Identifier: MIT
#include "planning/sitelistmodel.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <tuple>
#include <utility>

namespace mirn::zelchipview {

SiteListModel::SiteListModel(std::vector<SiteChoice> sites, Reason reason, QObject* parent)
    : QAbstractTableModel(parent)
    , m_sites(std::move(sites))
    , m_reason(std::move(reason))
{
    std::stable_sort(m_sites.begin(), m_sites.end(), [](const SiteChoice& a, const SiteChoice& b) {
        return std::tuple(a.fit, a.distance) < std::tuple(b.fit, b.distance);
    });
}

QString SiteListModel::reason(int row) const
{
    return site(row).isLegal() ? QString() : m_reason(site(row).id);
}

int SiteListModel::legalCount() const
{
    return static_cast<int>(
        std::count_if(m_sites.begin(), m_sites.end(), [](const SiteChoice& choice) { return choice.isLegal(); }));
}

int SiteListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_sites.size());
}

int SiteListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

// A greyed row can still be made the current one: only so does one hear its reason.
QVariant SiteListModel::data(const QModelIndex& index, int role) const
{
    const SiteChoice& choice = site(index.row());
    switch (role) {
    case Qt::DisplayRole:
        if (index.column() == NameColumn)
            return choice.name;
        return choice.isLegal() ? choice.kind : reason(index.row());
    case Qt::ToolTipRole:
        return reason(index.row());
    case Qt::AccessibleTextRole:
        return index.column() == NameColumn ? QVariant(spokenText(index.row())) : QVariant();
    case Qt::ForegroundRole:
        return choice.isLegal() ? QVariant() : QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    case SoughtRole:
        return QString(choice.name + QLatin1Char(' ') + choice.kind);
    default:
        return {};
    }
}

// A screen reader reads the name's cell only.
QString SiteListModel::spokenText(int row) const
{
    const SiteChoice& choice = site(row);
    return choice.isLegal() ? QStringLiteral("%1, %2").arg(choice.name, choice.kind)
                            : tr("%1, not possible: %2").arg(choice.name, reason(row));
}

QVariant SiteListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == NameColumn ? tr("Site") : tr("Kind, or why not");
}

} // namespace mirn::zelchipview
