// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

// Answers the menus and dialogs that come up while a gesture is carried out: it chooses, confirms or declines as a
// number says, and closes what does not go away by itself.
class Attendant final : public QObject
{
public:
    Attendant() { connect(&m_timer, &QTimer::timeout, this, &Attendant::attend); }

    void start(unsigned number)
    {
        m_number = number;
        m_turns = 0;
        m_timer.start(0);
    }

    void stop() { m_timer.stop(); }

    // Whether something waits for an answer.
    [[nodiscard]] static bool isWanted()
    {
        return QApplication::activePopupWidget() || QApplication::activeModalWidget();
    }

private:
    void attend()
    {
        m_timer.start(0); // anew: what this opens must be answered as well, before it returns
        QWidget* popup = QApplication::activePopupWidget();
        if (auto* menu = qobject_cast<QMenu*>(popup)) {
            answerMenu(*menu);
        } else if (popup) {
            popup->close();
        } else if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            answerDialog(*dialog);
        }
    }

    void answerMenu(QMenu& menu)
    {
        if (++m_turns > MostTurns) {
            menu.close();
            return;
        }
        const QList<QCheckBox*> boxes = menu.findChildren<QCheckBox*>(QString(), Qt::FindDirectChildrenOnly);
        if (!boxes.isEmpty() && choose(3) > 0) {
            boxes[choose(static_cast<int>(boxes.size()))]->click();
            return;
        }
        constexpr Qt::Key Keys[]
            = {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Right, Qt::Key_Return, Qt::Key_Escape};
        QTest::keyClick(&menu, Keys[choose(static_cast<int>(std::size(Keys)))]);
    }

    void answerDialog(QDialog& dialog)
    {
        if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
            const QList<QAbstractButton*> buttons = box->buttons();
            buttons[choose(static_cast<int>(buttons.size()))]->click();
            return;
        }
        for (QComboBox* list : dialog.findChildren<QComboBox*>()) {
            if (choose(2) == 0 && list->isEnabled())
                list->setCurrentIndex(choose(list->count()));
        }
        for (QLineEdit* field : dialog.findChildren<QLineEdit*>())
            field->setText(QString::number(choose(400)));
        const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
        if (buttons.isEmpty() || ++m_turns > MostTurns)
            dialog.reject();
        else
            buttons[choose(static_cast<int>(buttons.size()))]->click();
    }

    // The next choice, a number below the count.
    int choose(int count)
    {
        m_number = m_number * 1664525U + 1013904223U; // the low bits of such numbers hardly vary
        return count > 0 ? static_cast<int>((m_number >> 8) % static_cast<unsigned>(count)) : 0;
    }

    QTimer m_timer;
    unsigned m_number = 0;
    int m_turns = 0;
    static constexpr int MostTurns = 8; // in one menu
};
