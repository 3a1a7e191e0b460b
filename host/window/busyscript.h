// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace mirn::zelchip {

class CommandShell;

// Keeps the window responsive while a script runs long: it is painted, and Escape or the stop widget cancels the
// script. All other user input is discarded until the script has ended. It is a child of the main window.
class BusyScript final : public QObject
{
    Q_OBJECT
public:
    // Owns neither. The stop widget, which may be null, is the only one that still receives the mouse.
    BusyScript(CommandShell& shell, QObject* parent);

    void setStopWidget(QWidget* widget) { m_stopWidget = widget; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void changed(bool isBusy);

private:
    void processEvents();
    void end();

    CommandShell& m_shell;
    QWidget* m_stopWidget = nullptr;
    bool m_isBusy = false;
};

} // namespace mirn::zelchip
