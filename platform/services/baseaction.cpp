// SPDX-License-Identifier: MIT
#include "platform/contract/baseaction.h"

#include <QActionGroup>

BaseAction::BaseAction(const char* name, QObject* parent)
    : QAction(QString::fromLatin1(name), parent)
{
    setObjectName(text());
    setCheckable(true);
    // QAction joins a group only when the static type of the parent says so.
    if (auto* group = qobject_cast<QActionGroup*>(parent))
        group->addAction(this);
}

BaseAction::~BaseAction() = default;
