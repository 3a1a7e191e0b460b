// SPDX-License-Identifier: MIT
#include "filter/viewfilter.h"

#include "filter/filtermenu.h"
#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"

#include <QCheckBox>
#include <QMenu>

#include <cstdio>

namespace mirn::zelchipview {

namespace {

// The property in which a box stores its kind.
constexpr char FilterKeyProperty[] = "FILTERKEYVALUE";

} // namespace

ViewFilter::~ViewFilter()
{
    deleteMenu();
}

void ViewFilter::deleteMenu()
{
    delete m_menu.data();
}

QMenu* ViewFilter::buildMenu(QWidget* parent, const std::function<void(QCheckBox*)>& connectBox)
{
    if (m_menu)
        return m_menu;
    m_kinds.clear();
    m_boxes.clear();
    m_filteredIds.clear();
    m_menu = new QMenu(parent);
    auto* submenu = new FilterMenu(QStringLiteral("Filter Graphic Items"), m_menu); // owned by the menu
    m_menu->addMenu(submenu);
    addBox(*submenu, QStringLiteral("(Select All)"), QString(), connectBox);

    const zelchipdata* chip = m_engine ? m_engine->chip() : nullptr;
    std::optional<FilterKinds> kinds = readFilterFile(chip ? chip->filterFile() : std::string());
    if (!kinds) {
        std::fputs("filter file open failed", stdout);
        std::fflush(stdout);
        return nullptr;
    }
    m_kinds = *kinds;
    for (auto kind = m_kinds.cbegin(); kind != m_kinds.cend(); ++kind)
        addBox(*submenu, kind.key(), kind.key(), connectBox);
    return m_menu;
}

void ViewFilter::addBox(
    FilterMenu& menu, const QString& label, const QString& kind, const std::function<void(QCheckBox*)>& connectBox)
{
    QCheckBox* box = menu.addBox(label);
    box->setProperty(FilterKeyProperty, kind);
    m_boxes.append(box);
    connectBox(box);
}

bool ViewFilter::boxChanged(QCheckBox* box)
{
    if (!m_isListening || !box || m_boxes.isEmpty())
        return false;
    m_isListening = false;
    if (box == m_boxes.first())
        applyToAll(box->isChecked());
    else
        updateSelectAllBox();
    collectIds();
    m_isListening = true;
    return true;
}

void ViewFilter::applyToAll(bool isChecked)
{
    for (const QPointer<QCheckBox>& box : std::as_const(m_boxes)) {
        box->setTristate(false);
        box->setCheckState(isChecked ? Qt::Checked : Qt::Unchecked);
    }
}

// "(Select All)" shows whether all, none or some of the kinds are ticked.
void ViewFilter::updateSelectAllBox()
{
    int checked = 0;
    for (int i = 1; i < m_boxes.size(); ++i)
        checked += m_boxes[i]->isChecked() ? 1 : 0;
    QCheckBox* all = m_boxes.first();
    const int kinds = m_boxes.size() - 1;
    if (checked == kinds)
        all->setCheckState(Qt::Checked);
    else
        all->setCheckState(checked == 0 ? Qt::Unchecked : Qt::PartiallyChecked);
    // The partial state is for display only: a click on the box must always lead to a full one.
    all->setTristate(all->checkState() == Qt::PartiallyChecked);
}

void ViewFilter::collectIds()
{
    QSet<int> ids;
    for (int i = 1; i < m_boxes.size(); ++i) {
        if (m_boxes[i]->isChecked())
            ids.unite(m_kinds.value(m_boxes[i]->property(FilterKeyProperty).toString()));
    }
    m_filteredIds.assign(ids);
}

bool ViewFilter::isEnabled() const
{
    return !m_boxes.isEmpty() && m_boxes.first() && m_boxes.first()->checkState() != Qt::Unchecked;
}

} // namespace mirn::zelchipview
