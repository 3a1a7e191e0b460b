// SPDX-License-Identifier: MIT
#pragma once

#include "host/project/projectwatch.h"

#include <QObject>

class QMainWindow;

namespace mirn::zelchip {

class NoticeBar;
class ProjectSession;

// Says in the window, for as long as it holds, that the open project can only be looked at, or that its files have been
// changed below the window, and offers to open it again. The main window owns it.
class ProjectNotice final : public QObject
{
    Q_OBJECT
public:
    explicit ProjectNotice(QMainWindow* window);

    // Begins with an open project, which must live until end(). A bare drawing has nothing that could be changed.
    void begin(const ProjectSession& session);
    void end();

Q_SIGNALS:
    void reloadRequested();

private:
    void show();

    ProjectWatch m_watch;
    NoticeBar* const m_bar; // child of the window
};

} // namespace mirn::zelchip
