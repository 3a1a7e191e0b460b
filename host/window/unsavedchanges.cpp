// SPDX-License-Identifier: MIT
#include "host/window/unsavedchanges.h"

#include "host/design/designeditor.h"

#include <QCoreApplication>
#include <QMessageBox>

namespace mirn::zelchip {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("UnsavedChanges", text);
}

} // namespace

bool confirmClose(DesignEditor& editor, QWidget* parent)
{
    if (!editor.isModified())
        return true;
    QMessageBox box(QMessageBox::Question, tr("zelchip"), tr("The placements have changed."),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent);
    box.setInformativeText(tr("Do you want to save them?"));
    box.setDefaultButton(QMessageBox::Save);
    QString problem;
    switch (box.exec()) {
    case QMessageBox::Save:
        problem = editor.save();
        break;
    case QMessageBox::Discard:
        problem = editor.discard();
        break;
    default:
        return false;
    }
    if (problem.isEmpty())
        return true;
    QMessageBox box(QMessageBox::Critical, tr("zelchip"), problem, QMessageBox::Close, parent);
    box.setTextFormat(Qt::PlainText); // a path may look like mark-up
    box.exec();
    return false;
}

} // namespace mirn::zelchip
