// SPDX-License-Identifier: MIT
#include "host/window/openproject.h"

#include "chipview/zelchipgui.h"
#include "graphics/zelgraphicsview.h"
#include "host/design/designeditor.h"
#include "host/dialogs/messagebox.h"
#include "host/dialogs/projectnotice.h"
#include "host/memory/recentprojects.h"
#include "host/memory/windowmemory.h"
#include "host/widgets/chipstatusbar.h"
#include "host/widgets/loadprogress.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLayout>
#include <QMainWindow>

#include <utility>

namespace mirn::zelchip {

OpenProject::OpenProject(QMainWindow* window, WindowMemory& memory, ChipStatusBar* statusBar)
    : m_window(window)
    , m_memory(memory)
    , m_statusBar(statusBar)
    , m_notice(new ProjectNotice(window))
{
    connect(&memory.recent(), &RecentProjects::chosen, this, &OpenProject::open);
    connect(m_notice, &ProjectNotice::reloadRequested, this, [this] { open(QString(m_area->session().path())); });
}

OpenProject::~OpenProject() = default;

void OpenProject::open(const QString& path)
{
    if (!confirmClose(editor(), m_window))
        return;
    const LoadProgress progress(path, m_window, LoadProgress::Cancelling::Possible);
    const QString error = replace(path);
    if (!QFileInfo::exists(path))
        m_memory.recent().remove(path);
    if (progress.isCancelled())
        m_statusBar->tell(asSentence(error));
    else if (!error.isEmpty())
        openErrorBox(m_window, error);
}

void OpenProject::chooseProject()
{
    const QString directory = QFileDialog::getExistingDirectory(m_window, tr("Open Project"), m_memory.folder());
    if (directory.isEmpty())
        return;
    m_memory.setFolderOf(directory);
    open(directory);
}

void OpenProject::chooseDrawing()
{
    const QString filter = tr("Drawings (*.svg *.svgz);;All files (*)");
    const QString file = QFileDialog::getOpenFileName(m_window, tr("Open Drawing"), m_memory.folder(), filter);
    if (file.isEmpty())
        return;
    m_memory.setFolderOf(file);
    open(file);
}

QString OpenProject::openFor(const QString& path)
{
    const LoadProgress progress(path, m_window, LoadProgress::Cancelling::Possible);
    return replace(path);
}

QString OpenProject::replace(const QString& path, ProjectSession::DoubtfulLock lock)
{
    QString error;
    m_notice->end(); // the same project may be opened again
    if (std::unique_ptr<ProjectSession> session = ProjectSession::open(path, &error, lock))
        show(std::move(session));
    else
        watch();
    return LoadProgress::isCurrentCancelled() ? tr("Opening %1 was cancelled").arg(QFileInfo(path).fileName()) : error;
}

void OpenProject::show(std::unique_ptr<ProjectSession> session)
{
    Q_EMIT leaving();
    replaceArea(std::move(session));
    m_window->setCentralWidget(m_area->chipView());
    // Qt would show it later, and until then the console would grow into the gap.
    m_area->chipView()->show();
    Q_EMIT shown();
    if (m_window->isVisible()) {
        m_window->layout()->activate();
        m_area->arrangeDocks();
        m_memory.arrange(*m_area->chipView());
    }
    m_area->graphicsView()->setFocus();
    begin();
}

// The old drawing area is deleted first, because there can be only one controller of the chip view. If loading the new
// drawing is cancelled, the old session gets a new area; without an old session a sentence replaces the drawing.
void OpenProject::replaceArea(std::unique_ptr<ProjectSession> session)
{
    if (m_area && m_window->isVisible())
        m_memory.leave(*m_area->chipView());
    std::unique_ptr<ProjectSession> previous = m_area ? m_area->takeSession() : nullptr;
    m_area.reset();
    m_window->setCentralWidget(new QWidget(m_window)); // keeps the space until the new view exists
    m_window->centralWidget()->show();
    m_area = std::make_unique<DrawingArea>(std::move(session), m_window);
    if (LoadProgress::isCurrentCancelled() && previous) {
        const LoadProgress progress(previous->drawingFile(), m_window, LoadProgress::Cancelling::Impossible);
        m_area.reset();
        m_area = std::make_unique<DrawingArea>(std::move(previous), m_window);
    } else if (LoadProgress::isCurrentCancelled()) {
        m_area->showSentence(tr("Opening this drawing was cancelled. The File menu opens it again, or another one."));
    }
}

void OpenProject::begin()
{
    askAboutLock();
    watch();
}

void OpenProject::askAboutLock()
{
    const QString doubt = editor().lockInDoubt();
    if (!doubt.isEmpty() && isOnScreen())
        openTakeOverQuestion(m_window, doubt, [this] { takeOver(); });
}

// A project whose lock is in doubt accepts no change, so reopening it loses nothing.
void OpenProject::takeOver()
{
    const QString path = m_area->session().path(); // the session ends
    const LoadProgress progress(path, m_window, LoadProgress::Cancelling::Possible);
    const QString error = replace(path, ProjectSession::DoubtfulLock::IsTakenOver);
    if (!error.isEmpty())
        openErrorBox(m_window, error);
}

void OpenProject::watch()
{
    if (!isOnScreen())
        return;
    m_notice->begin(m_area->session());
    m_memory.recent().add(m_area->session().path());
}

bool OpenProject::isOnScreen() const
{
    return m_window->isVisible() && !m_window->testAttribute(Qt::WA_DontShowOnScreen);
}

bool OpenProject::mayClose()
{
    if (!confirmClose(editor(), m_window))
        return false;
    m_memory.save(*m_area->chipView());
    return true;
}

} // namespace mirn::zelchip
