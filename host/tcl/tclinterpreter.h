// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace mirn::zelchip {

// The outcome of a script or a command: its value, or the message of its error.
struct TclResult
{
    bool isOk = true;
    QString text;

    [[nodiscard]] static TclResult value(const QString& text = {}) { return {true, text}; }
    [[nodiscard]] static TclResult error(const QString& message) { return {false, message}; }
};

class TclInterpreterPrivate;

// A Tcl interpreter with the host's own commands. It must be used in the GUI thread only; a command may evaluate
// further scripts.
class TclInterpreter final
{
public:
    enum class Channel { Output, Error };

    // `words` begins with the command's name.
    using Command = std::function<TclResult(const QStringList& words)>;
    using Output = std::function<void(const QString& text, Channel channel)>;

    TclInterpreter();
    ~TclInterpreter();
    TclInterpreter(const TclInterpreter&) = delete;
    TclInterpreter& operator=(const TclInterpreter&) = delete;

    // Adds a command, replacing one of the same name.
    void addCommand(const QString& name, Command command);

    TclResult evaluate(const QString& script);

    // The stack trace of the last failed evaluate(), in Tcl's words.
    [[nodiscard]] QString errorTrace() const;

    // Sets the receiver of what `puts` writes to the standard channels; without one the channels receive it.
    void setOutput(Output output);

    // Writes a line to the standard output, as `puts` does.
    void write(const QString& line);

    // Sets the function that is asked before "exit" ends the program; "exit" is an error if it returns false.
    void setExitGuard(std::function<bool()> mayExit);

    // Sets the function that is called about ten times a second while a script runs. It can process events and call
    // cancel().
    void setBusyHandler(std::function<void()> handler);

    // For a command that takes long: calls that function as often as a script would. Returns false once the scripts
    // were cancelled, so that the command can end.
    [[nodiscard]] bool stayResponsive();

    // Ends the running scripts with an error that they cannot catch. Does nothing if none runs.
    void cancel();
    [[nodiscard]] bool isRunning() const;

    // Returns false while a brace, bracket or quote is open, so that more lines must follow.
    [[nodiscard]] static bool isComplete(const QString& script);

    // The names of all commands, sorted.
    [[nodiscard]] QStringList commandNames() const;

    // Returns the words as a Tcl list, which is also the command that calls the first with the others. It is always one
    // line.
    [[nodiscard]] static QString list(const QStringList& words);

    // Matches as "string match" does.
    [[nodiscard]] static bool matches(const QString& text, const QString& pattern);

    // Returns nothing if the text is not a list.
    [[nodiscard]] static std::optional<QStringList> words(const QString& list);

private:
    const std::unique_ptr<TclInterpreterPrivate> d;
};

} // namespace mirn::zelchip
