// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QHash>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class QFormLayout;

namespace mirn::zelengine {

struct ResourceParameter;

// Values by parameter key.
using ParameterValues = QHash<QString, QString>;

// Asks the user for the values of a resource's parameters; it changes nothing itself. ask() creates and deletes it. The
// object name of an editor is the key of its parameter.
class ConfigureDialog final : public QDialog
{
    Q_OBJECT
public:
    // Shows the given values; there must be one for each parameter.
    ConfigureDialog(const QString& resource, const std::vector<ResourceParameter>& parameters,
        const ParameterValues& values, QWidget* parent);

    [[nodiscard]] ParameterValues values() const;

    // Runs a dialog over the active window until it is answered. Returns nothing if it was cancelled, or if the window
    // was destroyed meanwhile: the caller may then be gone as well.
    [[nodiscard]] static std::optional<ParameterValues> ask(
        const QString& resource, const std::vector<ResourceParameter>& parameters, const ParameterValues& values);

private:
    QWidget* addNumber(const ResourceParameter& parameter, const QString& value, QFormLayout& form);
    QWidget* addChoice(const ResourceParameter& parameter, const QString& value, QFormLayout& form);

    QHash<QString, std::function<QString()>> m_readers; // by key
};

// Shows a message box over the active window and returns at once.
void showConfigureMessage(const QString& text);

} // namespace mirn::zelengine
