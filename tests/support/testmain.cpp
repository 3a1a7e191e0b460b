// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"

#include "platform/contract/mirnprojectmanager.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zelprogress.h"
#include "platform/contract/zelproject.h"
#include "platform/contract/zeltrace.h"

#include <QApplication>
#include <QFont>
#include <QRegularExpression>

namespace zeltest {

void Test::init()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 3, 0)
    // The offscreen platform says of some window operations that it does not have them.
    QTest::failOnWarning(QRegularExpression("^(?!This plugin does not support)"));
#endif
}

void Test::cleanup()
{
    setDiagTraceSink(nullptr);
    TRQDebug::getInstance()->setSink(nullptr);
    SVGParser::setFactory(nullptr);
    zelprogress::setCurrent(nullptr);
    zelproject::getInstance()->setFlowName({});
    MirnProjectManager::getProjectManager()->setProject(nullptr);
}

void pinLook()
{
    QApplication::setStyle("Fusion");
    QFont font("DejaVu Sans");
    font.setPixelSize(12);
    QApplication::setFont(font);
}

int runTests(QObject* tests, int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    pinLook();
    return QTest::qExec(tests, argc, argv);
}

} // namespace zeltest
