// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>
#include <QTimer>

#include <functional>

namespace mirn::zelchip {

// The text that the console has shown so far. It is bounded, so that no script can fill the memory; it is plain text
// and is copied without the marks in front of it. The end stays in sight, also when the size changes, unless the user
// has scrolled up.
class ConsoleOutput final : public QPlainTextEdit
{
    Q_OBJECT
public:
    // The kind of a line, which determines its colour and its mark.
    enum class Kind { Output, ErrorOutput, Result, Error, Candidates, UserCommand, ViewCommand };

    static constexpr int MostLines = 10'000;
    static constexpr int LongestLine = 10'000; // characters; longer lines are cut, with a note
    static constexpr int LongestText = 200'000; // characters of one call; likewise
    static constexpr int MostCharacters = 4'000'000; // in all lines; the oldest are dropped

    static constexpr int GutterPadding = 6; // pixels on either side of the mark

    explicit ConsoleOutput(QWidget* parent);

    // Adds lines.
    void append(Kind kind, const QString& text);

    // Continues the last line if it is of the same kind and has no line end. The text is shown when the program is next
    // idle, so that a script that writes in many small pieces is not slowed down.
    void continueWith(Kind kind, const QString& text);

    // Shows pending text at once.
    void flush();

    // Adds the candidates in columns.
    void appendCandidates(const QStringList& candidates);

    void clearAll();

    // The width of the area to the left of the text, in pixels.
    [[nodiscard]] int gutterWidth() const;

Q_SIGNALS:
    // Emitted when "copy" is pressed and nothing is selected.
    void cancelRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    void addMenuActions();
    void write(Kind kind, const QString& text, bool isContinued);
    void insert(Kind kind, const QString& text, bool isContinued);
    void keepEndDuring(const std::function<void()>& change);
    void beginLine(QTextCursor* cursor, Kind kind, bool isFirst);
    void writeLine(QTextCursor* cursor, Kind kind, const QString& line);
    void deselectLast(int count);
    void dropOldest();
    void recolor();
    void layOutGutter();
    void paintGutter();

    QWidget* const m_gutter; // child of this, which paints it
    QTimer m_flushTimer;
    QString m_pending; // text not yet shown
    Kind m_pendingKind = Kind::Output;
    bool m_isAtEnd = true; // whether the end is in sight, or shall be after the present change
    bool m_isLineOpen = false; // whether the last line has no line end yet
};

} // namespace mirn::zelchip
