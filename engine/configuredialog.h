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

// By key.
using ParameterValues = QHash<QString, QString>;

// Asks for the values of a resource's parameters; changes nothing itself. An editor has its parameter's key as object
// name.
class ConfigureDialog final : public QDialog
{
    Q_OBJECT
public:
    // Shows the given values; there must be one for each parameter.
    ConfigureDialog(const QString& resource, const std::vector<ResourceParameter>& parameters,
        const ParameterValues& values, QWidget* parent);

    [[nodiscard]] ParameterValues values() const;

    // Runs a dialog over the active window until it is answered. Nothing when it was cancelled, or when the window went
    // away under it: then the caller may be gone as well.
    [[nodiscard]] static std::optional<ParameterValues> ask(
        const QString& resource, const std::vector<ResourceParameter>& parameters, const ParameterValues& values);

private:
    QWidget* addNumber(const ResourceParameter& parameter, const QString& value, QFormLayout& form);
    QWidget* addChoice(const ResourceParameter& parameter, const QString& value, QFormLayout& form);

    QHash<QString, std::function<QString()>> m_readers; // by key
};

// Says something about a resource in a box over the active window and returns at once.
void tellAboutConfiguring(const QString& text);

} // namespace mirn::zelengine
