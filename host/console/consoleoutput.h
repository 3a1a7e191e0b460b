// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>
#include <QTimer>

namespace mirn::zelchip {

// The text that the console has shown so far: bounded, so that no script can fill the memory, plain, whatever the text
// looks like, and copied without the marks in front of it. It follows its end unless the user has scrolled up.
class ConsoleOutput final : public QPlainTextEdit
{
    Q_OBJECT
public:
    // What a line is; it decides on its look and its mark.
    enum class Kind { Output, ErrorOutput, Result, Error, Candidates, UserCommand, ViewCommand };

    static constexpr int MostLines = 10'000;
    static constexpr int LongestLine = 10'000; // characters; what is behind is left out, and a note says so
    static constexpr int LongestText = 200'000; // likewise, of one call
    static constexpr int MostCharacters = 4'000'000; // of all lines; the oldest make room

    static constexpr int GutterPadding = 6; // pixels, on either side of the mark

    explicit ConsoleOutput(QWidget* parent);

    // Adds lines of their own.
    void append(Kind kind, const QString& text);

    // Continues the last line when it is of the same kind and came without its end. Shown when the program is next
    // idle, so that a script which writes in many small pieces is not held up by each.
    void continueWith(Kind kind, const QString& text);

    // Shows that at once.
    void flush();

    // Set in columns.
    void appendCandidates(const QStringList& candidates);

    void clearAll();

    // What lies left of the text, in pixels.
    [[nodiscard]] int gutterWidth() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    void addMenuActions();
    void write(Kind kind, const QString& text, bool isContinued);
    void beginLine(QTextCursor* cursor, Kind kind, bool isFirst);
    void writeLine(QTextCursor* cursor, Kind kind, const QString& line);
    void deselectLast(int count);
    void dropOldest();
    void recolor();
    void layOutGutter();
    void paintGutter();

    QWidget* const m_gutter; // child of this, which paints it
    QTimer m_flushTimer;
    QString m_pending; // not yet shown
    Kind m_pendingKind = Kind::Output;
    bool m_isLineOpen = false; // the last line came without its end
};

} // namespace mirn::zelchip
