// SPDX-License-Identifier: MIT
#include "filter/filtermenu.h"

#include <QCheckBox>
#include <QHideEvent>
#include <QMargins>
#include <QWidgetAction>

namespace mirn::zelchipview {

namespace {

// The margins around the boxes, in pixels. A menu has none around widgets, so the boxes would touch its border.
constexpr QMargins AroundBoxes(6, 4, 10, 4);

} // namespace

FilterMenu::FilterMenu(const QString& title, QWidget* parent)
    : QMenu(title, parent)
{
    setContentsMargins(AroundBoxes);
    // Many styles put boxes that do not fit into further columns, which would be wider than any screen.
    setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }"));
}

// The destructor of QMenu would remove the boxes one by one, and Qt searches all others for each of them.
FilterMenu::~FilterMenu()
{
    hide(); // a visible menu would be laid out again for each box
    qDeleteAll(actions());
}

QCheckBox* FilterMenu::addBox(const QString& label)
{
    // A lone "&" in a label would become a mnemonic. The box gets no parent, because the action would have to remove it
    // from there first.
    auto* box = new QCheckBox(QString(label).replace(QLatin1Char('&'), QLatin1String("&&"))); // owned by the action
    box->setMouseTracking(true); // near its ends the menu scrolls on mouse moves over the box
    auto* action = new QWidgetAction(this);
    action->setDefaultWidget(box);
    addAction(action);
    return box;
}

// A window that is shown for the first time is painted as a whole. Later Qt would compute for each box which of the
// others cover it, so the window is destroyed after it is hidden.
void FilterMenu::hideEvent(QHideEvent* event)
{
    QMenu::hideEvent(event);
    const auto forgetWindow = [this] {
        if (!isVisible())
            destroy();
    };
    QMetaObject::invokeMethod(this, forgetWindow, Qt::QueuedConnection);
}

} // namespace mirn::zelchipview
