// SPDX-License-Identifier: MIT

// Shows the chip view as one part of a bigger window, with the reference engine and its project files.
//     embedded PROJECT_DIR                        such as engine/sample
//     embedded PROJECT_DIR --once [FILE.png]      place something as a drop would, take a picture, and end
#include "engine/referenceengine.h"
#include "platform/contract/mirnprojectmanager.h"
#include "platform/contract/zelproject.h"
#include "platform/contract/zeltext.h"
#include "workbench.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>
#include <QTimer>

using mirn::zelengine::ReferenceEngine;

namespace {

// Opens the project, which the view asks the process for and not the engine. The flow decides on the view's menus, so
// it is set first.
void openProject(const mirn::zelengine::Project& project)
{
    zelproject::getInstance()->setFlowName(toEngineText(project.flow));
    auto open = std::make_unique<MirnProject>(toEngineText(project.name));
    for (const auto& implementation : project.implementations) {
        QDir().mkpath(implementation.directory);
        open->addImplementation(std::make_unique<MirnImplementation>(
            toEngineText(implementation.name), QFile::encodeName(implementation.directory).toStdString()));
    }
    open->setDefaultImplementation(toEngineText(project.defaultImplementation));
    MirnProjectManager::getProjectManager()->setProject(std::move(open));
}

int runWindow(std::unique_ptr<ReferenceEngine> engine, const QStringList& arguments)
{
    Workbench window(std::move(engine));
    window.resize(1400, 900);
    window.show();
    if (arguments.value(2) == QStringLiteral("--once")) {
        QTimer::singleShot(0, &window, [&] {
            const bool isPlaced = window.placeOne();
            const bool isPictured = arguments.size() < 4 || window.grab().save(arguments.at(3));
            QCoreApplication::exit(isPlaced && isPictured ? 0 : 1);
        });
    }
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QString error = QStringLiteral("usage: embedded PROJECT_DIR [--once [FILE.png]]");
    QStringList warnings;
    std::unique_ptr<ReferenceEngine> engine;
    if (arguments.size() >= 2)
        engine = ReferenceEngine::open(arguments.at(1), &error, &warnings);
    for (const QString& warning : warnings)
        QTextStream(stderr) << "embedded: " << warning << '\n';
    if (!engine) {
        QTextStream(stderr) << error << '\n';
        return 1;
    }
    openProject(engine->project());
    return runWindow(std::move(engine), arguments);
}
