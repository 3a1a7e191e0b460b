// SPDX-License-Identifier: MIT
#include "host/window/mainwindow.h"

#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "engine/referenceengine.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "host/console/consoledock.h"
#include "host/design/designeditor.h"
#include "host/dialogs/commandswindow.h"
#include "host/dialogs/helptexts.h"
#include "host/dialogs/importdialog.h"
#include "host/dialogs/messagebox.h"
#include "host/drawing/snapshot.h"
#include "host/drawing/viewprobe.h"
#include "host/gestures/viewhistory.h"
#include "host/memory/windowmemory.h"
#include "host/project/projecttcl.h"
#include "host/widgets/chipstatusbar.h"
#include "host/widgets/findbox.h"
#include "host/window/comparedock.h"
#include "host/window/constraintactions.h"
#include "host/window/designaids.h"
#include "host/window/pictureactions.h"
#include "host/window/planningmenu.h"
#include "host/window/problemsdock.h"
#include "host/window/scriptaccess.h"
#include "host/window/shellconsole.h"
#include "planning/overviewmap.h"
#include "planning/pointernote.h"
#include "planning/siteplaces.h"
#include "resources/zeltree.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QIcon>

namespace mirn::zelchip {

using zelchipview::ZelChipGUI;

namespace {

constexpr int ConsoleHeight = 150;

} // namespace

MainWindow::MainWindow(std::unique_ptr<ProjectSession> session)
    : m_actions(this)
    , m_console(new ConsoleDock(this))
    , m_problems(new ProblemsDock(this, m_console, [this] { return m_project.area(); }))
    , m_compare(new CompareDock(this, m_console, [this] { return m_project.area(); }))
    , m_statusBar(new ChipStatusBar(this))
    , m_dragNote(new zelchipview::PointerNote(this))
    , m_planning(new PlanningMenu(this))
    , m_pictures(new PictureActions(this))
    , m_memory(new WindowMemory(this, m_console, m_actions.openRecent))
    , m_project(this, *m_memory, m_statusBar)
    , m_shellConsole(new ShellConsole(this, m_shell, m_console, m_statusBar, m_project))
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
    connectDocks();
    connect(&m_project, &OpenProject::leaving, &m_refresh, &QTimer::stop); // it would use an area that no longer exists
    connect(&m_project, &OpenProject::shown, this, &MainWindow::beginProject);
    showSession(std::move(session));
}

MainWindow::~MainWindow() = default;

void MainWindow::connectActions()
{
    connect(m_actions.openProject, &QAction::triggered, &m_project, &OpenProject::chooseProject);
    connect(m_actions.openDrawing, &QAction::triggered, &m_project, &OpenProject::chooseDrawing);
    connect(m_actions.importTables, &QAction::triggered, this, [this] {
        openImportDialog(this, m_memory->folder(), [this](const QString& project) {
            m_memory->setFolderOf(project);
            m_project.open(project);
        });
    });
    connect(m_actions.saveSnapshot, &QAction::triggered, this, &MainWindow::chooseSnapshot);
    connect(m_actions.exportPicture, &QAction::triggered, this, &MainWindow::choosePicture);
    auto* constraints = new ConstraintActions(
        m_actions, *m_memory, [this]() -> DesignEditor& { return m_project.editor(); }, this);
    connect(
        constraints, &ConstraintActions::told, this, [this](const QString& sentence) { m_statusBar->tell(sentence); });
    connect(m_actions.save, &QAction::triggered, this, &MainWindow::save);
    connect(m_actions.undo, &QAction::triggered, this,
        [this] { stepDesign(&DesignEditor::undo, tr("Undone: %1").arg(m_project.editor().undoStack().undoText())); });
    connect(m_actions.redo, &QAction::triggered, this, [this] {
        stepDesign(&DesignEditor::redo, tr("Done again: %1").arg(m_project.editor().undoStack().redoText()));
    });
    connect(m_actions.find, &QAction::triggered, this, [this] {
        m_project.area()->findBox()->setFocus();
        m_project.area()->findBox()->selectAll();
    });
    connect(m_actions.quit, &QAction::triggered, this, &QWidget::close);
    connect(m_actions.zoomIn, &QAction::triggered, this, [this] { m_project.area()->chipView()->zoomIn(); });
    connect(m_actions.zoomOut, &QAction::triggered, this, [this] { m_project.area()->chipView()->zoomOut(); });
    connect(m_actions.fit, &QAction::triggered, this, &MainWindow::fit);
    connect(m_actions.zoomToSelection, &QAction::triggered, this, &MainWindow::zoomToSelection);
    connect(m_actions.viewBack, &QAction::triggered, this, [this] { m_project.area()->history()->back(); });
    connect(m_actions.viewForward, &QAction::triggered, this, [this] { m_project.area()->history()->forward(); });
    connect(
        m_actions.overview, &QAction::toggled, this, [this](bool isOn) { m_project.area()->overview()->setOn(isOn); });
    connect(m_actions.keys, &QAction::triggered, this, [this] {
        openMessageBox(this, QMessageBox::NoIcon, tr("Keys and Gestures"), keysAndGestures(), Qt::RichText);
    });
    connect(m_actions.commands, &QAction::triggered, this, [this] { openCommandsWindow(this); });
    connect(m_actions.about, &QAction::triggered, this,
        [this] { openMessageBox(this, QMessageBox::NoIcon, tr("About zelchip"), aboutText(), Qt::RichText); });
}

bool MainWindow::runScript(const QString& file, QString* error)
{
    const auto copying = connect(&m_shell, &CommandShell::wrote, this, &MainWindow::scriptWrote);
    const TclResult result = m_shell.runFile(file);
    disconnect(copying);
    if (!result.isOk)
        m_shellConsole->report(result);
    *error = result.isOk ? QString() : result.text;
    refreshView();
    return result.isOk;
}

void MainWindow::connectShell()
{
    // A script from a file is not stopped by a question; its changes are in the journal.
    m_shell.interpreter().setExitGuard([this] { return !m_shell.isAnsweringUser() || m_project.mayClose(); });
    ProjectCommands commands;
    commands.open = [this](const QString& path) {
        // The view would be deleted while its own command is running.
        if (m_shell.isAnsweringView())
            return tr("no other project can be opened while the view waits for an answer");
        return m_project.openFor(path);
    };
    commands.save = [this] { return m_project.editor().save(); };
    commands.refresh = [this] {
        refreshView();
        return QString();
    };
    commands.session = [this]() -> const ProjectSession& { return m_project.area()->session(); };
    addProjectCommands(m_shell.interpreter(), commands);
    m_access = std::make_unique<ScriptAccess>(ScriptAccess::Window{m_project, m_actions, *m_planning,
        [this] { settle(); }, [this] { fit(); }, [this](const QString& file) { return saveSnapshot(file); },
        [this](const PictureRequest& request) { return exportPicture(request); }});
    addWindowCommands(m_shell.interpreter(), *m_access);
}

void MainWindow::showSession(std::unique_ptr<ProjectSession> session)
{
    m_project.show(std::move(session));
}

void MainWindow::open(const QString& path)
{
    m_project.open(path);
}

void MainWindow::beginProject()
{
    const DrawingArea& area = *m_project.area();
    m_shell.setEditor(
        m_project.editor(), [this] { return [this](int site) { return middleOf(*m_project.area()->scene(), site); }; });
    m_actions.addChipActions(*area.chipView()->getActions(), area.session().hasFilter());
    connectChipView();
    connectDesign();
    setWindowTitle(tr("%1[*] — zelchip").arg(area.session().title()));
    showSummary();
}

void MainWindow::connectChipView()
{
    m_project.area()->overview()->setOn(m_actions.overview->isChecked());
    connect(m_project.area()->chipView(), &ZelChipGUI::sigRunTclCmd, this, &MainWindow::answerView);
    m_probe = new ViewProbe(m_project.area()->graphicsView(), m_project.editor().engine().device());
    connect(m_probe, &ViewProbe::pointerMoved, m_statusBar, &ChipStatusBar::showPointer);
    connect(m_probe, &ViewProbe::pointerLeft, m_statusBar, &ChipStatusBar::clearPointer);
    connect(m_probe, &ViewProbe::scaleChanged, m_statusBar, &ChipStatusBar::showMagnification);
    m_planning->begin(*m_project.area(), m_statusBar->legend());
}

void MainWindow::showSummary()
{
    const ProjectSession& session = m_project.area()->session();
    const int elements = m_project.area()->scene()->elementCount();
    const QString drawing = QFileInfo(session.drawingFile()).fileName();
    const QString count = elements == 1 ? tr("1 element") : tr("%1 elements").arg(locale().toString(elements));
    m_statusBar->setSummary(QStringLiteral("%1: %2").arg(drawing, count));
    m_statusBar->setWarnings(session.warnings());
    m_statusBar->clearMessage();
    for (const QString& message : session.recoveryMessages())
        m_console->showOutput(message + QLatin1Char('\n'));
    if (!session.recoveryMessages().isEmpty())
        m_statusBar->tell(asSentence(session.recoveryMessages().last()));
}

void MainWindow::connectDocks()
{
    m_memory->keep(m_actions.names);
    m_actions.addToggles(m_planning->menuActions());
    m_actions.addToggles({m_actions.names, m_actions.overview, m_console->toggleViewAction(),
        m_problems->toggleViewAction(), m_compare->toggleViewAction()});
    m_compare->setMenu(m_actions.comparePlacement);
    connect(m_problems, &ProblemsDock::counted, m_statusBar, &ChipStatusBar::setProblems);
    connect(m_statusBar, &ChipStatusBar::problemsRequested, m_problems, &ProblemsDock::come);
}

// This is the opposite of Tcl's own codes: non-zero means success.
void MainWindow::answerView(const QString& command, int& ret, QString& result)
{
    const TclResult answer = m_shell.run(command, CommandShell::Origin::View);
    ret = answer.isOk ? 1 : 0;
    result = answer.text;
}

void MainWindow::connectDesign()
{
    connect(&m_project.editor(), &DesignEditor::changed, this, [this] {
        showDesignState();
        m_refresh.start(0);
    });
    connect(&m_project.editor(), &DesignEditor::settingRefused, this, [this](const QString& reason) {
        m_shellConsole->report(TclResult::error(reason));
        m_refresh.start(0); // the view takes the refused setting for written
    });
    m_designAids = new DesignAids(
        *m_project.area(), {m_actions, m_shell, m_statusBar, m_dragNote, m_console, m_problems, m_compare});
    showDesignState();
    m_problems->refresh();
    m_compare->refresh();
}

void MainWindow::refreshView()
{
    m_refresh.stop();
    m_project.area()->refresh();
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
    if (!m_project.editor().isModified())
        m_project.area()->chipView()->clearDirtyFlag();
    const QUndoStack& stack = m_project.editor().undoStack();
    m_actions.showHistory(
        stack.canUndo() ? stack.undoText() : QString(), stack.canRedo() ? stack.redoText() : QString());
    const bool isModified = m_project.editor().isModified();
    m_actions.save->setEnabled(isModified);
    setWindowModified(isModified);
}

void MainWindow::save()
{
    const QString problem = m_project.editor().save();
    if (!problem.isEmpty()) {
        openErrorBox(this, problem);
        return;
    }
    m_project.area()->chipView()->clearDirtyFlag();
    showDesignState();
    m_statusBar->tell(tr("Saved %1").arg(m_project.editor().placementFile()));
}

void MainWindow::stepDesign(zelengine::Refusal (DesignEditor::*step)(), const QString& done)
{
    const zelengine::Refusal refusal = (m_project.editor().*step)();
    m_statusBar->tell(refusal.isEmpty() ? done : asSentence(refusal.sentence()));
}

void MainWindow::settle()
{
    if (m_refresh.isActive())
        refreshView();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    m_project.area()->settle();
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

QString MainWindow::exportPicture(const PictureRequest& request)
{
    settle();
    return m_pictures->write(*m_project.area()->graphicsView(), request);
}

void MainWindow::endsProgram()
{
    zelchipview::ZELChipViewDatabase::programEnds();
}

void MainWindow::fit()
{
    m_project.area()->fit();
    m_probe->update();
}

void MainWindow::zoomToSelection()
{
    if (!m_project.area()->zoomToSelection())
        m_statusBar->tell(tr("No element is selected."));
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_isArranged)
        return;
    m_isArranged = true;
    resizeDocks({m_console}, {ConsoleHeight}, Qt::Vertical);
    m_project.area()->arrangeDocks();
    m_memory->arrangeWindow();
    m_memory->arrange(*m_project.area()->chipView());
    m_project.begin();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->setAccepted(m_project.mayClose());
}

void MainWindow::chooseSnapshot()
{
    const QString file = chooseSnapshotFile(this, m_memory->folder());
    if (file.isEmpty())
        return;
    m_memory->setFolderOf(file);
    reportSaved(file, saveSnapshot(file));
}

void MainWindow::choosePicture()
{
    settle();
    const PictureRequest request = m_pictures->choose(*m_project.area()->graphicsView(), m_memory->folder());
    if (request.file.isEmpty())
        return;
    m_memory->setFolderOf(request.file);
    const QString error = exportPicture(request);
    if (m_pictures->isCancelled())
        m_statusBar->tell(asSentence(error));
    else
        reportSaved(request.file, error);
}

void MainWindow::reportSaved(const QString& file, const QString& error)
{
    if (error.isEmpty())
        m_statusBar->tell(tr("Saved %1").arg(file));
    else
        openErrorBox(this, error);
}

} // namespace mirn::zelchip
