// SPDX-License-Identifier: MIT
#include "host/dialogs/helptexts.h"

#include "host/tcl/translation.h"

#include <QCoreApplication>
#include <QList>

#include <utility>

namespace mirn::zelchip {

namespace {

QList<std::pair<QString, QString>> gestures()
{
    return {
        {tr("Ctrl + wheel, + and -"), tr("zoom at the pointer")},
        {tr("F, Ctrl + 0"), tr("show the whole drawing")},
        {tr("map in the corner"), tr("click or drag: move the view; View > Overview switches the map on and off")},
        {tr("Shift + F"), tr("zoom to the selected elements")},
        {tr("wheel, arrow keys"), tr("scroll; with Shift or Alt the wheel scrolls sideways")},
        {tr("arrow keys"), tr("while no scroll bar needs them: move the keyboard cursor from site to site")},
        {tr("Ctrl + arrow keys"), tr("move the keyboard cursor in any case")},
        {tr("Enter, Space"), tr("settings of the site with the keyboard cursor")},
        {tr("S"), tr("select: click an element, or drag a rectangle")},
        {tr("H"), tr("pan: drag the drawing")},
        {tr("Z"), tr("zoom area: drag a rectangle, or click to zoom in there; Escape leaves this mode")},
        {tr("Backspace, Alt + Left"), tr("show the previous view; Alt + Right shows the next one")},
        {tr("middle button"), tr("drag: pan in every mode")},
        {tr("right button"), tr("on the drawing: mark kinds of elements")},
        {QString(), tr("on a resource: reset, delete, configure")},
        {tr("double click"), tr("settings of a dual-channel unit")},
        {tr("drag a resource"),
            tr("place it; a note says why a site refuses it. Near a border the drawing "
               "scrolls; the wheel scrolls and zooms")},
        {tr("drag a selected site"),
            tr("move its resource, or, if an IP is the selected row, all parts of the IP; on an occupied site a "
               "question offers to swap single resources, with Shift they swap at once")},
        {tr("select a resource"),
            tr("lines show what it needs and feeds, and the sites that take an unplaced one are tinted (View menu)")},
        {QString(), tr("rest on a line or on another site: names and length, or why the site does not take it")},
        {tr("Ctrl + P"), tr("place the selected resource: type to narrow the list of its sites, Enter places")},
        {tr("Ctrl + Shift + P"), tr("place everything that is unplaced, or say what stands against it")},
        {tr("Ctrl + L, Ctrl + Shift + L"),
            tr("lock the selected resource, and what is placed below it, on its site; unlock it")},
        {tr("Menu"),
            tr("in the tree: the menu of the current row, with \"Place on...\", \"Place Automatically\", Lock and "
               "Unlock")},
        {tr("Ctrl + F"), tr("find a resource by name, kind or site; Enter selects and zooms to it")},
        {tr("Ctrl + Z, Ctrl + Shift + Z"), tr("undo, redo")},
        {tr("Ctrl + S"), tr("save the placement")},
        {tr("Ctrl + Shift + E"), tr("export a picture of the drawing as PDF, SVG or PNG")},
        {tr("Enter, double click"), tr("in the problems (View menu): select what one concerns and zoom to it")},
        {tr("Up, Down, Enter"),
            tr("in the comparison (File menu): select the two sites of a difference and zoom to them")},
        {tr("Tab"), tr("go to the next of find box, tree, table, drawing, console, problems and comparison")},
        {tr("Tab, Up, Down, Escape"), tr("in a console with text: complete, earlier commands, clear or stop")},
        {tr("Ctrl + C"), tr("in the console: copy; stop the script if nothing is selected")},
    };
}

} // namespace

QString keysAndGestures()
{
    QString rows;
    for (const auto& gesture : gestures())
        rows += QStringLiteral("<tr><td style='white-space: nowrap'><b>%1</b></td><td style='white-space: nowrap; "
                               "padding-left: 18px'>%2</td></tr>")
                    .arg(gesture.first, gesture.second);
    return QStringLiteral("<table cellpadding='3'>%1</table>").arg(rows);
}

QString aboutText()
{
    return tr("<h3>zelchip %1</h3><p>The chip-planning view for programmable logic devices.</p>"
              "<p>MIT licence. Uses Qt %2 and expat.</p>")
        .arg(QCoreApplication::applicationVersion(), QString::fromLatin1(qVersion()));
}

} // namespace mirn::zelchip
