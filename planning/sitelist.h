// SPDX-License-Identifier: MIT
#pragma once

#include "planning/sitelistmodel.h"

#include <QDialog>

#include <functional>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTreeView;

namespace mirn::zelchipview {

// A dialog that lists the sites for one resource, to place it without a mouse. The list has the focus: the arrow keys
// move in it, whatever is typed narrows it, Enter places and Escape closes. It knows no window, no engine and no
// drawing; the host that opens it does what it asks for through functions.
class SiteList final : public QDialog
{
    Q_OBJECT
public:
    struct Host
    {
        // Why a site that is not legal is not.
        SiteListModel::Reason reason;
        // The person has come to a site, which shall be seen in the drawing; null if to none. Also called with null
        // when the list closes.
        std::function<void(const SiteChoice* site)> show;
        // Places the resource. Returns an empty text, and the list closes, or a sentence for users that says why not.
        std::function<QString(int id)> place;
    };

    // `order` says in a sentence what the distances are measured from. The list deletes itself when it is closed.
    SiteList(const QString& resource, const QString& order, std::vector<SiteChoice> sites, Host host, QWidget* parent);
    ~SiteList() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void done(int result) override;

private:
    void arrange(const QString& order);
    void narrow(const QString& text);
    void followSelection();
    void showCurrent();
    [[nodiscard]] const SiteChoice* current() const;
    [[nodiscard]] QString summary() const;
    void announce(const QString& sentence);
    void placeCurrent();

    SiteListModel* const m_model; // these are children of the dialog
    QSortFilterProxyModel* const m_rows;
    QLineEdit* const m_text;
    QTreeView* const m_list;
    QLabel* const m_sentence;
    QPushButton* const m_placeButton;
    const Host m_host;
};

} // namespace mirn::zelchipview
