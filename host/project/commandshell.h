// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/tclinterpreter.h"

#include <QObject>
#include <QString>

namespace mirn::zelchip {

class DesignEditor;

// Where commands are run, whoever gives them: the console, a script, or the chip view. Lives as long as the program;
// the commands on the design follow the project that is open.
class CommandShell final : public QObject
{
    Q_OBJECT
public:
    enum class Origin { User, View };

    explicit CommandShell(QObject* parent = nullptr);
    ~CommandShell() override;

    // From now on commands change this design. The editor must live until the next call.
    void setEditor(DesignEditor& editor);

    // Runs a script and tells everyone what came of it.
    TclResult run(const QString& script, Origin origin);

    // Runs a file. An error names the file and the line.
    TclResult runFile(const QString& file);

    // Ends what is running; its result is an error.
    void cancel();

    // A command that the chip view sent waits for its answer: the view must not go away now.
    [[nodiscard]] bool isAnsweringView() const { return m_viewCommands > 0; }

    // What runs, the user has typed.
    [[nodiscard]] bool isAnsweringUser() const { return m_userCommands > 0; }

    [[nodiscard]] TclInterpreter& interpreter() { return m_interpreter; }

Q_SIGNALS:
    void started(const QString& script, mirn::zelchip::CommandShell::Origin origin);
    void finished(const mirn::zelchip::TclResult& result, mirn::zelchip::CommandShell::Origin origin);
    void wrote(const QString& text, mirn::zelchip::TclInterpreter::Channel channel);
    // The script takes longer than a moment; emitted again and again while it runs, so that cancel() can be called.
    void busy();
    // The last of the scripts that ran one inside the other has ended, from a file or not.
    void idle();

private:
    TclResult evaluate(const QString& script);

    TclInterpreter m_interpreter;
    int m_viewCommands = 0; // that are running
    int m_userCommands = 0;
};

} // namespace mirn::zelchip
