// SPDX-License-Identifier: MIT
#include "host/window/messagebox.h"

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

} // namespace mirn::zelchip
