// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QAction>

// A checkable action that is named and labelled by one 8-bit text. When the parent is an action group the action
// joins it.
class ZELPLATFORM_EXPORT BaseAction : public QAction
{
    Q_OBJECT
public:
    // `name` (ISO 8859-1, not null) becomes object name and text.
    BaseAction(const char* name, QObject* parent);
    ~BaseAction() override;
};
