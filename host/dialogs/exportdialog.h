// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QString>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace mirn::zelengine {
class ReferenceEngine;
}

namespace mirn::zelchip {

// Asks for a template and a file, shows how the file will begin, and writes it. It deletes itself when it is closed.
class ExportDialog final : public QDialog
{
    Q_OBJECT
public:
    // The engine must live as long. File dialogs begin in that folder.
    ExportDialog(const zelengine::ReferenceEngine& engine, const QString& folder, QWidget* parent);

Q_SIGNALS:
    void exported(const QString& file);

private:
    void addTemplates(QFormLayout* form);
    void addFileField(QFormLayout* form);
    void addPreview();
    void chooseTemplate(int index);
    void chooseFile();
    void showPreview();
    void showState();
    void write();

    const zelengine::ReferenceEngine& m_engine;
    QString m_folder;
    QString m_template; // its name or file
    QString m_error; // why the template writes nothing
    QComboBox* m_templates; // children of the dialog, as all widgets here
    QLineEdit* m_file;
    QPlainTextEdit* m_preview;
    QLabel* m_message;
    QPushButton* m_export;
};

} // namespace mirn::zelchip
