// SPDX-License-Identifier: MIT
#include "host/project/commandshell.h"

#include "host/design/designtcl.h"
#include "host/tcl/commandhelp.h"

#include <QFile>

#include <utility>

namespace mirn::zelchip {

CommandShell::CommandShell(QObject* parent)
    : QObject(parent)
{
    m_interpreter.setOutput(
        [this](const QString& text, TclInterpreter::Channel channel) { Q_EMIT wrote(text, channel); });
    m_interpreter.setBusyHandler([this] { Q_EMIT busy(); });
    addHelpCommand(m_interpreter);
}

CommandShell::~CommandShell() = default;

void CommandShell::setEditor(DesignEditor& editor, PositionSource positions)
{
    addDesignCommands(m_interpreter, editor, std::move(positions));
}

TclResult CommandShell::evaluate(const QString& script)
{
    const TclResult result = m_interpreter.evaluate(script);
    if (!m_interpreter.isRunning())
        Q_EMIT idle();
    return result;
}

TclResult CommandShell::run(const QString& script, Origin origin)
{
    Q_EMIT started(script, origin);
    int& running = origin == Origin::View ? m_viewCommands : m_userCommands;
    ++running;
    const TclResult result = evaluate(script);
    --running;
    Q_EMIT finished(result, origin);
    return result;
}

TclResult CommandShell::runFile(const QString& file)
{
    // Tcl's own "source" command puts the line of an error into the stack trace.
    const TclResult result = evaluate(TclInterpreter::list({QStringLiteral("source"), QStringLiteral("-encoding"),
        QStringLiteral("utf-8"), QFile::decodeName(QFile::encodeName(file))}));
    if (result.isOk)
        return result;
    // The outermost file comes last. Tcl shortens long names, so only the line is taken from here.
    const QString beforeLine = QStringLiteral("\" line ");
    const QString trace = m_interpreter.errorTrace();
    const auto place = trace.lastIndexOf(QLatin1String("(file \""));
    const auto at = place < 0 ? place : trace.indexOf(beforeLine, place);
    if (at < 0)
        return TclResult::error(QStringLiteral("%1: %2").arg(file, result.text));
    const auto begin = at + beforeLine.size();
    const QString line = trace.mid(begin, trace.indexOf(QLatin1Char(')'), begin) - begin);
    return TclResult::error(QStringLiteral("%1:%2: %3").arg(file, line, result.text));
}

void CommandShell::cancel()
{
    m_interpreter.cancel();
}

} // namespace mirn::zelchip
