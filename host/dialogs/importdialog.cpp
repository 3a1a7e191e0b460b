// SPDX-License-Identifier: MIT
#include "host/dialogs/importdialog.h"

#include "host/dialogs/importthread.h"
#include "host/dialogs/messagebox.h"
#include "importer/optiontexts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace mirn::zelchip {

namespace {

constexpr int LookInterval = 100; // milliseconds
constexpr int FieldWidth = 420; // device-independent pixels
constexpr int WholeProgress = 1000;

} // namespace

ImportDialog::ImportDialog(const QString& folder, QWidget* parent)
    : QDialog(parent)
    , m_folder(folder)
    , m_message(new QLabel(this))
    , m_progress(new QProgressBar(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Cancel, this))
{
    setObjectName(QStringLiteral("importDialog"));
    setWindowTitle(tr("Import Tables"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* form = new QFormLayout;
    m_sites = addField(form, tr("&Sites:"), "importSites", Choice::OpenedFile);
    m_resources = addField(form, tr("&Resources:"), "importResources", Choice::OpenedFile);
    m_connections = addField(form, tr("&Connections:"), "importConnections", Choice::OpenedFile);
    m_project = addField(form, tr("&Project folder:"), "importProject", Choice::NewFolder);
    m_sites->setPlaceholderText(tr("name, kind, x, y, width, height"));
    m_resources->setPlaceholderText(tr("name, kind; if there are any"));
    m_connections->setPlaceholderText(tr("from, to; if there are any"));
    addOptions(form);
    m_message->setObjectName(QStringLiteral("importMessage"));
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_progress->setRange(0, WholeProgress);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_message);
    layout->addWidget(m_progress);
    layout->addWidget(m_buttons);
    QPushButton* import = m_buttons->addButton(tr("&Import"), QDialogButtonBox::AcceptRole);
    import->setObjectName(QStringLiteral("importStart"));
    import->setDefault(true);
    connect(import, &QPushButton::clicked, this, &ImportDialog::start);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(&m_look, &QTimer::timeout, this,
        [this] { m_progress->setValue(m_thread ? static_cast<int>(m_thread->progress() * WholeProgress) : 0); });
    for (QLineEdit* field : {m_sites, m_project})
        connect(field, &QLineEdit::textChanged, this, &ImportDialog::showState);
    showState();
}

ImportDialog::~ImportDialog() = default;

QLineEdit* ImportDialog::addField(QFormLayout* form, const QString& label, const char* name, Choice choice)
{
    auto* field = new QLineEdit(this);
    field->setObjectName(QString::fromLatin1(name));
    field->setMinimumWidth(FieldWidth);
    auto* button = new QToolButton(this);
    button->setText(tr("..."));
    button->setAccessibleName(tr("Choose"));
    connect(button, &QToolButton::clicked, this, [this, field, choice] { this->choose(field, choice); });
    auto* row = new QHBoxLayout;
    row->addWidget(field);
    row->addWidget(button);
    form->addRow(label, row);
    if (auto* buddy = qobject_cast<QLabel*>(form->labelForField(row)))
        buddy->setBuddy(field);
    return field;
}

void ImportDialog::addOptions(QFormLayout* form)
{
    m_columns = new QLineEdit(this);
    m_columns->setObjectName(QStringLiteral("importColumns"));
    m_columns->setPlaceholderText(tr("Columns with other names, such as width=W, resources.name=NET"));
    form->addRow(tr("C&olumns:"), m_columns);
    m_axis = new QComboBox(this);
    m_axis->setObjectName(QStringLiteral("importAxis"));
    m_axis->addItem(tr("Down, as on a screen"), QStringLiteral("down"));
    m_axis->addItem(tr("Up, as on a chip"), QStringLiteral("up"));
    form->addRow(tr("&Y grows:"), m_axis);
    m_replaces = new QCheckBox(tr("Replace a project that is there; it is kept &beside the new one"), this);
    m_replaces->setObjectName(QStringLiteral("importReplaces"));
    form->addRow(QString(), m_replaces);
}

void ImportDialog::choose(QLineEdit* field, Choice choice)
{
    const QString chosen = choice == Choice::OpenedFile
        ? QFileDialog::getOpenFileName(this, windowTitle(), m_folder, tr("Tables (*.csv *.tsv *.txt);;All files (*)"))
        : QFileDialog::getSaveFileName(this, windowTitle(), m_folder, QString(), nullptr,
            QFileDialog::ShowDirsOnly | QFileDialog::DontConfirmOverwrite);
    if (chosen.isEmpty())
        return;
    m_folder = QFileInfo(chosen).path();
    field->setText(chosen);
}

QString ImportDialog::readOptions(zelimporter::ImportOptions& options) const
{
    options.sites = m_sites->text();
    options.resources = m_resources->text();
    options.connections = m_connections->text();
    options.project = m_project->text();
    options.replaces = m_replaces->isChecked();
    if (!options.connections.isEmpty() && options.resources.isEmpty())
        return tr("Connections connect resources; choose their table as well");
    const QString columns = m_columns->text().trimmed();
    const QString error = columns.isEmpty() ? QString() : zelimporter::readColumnOption(columns, options);
    return error.isEmpty() ? zelimporter::readAxisOption(m_axis->currentData().toString(), options) : error;
}

void ImportDialog::start()
{
    zelimporter::ImportOptions options;
    const QString error = readOptions(options);
    if (!error.isEmpty()) {
        say(error);
        return;
    }
    say({});
    m_thread = new ImportThread(options, this);
    connect(m_thread, &QThread::finished, this, &ImportDialog::finish);
    m_thread->start();
    m_look.start(LookInterval);
    showState();
}

void ImportDialog::finish()
{
    m_look.stop();
    ImportThread* thread = std::exchange(m_thread, nullptr);
    const zelimporter::TableImport::Result result = thread->result();
    thread->deleteLater();
    showState();
    if (!result.error.isEmpty() || result.isCancelled) {
        say(result.error);
        return;
    }
    Q_EMIT imported(m_project->text(), result.warnings);
    accept();
}

void ImportDialog::showState()
{
    m_progress->setVisible(m_thread != nullptr);
    for (QWidget* field :
        QList<QWidget*>{m_sites, m_resources, m_connections, m_project, m_columns, m_axis, m_replaces})
        field->setEnabled(!m_thread);
    if (auto* import = findChild<QPushButton*>(QStringLiteral("importStart")))
        import->setEnabled(!m_thread && !m_sites->text().isEmpty() && !m_project->text().isEmpty());
}

void ImportDialog::say(const QString& text)
{
    m_message->setText(text.isEmpty() ? QString() : asSentence(text) + QLatin1Char('.'));
    m_message->setVisible(!text.isEmpty());
}

// While something is imported, the first Cancel ends only that.
void ImportDialog::done(int result)
{
    if (m_thread)
        m_thread->cancel();
    else
        QDialog::done(result);
}

void openImportDialog(
    QWidget* parent, const QString& folder, const std::function<void(const QString& project)>& imported)
{
    auto* dialog = new ImportDialog(folder, parent); // deletes itself
    QObject::connect(dialog, &ImportDialog::imported, parent,
        [parent, imported](const QString& project, const QStringList& warnings) {
            if (!warnings.isEmpty())
                openMessageBox(parent, QMessageBox::Information, ImportDialog::tr("Import Tables"),
                    warnings.join(QLatin1Char('\n')), Qt::PlainText);
            imported(project);
        });
    dialog->open();
}

} // namespace mirn::zelchip
