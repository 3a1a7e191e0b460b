// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelconstants.h"
#include "platform/contract/zelexport.h"

#include <QMap>
#include <QString>
#include <QVector>

class QObject;

namespace mirn::zelchipview {

// What the settings dialog needs of the controller, which implements it. ZELChipViewDatabase says what each operation
// does.
class ZELCHIPGUI_EXPORT SettingsController
{
public:
    using Provider = SettingsController& (*)();

    // The controller of the process, which the provider makes when it is first asked for.
    static SettingsController& current();

    // To be set before the first dialog is made. Not null.
    static void setProvider(Provider provider);

    // The controller itself, whose end ends the dialog.
    [[nodiscard]] virtual QObject* asObject() = 0;

    [[nodiscard]] virtual QMap<QString, QVector<QString>>* getDynamicValueList(Enum_Dynamic_Dialog_Type type, int id)
        = 0;
    virtual bool setDynamicValue(const QMap<QString, QString>& valueMap, int id, Enum_Dynamic_Dialog_Type type) = 0;

protected:
    ~SettingsController() = default;
};

} // namespace mirn::zelchipview
