// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace mirn::zelchip {

class CommandShell;

// Keeps the window alive while a script takes long: it is painted, Escape and the widget for stopping cancel the
// script, and everything else that a user does is held off until the script has ended.
class BusyScript final : public QObject
{
    Q_OBJECT
public:
    // Neither is owned. `stopWidget` is the one that still takes the mouse; may be null.
    BusyScript(CommandShell& shell, QObject* parent);

    void setStopWidget(QWidget* widget) { m_stopWidget = widget; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void changed(bool isBusy);

private:
    void breathe();
    void end();

    CommandShell& m_shell;
    QWidget* m_stopWidget = nullptr;
    bool m_isBusy = false;
};

} // namespace mirn::zelchip
