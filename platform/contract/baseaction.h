// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QAction>

// A checkable action whose object name and label are one 8-bit text. If the parent is an action group, the action joins
// it.
class ZELPLATFORM_EXPORT BaseAction : public QAction
{
    Q_OBJECT
public:
    // `name` (ISO 8859-1, not null) becomes the object name and the text.
    BaseAction(const char* name, QObject* parent);
    ~BaseAction() override;
};
