// SPDX-License-Identifier: MIT
#include "host/console/consoleinput.h"

#include "host/tcl/tclinterpreter.h"

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QTextBlock>
#include <QTextLayout>
#include <QtMath>

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

namespace {

constexpr int MostVisibleLines = 8; // with more lines the input scrolls
constexpr int Slack = 2; // pixels; a view that just fits its lines would scroll by one

// Returns the height in the layout, which may be a pixel more than that of the font.
int lineHeight(const QPlainTextEdit& edit)
{
    const QTextLayout* const layout = edit.document()->firstBlock().layout();
    return layout->lineCount() > 0 ? qCeil(layout->lineAt(0).height()) : edit.fontMetrics().lineSpacing();
}

bool isHistoryKey(const QKeyEvent& event)
{
    return event.matches(QKeySequence::Undo) || event.matches(QKeySequence::Redo);
}

} // namespace

ConsoleInput::ConsoleInput(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
        &ConsoleInput::adjustHeight);
    adjustHeight();
}

void ConsoleInput::setCompleter(Completer completer)
{
    m_completer = std::move(completer);
}

void ConsoleInput::setRunning(bool isRunning)
{
    m_isRunning = isRunning;
}

// The document's toPlainText() would replace no-break spaces by ordinary ones.
QString ConsoleInput::script() const
{
    QString text = document()->toRawText();
    for (const QChar separator : {QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)})
        text.replace(separator, QLatin1Char('\n'));
    return text;
}

// A window shortcut for Escape must not fire while there is text to clear, and those for undo and redo must fire while
// there is none.
bool ConsoleInput::event(QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return QPlainTextEdit::event(event);
    const auto& keyEvent = *static_cast<QKeyEvent*>(event);
    const bool isForWindow = isHistoryKey(keyEvent) && document()->isEmpty();
    const bool isForInput = keyEvent.key() == Qt::Key_Escape && !document()->isEmpty();
    if (!isForWindow && !isForInput)
        return QPlainTextEdit::event(event);
    event->setAccepted(isForInput);
    return true;
}

void ConsoleInput::keyPressEvent(QKeyEvent* event)
{
    if (handleKey(*event))
        event->accept();
    else
        QPlainTextEdit::keyPressEvent(event);
}

bool ConsoleInput::handleKey(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    if (m_isRunning && event.matches(QKeySequence::Copy) && !textCursor().hasSelection()) {
        Q_EMIT cancelRequested();
        return true;
    }
    if (isHistoryKey(event) && document()->isEmpty())
        return true; // the window had nothing to undo
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (isReturn && modifiers == Qt::ShiftModifier) {
        textCursor().insertText(QStringLiteral("\n"));
        ensureCursorVisible();
        return true;
    }
    if (modifiers != Qt::NoModifier)
        return false;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return enter();
    case Qt::Key_Up:
        return walk(Direction::Older);
    case Qt::Key_Down:
        return walk(Direction::Newer);
    case Qt::Key_Tab:
        return !isAfterText() || complete();
    case Qt::Key_Escape:
        return discard();
    default:
        return false;
    }
}

bool ConsoleInput::enter()
{
    if (m_isRunning)
        return true;
    const QString entered = script();
    if (!TclInterpreter::isComplete(entered)) {
        textCursor().insertText(QStringLiteral("\n"));
        ensureCursorVisible();
        return true;
    }
    m_history.add(entered);
    m_textAtTab.reset();
    clear();
    if (!entered.trimmed().isEmpty())
        Q_EMIT this->entered(entered);
    return true;
}

// What is discarded can be brought back from the history.
bool ConsoleInput::discard()
{
    if (!m_history.entries().contains(script()))
        m_history.add(script());
    replace(0, document()->characterCount() - 1, {});
    return true;
}

// Inside a text of several lines the keys move between the lines instead.
bool ConsoleInput::walk(Direction direction)
{
    const bool isOlder = direction == Direction::Older;
    QTextCursor cursor = textCursor();
    if (cursor.movePosition(isOlder ? QTextCursor::Up : QTextCursor::Down))
        return false;
    const std::optional<QString> text = isOlder ? m_history.older(script()) : m_history.newer(script());
    if (!text)
        return true;
    replace(0, document()->characterCount() - 1, *text);
    // The cursor goes to the first line, so that the next press continues through the history.
    if (isOlder) {
        moveCursor(QTextCursor::Start);
        moveCursor(QTextCursor::EndOfLine);
    }
    return true;
}

bool ConsoleInput::complete()
{
    if (!m_completer || m_isRunning)
        return true;
    const int position = textCursor().position();
    const QString all = script();
    const QString before = all.left(position);
    const Completion completion = m_completer(before);
    if (completion.candidates.isEmpty())
        return true;
    QString text = completion.text;
    if (text.endsWith(QLatin1Char(' ')) && position < all.size() && all.at(position).isSpace())
        text.chop(1);
    if (text != before.mid(completion.start))
        replace(completion.start, position, text);
    else if (completion.candidates.size() > 1 && before == m_textAtTab)
        Q_EMIT candidatesFound(completion.candidates);
    m_textAtTab = before.left(completion.start) + text;
    return true;
}

// The replacement can be undone like typed text.
void ConsoleInput::replace(int begin, int end, const QString& text)
{
    QTextCursor cursor = textCursor();
    cursor.setPosition(begin);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.insertText(text);
    setTextCursor(cursor);
}

void ConsoleInput::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    adjustHeight();
}

void ConsoleInput::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        adjustHeight();
}

// Whoever walks through the window with Tab must come out of here again, so an empty input completes nothing.
bool ConsoleInput::isAfterText() const
{
    return !script().left(textCursor().position()).trimmed().isEmpty();
}

bool ConsoleInput::focusNextPrevChild(bool next)
{
    return (!next || !isAfterText()) && QWidget::focusNextPrevChild(next);
}

void ConsoleInput::adjustHeight()
{
    // The layout of plain text measures its height in lines.
    const int lines = std::clamp(qRound(document()->size().height()), 1, MostVisibleLines);
    const int margins = 2 * (qRound(document()->documentMargin()) + frameWidth());
    setFixedHeight(lines * lineHeight(*this) + margins + Slack);
}

} // namespace mirn::zelchip
