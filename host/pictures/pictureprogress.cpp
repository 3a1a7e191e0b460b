// SPDX-License-Identifier: MIT
#include "host/pictures/pictureprogress.h"

#include "host/tcl/translation.h"
#include "host/widgets/progressdialog.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProgressDialog>

namespace mirn::zelchip {

namespace {

constexpr int ExportPatience = 500; // milliseconds until the dialog appears
constexpr int ExportInterval = 50; // milliseconds between two looks at what the user does

} // namespace

PictureProgress::PictureProgress(const QString& file, QWidget* parent)
    : m_name(QFileInfo(file).fileName())
    , m_parent(parent)
{
    m_sinceStart.start();
    m_sinceLook.start();
}

PictureProgress::~PictureProgress() = default;

bool PictureProgress::goesOn(double share)
{
    if (m_isCancelled || m_sinceStart.elapsed() < ExportPatience
        || (m_dialog && m_sinceLook.elapsed() < ExportInterval))
        return !m_isCancelled;
    show(share);
    m_sinceLook.restart();
    return !m_isCancelled;
}

// How much of a painted picture is written is not known before its end.
void PictureProgress::show(double share)
{
    if (!m_dialog) {
        m_dialog = newProgressDialog(m_parent);
        QObject::connect(m_dialog.get(), &QProgressDialog::canceled, m_dialog.get(), [this] { m_isCancelled = true; });
        m_dialog->show();
    }
    const bool isPainted = share >= 1;
    m_dialog->setLabelText((isPainted ? tr("Writing %1 ...") : tr("Painting %1 ...")).arg(m_name));
    m_dialog->setMaximum(isPainted ? 0 : ProgressDialogEnd);
    // A modal progress dialog processes events in this call, unless the value is the one that it has.
    m_dialog->setValue(isPainted ? 0 : static_cast<int>(share * ProgressDialogEnd));
    QCoreApplication::processEvents();
}

} // namespace mirn::zelchip
