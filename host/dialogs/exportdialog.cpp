// SPDX-License-Identifier: MIT
#include "host/dialogs/exportdialog.h"

#include "host/constraints/constraintexport.h"
#include "host/dialogs/messagebox.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace mirn::zelchip {

namespace {

constexpr int PreviewBytes = 4000;
constexpr QSize ExportDialogSize(680, 460); // device-independent pixels

} // namespace

ExportDialog::ExportDialog(const zelengine::ReferenceEngine& engine, const QString& folder, QWidget* parent)
    : QDialog(parent)
    , m_engine(engine)
    , m_folder(folder)
    , m_templates(new QComboBox(this))
    , m_file(new QLineEdit(this))
    , m_preview(new QPlainTextEdit(this))
    , m_message(new QLabel(this))
{
    setObjectName(QStringLiteral("exportDialog"));
    setWindowTitle(tr("Export Constraints"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_export = buttons->addButton(tr("&Export"), QDialogButtonBox::AcceptRole);
    m_export->setDefault(true);
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    layout->addLayout(form);
    addTemplates(form);
    addFileField(form);
    addPreview();
    layout->addWidget(m_preview);
    layout->addWidget(m_message);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::write);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(ExportDialogSize);
    showPreview();
}

void ExportDialog::addTemplates(QFormLayout* form)
{
    m_templates->setObjectName(QStringLiteral("exportTemplate"));
    for (const QString& name : templateNames())
        m_templates->addItem(name, name);
    m_templates->addItem(tr("Other..."));
    m_template = m_templates->itemData(0).toString();
    form->addRow(tr("&Template:"), m_templates);
    connect(m_templates, QOverload<int>::of(&QComboBox::activated), this, &ExportDialog::chooseTemplate);
}

void ExportDialog::addFileField(QFormLayout* form)
{
    m_file->setObjectName(QStringLiteral("exportFile"));
    m_file->setPlaceholderText(tr("The file to write"));
    auto* button = new QToolButton(this);
    button->setText(tr("..."));
    button->setAccessibleName(tr("Choose the file to write"));
    auto* row = new QHBoxLayout;
    row->addWidget(m_file);
    row->addWidget(button);
    form->addRow(tr("&File:"), row);
    if (auto* label = qobject_cast<QLabel*>(form->labelForField(row)))
        label->setBuddy(m_file);
    connect(button, &QToolButton::clicked, this, &ExportDialog::chooseFile);
    connect(m_file, &QLineEdit::textChanged, this, &ExportDialog::showState);
}

void ExportDialog::addPreview()
{
    m_preview->setObjectName(QStringLiteral("exportPreview"));
    m_preview->setAccessibleName(tr("How the file begins"));
    m_preview->setReadOnly(true);
    m_preview->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_preview->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_message->setObjectName(QStringLiteral("exportMessage"));
    m_message->setTextFormat(Qt::PlainText); // a path may look like mark-up
    m_message->setWordWrap(true);
}

// The last item asks for a file, which becomes an item of its own.
void ExportDialog::chooseTemplate(int index)
{
    m_template = m_templates->itemData(index).toString();
    if (m_template.isEmpty()) {
        m_template = QFileDialog::getOpenFileName(
            this, tr("Choose a Template"), m_folder, tr("Templates (*.template);;All files (*)"));
        if (!m_template.isEmpty())
            m_templates->insertItem(index, QFileInfo(m_template).fileName(), m_template);
        m_templates->setCurrentIndex(m_template.isEmpty() ? 0 : index);
        m_template = m_templates->currentData().toString();
    }
    showPreview();
}

void ExportDialog::chooseFile()
{
    const QString file = QFileDialog::getSaveFileName(this, windowTitle(), m_folder);
    if (file.isEmpty())
        return;
    m_folder = QFileInfo(file).path();
    m_file->setText(file);
}

void ExportDialog::showPreview()
{
    const std::optional<QByteArray> constraints = constraintsOf(m_engine, m_template, &m_error);
    m_preview->setPlainText(
        constraints ? QString::fromUtf8(constraints->left(constraints->lastIndexOf('\n', PreviewBytes))) : QString());
    showState();
}

void ExportDialog::showState()
{
    const QFileInfo file(QDir(m_folder), m_file->text());
    const bool replaces = !m_file->text().isEmpty() && file.exists();
    m_message->setText(!m_error.isEmpty() ? asSentence(m_error)
            : replaces                    ? tr("%1 exists and will be replaced.").arg(file.fileName())
                                          : QString());
    m_export->setEnabled(m_error.isEmpty() && !m_file->text().isEmpty());
}

void ExportDialog::write()
{
    const QString file = QFileInfo(QDir(m_folder), m_file->text()).absoluteFilePath();
    const QString error = exportConstraints(m_engine, m_template, file);
    if (!error.isEmpty()) {
        m_message->setText(asSentence(error));
        return;
    }
    Q_EMIT exported(file);
    accept();
}

} // namespace mirn::zelchip
