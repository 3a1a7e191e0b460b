// SPDX-License-Identifier: MIT
#pragma once

#include "host/console/completion.h"
#include "host/tcl/tclinterpreter.h"

#include <QDockWidget>

class QToolButton;

namespace mirn::zelchip {

class ConsoleInput;
class ConsoleOutput;

// The console: shows commands and what comes of them, and takes scripts from the user. It runs nothing itself: whoever
// listens to commandEntered() does, and shows here the command, its output and its result.
class ConsoleDock final : public QDockWidget
{
    Q_OBJECT
public:
    enum class Origin {
        User, // typed
        View, // sent by the chip view
    };

    explicit ConsoleDock(QWidget* parent);

    // Texts are taken as they are, never as HTML; of huge ones the beginning is shown. Empty ones show nothing.
    void showCommand(const QString& command, Origin origin);
    // Pieces that come without a line's end are continued by the next piece for the same channel.
    void showOutput(const QString& text, TclInterpreter::Channel channel = TclInterpreter::Channel::Output);
    // What came of it is otherwise shown when the program is next idle.
    void showPending();
    void showResult(const QString& text);
    void showError(const QString& message);

    // Offers to stop, and takes no further script until it is over.
    void setRunning(bool isRunning);

    // The widget that stops a running script; the dock's.
    [[nodiscard]] QWidget* stopWidget() const;

    void setCompleter(Completer completer);

    // What was entered, oldest first; bounded.
    [[nodiscard]] QStringList history() const;
    void setHistory(const QStringList& history);

Q_SIGNALS:
    void commandEntered(const QString& script); // complete and not blank
    void cancelRequested();

private:
    QWidget* newInputRow(QWidget* parent);

    ConsoleOutput* m_output; // this and the following: children of the dock's widget
    ConsoleInput* m_input;
    QToolButton* m_stopButton;
};

} // namespace mirn::zelchip
