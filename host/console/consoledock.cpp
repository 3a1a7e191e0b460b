// SPDX-License-Identifier: MIT
#include "host/console/consoledock.h"

#include "host/console/consoleinput.h"
#include "host/console/consoleoutput.h"

#include <QFontDatabase>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <utility>

namespace mirn::zelchip {

namespace {

constexpr int SmallestOutputHeight = 24; // pixels; leaves space for the drawing in a small window

// Returns a monospaced font in the size of the rest of the program.
QFont consoleFont(const QFont& programFont)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (programFont.pixelSize() > 0)
        font.setPixelSize(programFont.pixelSize());
    else
        font.setPointSizeF(programFont.pointSizeF());
    return font;
}

} // namespace

ConsoleDock::ConsoleDock(QWidget* parent)
    : QDockWidget(tr("Console"), parent)
{
    setObjectName(QStringLiteral("Console"));
    auto* content = new QFrame(this);
    content->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    content->setBackgroundRole(QPalette::Base);
    content->setAutoFillBackground(true);
    content->setFont(consoleFont(font()));
    m_output = new ConsoleOutput(content);
    m_output->setMinimumHeight(SmallestOutputHeight);
    m_output->setObjectName(QStringLiteral("consoleOutput"));
    m_output->setAccessibleName(tr("Console output"));
    m_output->setFrameShape(QFrame::NoFrame);
    auto* line = new QFrame(content);
    line->setFrameStyle(QFrame::HLine | QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);

    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(m_output, 1);
    layout->addWidget(line);
    layout->addWidget(newInputRow(content));
    setWidget(content);
    content->setFocusProxy(m_input);

    connect(m_input, &ConsoleInput::entered, this, &ConsoleDock::commandEntered);
    connect(m_input, &ConsoleInput::cancelRequested, this, &ConsoleDock::cancelRequested);
    connect(m_output, &ConsoleOutput::cancelRequested, this, &ConsoleDock::cancelRequested);
    connect(m_input, &ConsoleInput::candidatesFound, m_output, &ConsoleOutput::appendCandidates);
    connect(m_stopButton, &QToolButton::clicked, this, &ConsoleDock::cancelRequested);
}

QWidget* ConsoleDock::newInputRow(QWidget* parent)
{
    auto* row = new QWidget(parent);
    m_input = new ConsoleInput(row);
    m_input->setObjectName(QStringLiteral("consoleInput"));
    m_input->setFrameShape(QFrame::NoFrame);
    m_input->setPlaceholderText(tr("Tcl command"));
    m_input->setAccessibleName(tr("Tcl command"));
    auto* prompt = new QLabel(QStringLiteral(">"), row);
    prompt->setContentsMargins(0, qRound(m_input->document()->documentMargin()), ConsoleOutput::GutterPadding, 0);
    prompt->setAlignment(Qt::AlignRight | Qt::AlignTop);
    prompt->setFixedWidth(m_output->gutterWidth());
    m_stopButton = new QToolButton(row);
    m_stopButton->setObjectName(QStringLiteral("stop"));
    m_stopButton->setText(tr("Stop"));
    m_stopButton->setToolTip(tr("End the running script (Ctrl+C)"));
    m_stopButton->setFont(font());
    m_stopButton->hide();

    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(prompt, 0, Qt::AlignTop);
    layout->addWidget(m_input, 1);
    layout->addWidget(m_stopButton, 0, Qt::AlignTop);
    return row;
}

void ConsoleDock::showCommand(const QString& command, Origin origin)
{
    m_output->append(
        origin == Origin::User ? ConsoleOutput::Kind::UserCommand : ConsoleOutput::Kind::ViewCommand, command);
}

void ConsoleDock::showOutput(const QString& text, TclInterpreter::Channel channel)
{
    const bool isError = channel == TclInterpreter::Channel::Error;
    m_output->continueWith(isError ? ConsoleOutput::Kind::ErrorOutput : ConsoleOutput::Kind::Output, text);
}

void ConsoleDock::showPending()
{
    m_output->flush();
}

void ConsoleDock::showResult(const QString& text)
{
    m_output->append(ConsoleOutput::Kind::Result, text);
}

void ConsoleDock::showError(const QString& message)
{
    m_output->append(ConsoleOutput::Kind::Error, message);
}

void ConsoleDock::setRunning(bool isRunning)
{
    m_stopButton->setVisible(isRunning);
    m_input->setRunning(isRunning);
}

QWidget* ConsoleDock::stopWidget() const
{
    return m_stopButton;
}

QWidget* ConsoleDock::output() const
{
    return m_output;
}

QWidget* ConsoleDock::input() const
{
    return m_input;
}

void ConsoleDock::setCompleter(Completer completer)
{
    m_input->setCompleter(std::move(completer));
}

QStringList ConsoleDock::history() const
{
    return m_input->history().entries();
}

void ConsoleDock::setHistory(const QStringList& history)
{
    m_input->history().setEntries(history);
}

} // namespace mirn::zelchip
