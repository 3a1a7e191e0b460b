// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelprogress.h"

#include <QElapsedTimer>
#include <QString>

#include <memory>

class QProgressDialog;
class QWidget;

namespace mirn::zelchip {

// Shows in a dialog how far a drawing is loaded, as soon as that takes longer than a moment, and lets the user cancel
// it. The process's progress while it exists; afterwards the one before is again.
//
// The dialog is modal and handles events between the steps of the load, so whoever loads must not depend on timers that
// reach what is being replaced.
class LoadProgress final : public zelprogress
{
public:
    enum class Cancelling { Possible, Impossible };

    // `path` is what is opened. With a null parent the dialog is a window by itself.
    LoadProgress(const QString& path, QWidget* parent, Cancelling cancelling);
    ~LoadProgress() override;

    // Whether there is a load that has been cancelled.
    [[nodiscard]] static bool isCurrentCancelled() { return current() && current()->isCancelled(); }

    // When the dialog appears, and how long the load then goes on between two looks at what the user does.
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
    std::unique_ptr<QProgressDialog> m_dialog; // once it is shown; deleted before its parent
    double m_share = 0.0; // of the whole load
    bool m_isCancelWanted = false;
};

} // namespace mirn::zelchip
