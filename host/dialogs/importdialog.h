// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importoptions.h"

#include <QDialog>
#include <QTimer>

#include <functional>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QProgressBar;

namespace mirn::zelchip {

class ImportThread;

// Asks for the tables of a device and makes a project of them, while the window stays alive. It deletes itself when it
// is closed; closing it cancels an import.
class ImportDialog final : public QDialog
{
    Q_OBJECT
public:
    // File dialogs begin in that folder.
    ImportDialog(const QString& folder, QWidget* parent);
    ~ImportDialog() override;

    void done(int result) override;

Q_SIGNALS:
    // The project is whole; the warnings are one sentence each.
    void imported(const QString& project, const QStringList& warnings);

private:
    enum class Choice { OpenedFile, NewFolder };

    QLineEdit* addField(QFormLayout* form, const QString& label, const char* name, Choice choice);
    void addOptions(QFormLayout* form);
    void choose(QLineEdit* field, Choice choice);
    [[nodiscard]] QString readOptions(zelimporter::ImportOptions& options) const;
    void start();
    void finish();
    void showState();
    void say(const QString& text);

    QString m_folder;
    QLineEdit* m_sites; // children of the dialog, as all widgets here
    QLineEdit* m_resources;
    QLineEdit* m_connections;
    QLineEdit* m_project;
    QLineEdit* m_columns;
    QComboBox* m_axis;
    QCheckBox* m_replaces;
    QLabel* m_message;
    QProgressBar* m_progress;
    QDialogButtonBox* m_buttons;
    ImportThread* m_thread = nullptr; // child of the dialog; null while nothing is imported
    QTimer m_look; // at the progress
};

// Opens the dialog and returns at once. The function is called with the project folder when it is whole; before that, a
// message box shows the warnings.
void openImportDialog(
    QWidget* parent, const QString& folder, const std::function<void(const QString& project)>& imported);

} // namespace mirn::zelchip
