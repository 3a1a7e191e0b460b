// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <QString>

#include <functional>
#include <vector>

namespace mirn::zelchipview {

// A site that a person can choose in a SiteList.
struct SiteChoice
{
    // In the order of the list.
    enum class Fit {
        Legal, // the resource may be placed there
        Refused, // the kind of site is right, but something speaks against this one
        OtherKind, // the site takes no such resource at all
    };

    int id = 0; // element id
    QString name;
    QString kind; // for users
    double distance = 0; // the nearest comes first; the unit does not matter
    Fit fit = Fit::OtherKind;

    [[nodiscard]] bool isLegal() const { return fit == Fit::Legal; }
};

// The rows of a SiteList: first the legal sites, then the others, which are greyed, all by fit and then by distance.
// The second column says the kind of a legal site and the reason against any other.
class SiteListModel final : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { NameColumn, AboutColumn, ColumnCount };
    enum Role { SoughtRole = Qt::UserRole }; // the text that typing narrows the rows by

    // Returns one sentence that says why the site is not legal. It is called for each row that is shown.
    using Reason = std::function<QString(int id)>;

    SiteListModel(std::vector<SiteChoice> sites, Reason reason, QObject* parent);

    [[nodiscard]] const SiteChoice& site(int row) const { return m_sites[static_cast<std::size_t>(row)]; }
    [[nodiscard]] QString reason(int row) const;
    [[nodiscard]] int legalCount() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] QString spokenText(int row) const;

    std::vector<SiteChoice> m_sites;
    const Reason m_reason;
};

} // namespace mirn::zelchipview
