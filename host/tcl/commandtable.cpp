// SPDX-License-Identifier: MIT
#include "host/tcl/commandtable.h"

#include <algorithm>
#include <iterator>

namespace mirn::zelchip {

const std::vector<CommandEntry>& commandTable()
{
    static const std::vector<CommandEntry> Table{
        {"zel_resource", "place", "-rsc NAME -id SITE",
            "Places a resource on a site; the error says why a site refuses it.",
            "zel_resource place -rsc gateway/clocks/pll_video -id PLL_TR1", ""},
        {"zel_resource", "place", "-auto ?-rsc NAME ...? ?-seconds N? ?-partial?",
            "With -auto, finds sites for all resources that have none, or for those named and what is below them, near "
            "to what they are connected with; nothing that is placed moves. Returns a dictionary. Its answer is "
            "placed, impossible (proven: conflict has resources that cannot be placed together, reason says why) or "
            "partial (not found in 10 seconds or those given); placed has names and ids of sites, missing what has "
            "none. Unless all can be placed, nothing is, or with -partial what can.",
            "dict get [zel_resource place -auto -rsc gateway/supplies] answer", "placed"},
        {"zel_resource", "place", "-from FILE",
            "With -from, places resources as a table in CSV says, as one change: its column resource has their names, "
            "with or without the name of the design, and its column site the names or ids of their sites, or nothing "
            "to take them off. Returns a dictionary: placed and reset are the numbers of lines that hold now, refused "
            "says of every other line why it does not.",
            "set table [open places.csv w]; puts $table \"resource,site\\nclocks/pll_video,PLL_TR1\"; close $table; "
            "zel_resource place -from places.csv",
            "placed 1 reset 0 refused {}"},
        {"zel_resource", "swap", "-rsc NAME -with NAME",
            "Exchanges the sites of two placed resources, as one change; the error says why the rules forbid it. Only "
            "single resources swap, no IP with its parts.",
            "zel_resource swap -rsc gateway/clocks/pll_video -with gateway/clocks/pll_ddr; undo", ""},
        {"zel_resource", "reset", "-ip NAME", "Takes a resource, and everything below it, off its site.",
            "zel_resource reset -ip gateway/clocks/pll_video", ""},
        {"zel_resource", "remove", "-ip NAME", "Removes a resource and everything below it from the design.",
            "zel_resource remove -ip gateway/cpri", ""},
        {"zel_resource", "restore", "-ip NAME", "Brings back a resource that was removed.",
            "zel_resource restore -ip gateway/cpri", ""},
        {"zel_resource", "lock", "-ip NAME",
            "Keeps a resource, and everything below it that is placed, on its site until it is unlocked.",
            "zel_resource lock -ip gateway/clocks/pll_ddr", ""},
        {"zel_resource", "unlock", "-ip NAME", "Takes off the locks of a resource and of everything below it.",
            "zel_resource unlock -ip gateway/clocks", ""},
        {"zel_resource", "configure", "-ip NAME -key K ?-value V?",
            "Changes a parameter of a resource; without a value it returns the one in force.",
            "zel_resource configure -ip gateway/clocks/pll_video -key frequency -value 74.25", ""},
        {"zel_resource", "list", "?-unplaced? ?-locked? ?PATTERN?",
            "Returns the names of resources: all, those without a site, those that are locked, those that match a "
            "pattern with * and ?.",
            "zel_resource list -unplaced *pll*",
            "gateway/xaui/txpll gateway/cpri/txpll gateway/clocks/pll_eth "
            "gateway/clocks/pll_video"},
        {"zel_resource", "get", "-ip NAME",
            "Returns a dictionary with name, id and site, whether it is fixed or locked, its parameters and its "
            "children.",
            "dict get [zel_resource get -ip gateway/clocks/pll_ddr] site", "PLL_TR0"},
        {"zel_resource", "sites", "-rsc NAME", "Returns the ids of the sites that would accept a resource now.",
            "zel_resource sites -rsc gateway/xaui/refclk", "11001002 11001003 11001005"},
        {"zel_resource", "why", "-rsc NAME -id SITE",
            "Returns why a site refuses a resource; nothing if it accepts it.",
            "zel_resource why -rsc gateway/clocks/pll_video -id PLL_TR0",
            "PLL_TR0 is occupied by gateway/clocks/pll_ddr"},
        {"zel_setting", "", "-id SITE -key K ?-value V?",
            "Changes a setting of a site; without a value it returns the one in force.",
            "zel_setting -id DCU2 -key CH0 -value {EXTREF B}", ""},
        {"zel_view", "fit", "", "Shows the whole drawing.", "zel_view fit", ""},
        {"zel_view", "in", "", "Zooms in by one step.", "zel_view in", ""},
        {"zel_view", "out", "", "Zooms out by one step.", "zel_view out", ""},
        {"zel_view", "zoom", "SITE ?SITE ...?", "Zooms to one or more elements.", "zel_view zoom DCU0 DCU1", ""},
        {"zel_view", "select", "?SITE ...?", "Selects these elements and no others.", "zel_view select PLL_TL0 PLL_TR0",
            ""},
        {"zel_view", "selected", "", "Returns the ids of the selected elements.", "zel_view selected",
            "5001001 5001002"},
        {"zel_view", "mode", "?select|zoom|pan?",
            "Chooses what a drag in the drawing does; without a word it returns the mode in force.",
            "zel_view mode select", ""},
        {"zel_view", "names", "?0|1?",
            "Shows (1) or hides (0) the names of resources on their sites; without a number it returns which.",
            "zel_view names 0; zel_view names 1; zel_view names", "1"},
        {"zel_view", "overview", "?0|1?",
            "Has the overview map come at high scales (1) or never (0); without a number it returns which.",
            "zel_view overview 0; zel_view overview 1; zel_view overview", "1"},
        {"zel_view", "connections", "?off|selected|all?",
            "Shows the connections of no resource, of the selected ones or of all; without a word it returns what is "
            "shown.",
            "zel_view connections all", ""},
        {"zel_view", "candidates", "?0|1?",
            "Tints the sites that a selected unplaced resource may go to, or does not; without a digit it returns "
            "which.",
            "zel_view candidates 1", ""},
        {"zel_view", "snapshot", "FILE", "Writes a picture of the window into an image file.",
            "zel_view snapshot floorplan.png", ""},
        {"zel_view", "export", "FILE ?-part whole|visible? ?-overlays 0|1? ?-size WxH?",
            "Writes a picture of the drawing into a file, as PDF, SVG or PNG by the file's suffix: the whole drawing, "
            "as a window of the picture's size would show it, or the part that is visible now; with what is shown over "
            "it (1, connections, candidates, names and locks) or without (0). The size is in millimetres for PDF, else "
            "in pixels; without one it is that of the drawing in the window. PDF and SVG need no memory that grows "
            "with the drawing.",
            "zel_view export floorplan.svg -part visible -overlays 0 -size 1600x1000", ""},
        {"zel_view", "where", "-id SITE",
            "Returns the middle of an element on the screen, as x and y in pixels of the device.",
            "zel_view where -id DCU0", ""},
        {"zel_tree", "where", "-rsc NAME",
            "Scrolls to the row of a resource and returns a point in it on the screen, as x and y.",
            "zel_tree where -rsc gateway/pcie", ""},
        {"zel_tree", "expand", "", "Opens all rows of the tree.", "zel_tree expand", ""},
        {"zel_tree", "collapse", "", "Closes all rows of the tree.", "zel_tree collapse", ""},
        {"zel_tree", "select", "-rsc NAME", "Selects a resource in the tree.", "zel_tree select -rsc gateway/pcie", ""},
        {"zel_project", "open", "PATH", "Opens a project folder or a drawing instead of what is open.",
            "zel_project open [dict get [zel_project info] directory]", ""},
        {"zel_project", "import",
            "-o DIR -sites FILE ?-resources FILE? ?-connections FILE? ?-name NAME? ?-columns ROLE=COLUMN,...? "
            "?-separator C? ?-unit UNIT? ?-y up|down? ?-replace?",
            "Makes a project folder of tables of sites, resources and connections, as zelchip import does, and returns "
            "the warnings. It opens nothing.",
            "set table [open sites.csv w]; puts $table \"name,kind,x,y,width,height\\nPLL_A,PLL,0,0,20,12\"; close "
            "$table; zel_project import -o imported -sites sites.csv",
            ""},
        {"zel_project", "save", "", "Saves the placement.", "zel_project save", ""},
        {"zel_project", "export", "-template TEMPLATE ?-o FILE?",
            "Writes the placement and the changed settings as a template says, into a file or as the answer. TEMPLATE "
            "is csv, json, loc, tcl-per-resource or the name of a file.",
            "lindex [split [zel_project export -template csv] \\n] 1",
            "pcie/lane0,DCUCHANNEL,DCU0_CH0,9000000,CHANNEL,DCU0"},
        {"zel_project", "diff", "?FILE?",
            "Returns how the placement differs from the saved one, or from another placement file of the same design: "
            "a list of dictionaries with name, what (existence, place, lock, parameter or setting), key, from and to. "
            "FILE may be an implementation's folder.",
            "zel_resource reset -ip gateway/sgmii; lindex [zel_project diff] 0",
            "name gateway/sgmii/lane0 what place key {} from DCU1_CH0 to {}"},
        {"zel_project", "info", "",
            "Returns a dictionary with name, device, design, flow and directory, and whether something is unsaved.",
            "dict get [zel_project info] device", "Halden H40"},
        {"zel_project", "check", "",
            "Returns the problems of the design, errors first: a list of dictionaries with severity, sentence, "
            "resources "
            "and sites.",
            "dict get [lindex [zel_project check] 0] sentence",
            "gateway/hdmi/txpll is on DCU4_TXPLL, which is out of use because TXPLL is OFF"},
        {"zel_project", "refresh", "", "Brings the window up to date with the design.", "zel_project refresh", ""},
        {"undo", "", "", "Takes back the last change of the design.",
            "zel_resource reset -ip gateway/clocks/pll_ddr; undo", ""},
        {"redo", "", "", "Makes the change again that was taken back.", "redo", ""},
        {"help", "", "?COMMAND? ?SUBCOMMAND?", "Prints the commands, or the arguments and an example of one.",
            "help zel_view where", ""},
    };
    return Table;
}

namespace {

QStringList optionsAmong(const QStringList& words, const std::vector<const CommandEntry*>& forms)
{
    QStringList options;
    for (const CommandEntry* form : forms) {
        const CommandSyntax syntax = form->syntax();
        std::copy_if(words.begin(), words.end(), std::back_inserter(options),
            [&syntax](const QString& word) { return syntax.option(word) != nullptr; });
    }
    return options;
}

} // namespace

QString CommandEntry::name() const
{
    const QString first = QString::fromLatin1(command);
    return *subcommand ? first + QLatin1Char(' ') + QLatin1String(subcommand) : first;
}

int CommandEntry::wordCount() const
{
    return *subcommand ? 2 : 1;
}

QString CommandEntry::usage() const
{
    return *arguments ? name() + QLatin1Char(' ') + QLatin1String(arguments) : name();
}

std::vector<const CommandEntry*> formsOf(const QStringList& words)
{
    std::vector<const CommandEntry*> forms = commandEntries(words.value(0), words.value(1));
    if (forms.empty())
        forms = commandEntries(words.value(0), QString());
    if (forms.size() < 2)
        return forms;
    const CommandEntry* first = forms.front();
    const QStringList used = optionsAmong(words.mid(first->wordCount()), forms);
    const auto isUnfit = [&used](const CommandEntry* form) {
        const CommandSyntax syntax = form->syntax();
        return std::any_of(used.begin(), used.end(), [&](const QString& option) { return !syntax.option(option); });
    };
    forms.erase(std::remove_if(forms.begin(), forms.end(), isUnfit), forms.end());
    return forms.empty() ? std::vector<const CommandEntry*>{first} : forms;
}

std::vector<const CommandEntry*> commandEntries(const QString& command)
{
    std::vector<const CommandEntry*> result;
    for (const CommandEntry& entry : commandTable()) {
        if (command == QLatin1String(entry.command))
            result.push_back(&entry);
    }
    return result;
}

std::vector<const CommandEntry*> commandEntries(const QString& command, const QString& subcommand)
{
    std::vector<const CommandEntry*> result;
    for (const CommandEntry* entry : commandEntries(command)) {
        if (subcommand == QLatin1String(entry->subcommand))
            result.push_back(entry);
    }
    return result;
}

QStringList tableCommands()
{
    QStringList names;
    for (const CommandEntry& entry : commandTable())
        names.append(QString::fromLatin1(entry.command));
    names.removeDuplicates();
    return names;
}

QStringList subcommandsOf(const QString& command)
{
    QStringList names;
    for (const CommandEntry* entry : commandEntries(command)) {
        if (*entry->subcommand)
            names.append(QString::fromLatin1(entry->subcommand));
    }
    names.removeDuplicates();
    return names;
}

} // namespace mirn::zelchip
