// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelconstants.h"
#include "platform/contract/zelexport.h"

#include <QMap>
#include <QString>
#include <QVector>

class QObject;

namespace mirn::zelchipview {

// The interface that the settings dialog needs of the controller, which implements it. ZELChipViewDatabase documents
// the operations.
class ZELCHIPGUI_EXPORT SettingsController
{
public:
    using Provider = SettingsController& (*)();

    // Returns the controller of the process. The provider creates it on first use.
    static SettingsController& current();

    // Must be set before the first dialog is created. Not null.
    static void setProvider(Provider provider);

    // Returns the controller as an object; the dialog closes when it is destroyed.
    [[nodiscard]] virtual QObject* asObject() = 0;

    [[nodiscard]] virtual QMap<QString, QVector<QString>>* getDynamicValueList(Enum_Dynamic_Dialog_Type type, int id)
        = 0;
    virtual bool setDynamicValue(const QMap<QString, QString>& valueMap, int id, Enum_Dynamic_Dialog_Type type) = 0;

protected:
    ~SettingsController() = default;
};

} // namespace mirn::zelchipview
