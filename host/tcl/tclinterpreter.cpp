// SPDX-License-Identifier: MIT
#include "host/tcl/tclinterpreter.h"

#include <tcl.h>

#include <QHash>

#include <algorithm>
#include <chrono>
#include <utility>

namespace mirn::zelchip {

struct InterpreterDeleter
{
    void operator()(Tcl_Interp* interpreter) const { Tcl_DeleteInterp(interpreter); }
};

using InterpreterPointer = std::unique_ptr<Tcl_Interp, InterpreterDeleter>;

namespace {

// The interval at which a running script calls the busy handler.
constexpr long BusyIntervalMicroseconds = 100'000;

QString fromTcl(Tcl_Obj* object)
{
    int length = 0;
    const char* text = Tcl_GetStringFromObj(object, &length);
    return QString::fromUtf8(text, length);
}

// Returns a new object with a reference count of 0.
Tcl_Obj* toTcl(const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    return Tcl_NewStringObj(utf8.constData(), static_cast<int>(utf8.size()));
}

QStringList wordsOf(int count, Tcl_Obj* const objects[])
{
    QStringList words;
    for (int i = 0; i < count; ++i)
        words.append(fromTcl(objects[i]));
    return words;
}

// Puts a backslash before each special character; Tcl itself would put braces around a line break and keep it.
QString escapedWord(const QString& word)
{
    static const QString special = QStringLiteral(" \t\r;\"#$[]{}\\");
    QString text;
    for (const QChar character : word) {
        if (special.contains(character) || character == QLatin1Char('\n'))
            text += QLatin1Char('\\');
        text += character == QLatin1Char('\n') ? QLatin1Char('n') : character;
    }
    return text;
}

// Tcl crashes if objects or interpreters are created before this call, which also locates its script library. Once per
// process is enough.
void prepareTcl()
{
    static const bool isPrepared = [] {
        Tcl_FindExecutable(nullptr);
        return true;
    }();
    Q_UNUSED(isPrepared)
}

InterpreterPointer newInterpreter()
{
    prepareTcl();
    return InterpreterPointer(Tcl_CreateInterp());
}

} // namespace

class TclInterpreterPrivate
{
public:
    struct Registration
    {
        TclInterpreterPrivate* owner;
        TclInterpreter::Command command;
    };

    TclInterpreterPrivate()
        : interpreter(newInterpreter())
    { }

    static int run(ClientData data, Tcl_Interp* interpreter, int count, Tcl_Obj* const objects[]);
    static void release(ClientData data) { delete static_cast<Registration*>(data); }
    static void processEvents(ClientData data, Tcl_Interp* interpreter);

    void takeOver(const char* command);
    TclResult callTaken(const char* command, const QStringList& arguments);
    TclResult puts(const QStringList& words);
    TclResult exit(const QStringList& words);
    void limitTime();

    const InterpreterPointer interpreter;
    TclInterpreter::Output output;
    std::function<void()> busyHandler;
    std::function<bool()> mayExit;
    int depth = 0; // nesting of evaluate() calls
    bool isCancelled = false;
    std::chrono::steady_clock::time_point lastResponse; // of stayResponsive()
};

int TclInterpreterPrivate::run(ClientData data, Tcl_Interp* interpreter, int count, Tcl_Obj* const objects[])
{
    // A copy, because the command may replace itself.
    const TclInterpreter::Command command = static_cast<Registration*>(data)->command;
    const TclResult result = command(wordsOf(count, objects));
    Tcl_SetObjResult(interpreter, toTcl(result.text));
    return result.isOk ? TCL_OK : TCL_ERROR;
}

void TclInterpreterPrivate::processEvents(ClientData data, Tcl_Interp*)
{
    auto* self = static_cast<TclInterpreterPrivate*>(data);
    if (self->busyHandler)
        self->busyHandler();
    if (!self->isCancelled)
        self->limitTime();
}

void TclInterpreterPrivate::limitTime()
{
    Tcl_Time time;
    Tcl_GetTime(&time);
    time.usec += BusyIntervalMicroseconds;
    time.sec += time.usec / 1'000'000;
    time.usec %= 1'000'000;
    Tcl_LimitSetTime(interpreter.get(), &time);
    Tcl_LimitTypeSet(interpreter.get(), TCL_LIMIT_TIME);
}

// The host receives only what goes to the standard channels; files and pipes remain Tcl's.
TclResult TclInterpreterPrivate::puts(const QStringList& words)
{
    const bool hasNewline = words.value(1) != QLatin1String("-nonewline");
    const QStringList rest = words.mid(hasNewline ? 1 : 2);
    const QString channel = rest.size() == 2 ? rest.first() : QStringLiteral("stdout");
    const bool isError = channel == QLatin1String("stderr");
    if (!output || rest.isEmpty() || rest.size() > 2 || (!isError && channel != QLatin1String("stdout"))) {
        return callTaken("puts", words.mid(1));
    }
    output(rest.last() + (hasNewline ? QStringLiteral("\n") : QString()),
        isError ? TclInterpreter::Channel::Error : TclInterpreter::Channel::Output);
    return TclResult::value();
}

TclResult TclInterpreterPrivate::exit(const QStringList& words)
{
    return mayExit && !mayExit() ? TclResult::error(QStringLiteral("the program goes on"))
                                 : callTaken("exit", words.mid(1));
}

// Moves Tcl's own command into a namespace, so that completion does not offer it.
void TclInterpreterPrivate::takeOver(const char* command)
{
    const QString script
        = QStringLiteral("namespace eval ::zelchip {}; rename ::%1 ::zelchip::%1").arg(QLatin1String(command));
    Tcl_EvalEx(interpreter.get(), script.toUtf8().constData(), -1, TCL_EVAL_GLOBAL);
}

TclResult TclInterpreterPrivate::callTaken(const char* command, const QStringList& arguments)
{
    const QString taken = QStringLiteral("::zelchip::") + QLatin1String(command);
    const QString call = TclInterpreter::list(QStringList(taken) + arguments);
    const int code = Tcl_EvalEx(interpreter.get(), call.toUtf8().constData(), -1, 0);
    return {code == TCL_OK, fromTcl(Tcl_GetObjResult(interpreter.get()))};
}

TclInterpreter::TclInterpreter()
    : d(std::make_unique<TclInterpreterPrivate>())
{
    // Without Tcl's script library a few commands are missing, which is no reason to fail.
    if (Tcl_Init(d->interpreter.get()) != TCL_OK)
        Tcl_ResetResult(d->interpreter.get());
    d->takeOver("puts");
    addCommand(QStringLiteral("puts"), [this](const QStringList& words) { return d->puts(words); });
    d->takeOver("exit");
    addCommand(QStringLiteral("exit"), [this](const QStringList& words) { return d->exit(words); });
    Tcl_LimitSetGranularity(d->interpreter.get(), TCL_LIMIT_TIME, 1);
    Tcl_LimitAddHandler(d->interpreter.get(), TCL_LIMIT_TIME, &TclInterpreterPrivate::processEvents, d.get(), nullptr);
}

TclInterpreter::~TclInterpreter() = default;

void TclInterpreter::addCommand(const QString& name, Command command)
{
    auto* registration = new TclInterpreterPrivate::Registration{d.get(), std::move(command)}; // Tcl calls release()
    Tcl_CreateObjCommand(d->interpreter.get(), name.toUtf8().constData(), &TclInterpreterPrivate::run, registration,
        &TclInterpreterPrivate::release);
}

TclResult TclInterpreter::evaluate(const QString& script)
{
    if (d->depth++ == 0) {
        d->isCancelled = false;
        d->limitTime();
    }
    const QByteArray utf8 = script.toUtf8();
    const int code = Tcl_EvalEx(d->interpreter.get(), utf8.constData(), static_cast<int>(utf8.size()), TCL_EVAL_GLOBAL);
    TclResult result{code == TCL_OK || code == TCL_RETURN, fromTcl(Tcl_GetObjResult(d->interpreter.get()))};
    if (d->isCancelled)
        result = TclResult::error(QStringLiteral("cancelled"));
    if (--d->depth == 0)
        Tcl_LimitTypeReset(d->interpreter.get(), TCL_LIMIT_TIME);
    return result;
}

QString TclInterpreter::errorTrace() const
{
    const char* trace = Tcl_GetVar(d->interpreter.get(), "errorInfo", TCL_GLOBAL_ONLY);
    return QString::fromUtf8(trace);
}

void TclInterpreter::setOutput(Output output)
{
    d->output = std::move(output);
}

void TclInterpreter::write(const QString& line)
{
    d->puts({QStringLiteral("puts"), line});
}

void TclInterpreter::setExitGuard(std::function<bool()> mayExit)
{
    d->mayExit = std::move(mayExit);
}

void TclInterpreter::setBusyHandler(std::function<void()> handler)
{
    d->busyHandler = std::move(handler);
}

bool TclInterpreter::stayResponsive()
{
    const auto now = std::chrono::steady_clock::now();
    if (d->busyHandler && now - d->lastResponse >= std::chrono::microseconds(BusyIntervalMicroseconds)) {
        d->busyHandler();
        d->lastResponse = std::chrono::steady_clock::now();
    }
    return !d->isCancelled;
}

void TclInterpreter::cancel()
{
    if (d->depth > 0)
        d->isCancelled = true;
}

bool TclInterpreter::isRunning() const
{
    return d->depth > 0;
}

bool TclInterpreter::isComplete(const QString& script)
{
    return Tcl_CommandComplete(script.toUtf8().constData()) != 0;
}

QStringList TclInterpreter::commandNames() const
{
    QStringList names;
    if (Tcl_EvalEx(d->interpreter.get(), "info commands", -1, TCL_EVAL_GLOBAL) == TCL_OK)
        names = words(fromTcl(Tcl_GetObjResult(d->interpreter.get()))).value_or(QStringList());
    Tcl_ResetResult(d->interpreter.get());
    std::sort(names.begin(), names.end());
    return names;
}

QString TclInterpreter::list(const QStringList& words)
{
    const auto hasLineEnd = [](const QString& word) { return word.contains(QLatin1Char('\n')); };
    if (std::any_of(words.begin(), words.end(), hasLineEnd)) {
        QStringList quoted;
        for (const QString& word : words)
            quoted.append(hasLineEnd(word) ? escapedWord(word) : list({word}));
        return quoted.join(QLatin1Char(' '));
    }
    prepareTcl();
    Tcl_Obj* list = Tcl_NewListObj(0, nullptr);
    Tcl_IncrRefCount(list);
    for (const QString& word : words)
        Tcl_ListObjAppendElement(nullptr, list, toTcl(word));
    const QString text = fromTcl(list);
    Tcl_DecrRefCount(list);
    return text;
}

bool TclInterpreter::matches(const QString& text, const QString& pattern)
{
    return Tcl_StringMatch(text.toUtf8().constData(), pattern.toUtf8().constData()) != 0;
}

std::optional<QStringList> TclInterpreter::words(const QString& list)
{
    prepareTcl();
    Tcl_Obj* object = toTcl(list);
    Tcl_IncrRefCount(object);
    int count = 0;
    Tcl_Obj** elements = nullptr;
    std::optional<QStringList> words;
    if (Tcl_ListObjGetElements(nullptr, object, &count, &elements) == TCL_OK)
        words = wordsOf(count, elements);
    Tcl_DecrRefCount(object);
    return words;
}

} // namespace mirn::zelchip
