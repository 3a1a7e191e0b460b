// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/designeditor.h"
#include "host/design/designtcl.h"
#include "host/tcl/tclinterpreter.h"
#include "tests/engine/openengine.h"
#include "tests/engine/projectfolder.h"

#include <QFileInfo>

namespace zeltest {

using mirn::zelchip::DesignEditor;
using mirn::zelchip::FileLayer;
using mirn::zelchip::TclInterpreter;
using mirn::zelchip::TclResult;
using mirn::zelengine::Design;
using mirn::zelengine::ReferenceEngine;

inline constexpr const char* SmallDesign = R"([
  {"name": "duo", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0"},
    {"name": "b", "type": "DCUCHANNEL"},
    {"name": "ref", "type": "EXTREF", "site": "REF_L", "fixed": true}]},
  {"name": "my ip", "type": "IP", "children": [{"name": "a[1]$x", "type": "DCUCHANNEL"}]},
  {"name": "{br}%2", "type": "PLL"},
  {"name": "core", "type": "PLL"}
])";

// One of each kind of change to it, each of which the one before makes possible or not.
inline const QStringList EachKind{"zel_resource place -rsc {top/my ip/a[1]$x} -id 12",
    "zel_resource place -rsc top/duo -id 20", "zel_resource place -rsc top/core -id 50",
    "zel_resource reset -ip top/core", "zel_resource place -rsc {top/{br}%2} -id 50",
    "zel_setting -id 10 -key CH0 -value FAST", "zel_resource configure -ip top/duo -key rate -value 5",
    "zel_resource configure -ip top/duo/ref -key frequency -value 62.5",
    "zel_resource configure -ip {top/{br}%2} -key frequency -value 148.5", "zel_resource lock -ip top/duo",
    "zel_resource lock -ip {top/{br}%2}", "zel_resource unlock -ip top/duo/b", "zel_resource remove -ip top/duo",
    "zel_setting -id 10 -key CH1 -value OFF", "zel_resource remove -ip top/core",
    "zel_setting -id 10 -key CH1 -value FAST"};

// A project whose design can be edited, closed and opened again some thousand times in a few seconds: its device and
// design are read once, and what it writes lies in memory where there is a file system there.
class EditedProject
{
public:
    // The project in a folder, or one with a small device and this design.
    explicit EditedProject(const QString& folder = {}, const QByteArray& design = SmallDesign)
        : m_folder(design)
        , m_engine(openEngine(folder.isEmpty() ? m_folder.path() : folder))
        , m_pristine(m_engine->design())
    {
        open();
    }

    // Opens the project as a program does that is started anew: what the one before had in memory is gone. Returns what
    // the program says.
    QStringList open(FileLayer& files = FileLayer::system())
    {
        m_editor.reset();
        m_engine->setDesign(m_pristine);
        for (int carrier : m_engine->settings().changes().keys())
            m_engine->setSettingChanges(carrier, {});
        m_editor = std::make_unique<DesignEditor>(*m_engine, directory(), nullptr, files);
        addDesignCommands(m_tcl, *m_editor);
        return m_editor->recover(changeCommand(*m_editor));
    }

    // Opens the project, and returns how its state differs from the one before; empty when it does not.
    QString reopen()
    {
        const QStringList before = state();
        open();
        return differenceOf(state(), before);
    }

    // Opens the project as it was before anybody changed it.
    void startOver()
    {
        m_editor.reset();
        QDir(directory()).removeRecursively();
        open();
    }

    // Runs a command or "save". Returns the answer, which of a change is empty or what is wrong.
    QString run(const QString& script)
    {
        if (script == "save")
            return m_editor->save();
        const TclResult result = m_tcl.evaluate(script);
        return result.isOk ? result.text : "ERROR " + result.text;
    }

    QString run(const QStringList& scripts)
    {
        QString answers;
        for (const QString& script : scripts)
            answers += run(script);
        return answers;
    }

    [[nodiscard]] QStringList state() const { return factsOf(*m_engine); }
    [[nodiscard]] QString directory() const { return m_work.path() + "/work/impl"; }
    [[nodiscard]] QString journalFile() const { return directory() + "/journal.tcl"; }
    [[nodiscard]] QByteArray journal() const { return contentOf(journalFile()); }
    void setJournal(const QByteArray& content) { writeFile(journalFile(), content); }

    // The journal that was set aside; empty when none was.
    [[nodiscard]] QByteArray journalAside() const { return contentOf(journalFile() + ".aside-1"); }

    DesignEditor& editor() { return *m_editor; }
    ReferenceEngine& engine() { return *m_engine; }
    [[nodiscard]] const Design& pristine() const { return m_pristine; }

private:
    [[nodiscard]] static QString memory() { return QFileInfo("/dev/shm").isWritable() ? "/dev/shm" : QDir::tempPath(); }

    const ProjectFolder m_folder;
    const QTemporaryDir m_work{memory() + "/zel project \u00e4\u00f6-XXXXXX"};
    std::unique_ptr<ReferenceEngine> m_engine;
    const Design m_pristine;
    std::unique_ptr<DesignEditor> m_editor;
    TclInterpreter m_tcl;
};

} // namespace zeltest
