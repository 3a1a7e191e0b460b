// SPDX-License-Identifier: MIT
#include "host/window/mainwindow.h"

#include "chipview/zelchipgui.h"
#include "engine/referenceengine.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "host/console/consoledock.h"
#include "host/console/tclcompletion.h"
#include "host/design/designeditor.h"
#include "host/design/elementname.h"
#include "host/dialogs/commandswindow.h"
#include "host/dialogs/helptexts.h"
#include "host/dialogs/messagebox.h"
#include "host/dialogs/projectnotice.h"
#include "host/drawing/snapshot.h"
#include "host/drawing/viewprobe.h"
#include "host/gestures/viewhistory.h"
#include "host/memory/recentprojects.h"
#include "host/memory/windowmemory.h"
#include "host/project/projectsession.h"
#include "host/project/projecttcl.h"
#include "host/widgets/chipstatusbar.h"
#include "host/widgets/findbox.h"
#include "host/widgets/loadprogress.h"
#include "host/window/busyscript.h"
#include "host/window/comparedock.h"
#include "host/window/constraintactions.h"
#include "host/window/designaids.h"
#include "host/window/drawingarea.h"
#include "host/window/planningmenu.h"
#include "host/window/problemsdock.h"
#include "planning/overviewmap.h"
#include "planning/pointernote.h"
#include "planning/siteplaces.h"
#include "resources/zeltree.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QLayout>
#include <QTreeWidget>

namespace mirn::zelchip {

using zelchipview::ZelChipGUI;

namespace {

constexpr int MessageMilliseconds = 8000;
constexpr int ConsoleHeight = 150;

} // namespace

MainWindow::MainWindow(std::unique_ptr<ProjectSession> session)
    : m_actions(this)
    , m_busyScript(new BusyScript(m_shell, this))
    , m_console(new ConsoleDock(this))
    , m_problems(new ProblemsDock(this, m_console, [this] { return m_drawingArea.get(); }))
    , m_compare(new CompareDock(this, m_console, [this] { return m_drawingArea.get(); }))
    , m_statusBar(new ChipStatusBar(this))
    , m_dragNote(new zelchipview::PointerNote(this))
    , m_planning(new PlanningMenu(this))
    , m_notice(new ProjectNotice(this))
    , m_memory(new WindowMemory(this, m_console, m_actions.openRecent))
{
    m_memory->keep(m_actions.overview);
    for (QAction* choice : m_planning->choices())
        m_memory->keep(choice);
    setWindowIcon(QIcon(QStringLiteral(":/zelchip/zelchip.png")));
    setStatusBar(m_statusBar);
    m_refresh.setSingleShot(true);
    connect(&m_refresh, &QTimer::timeout, this, &MainWindow::refreshView);
    connectActions();
    connectShell();
    connectConsole();
    showSession(std::move(session));
}

MainWindow::~MainWindow() = default;

void MainWindow::connectActions()
{
    connect(m_actions.openProject, &QAction::triggered, this, &MainWindow::chooseProject);
    connect(m_actions.openDrawing, &QAction::triggered, this, &MainWindow::chooseDrawing);
    connect(m_actions.saveSnapshot, &QAction::triggered, this, &MainWindow::chooseSnapshot);
    auto* constraints = new ConstraintActions(
        m_actions, *m_memory, [this]() -> DesignEditor& { return editor(); }, this);
    connect(constraints, &ConstraintActions::told, this,
        [this](const QString& sentence) { m_statusBar->showMessage(sentence, MessageMilliseconds); });
    connect(m_actions.save, &QAction::triggered, this, &MainWindow::save);
    connect(m_actions.undo, &QAction::triggered, this,
        [this] { stepDesign(&DesignEditor::undo, tr("Undone: %1").arg(editor().undoStack().undoText())); });
    connect(m_actions.redo, &QAction::triggered, this,
        [this] { stepDesign(&DesignEditor::redo, tr("Done again: %1").arg(editor().undoStack().redoText())); });
    connect(m_actions.find, &QAction::triggered, this, [this] {
        m_drawingArea->findBox()->setFocus();
        m_drawingArea->findBox()->selectAll();
    });
    connect(m_actions.quit, &QAction::triggered, this, &QWidget::close);
    connect(m_actions.zoomIn, &QAction::triggered, this, [this] { m_drawingArea->chipView()->zoomIn(); });
    connect(m_actions.zoomOut, &QAction::triggered, this, [this] { m_drawingArea->chipView()->zoomOut(); });
    connect(m_actions.fit, &QAction::triggered, this, &MainWindow::fit);
    connect(m_actions.zoomToSelection, &QAction::triggered, this, &MainWindow::zoomToSelection);
    connect(m_actions.viewBack, &QAction::triggered, this, [this] { m_drawingArea->history()->back(); });
    connect(m_actions.viewForward, &QAction::triggered, this, [this] { m_drawingArea->history()->forward(); });
    connect(m_actions.overview, &QAction::toggled, this, [this](bool isOn) { m_drawingArea->overview()->setOn(isOn); });
    connect(m_actions.keys, &QAction::triggered, this, &MainWindow::showKeys);
    connect(m_actions.commands, &QAction::triggered, this, [this] { openCommandsWindow(this); });
    connect(m_actions.about, &QAction::triggered, this, &MainWindow::showAbout);
    connect(&m_memory->recent(), &RecentProjects::chosen, this, &MainWindow::open);
    connect(
        m_notice, &ProjectNotice::reloadRequested, this, [this] { open(QString(m_drawingArea->session().path())); });
}

void MainWindow::open(const QString& path)
{
    if (!confirmClose(editor(), this))
        return;
    const LoadProgress progress(path, this, LoadProgress::Cancelling::Possible);
    const QString error = replaceProject(path);
    if (!QFileInfo::exists(path))
        m_memory->recent().remove(path);
    if (progress.isCancelled())
        m_statusBar->showMessage(asSentence(error), MessageMilliseconds);
    else if (!error.isEmpty())
        showError(error);
}

// A project whose lock is in doubt accepts no change, so reopening it loses nothing.
void MainWindow::takeOver()
{
    const QString path = m_drawingArea->session().path(); // the session ends
    const LoadProgress progress(path, this, LoadProgress::Cancelling::Possible);
    const QString error = replaceProject(path, ProjectSession::DoubtfulLock::IsTakenOver);
    if (!error.isEmpty())
        showError(error);
}

void MainWindow::askAboutLock()
{
    const QString doubt = editor().lockInDoubt();
    if (!doubt.isEmpty() && isVisible() && !testAttribute(Qt::WA_DontShowOnScreen))
        openTakeOverQuestion(this, doubt, [this] { takeOver(); });
}

QString MainWindow::replaceProject(const QString& path, ProjectSession::DoubtfulLock lock)
{
    QString error;
    m_notice->end(); // the same project may be opened again
    if (std::unique_ptr<ProjectSession> session = ProjectSession::open(path, &error, lock))
        showSession(std::move(session));
    else
        watchProject();
    return LoadProgress::isCurrentCancelled() ? tr("Opening %1 was cancelled").arg(QFileInfo(path).fileName()) : error;
}

bool MainWindow::runScript(const QString& file, QString* error)
{
    const auto copying = connect(&m_shell, &CommandShell::wrote, this, &MainWindow::scriptWrote);
    const TclResult result = m_shell.runFile(file);
    disconnect(copying);
    if (!result.isOk)
        reportResult(result);
    *error = result.isOk ? QString() : result.text;
    refreshView();
    return result.isOk;
}

void MainWindow::connectShell()
{
    connect(&m_shell, &CommandShell::finished, this, &MainWindow::reportResult);
    // A script from a file is not stopped by a question; its changes are in the journal.
    m_shell.interpreter().setExitGuard([this] { return !m_shell.isAnsweringUser() || mayClose(); });
    ProjectCommands commands;
    commands.open = [this](const QString& path) {
        // The view would be deleted while its own command is running.
        if (m_shell.isAnsweringView())
            return tr("no other project can be opened while the view waits for an answer");
        const LoadProgress progress(path, this, LoadProgress::Cancelling::Possible);
        return replaceProject(path);
    };
    commands.save = [this] { return editor().save(); };
    commands.refresh = [this] {
        refreshView();
        return QString();
    };
    commands.session = [this]() -> const ProjectSession& { return m_drawingArea->session(); };
    addProjectCommands(m_shell.interpreter(), commands);
    addWindowCommands(m_shell.interpreter(), *this);
}

void MainWindow::showSession(std::unique_ptr<ProjectSession> session)
{
    replaceDrawingArea(std::move(session));
    m_shell.setEditor(editor(), [this] { return [this](int site) { return middleOf(*scene(), site); }; });
    setCentralWidget(m_drawingArea->chipView());
    // Qt would show it later, and until then the console would grow into the gap.
    m_drawingArea->chipView()->show();
    m_actions.addChipActions(*m_drawingArea->chipView()->getActions(), m_drawingArea->session().hasFilter());
    connectChipView();
    connectDesign();
    setWindowTitle(tr("%1[*] — zelchip").arg(m_drawingArea->session().title()));
    showSummary();
    if (isVisible()) {
        layout()->activate();
        m_drawingArea->arrangeDocks();
        m_memory->arrange(*m_drawingArea->chipView());
    }
    m_drawingArea->graphicsView()->setFocus();
    askAboutLock();
    watchProject();
}

// A window that is only rendered into a file leaves the project to others.
void MainWindow::watchProject()
{
    if (!isVisible() || testAttribute(Qt::WA_DontShowOnScreen))
        return;
    m_notice->begin(m_drawingArea->session());
    m_memory->recent().add(m_drawingArea->session().path());
}

// The old drawing area is deleted first, because there can be only one controller of the chip view. If loading the new
// drawing is cancelled, the old session gets a new area; without an old session a sentence replaces the drawing.
void MainWindow::replaceDrawingArea(std::unique_ptr<ProjectSession> session)
{
    m_refresh.stop(); // it would use an area that no longer exists
    if (m_drawingArea && isVisible())
        m_memory->leave(*m_drawingArea->chipView());
    std::unique_ptr<ProjectSession> previous = m_drawingArea ? m_drawingArea->takeSession() : nullptr;
    m_drawingArea.reset();
    setCentralWidget(new QWidget(this)); // keeps the space until the new view exists
    centralWidget()->show();
    m_drawingArea = std::make_unique<DrawingArea>(std::move(session), this);
    if (LoadProgress::isCurrentCancelled() && previous) {
        const LoadProgress progress(previous->drawingFile(), this, LoadProgress::Cancelling::Impossible);
        m_drawingArea.reset();
        m_drawingArea = std::make_unique<DrawingArea>(std::move(previous), this);
    } else if (LoadProgress::isCurrentCancelled()) {
        m_drawingArea->showSentence(
            tr("Opening this drawing was cancelled. The File menu opens it again, or another one."));
    }
}

void MainWindow::connectChipView()
{
    m_drawingArea->overview()->setOn(m_actions.overview->isChecked());
    connect(m_drawingArea->chipView(), &ZelChipGUI::sigRunTclCmd, this, &MainWindow::answerView);
    m_probe = new ViewProbe(m_drawingArea->graphicsView(), editor().engine().device());
    connect(m_probe, &ViewProbe::pointerMoved, m_statusBar, &ChipStatusBar::showPointer);
    connect(m_probe, &ViewProbe::pointerLeft, m_statusBar, &ChipStatusBar::clearPointer);
    connect(m_probe, &ViewProbe::scaleChanged, m_statusBar, &ChipStatusBar::showMagnification);
    m_planning->begin(*m_drawingArea, m_statusBar->legend());
}

void MainWindow::showSummary()
{
    const ProjectSession& session = m_drawingArea->session();
    const int elements = static_cast<int>(m_drawingArea->scene()->items().size());
    const QString drawing = QFileInfo(session.drawingFile()).fileName();
    const QString count = elements == 1 ? tr("1 element") : tr("%1 elements").arg(locale().toString(elements));
    m_statusBar->setSummary(QStringLiteral("%1: %2").arg(drawing, count));
    m_statusBar->setWarnings(session.warnings());
    m_statusBar->clearMessage();
    for (const QString& message : session.recoveryMessages())
        m_console->showOutput(message + QLatin1Char('\n'));
    if (!session.recoveryMessages().isEmpty())
        m_statusBar->showMessage(asSentence(session.recoveryMessages().last()), MessageMilliseconds);
}

void MainWindow::connectConsole()
{
    m_memory->keep(m_actions.names);
    m_actions.addToggles(m_planning->menuActions());
    m_actions.addToggles({m_actions.names, m_actions.overview, m_console->toggleViewAction(),
        m_problems->toggleViewAction(), m_compare->toggleViewAction()});
    m_compare->setMenu(m_actions.comparePlacement);
    connect(m_problems, &ProblemsDock::counted, m_statusBar, &ChipStatusBar::setProblems);
    connect(m_statusBar, &ChipStatusBar::problemsRequested, m_problems, &ProblemsDock::come);
    const auto resources = [this] {
        QStringList paths;
        const zelengine::Design& design = editor().engine().design();
        for (int index : design.all())
            paths.append(design.resource(index).path);
        return paths;
    };
    const auto sites = [this] { return siteNames(device()); };
    m_console->setCompleter(TclCompletion([this] { return m_shell.interpreter().commandNames(); }, resources, sites));
    connect(m_console, &ConsoleDock::commandEntered, this,
        [this](const QString& script) { m_shell.run(script, CommandShell::Origin::User); });
    connect(m_console, &ConsoleDock::cancelRequested, &m_shell, &CommandShell::cancel);
    connect(&m_shell, &CommandShell::started, m_console, [this](const QString& script, CommandShell::Origin origin) {
        m_console->showCommand(
            script, origin == CommandShell::Origin::View ? ConsoleDock::Origin::View : ConsoleDock::Origin::User);
    });
    connect(&m_shell, &CommandShell::wrote, m_console, &ConsoleDock::showOutput);
    connect(m_busyScript, &BusyScript::changed, m_console, &ConsoleDock::setRunning);
    m_busyScript->setConsole(m_console, m_console->stopWidget());
}

// This is the opposite of Tcl's own codes: non-zero means success.
void MainWindow::answerView(const QString& command, int& ret, QString& result)
{
    const TclResult answer = m_shell.run(command, CommandShell::Origin::View);
    ret = answer.isOk ? 1 : 0;
    result = answer.text;
}

void MainWindow::reportResult(const TclResult& result)
{
    if (result.isOk) {
        m_console->showResult(result.text);
        m_statusBar->clearMessage(); // an earlier error
        return;
    }
    m_console->showError(result.text);
    m_statusBar->showMessage(asSentence(result.text), MessageMilliseconds);
}

void MainWindow::connectDesign()
{
    connect(&editor(), &DesignEditor::changed, this, [this] {
        showDesignState();
        m_refresh.start(0);
    });
    connect(&editor(), &DesignEditor::settingRefused, this, [this](const QString& reason) {
        reportResult(TclResult::error(reason));
        m_refresh.start(0); // the view takes the refused setting for written
    });
    m_designAids = new DesignAids(
        *m_drawingArea, {m_actions, m_shell, m_statusBar, m_dragNote, m_console, m_problems, m_compare});
    showDesignState();
    m_problems->refresh();
    m_compare->refresh();
}

void MainWindow::refreshView()
{
    m_refresh.stop();
    m_drawingArea->refresh();
    m_probe->refresh();
    m_designAids->refresh();
    m_planning->refresh();
    m_problems->refresh();
    m_compare->refresh();
    showDesignState();
}

// The editor decides what is unsaved. The view's own flag is set even by values that were in force already, and undo
// does not clear it.
void MainWindow::showDesignState()
{
    if (!editor().isModified())
        m_drawingArea->chipView()->clearDirtyFlag();
    const QUndoStack& stack = editor().undoStack();
    m_actions.showHistory(
        stack.canUndo() ? stack.undoText() : QString(), stack.canRedo() ? stack.redoText() : QString());
    const bool isModified = editor().isModified();
    m_actions.save->setEnabled(isModified);
    setWindowModified(isModified);
}

void MainWindow::save()
{
    const QString problem = editor().save();
    if (!problem.isEmpty()) {
        showError(problem);
        return;
    }
    m_drawingArea->chipView()->clearDirtyFlag();
    showDesignState();
    m_statusBar->showMessage(tr("Saved %1").arg(editor().placementFile()), MessageMilliseconds);
}

void MainWindow::stepDesign(zelengine::Refusal (DesignEditor::*step)(), const QString& done)
{
    const zelengine::Refusal refusal = (editor().*step)();
    m_statusBar->showMessage(refusal.isEmpty() ? done : asSentence(refusal.sentence()), MessageMilliseconds);
}

DesignEditor& MainWindow::editor() const
{
    return m_drawingArea->session().editor();
}

zelchipview::ZelChipGUI* MainWindow::chipView()
{
    return m_drawingArea->chipView();
}

zelchipview::ZelGraphicsScene* MainWindow::scene()
{
    return m_drawingArea->scene();
}

zelchipview::ZelGraphicsView* MainWindow::graphicsView()
{
    return m_drawingArea->graphicsView();
}

QTreeWidget* MainWindow::tree()
{
    return m_drawingArea->tree();
}

const zelengine::Device& MainWindow::device() const
{
    return editor().engine().device();
}

void MainWindow::settle()
{
    if (m_refresh.isActive())
        refreshView();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    m_drawingArea->settle();
    m_planning->settle();
    m_probe->update();
}

QString MainWindow::saveSnapshot(const QString& file)
{
    m_console->showPending();
    settle();
    QString error;
    zelchip::saveSnapshot(*this, file, &error);
    return error;
}

void MainWindow::fit()
{
    m_drawingArea->fit();
    m_probe->update();
}

void MainWindow::zoomToSelection()
{
    if (!m_drawingArea->zoomToSelection())
        m_statusBar->showMessage(tr("No element is selected."), MessageMilliseconds);
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_isArranged)
        return;
    m_isArranged = true;
    resizeDocks({m_console}, {ConsoleHeight}, Qt::Vertical);
    m_drawingArea->arrangeDocks();
    m_memory->arrangeWindow();
    m_memory->arrange(*m_drawingArea->chipView());
    askAboutLock();
    watchProject();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->setAccepted(mayClose());
}

bool MainWindow::mayClose()
{
    if (!confirmClose(editor(), this))
        return false;
    m_memory->save(*m_drawingArea->chipView());
    return true;
}

void MainWindow::chooseProject()
{
    const QString directory = QFileDialog::getExistingDirectory(this, tr("Open Project"), m_memory->folder());
    if (directory.isEmpty())
        return;
    m_memory->setFolderOf(directory);
    open(directory);
}

void MainWindow::chooseDrawing()
{
    const QString filter = tr("Drawings (*.svg *.svgz);;All files (*)");
    const QString file = QFileDialog::getOpenFileName(this, tr("Open Drawing"), m_memory->folder(), filter);
    if (file.isEmpty())
        return;
    m_memory->setFolderOf(file);
    open(file);
}

void MainWindow::chooseSnapshot()
{
    const QString file = chooseSnapshotFile(this, m_memory->folder());
    if (file.isEmpty())
        return;
    m_memory->setFolderOf(file);
    const QString error = saveSnapshot(file);
    if (error.isEmpty())
        m_statusBar->showMessage(tr("Saved %1").arg(file), MessageMilliseconds);
    else
        showError(error);
}

void MainWindow::showError(const QString& text)
{
    openMessageBox(this, QMessageBox::Critical, tr("zelchip"), asSentence(text), Qt::PlainText);
}

void MainWindow::showKeys()
{
    openMessageBox(this, QMessageBox::NoIcon, tr("Keys and Gestures"), keysAndGestures(), Qt::RichText);
}

void MainWindow::showAbout()
{
    openMessageBox(this, QMessageBox::NoIcon, tr("About zelchip"), aboutText(), Qt::RichText);
}

} // namespace mirn::zelchip
