// SPDX-License-Identifier: MIT

// The minimal host: an engine, an open project, a window, and an answer to the view's commands.
//     minimal FOLDER            drag the PLL from the tree onto a site; the drawing is FOLDER/board.svg
//     minimal FOLDER --once     place it as a drop would, and end
#include "smallengine.h"

#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "platform/contract/mirnprojectmanager.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <memory>

using namespace mirn::zelchipview;

namespace {

// The view keeps its working file in the implementation's folder.
void openProject(const QString& folder)
{
    auto project = std::make_unique<MirnProject>("demo");
    project->addImplementation(std::make_unique<MirnImplementation>("impl1", QFile::encodeName(folder).toStdString()));
    project->setDefaultImplementation("impl1");
    MirnProjectManager::getProjectManager()->setProject(std::move(project));
}

// A host with a Tcl interpreter passes the command to it; this host knows a single command.
bool runCommand(const QString& command, SmallEngine& engine)
{
    static const QRegularExpression Place(QStringLiteral("^zel_resource place -rsc \\{(.*)\\} -id (\\d+)$"));
    const QRegularExpressionMatch match = Place.match(command);
    return match.hasMatch() && engine.place(match.captured(1).toLatin1().toStdString(), match.captured(2).toInt());
}

int runWindow(SmallEngine& engine, bool once)
{
    ZelChipGUI view(&engine, nullptr);
    QObject::connect(&view, &ZelChipGUI::sigRunTclCmd, &view, [&](const QString& command, int& ret, QString& result) {
        ret = runCommand(command, engine) ? 1 : 0; // non-zero is success
        result = ret ? QStringLiteral("done") : QStringLiteral("cannot be done");
        QTextStream(stdout) << command << ": " << result << '\n';
        if (ret)
            view.refresh(REFRESH_ALL); // the host knows what has changed
    });
    view.initGrahpicView();
    view.refresh(REFRESH_ALL);
    view.resize(800, 500);
    view.show();
    if (once) {
        QTimer::singleShot(0, &view, [] {
            const bool isPlaced
                = ZELChipViewDatabase::getInstance()->place(QStringLiteral("demo/pll"), QStringLiteral("2"));
            QCoreApplication::exit(isPlaced ? 0 : 1);
        });
    }
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2 || !QDir(arguments.at(1)).exists(QStringLiteral("board.svg"))) {
        QTextStream(stderr) << "usage: minimal FOLDER [--once]\n";
        return 2;
    }
    const QTemporaryDir work;
    openProject(work.path());
    SmallEngine engine(QFile::encodeName(arguments.at(1)).toStdString());
    const int status = runWindow(engine, arguments.contains(QStringLiteral("--once")));
    // The window is deleted by now; the controller comes next, and the engine last.
    ZELChipViewDatabase::destoryInstance();
    return status;
}
