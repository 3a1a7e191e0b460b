// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>

#include <memory>

class QAction;

namespace mirn::zelchip {

class ConsoleGutter;
class ConsoleLimits;

// The text that the console has shown so far: bounded, so that no script can fill the memory, plain, whatever the text
// looks like, and copied without the marks in front of it. It follows its end unless the user has scrolled up.
class ConsoleOutput final : public QPlainTextEdit
{
    Q_OBJECT
public:
    // What a line is; it decides on its look and its mark.
    enum class Kind { Output, ErrorOutput, Result, Error, Candidates, UserCommand, ViewCommand };

    static constexpr int MostLines = 10'000;
    static constexpr int LongestLine = 20'000; // characters; what is behind is left out, and a note says so
    static constexpr int LongestText = 200'000; // likewise, of one call

    explicit ConsoleOutput(QWidget* parent);

    // Adds lines of their own.
    void append(Kind kind, const QString& text);

    // Continues the last line when it is of the same kind and came without its end.
    void continueWith(Kind kind, const QString& text);

    // Set in columns.
    void appendCandidates(const QStringList& candidates);

    // Left of the text, in pixels.
    [[nodiscard]] int gutterWidth() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    friend class ConsoleGutter;

    void addActions();
    void updateActions();
    void write(Kind kind, const QString& text);
    void writeLine(Kind kind, const QString& line, bool isContinued);
    void dropOldest();
    void recolor();
    void layOutGutter();
    void paintGutter(QPaintEvent* event);

    ConsoleGutter* const m_gutter; // child of this
    QAction* m_copy = nullptr; // this and the following: children of this
    QAction* m_selectAll = nullptr;
    QAction* m_clear = nullptr;
    bool m_isLineOpen = false; // the last line came without its end
};

} // namespace mirn::zelchip
