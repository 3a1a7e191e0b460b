// SPDX-License-Identifier: MIT
#pragma once

#include "host/console/completion.h"
#include "host/tcl/tclinterpreter.h"

#include <QDockWidget>

class QToolButton;

namespace mirn::zelchip {

class ConsoleInput;
class ConsoleOutput;

// The console: shows commands, their output and their results, and accepts scripts from the user. It is a child of the
// main window. It runs nothing itself: a listener to commandEntered() does, and calls the operations below.
class ConsoleDock final : public QDockWidget
{
    Q_OBJECT
public:
    enum class Origin {
        User, // typed
        View, // sent by the chip view
    };

    explicit ConsoleDock(QWidget* parent);

    // Texts are shown literally, never as HTML, and cut if they are huge. Empty texts show nothing.
    void showCommand(const QString& command, Origin origin);
    // A text without a line end at its end is continued by the next text for the same channel.
    void showOutput(const QString& text, TclInterpreter::Channel channel = TclInterpreter::Channel::Output);
    // Shows output at once that would otherwise be shown when the program is next idle.
    void showPending();
    void showResult(const QString& text);
    void showError(const QString& message);

    // Shows the Stop button and accepts no further script until called with false.
    void setRunning(bool isRunning);

    // The widget that stops a running script; the dock owns it.
    [[nodiscard]] QWidget* stopWidget() const;

    // The parts that take the focus; the dock owns them.
    [[nodiscard]] QWidget* output() const;
    [[nodiscard]] QWidget* input() const;

    void setCompleter(Completer completer);

    // The entered scripts, oldest first; limited to CommandHistory's capacity.
    [[nodiscard]] QStringList history() const;
    void setHistory(const QStringList& history);

Q_SIGNALS:
    void commandEntered(const QString& script); // complete and not blank
    void cancelRequested();

private:
    QWidget* newInputRow(QWidget* parent);

    ConsoleOutput* m_output; // these are children of the dock's widget
    ConsoleInput* m_input;
    QToolButton* m_stopButton;
};

} // namespace mirn::zelchip
