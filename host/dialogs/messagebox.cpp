// SPDX-License-Identifier: MIT
#include "host/dialogs/messagebox.h"

#include "host/design/designeditor.h"
#include "host/tcl/translation.h"

#include <QPushButton>

namespace mirn::zelchip {

void openMessageBox(
    QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text, Qt::TextFormat format)
{
    auto* box = new QMessageBox(icon, title, text, QMessageBox::Close, parent);
    box->setTextFormat(format);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void openErrorBox(QWidget* parent, const QString& text)
{
    openMessageBox(parent, QMessageBox::Critical, tr("zelchip"), asSentence(text), Qt::PlainText);
}

void openTakeOverQuestion(QWidget* parent, const QString& doubt, const std::function<void()>& takeOver)
{
    auto* box = new QMessageBox(QMessageBox::Warning, tr("zelchip"),
        tr("It is not certain that nobody else changes this project."), QMessageBox::NoButton, parent);
    box->setInformativeText(asSentence(doubt));
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton* yes = box->addButton(tr("Take Over"), QMessageBox::AcceptRole);
    box->setDefaultButton(box->addButton(tr("Only Look"), QMessageBox::RejectRole));
    // runs after the box has closed
    QObject::connect(yes, &QAbstractButton::clicked, parent, takeOver, Qt::QueuedConnection);
    box->open();
}

namespace {

void showProblem(QWidget* parent, QMessageBox::Icon icon, const QString& text, const QString& reason = QString())
{
    QMessageBox box(icon, tr("zelchip"), text, QMessageBox::Close, parent);
    box.setInformativeText(reason);
    box.setTextFormat(Qt::PlainText); // a path may look like mark-up
    box.exec();
}

bool saveBeforeClosing(DesignEditor& editor, QWidget* parent)
{
    const QString error = editor.save();
    if (!error.isEmpty())
        showProblem(parent, QMessageBox::Critical, asSentence(error));
    return error.isEmpty();
}

void discardBeforeClosing(DesignEditor& editor, QWidget* parent)
{
    const QString error = editor.discard();
    if (!error.isEmpty())
        showProblem(parent, QMessageBox::Information, tr("What was not saved stays in %1.").arg(editor.journalFile()),
            asSentence(error));
}

} // namespace

// What another program has not saved is its own concern.
bool confirmClose(DesignEditor& editor, QWidget* parent)
{
    if (!editor.isModified() || editor.isOfAnother())
        return true;
    QMessageBox box(QMessageBox::Question, tr("zelchip"), tr("The placements have changed."),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent);
    box.setInformativeText(tr("Do you want to save them?"));
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    if (answer == QMessageBox::Save)
        return saveBeforeClosing(editor, parent);
    if (answer == QMessageBox::Discard)
        discardBeforeClosing(editor, parent);
    return answer == QMessageBox::Discard;
}

} // namespace mirn::zelchip
