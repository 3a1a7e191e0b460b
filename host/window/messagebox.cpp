// SPDX-License-Identifier: MIT
#include "host/window/messagebox.h"

#include "host/design/designeditor.h"
#include "host/tcl/translation.h"

#include <QPushButton>
#include <QRegularExpression>

namespace mirn::zelchip {

QString asSentence(const QString& text)
{
    static const QRegularExpression plainWord(QStringLiteral("^[a-z]+(?=[ ,:])"));
    return plainWord.match(text).hasMatch() ? text.left(1).toUpper() + text.mid(1) : text;
}

void openMessageBox(
    QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text, Qt::TextFormat format)
{
    auto* box = new QMessageBox(icon, title, text, QMessageBox::Close, parent);
    box->setTextFormat(format);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
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

bool confirmClose(DesignEditor& editor, QWidget* parent)
{
    if (!editor.isModified())
        return true;
    QMessageBox box(QMessageBox::Question, tr("zelchip"), tr("The placements have changed."),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent);
    box.setInformativeText(tr("Do you want to save them?"));
    box.setDefaultButton(QMessageBox::Save);
    QString error;
    switch (box.exec()) {
    case QMessageBox::Save:
        error = editor.save();
        break;
    case QMessageBox::Discard:
        error = editor.discard();
        break;
    default:
        return false;
    }
    if (error.isEmpty())
        return true;
    QMessageBox failure(QMessageBox::Critical, tr("zelchip"), asSentence(error), QMessageBox::Close, parent);
    failure.setTextFormat(Qt::PlainText); // a path may look like mark-up
    failure.exec();
    return false;
}

} // namespace mirn::zelchip
