// SPDX-License-Identifier: MIT
#include "host/window/constraintactions.h"

#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/design/placementtable.h"
#include "host/dialogs/exportdialog.h"
#include "host/dialogs/messagebox.h"
#include "host/dialogs/refusedlines.h"
#include "host/memory/windowmemory.h"
#include "host/window/hostactions.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QWidget>

#include <utility>

namespace mirn::zelchip {

ConstraintActions::ConstraintActions(
    const HostActions& actions, WindowMemory& memory, std::function<DesignEditor&()> editor, QWidget* window)
    : QObject(window)
    , m_memory(memory)
    , m_editor(std::move(editor))
    , m_window(window)
{
    connect(actions.exportConstraints, &QAction::triggered, this, &ConstraintActions::exportConstraints);
    connect(actions.importConstraints, &QAction::triggered, this, &ConstraintActions::importConstraints);
}

void ConstraintActions::exportConstraints()
{
    auto* dialog = new ExportDialog(m_editor().engine(), m_memory.folder(), m_window); // deletes itself
    connect(dialog, &ExportDialog::exported, this, [this](const QString& file) {
        m_memory.setFolderOf(file);
        Q_EMIT told(tr("Exported to %1").arg(file));
    });
    dialog->open();
}

void ConstraintActions::importConstraints()
{
    const QString file = QFileDialog::getOpenFileName(
        m_window, tr("Import Constraints"), m_memory.folder(), tr("Tables (*.csv *.tsv *.txt);;All files (*)"));
    if (file.isEmpty())
        return;
    m_memory.setFolderOf(file);
    placeFrom(file);
}

void ConstraintActions::placeFrom(const QString& file)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const TablePlacement outcome = placeFromTable(m_editor(), file);
    QGuiApplication::restoreOverrideCursor();
    const QString title = tr("Import Constraints");
    if (!outcome.error.isEmpty()) {
        openMessageBox(m_window, QMessageBox::Critical, title, asSentence(outcome.error), Qt::PlainText);
        return;
    }
    const QString counts = tr("%1 placed, %2 reset, %3 refused")
                               .arg(QString::number(outcome.placed), QString::number(outcome.reset),
                                   QString::number(outcome.refused.size()));
    Q_EMIT told(tr("%1: %2").arg(QFileInfo(file).fileName(), counts));
    if (!outcome.refused.isEmpty())
        openRefusedLines(m_window, title, counts, outcome.refused);
}

} // namespace mirn::zelchip
