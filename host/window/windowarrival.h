// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

class QWidget;

namespace mirn::zelchip {

// Calls a function once, when a window that was shown stands on the screen: it can be seen, and the window manager,
// which may give it another place and size than it asked for, has left it alone for a moment. A window that is never
// seen is not waited for for long. The object is a child of the window and deletes itself.
class WindowArrival final : public QObject
{
    Q_OBJECT
public:
    WindowArrival(QWidget* window, std::function<void()> arrived);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void check();
    [[nodiscard]] bool isSeen() const;

    QWidget* const m_window;
    const std::function<void()> m_arrived;
    QElapsedTimer m_clock; // since it was shown
    QTimer m_rest; // started anew by each change
};

} // namespace mirn::zelchip
