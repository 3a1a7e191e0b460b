// SPDX-License-Identifier: MIT
#include "filter/filtermenu.h"

#include <QCheckBox>
#include <QHideEvent>
#include <QMargins>
#include <QWidgetAction>

namespace mirn::zelchipview {

namespace {

// Around the boxes, in pixels: a menu gives widgets none, and the boxes would stand on its border.
constexpr QMargins AroundBoxes(6, 4, 10, 4);

} // namespace

FilterMenu::FilterMenu(const QString& title, QWidget* parent)
    : QMenu(title, parent)
{
    setContentsMargins(AroundBoxes);
    // Many styles put what does not fit into further columns, which would be wider than any screen.
    setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }"));
}

// A menu takes each widget out of itself before it goes, for which Qt looks through all others.
FilterMenu::~FilterMenu()
{
    hide(); // or it would make room for those that are left
    qDeleteAll(actions());
}

QCheckBox* FilterMenu::addBox(const QString& label)
{
    // A lone "&" in a label would become a mnemonic. Without a parent, for the action would take it out of that first.
    auto* box = new QCheckBox(QString(label).replace(QLatin1Char('&'), QLatin1String("&&"))); // the action's
    box->setMouseTracking(true); // and passes it on: near an end of the menu it scrolls
    auto* action = new QWidgetAction(this);
    action->setDefaultWidget(box);
    addAction(action);
    return box;
}

// What is shown for the first time is painted as a whole. Later Qt would work out for each box which of the others
// covers it.
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
