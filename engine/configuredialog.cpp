// SPDX-License-Identifier: MIT
#include "engine/configuredialog.h"

#include "engine/model/resourceparameter.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QVBoxLayout>

namespace mirn::zelengine {

namespace {

constexpr int NumberDecimals = 3;

// A spin box that shows only as many decimals as the number has.
class NumberBox final : public QDoubleSpinBox
{
public:
    using QDoubleSpinBox::QDoubleSpinBox;

    [[nodiscard]] QString textFromValue(double value) const override
    {
        QLocale plain = locale();
        plain.setNumberOptions(QLocale::OmitGroupSeparator);
        return plain.toString(value, 'f', QLocale::FloatingPointShortest);
    }
};

// The label uses plain text, because a name may look like mark-up.
QLabel* labelFor(const QString& resource, QWidget* parent)
{
    auto* label = new QLabel(resource, parent);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

ConfigureDialog::ConfigureDialog(const QString& resource, const std::vector<ResourceParameter>& parameters,
    const ParameterValues& values, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("zelConfigureDialog"));
    setWindowTitle(tr("Configure"));
    auto* form = new QFormLayout;
    form->addRow(tr("Resource:"), labelFor(resource, this));
    QWidget* first = nullptr;
    for (const ResourceParameter& parameter : parameters) {
        const QString value = values.value(parameter.key);
        QWidget* editor
            = parameter.choices.isEmpty() ? addNumber(parameter, value, *form) : addChoice(parameter, value, *form);
        editor->setObjectName(parameter.key);
        first = first ? first : editor;
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    if (first)
        first->setFocus();
}

QWidget* ConfigureDialog::addNumber(const ResourceParameter& parameter, const QString& value, QFormLayout& form)
{
    auto* box = new NumberBox(this);
    box->setDecimals(NumberDecimals);
    box->setRange(parameter.minimum, parameter.maximum);
    box->setSuffix(QLatin1Char(' ') + parameter.unit);
    box->setValue(value.toDouble());
    box->selectAll();
    form.addRow(tr("%1 (%2 to %3):")
                    .arg(parameter.title, box->textFromValue(parameter.minimum), box->textFromValue(parameter.maximum)),
        box);
    m_readers.insert(parameter.key, [box] { return QString::number(box->value(), 'f', NumberDecimals); });
    return box;
}

QWidget* ConfigureDialog::addChoice(const ResourceParameter& parameter, const QString& value, QFormLayout& form)
{
    auto* box = new QComboBox(this);
    for (const QString& choice : parameter.choices)
        box->addItem(parameter.withUnit(choice), choice);
    box->setCurrentIndex(box->findData(value));
    form.addRow(parameter.title + QLatin1Char(':'), box);
    m_readers.insert(parameter.key, [box] { return box->currentData().toString(); });
    return box;
}

ParameterValues ConfigureDialog::values() const
{
    ParameterValues result;
    for (auto it = m_readers.begin(); it != m_readers.end(); ++it)
        result.insert(it.key(), it.value()());
    return result;
}

std::optional<ParameterValues> ConfigureDialog::ask(
    const QString& resource, const std::vector<ResourceParameter>& parameters, const ParameterValues& values)
{
    const QPointer<ConfigureDialog> dialog
        = new ConfigureDialog(resource, parameters, values, QApplication::activeWindow()); // deleted below
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return std::nullopt;
    const ParameterValues chosen = dialog->values();
    delete dialog;
    return isAccepted ? std::optional(chosen) : std::nullopt;
}

void showConfigureMessage(const QString& text)
{
    auto* box = new QMessageBox(QApplication::activeWindow()); // deletes itself
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(QStringLiteral("zelConfigureMessage"));
    box->setWindowTitle(ConfigureDialog::tr("Configure"));
    box->setTextFormat(Qt::PlainText);
    box->setIcon(QMessageBox::Information);
    box->setText(text);
    box->open();
}

} // namespace mirn::zelengine
