// SPDX-License-Identifier: MIT
#include "host/dialogs/projectnotice.h"

#include "host/design/designeditor.h"
#include "host/dialogs/messagebox.h"
#include "host/project/projectsession.h"
#include "host/widgets/noticebar.h"

#include <QMainWindow>

namespace mirn::zelchip {

ProjectNotice::ProjectNotice(QMainWindow* window)
    : QObject(window)
    , m_watch(this)
    , m_bar(new NoticeBar(window))
{
    window->addToolBarBreak();
    window->addToolBar(m_bar);
    m_bar->hide(); // adding shows it
    connect(&m_watch, &ProjectWatch::changed, this, &ProjectNotice::show);
    connect(m_bar, &NoticeBar::pressed, this, &ProjectNotice::reloadRequested);
}

void ProjectNotice::begin(const ProjectSession& session)
{
    if (!session.isBareDrawing())
        m_watch.begin(session.editor());
    show();
}

void ProjectNotice::end()
{
    m_watch.end();
    show();
}

void ProjectNotice::show()
{
    if (m_watch.state() == ProjectWatch::State::Outdated)
        m_bar->show(tr("Another program has changed the files of this project."), tr("Reload"));
    else if (m_watch.state() == ProjectWatch::State::LookOnly)
        m_bar->show(tr("Nothing can be changed here: %1.").arg(m_watch.reason()), QString());
    else
        m_bar->show(QString(), QString());
}

} // namespace mirn::zelchip
