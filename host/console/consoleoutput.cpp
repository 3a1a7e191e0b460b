// SPDX-License-Identifier: MIT
#include "host/console/consoleoutput.h"

#include "host/console/consolecolors.h"

#include <QAction>
#include <QEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

namespace {

using Kind = ConsoleOutput::Kind;

constexpr double MarkSize = 0.85; // relative to the text's size
constexpr int ContinuationFlag = 0x100; // in a block's state, beside the line's kind: not the first line of a text
constexpr int UnusedState = -1;
constexpr int MostCandidates = 200;
constexpr int MostPending = 64 * 1024; // characters
constexpr int ColumnGap = 2; // characters

Kind kindOf(const QTextBlock& block)
{
    return static_cast<Kind>(block.userState() & ~ContinuationFlag);
}

QString markOf(Kind kind)
{
    switch (kind) {
    case Kind::UserCommand:
        return QStringLiteral(">");
    case Kind::ViewCommand:
        return ConsoleOutput::tr("view", "mark of a command that the chip view sent");
    case Kind::Error:
        return QStringLiteral("!");
    default:
        return {};
    }
}

// A format without a colour follows the palette by itself.
QTextCharFormat formatOf(Kind kind, const ConsoleColors& colors)
{
    QTextCharFormat format;
    if (kind == Kind::Error || kind == Kind::ErrorOutput)
        format.setForeground(colors.error);
    else if (kind == Kind::Result)
        format.setForeground(colors.accent);
    else if (kind == Kind::Candidates)
        format.setForeground(colors.muted);
    else if (kind == Kind::UserCommand)
        format.setFontWeight(QFont::Bold);
    return format;
}

QString beginning(const QString& text, int length)
{
    return text.left(length > 0 && text.at(length - 1).isHighSurrogate() ? length - 1 : length);
}

// Control characters are replaced by their pictures: some would end the paragraph, and all others are invisible.
QString printable(QString line)
{
    for (QChar& character : line) {
        const ushort code = character.unicode();
        if (code < 0x20 && code != '\t')
            character = QChar(0x2400 + code);
        else if (code == QChar::LineSeparator || code == QChar::ParagraphSeparator || code == 0xfdd0 || code == 0xfdd1)
            character = QChar(QChar::ReplacementCharacter);
    }
    return line;
}

// Also converts the line ends to "\n".
QString bounded(const QString& text)
{
    QString shown = beginning(text, std::min(static_cast<int>(text.size()), ConsoleOutput::LongestText));
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    if (text.size() > ConsoleOutput::LongestText)
        shown += ConsoleOutput::tr("\n\u2026 %L1 more characters left out\n")
                     .arg(text.size() - ConsoleOutput::LongestText);
    return shown;
}

QFont markFont(QFont font)
{
    if (font.pixelSize() > 0)
        font.setPixelSize(qRound(font.pixelSize() * MarkSize));
    else
        font.setPointSizeF(font.pointSizeF() * MarkSize);
    return font;
}

} // namespace

ConsoleOutput::ConsoleOutput(QWidget* parent)
    : QPlainTextEdit(parent)
    , m_gutter(new QWidget(this))
{
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setMaximumBlockCount(MostLines);
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(0);
    connect(&m_flushTimer, &QTimer::timeout, this, &ConsoleOutput::flush);
    m_gutter->installEventFilter(this);
    connect(this, &QPlainTextEdit::updateRequest, m_gutter, QOverload<>::of(&QWidget::update));
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this,
        [this](int value) { m_isAtEnd = value >= verticalScrollBar()->maximum(); });
    addMenuActions();
    layOutGutter();
}

void ConsoleOutput::addMenuActions()
{
    auto* copyAction = new QAction(tr("&Copy"), this);
    copyAction->setObjectName(QStringLiteral("copy"));
    copyAction->setEnabled(false);
    auto* selectAllAction = new QAction(tr("Select &All"), this);
    selectAllAction->setObjectName(QStringLiteral("selectAll"));
    auto* clearAction = new QAction(tr("C&lear"), this);
    clearAction->setObjectName(QStringLiteral("clear"));
    connect(this, &QPlainTextEdit::copyAvailable, copyAction, &QAction::setEnabled);
    connect(copyAction, &QAction::triggered, this, &QPlainTextEdit::copy);
    connect(selectAllAction, &QAction::triggered, this, &QPlainTextEdit::selectAll);
    connect(clearAction, &QAction::triggered, this, &ConsoleOutput::clearAll);
    QWidget::addActions({copyAction, selectAllAction, clearAction});
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void ConsoleOutput::append(Kind kind, const QString& text)
{
    flush();
    if (text.isEmpty())
        return;
    write(kind, bounded(text), false);
    m_isLineOpen = false;
}

void ConsoleOutput::continueWith(Kind kind, const QString& text)
{
    if (kind != m_pendingKind)
        flush();
    m_pendingKind = kind;
    m_pending += bounded(text);
    if (m_pending.size() > MostPending)
        flush();
    else if (!m_flushTimer.isActive())
        m_flushTimer.start();
}

void ConsoleOutput::flush()
{
    m_flushTimer.stop();
    if (m_pending.isEmpty())
        return;
    const QString text = std::exchange(m_pending, {});
    write(m_pendingKind, text, m_isLineOpen && kindOf(document()->lastBlock()) == m_pendingKind);
    m_isLineOpen = !text.endsWith(QLatin1Char('\n'));
}

void ConsoleOutput::appendCandidates(const QStringList& candidates)
{
    const QStringList shown = candidates.mid(0, MostCandidates);
    int width = 0;
    for (const QString& candidate : shown)
        width = std::max(width, static_cast<int>(candidate.size()) + ColumnGap);
    // The candidates may make the scroll bar appear.
    const int scrollBar = verticalScrollBar()->isVisible() ? 0 : verticalScrollBar()->sizeHint().width();
    const int room = viewport()->width() - scrollBar - 2 * qRound(document()->documentMargin());
    const int lineWidth = room / std::max(1, fontMetrics().horizontalAdvance(QLatin1Char('0')));
    const int columns = std::max(1, (lineWidth + ColumnGap) / std::max(1, width));
    QString text;
    for (int i = 0; i < shown.size(); ++i) {
        const bool endsLine = (i + 1) % columns == 0 || i + 1 == shown.size();
        text += endsLine ? shown.at(i) + QLatin1Char('\n') : shown.at(i).leftJustified(width);
    }
    if (candidates.size() > shown.size())
        text += tr("and %1 more").arg(candidates.size() - shown.size());
    append(Kind::Candidates, text);
}

void ConsoleOutput::clearAll()
{
    m_pending.clear();
    clear();
    document()->firstBlock().setUserState(UnusedState);
    m_isLineOpen = false;
}

// The scroll bar moves with every new layout; only what moves it otherwise is the user's.
void ConsoleOutput::keepEndDuring(const std::function<void()>& change)
{
    const bool isAtEnd = m_isAtEnd;
    change();
    if (isAtEnd)
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    m_isAtEnd = isAtEnd || verticalScrollBar()->value() >= verticalScrollBar()->maximum();
}

void ConsoleOutput::write(Kind kind, const QString& text, bool isContinued)
{
    keepEndDuring([&] { insert(kind, text, isContinued); });
}

void ConsoleOutput::insert(Kind kind, const QString& text, bool isContinued)
{
    QString shown = text;
    if (shown.endsWith(QLatin1Char('\n')))
        shown.chop(1);
    const QStringList lines = shown.split(QLatin1Char('\n'));

    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    const int oldEnd = cursor.position();
    const bool isSelectedToEnd = textCursor().hasSelection() && textCursor().selectionEnd() == oldEnd;
    cursor.beginEditBlock();
    for (int i = 0; i < lines.size(); ++i) {
        if (i > 0 || !isContinued)
            beginLine(&cursor, kind, i == 0);
        writeLine(&cursor, kind, printable(lines.at(i)));
    }
    const int added = cursor.position() - oldEnd;
    cursor.endEditBlock();
    dropOldest();
    if (isSelectedToEnd)
        deselectLast(added);
}

// Qt extends a selection that ends at the insertion point; the new text is not meant to be copied.
void ConsoleOutput::deselectLast(int count)
{
    QTextCursor cursor = textCursor();
    const int end = std::max(0, document()->characterCount() - 1 - count);
    cursor.setPosition(std::min(cursor.selectionStart(), end));
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void ConsoleOutput::beginLine(QTextCursor* cursor, Kind kind, bool isFirst)
{
    const int previousState = cursor->block().userState();
    if (previousState != UnusedState) {
        cursor->insertBlock();
        // If the line was empty, the new block is inserted before it and the state has moved, so it is set again.
        QTextBlock previous = cursor->block().previous();
        previous.setUserState(previousState);
    }
    QTextBlock block = cursor->block();
    block.setUserState(static_cast<int>(kind) | (isFirst ? 0 : ContinuationFlag));
}

void ConsoleOutput::writeLine(QTextCursor* cursor, Kind kind, const QString& line)
{
    const QTextCharFormat format = formatOf(kind, ConsoleColors(palette()));
    const int room = LongestLine - (cursor->block().length() - 1);
    if (line.size() <= room)
        cursor->insertText(line, format);
    else if (room >= 0) // otherwise the line has the note already
        cursor->insertText(beginning(line, room) + tr(" \u2026 (line cut)"), format);
}

void ConsoleOutput::dropOldest()
{
    const int excess = document()->characterCount() - MostCharacters;
    if (excess <= 0)
        return;
    // Removes more than needed, so that this happens rarely.
    QTextCursor cursor(document());
    cursor.setPosition(document()->findBlock(excess + MostCharacters / 8).position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void ConsoleOutput::recolor()
{
    const ConsoleColors colors(palette());
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        cursor.setPosition(block.position());
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.setCharFormat(formatOf(kindOf(block), colors));
    }
    cursor.endEditBlock();
}

int ConsoleOutput::gutterWidth() const
{
    const int markWidth = QFontMetrics(markFont(font())).horizontalAdvance(markOf(Kind::ViewCommand));
    return markWidth + 2 * GutterPadding;
}

void ConsoleOutput::layOutGutter()
{
    setViewportMargins(gutterWidth(), 0, 0, 0);
    const QRect content = contentsRect();
    m_gutter->setGeometry(content.left(), content.top(), gutterWidth(), content.height());
}

void ConsoleOutput::paintGutter()
{
    QPainter painter(m_gutter);
    painter.fillRect(m_gutter->rect(), palette().color(QPalette::Base));
    const ConsoleColors colors(palette());
    const QFont small = markFont(font());
    const int baseline = fontMetrics().ascent();
    const int right = m_gutter->width() - GutterPadding;
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
        if (place.top() > m_gutter->height())
            break;
        const Kind kind = kindOf(block);
        const QString mark = (block.userState() & ContinuationFlag) != 0 ? QString() : markOf(kind);
        painter.setFont(kind == Kind::ViewCommand ? small : font());
        painter.setPen(kind == Kind::Error ? colors.error : colors.muted);
        const int width = painter.fontMetrics().horizontalAdvance(mark);
        painter.drawText(QPointF(right - width, place.top() + baseline), mark);
    }
}

void ConsoleOutput::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy) && !textCursor().hasSelection())
        Q_EMIT cancelRequested();
    QPlainTextEdit::keyPressEvent(event);
}

void ConsoleOutput::resizeEvent(QResizeEvent* event)
{
    keepEndDuring([&] {
        QPlainTextEdit::resizeEvent(event);
        layOutGutter();
    });
}

void ConsoleOutput::showEvent(QShowEvent* event)
{
    keepEndDuring([&] { QPlainTextEdit::showEvent(event); });
}

void ConsoleOutput::changeEvent(QEvent* event)
{
    keepEndDuring([&] {
        QPlainTextEdit::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            recolor();
        else if (event->type() == QEvent::FontChange)
            layOutGutter();
    });
}

bool ConsoleOutput::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_gutter || event->type() != QEvent::Paint)
        return QPlainTextEdit::eventFilter(watched, event);
    paintGutter();
    return true;
}

// Provides only the characters: pasting into a document must not bring the console's colours along.
QMimeData* ConsoleOutput::createMimeDataFromSelection() const
{
    QString text = textCursor().selectedText();
    text.replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n'));
    auto* data = new QMimeData; // Qt's text control deletes it
    data->setText(text);
    return data;
}

} // namespace mirn::zelchip
