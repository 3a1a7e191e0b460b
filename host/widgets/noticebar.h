// SPDX-License-Identifier: MIT
#pragma once

#include <QToolBar>

class QLabel;
class QPushButton;

namespace mirn::zelchip {

// A bar below the tool bar that says something about the open project until it no longer holds, with a button that does
// something about it. It is hidden while there is nothing to say. The main window owns it.
class NoticeBar final : public QToolBar
{
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent);

    // Shows a text, and the button unless its text is empty. An empty text hides the bar.
    void show(const QString& text, const QString& button);

Q_SIGNALS:
    void pressed();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void adjustHeight();
    void chooseColors();

    QLabel* m_text; // these are children of the bar
    QPushButton* m_button;
};

} // namespace mirn::zelchip
