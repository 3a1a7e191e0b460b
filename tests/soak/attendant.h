// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>

class QDialog;
class QMenu;

// Answers the menus and dialogs that come up while a gesture is carried out, as a number says: chooses, confirms or
// declines. What does not go away by itself it closes.
class Attendant final : public QObject
{
public:
    Attendant();

    void start(unsigned number);
    void stop() { m_timer.stop(); }

    // Something waits for an answer.
    [[nodiscard]] static bool isWanted();

private:
    void attend();
    void answerMenu(QMenu& menu);
    void answerDialog(QDialog& dialog);

    // The next choice among so many.
    int choose(int count);

    QTimer m_timer;
    unsigned m_number = 0;
    int m_turns = 0;
};
