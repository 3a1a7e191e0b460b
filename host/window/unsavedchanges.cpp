// SPDX-License-Identifier: MIT
#include "host/window/unsavedchanges.h"

#include "host/design/designeditor.h"
#include "host/tcl/translation.h"
#include "host/window/messagebox.h"

#include <QMessageBox>

namespace mirn::zelchip {

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
