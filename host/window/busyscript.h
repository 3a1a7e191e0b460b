// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace mirn::zelchip {

class CommandShell;

// Keeps the window responsive while a script runs long: it is painted, and Escape or the stop widget cancels the
// script. The console receives the key for copying, for which it cancels the script if nothing is selected. All other
// user input is discarded until the script has ended. It is a child of the main window.
class BusyScript final : public QObject
{
    Q_OBJECT
public:
    BusyScript(CommandShell& shell, QObject* parent); // does not own the shell

    // Sets the console, and the widget in it which is the only one that still receives the mouse. Owns neither.
    void setConsole(QWidget* console, QWidget* stopWidget);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void changed(bool isBusy);

private:
    void processEvents();
    void end();
    [[nodiscard]] bool isInConsole(const QObject* watched) const;

    CommandShell& m_shell;
    QWidget* m_console = nullptr;
    QWidget* m_stopWidget = nullptr;
    bool m_isBusy = false;
};

} // namespace mirn::zelchip
