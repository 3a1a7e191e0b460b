// SPDX-License-Identifier: MIT
#pragma once

#include "host/console/commandhistory.h"
#include "host/console/completion.h"

#include <QPlainTextEdit>

#include <optional>

namespace mirn::zelchip {

// The field in which scripts are typed. Return enters a complete script and adds a line to an incomplete one;
// Shift+Return always adds a line. Up and Down walk through the history from the first and the last line. Tab
// completes, and pressing it again requests the candidates; where no text is before the cursor it leaves the input.
// Escape clears the input; its text is then in the history. Undo and redo are the window's while the input is empty.
class ConsoleInput final : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit ConsoleInput(QWidget* parent);

    void setCompleter(Completer completer);

    // While a script runs, the user can type, but nothing is entered or completed, and Ctrl+C without a selection
    // requests cancellation.
    void setRunning(bool isRunning);

    // The content of the input, character for character.
    [[nodiscard]] QString script() const;

    [[nodiscard]] CommandHistory& history() { return m_history; }
    [[nodiscard]] const CommandHistory& history() const { return m_history; }

Q_SIGNALS:
    void entered(const QString& script);
    void cancelRequested();
    void candidatesFound(const QStringList& candidates);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    enum class Direction { Older, Newer };

    bool handleKey(const QKeyEvent& event);
    bool enter();
    bool discard();
    bool walk(Direction direction);
    [[nodiscard]] bool isAfterText() const;
    bool complete();
    void replace(int begin, int end, const QString& text);
    void adjustHeight();

    CommandHistory m_history;
    Completer m_completer;
    std::optional<QString> m_textAtTab; // the text before the cursor after the last completion
    bool m_isRunning = false;
};

} // namespace mirn::zelchip
