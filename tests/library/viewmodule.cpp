// SPDX-License-Identifier: MIT
#include "tests/support/chipviewfixture.h"

using namespace mirn::zelchipview;

// A part of a program that comes and goes, such as a plug-in, and uses the view while it is there.
extern "C" __attribute__((visibility("default"))) void useView()
{
    {
        zeltest::ChipView view;
        view.drawing.addRect(7, 10, 10, 20, 20);
        view.drawing.addLine(8, 0, 0, 30, 30);
        view.drawing.addText(9, "seven", 10, 10, 8);
        view.engine.addCell(nullptr, "ip1");
        view.open();
        QObject::connect(view.window.get(), &ZelChipGUI::sigRunTclCmd, view.window.get(),
            [](const QString&, int& ret, QString&) { ret = 1; });
        view.window->refresh(REFRESH_ALL);
        view.click({20, 20});
        view.selectRow(0);
        view.database()->place("top/ip1", "7");
        view.window->zoomIn();
        QCoreApplication::processEvents();
    }
    MirnProjectManager::getProjectManager()->setProject(nullptr);
    SVGParser::setFactory(nullptr);
}
