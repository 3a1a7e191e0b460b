// SPDX-License-Identifier: MIT
#include "host/widgets/loadprogress.h"

#include "host/tcl/translation.h"
#include "host/widgets/progressdialog.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProgressDialog>

#include <algorithm>

namespace mirn::zelchip {

namespace {

constexpr double ReadingShare = 0.25; // fraction of the load time

LoadProgress::Pace& pace()
{
    static LoadProgress::Pace current;
    return current;
}

} // namespace

LoadProgress::LoadProgress(const QString& path, QWidget* parent, Cancelling cancelling)
    : m_name(QFileInfo(path).fileName())
    , m_parent(parent)
    , m_cancelling(cancelling)
    , m_previous(current())
{
    m_sinceStart.start();
    m_sinceLook.start();
    setCurrent(this);
}

LoadProgress::~LoadProgress()
{
    setCurrent(m_previous);
}

void LoadProgress::setPace(const Pace& newPace)
{
    pace() = newPace;
}

bool LoadProgress::goesOn(Work work, double share)
{
    // The share never decreases, because a drawing may be read twice and its second reading begins again.
    m_share
        = std::max(m_share, work == READING_DRAWING ? ReadingShare * share : ReadingShare + (1 - ReadingShare) * share);
    if (m_sinceStart.elapsed() < pace().patience || (m_dialog && m_sinceLook.elapsed() < pace().interval))
        return true;
    show(work);
    m_sinceLook.restart();
    if (m_isCancelWanted)
        showCancelling();
    return !m_isCancelWanted;
}

// Undoing a partial load takes a moment as well.
void LoadProgress::showCancelling()
{
    m_dialog->setLabelText(tr("Cancelling ..."));
    m_dialog->setCancelButton(nullptr);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void LoadProgress::show(Work work)
{
    if (!m_dialog) {
        m_dialog = newProgressDialog(m_parent);
        if (m_cancelling == Cancelling::Impossible)
            m_dialog->setCancelButton(nullptr);
        else
            QObject::connect(
                m_dialog.get(), &QProgressDialog::canceled, m_dialog.get(), [this] { m_isCancelWanted = true; });
        m_dialog->show();
    }
    const QString text = work == READING_DRAWING ? tr("Reading %1 ...") : tr("Building the view of %1 ...");
    m_dialog->setLabelText(text.arg(m_name));
    // A modal progress dialog processes events in this call.
    m_dialog->setValue(static_cast<int>(m_share * ProgressDialogEnd));
}

} // namespace mirn::zelchip
