// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/autoplacetcl.h"
#include "host/tcl/tclinterpreter.h"

#include <QObject>
#include <QString>

namespace mirn::zelchip {

class DesignEditor;

// Runs the commands of the console, of scripts and of the chip view in one Tcl interpreter, which it owns. The main
// window or the batch owns the shell, which outlives every project; the commands on the design work on the open one.
class CommandShell final : public QObject
{
    Q_OBJECT
public:
    enum class Origin { User, View };

    explicit CommandShell(QObject* parent = nullptr);
    ~CommandShell() override;

    // Makes all later commands work on this design. The editor must live until the next call, and what the positions
    // of its sites come from.
    void setEditor(DesignEditor& editor, PositionSource positions);

    // Runs a script; its start and its result are signalled.
    TclResult run(const QString& script, Origin origin);

    // Runs a file. An error message names the file and the line.
    TclResult runFile(const QString& file);

    // Ends the running script with an error.
    void cancel();

    // Whether a command of the chip view is waiting for its answer. The view must not be deleted meanwhile.
    [[nodiscard]] bool isAnsweringView() const { return m_viewCommands > 0; }

    // Whether a command that the user typed is running.
    [[nodiscard]] bool isAnsweringUser() const { return m_userCommands > 0; }

    [[nodiscard]] TclInterpreter& interpreter() { return m_interpreter; }

Q_SIGNALS:
    void started(const QString& script, mirn::zelchip::CommandShell::Origin origin);
    void finished(const mirn::zelchip::TclResult& result, mirn::zelchip::CommandShell::Origin origin);
    void wrote(const QString& text, mirn::zelchip::TclInterpreter::Channel channel);
    // Emitted repeatedly while a script runs longer than a moment, so that cancel() can be called.
    void busy();
    // Emitted when no script is running any more, whether it came from run() or runFile(); nested scripts count as one.
    void idle();

private:
    TclResult evaluate(const QString& script);

    TclInterpreter m_interpreter;
    int m_viewCommands = 0; // number of running commands
    int m_userCommands = 0;
};

} // namespace mirn::zelchip
