// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QString>

#include <memory>

class QProgressDialog;
class QWidget;

namespace mirn::zelchip {

// Shows the progress of an export in a dialog once it takes longer than a moment, and lets the user cancel.
class PictureProgress final
{
public:
    PictureProgress(const QString& file, QWidget* parent);
    ~PictureProgress();
    PictureProgress(const PictureProgress&) = delete;
    PictureProgress& operator=(const PictureProgress&) = delete;

    // As PictureGoesOn has it.
    [[nodiscard]] bool goesOn(double share);
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }

private:
    void show(double share);

    const QString m_name;
    QWidget* const m_parent;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceLook;
    std::unique_ptr<QProgressDialog> m_dialog; // created when it is shown
    bool m_isCancelled = false;
};

} // namespace mirn::zelchip
