// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace mirn::zelchip {

// What a script or a command came to: its value, or the message of its error.
struct TclResult
{
    bool isOk = true;
    QString text;

    [[nodiscard]] static TclResult value(const QString& text = {}) { return {true, text}; }
    [[nodiscard]] static TclResult error(const QString& message) { return {false, message}; }
};

class TclInterpreterPrivate;

// A Tcl interpreter with commands of the host. GUI thread only; a command may evaluate further scripts.
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

    // Replaces a command of the same name.
    void addCommand(const QString& name, Command command);

    TclResult evaluate(const QString& script);

    // Where an uncaught error happened: Tcl's stack trace of the last failed evaluate().
    [[nodiscard]] QString errorTrace() const;

    // Takes what `puts` writes to the standard channels; without one it goes there.
    void setOutput(Output output);

    // Asked before "exit" ends the program; where it says no, "exit" is an error.
    void setExitGuard(std::function<bool()> mayExit);

    // Called about ten times a second while a script runs, so that the program stays alive and can call cancel().
    void setBusyHandler(std::function<void()> handler);

    // Ends the running scripts with an error that they cannot catch. Does nothing when none runs.
    void cancel();
    [[nodiscard]] bool isRunning() const;

    // False while a brace, bracket or quote is open: more lines must follow.
    [[nodiscard]] static bool isComplete(const QString& script);

    // The names of all commands, sorted.
    [[nodiscard]] QStringList commandNames() const;

    // Words as one list text, which is also a command that calls the first with the others. Always one line.
    [[nodiscard]] static QString list(const QStringList& words);

    // As "string match" does it.
    [[nodiscard]] static bool matches(const QString& text, const QString& pattern);

    // Nothing when the text is no list.
    [[nodiscard]] static std::optional<QStringList> words(const QString& list);

private:
    const std::unique_ptr<TclInterpreterPrivate> d;
};

} // namespace mirn::zelchip
