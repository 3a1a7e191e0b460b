// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelprogress.h"

#include <QElapsedTimer>
#include <QString>

#include <memory>

class QProgressDialog;
class QWidget;

namespace mirn::zelchip {

// Shows the progress of loading a drawing in a dialog once it takes longer than a moment, and lets the user cancel. It
// is the process's current progress while it exists and restores the previous one afterwards.
//
// The dialog is modal and processes events between the steps of the load. The caller must therefore stop timers that
// would reach an object that is being replaced.
class LoadProgress final : public zelprogress
{
public:
    enum class Cancelling { Possible, Impossible };

    // `path` is the file or folder being opened. Without a parent the dialog is a top-level window.
    LoadProgress(const QString& path, QWidget* parent, Cancelling cancelling);
    ~LoadProgress() override;

    // Whether the current load, if there is one, has been cancelled.
    [[nodiscard]] static bool isCurrentCancelled() { return current() && current()->isCancelled(); }

    // The time until the dialog appears, and the time between two updates, which also process the user's input.
    struct Pace
    {
        int patience = 500; // milliseconds
        int interval = 50; // milliseconds
    };
    static void setPace(const Pace& pace);

private:
    bool goesOn(Work work, double share) override;
    void show(Work work);
    void showCancelling();

    const QString m_name;
    QWidget* const m_parent;
    const Cancelling m_cancelling;
    zelprogress* const m_previous;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceLook;
    std::unique_ptr<QProgressDialog> m_dialog; // created when it is shown; deleted before its parent
    double m_share = 0.0; // fraction of the whole load that is done
    bool m_isCancelWanted = false;
};

} // namespace mirn::zelchip
