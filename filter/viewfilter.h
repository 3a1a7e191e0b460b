// SPDX-License-Identifier: MIT
#pragma once

#include "filter/filterfile.h"
#include "graphics/elements/elementidset.h"

#include <QPointer>
#include <QVector>

#include <functional>

class QCheckBox;
class QMenu;
class QWidget;
class zelchipengine;

namespace mirn::zelchipview {

class FilterMenu;

// The filter menu and the kinds ticked in it, whose elements are drawn in the filter colours. It owns the menu, unless
// a parent widget has deleted it. The controller owns this object.
class ViewFilter final
{
public:
    ViewFilter() = default;
    ~ViewFilter();
    ViewFilter(const ViewFilter&) = delete;
    ViewFilter& operator=(const ViewFilter&) = delete;

    void setEngine(zelchipengine* engine) { m_engine = engine; } // not owned

    // Builds the menu at the first call; later calls return it. `connectBox` has to connect each check box to the
    // handler. Returns null if the first call cannot open the filter file; the menu then holds "(Select All)" only.
    QMenu* buildMenu(QWidget* parent, const std::function<void(QCheckBox*)>& connectBox);

    // Returns null before the first buildMenu(), and after the menu was deleted with its parent.
    [[nodiscard]] QMenu* menu() const { return m_menu; }

    // A box has changed its state: updates the other boxes and the filtered ids. Returns whether anything was done;
    // changes that this operation makes itself are ignored.
    bool boxChanged(QCheckBox* box);

    // Returns true while "(Select All)" is checked or partially checked.
    [[nodiscard]] bool isEnabled() const;
    [[nodiscard]] ElementIdSet& filteredIds() { return m_filteredIds; }
    void deleteMenu();

private:
    void addBox(
        FilterMenu& menu, const QString& label, const QString& kind, const std::function<void(QCheckBox*)>& connectBox);
    void applyToAll(bool isChecked);
    void updateSelectAllBox();
    void collectIds();

    zelchipengine* m_engine = nullptr;
    QPointer<QMenu> m_menu;
    QVector<QPointer<QCheckBox>> m_boxes; // "(Select All)" first, then the kinds in order
    FilterKinds m_kinds;
    ElementIdSet m_filteredIds;
    bool m_isListening = true;
};

} // namespace mirn::zelchipview
