// SPDX-License-Identifier: MIT
#include "host/mainwindow.h"

#include "chipview/zelchipgui.h"
#include "graphics/zelgraphicsview.h"
#include "host/chipstatusbar.h"
#include "host/chipsurface.h"
#include "host/helptexts.h"
#include "host/projectsession.h"
#include "host/snapshot.h"
#include "host/viewprobe.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QMessageBox>

namespace mirn::zelchip {

using zelchipview::ZelChipGUI;

namespace {

constexpr int MessageMilliseconds = 8000;

// A message box that deletes itself and does not hold up whoever opens it.
void openMessageBox(
    QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text, Qt::TextFormat format)
{
    auto* box = new QMessageBox(icon, title, text, QMessageBox::Close, parent);
    box->setTextFormat(format);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

} // namespace

MainWindow::MainWindow(std::unique_ptr<ProjectSession> session)
    : m_actions(this)
    , m_statusBar(new ChipStatusBar(this))
{
    setWindowIcon(QIcon(QStringLiteral(":/zelchip/zelchip.png")));
    setStatusBar(m_statusBar);
    connectActions();
    showSession(std::move(session));
}

MainWindow::~MainWindow() = default;

void MainWindow::connectActions()
{
    connect(m_actions.openProject, &QAction::triggered, this, &MainWindow::chooseProject);
    connect(m_actions.openDrawing, &QAction::triggered, this, &MainWindow::chooseDrawing);
    connect(m_actions.saveSnapshot, &QAction::triggered, this, &MainWindow::chooseSnapshot);
    connect(m_actions.quit, &QAction::triggered, this, &QWidget::close);
    connect(m_actions.zoomIn, &QAction::triggered, this, [this] { m_surface->chipView()->zoomIn(); });
    connect(m_actions.zoomOut, &QAction::triggered, this, [this] { m_surface->chipView()->zoomOut(); });
    connect(m_actions.fit, &QAction::triggered, this, &MainWindow::fit);
    connect(m_actions.zoomToSelection, &QAction::triggered, this, &MainWindow::zoomToSelection);
    connect(m_actions.keys, &QAction::triggered, this, &MainWindow::showKeys);
    connect(m_actions.about, &QAction::triggered, this, &MainWindow::showAbout);
}

void MainWindow::open(const QString& path)
{
    QString error;
    if (std::unique_ptr<ProjectSession> session = ProjectSession::open(path, &error))
        showSession(std::move(session));
    else
        showError(error);
}

void MainWindow::showSession(std::unique_ptr<ProjectSession> session)
{
    // The old one goes first: the chip view's controller exists once.
    m_surface.reset();
    m_surface = std::make_unique<ChipSurface>(std::move(session), this);
    setCentralWidget(m_surface->chipView());
    m_actions.addChipActions(*m_surface->chipView()->getActions(), m_surface->session().hasFilter());
    connectChipView();
    setWindowTitle(tr("%1 — zelchip").arg(m_surface->session().title()));
    showSummary();
    if (isVisible())
        m_surface->arrangeDocks();
    m_surface->graphicsView()->setFocus();
}

void MainWindow::connectChipView()
{
    connect(m_surface->chipView(), &ZelChipGUI::sigRunTclCmd, this,
        [this](const QString& command, int&, QString&) { refuseCommand(command); });
    m_probe = new ViewProbe(m_surface->graphicsView());
    connect(m_probe, &ViewProbe::pointerMoved, m_statusBar, &ChipStatusBar::showPointer);
    connect(m_probe, &ViewProbe::pointerLeft, m_statusBar, &ChipStatusBar::clearPointer);
    connect(m_probe, &ViewProbe::scaleChanged, m_statusBar, &ChipStatusBar::showScale);
}

void MainWindow::showSummary()
{
    const ProjectSession& session = m_surface->session();
    const int elements = static_cast<int>(m_surface->graphicsView()->scene()->items().size());
    const QString drawing = QFileInfo(session.drawingFile()).fileName();
    const QString count = elements == 1 ? tr("1 element") : tr("%1 elements").arg(locale().toString(elements));
    m_statusBar->setSummary(QStringLiteral("%1: %2").arg(drawing, count));
    m_statusBar->setWarnings(session.warnings());
    m_statusBar->clearMessage();
}

// There is no interpreter yet. The answer stays 0, no success, so that nothing takes the command for done.
void MainWindow::refuseCommand(const QString& command)
{
    m_statusBar->showMessage(tr("Commands are not run yet: %1").arg(command), MessageMilliseconds);
}

void MainWindow::fit()
{
    m_surface->fit();
    m_probe->update();
}

void MainWindow::zoomToSelection()
{
    if (!m_surface->zoomToSelection())
        m_statusBar->showMessage(tr("No element is selected."), MessageMilliseconds);
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_isArranged)
        return;
    m_isArranged = true;
    m_surface->arrangeDocks();
}

void MainWindow::chooseProject()
{
    const QString directory = QFileDialog::getExistingDirectory(this, tr("Open Project"));
    if (!directory.isEmpty())
        open(directory);
}

void MainWindow::chooseDrawing()
{
    const QString filter = tr("Drawings (*.svg);;All files (*)");
    const QString file = QFileDialog::getOpenFileName(this, tr("Open Drawing"), QString(), filter);
    if (!file.isEmpty())
        open(file);
}

void MainWindow::chooseSnapshot()
{
    const QString filter = tr("Images (*.png)");
    const QString file = QFileDialog::getSaveFileName(this, tr("Save Snapshot"), QStringLiteral("zelchip.png"), filter);
    if (file.isEmpty())
        return;
    QString error;
    if (saveSnapshot(*this, file, &error))
        m_statusBar->showMessage(tr("Saved %1").arg(file), MessageMilliseconds);
    else
        showError(error);
}

void MainWindow::showError(const QString& text)
{
    openMessageBox(this, QMessageBox::Critical, tr("zelchip"), text, Qt::PlainText);
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
