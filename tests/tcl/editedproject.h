// SPDX-License-Identifier: MIT
#pragma once

#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/design/designtcl.h"
#include "host/tcl/tclinterpreter.h"
#include "tests/engine/projectfolder.h"

#include <QFile>
#include <QStringList>

#include <memory>

namespace zeltest {

using mirn::zelchip::DesignEditor;
using mirn::zelchip::FileLayer;
using mirn::zelchip::TclInterpreter;
using mirn::zelchip::TclResult;
using mirn::zelengine::ReferenceEngine;

inline constexpr const char* Design = R"([
  {"name": "duo", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0"},
    {"name": "b", "type": "DCUCHANNEL"},
    {"name": "ref", "type": "EXTREF", "site": "REF_L", "fixed": true}]},
  {"name": "my ip", "type": "IP", "children": [{"name": "a[1]$x", "type": "DCUCHANNEL"}]},
  {"name": "{br}%2", "type": "PLL"},
  {"name": "core", "type": "PLL"}
])";

inline QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void write(const QString& fileName, const QByteArray& content)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(fileName));
}

// A project whose design can be edited, closed and opened again.
class EditedProject
{
public:
    EditedProject()
    {
        m_folder.write(QStringLiteral("design.json"), designWith(Design));
        open();
    }

    // As a program that is started anew; what the one before did in memory is gone.
    QStringList open(FileLayer& files = FileLayer::system())
    {
        m_editor.reset();
        QString error;
        QStringList warnings;
        m_engine = ReferenceEngine::open(m_folder.path(), &error, &warnings);
        if (!m_engine)
            qFatal("%s", qPrintable(error));
        m_editor = std::make_unique<DesignEditor>(*m_engine, directory(), nullptr, files);
        m_tcl = std::make_unique<TclInterpreter>();
        addDesignCommands(*m_tcl, *m_editor);
        return m_editor->recover(changeCommand(*m_editor));
    }

    QString run(const QString& script)
    {
        const TclResult result = m_tcl->evaluate(script);
        return result.isOk ? result.text : QStringLiteral("ERROR ") + result.text;
    }

    // What is where and set how, in one text.
    QString state()
    {
        QStringList facts;
        for (int index : m_engine->design().all()) {
            const auto& resource = m_engine->design().resource(index);
            facts.append(resource.path + QLatin1Char('@') + QString::number(resource.site));
            for (const char* key : {"rate", "frequency"})
                facts.last() += QLatin1Char(',') + m_engine->design().parameter(index, QLatin1String(key));
        }
        for (const char* key : {"CH0", "CH1"})
            facts.append(m_engine->settings().value(10, QLatin1String(key)));
        return facts.join(QLatin1Char(' '));
    }

    QString directory() const { return m_folder.path() + QStringLiteral("/work/impl"); }
    QString journalFile() const { return directory() + QStringLiteral("/journal.tcl"); }

    QByteArray journal() const { return contentOf(journalFile()); }

    void setJournal(const QByteArray& content) { write(journalFile(), content); }

    DesignEditor& editor() { return *m_editor; }
    ReferenceEngine& engine() { return *m_engine; }

private:
    ProjectFolder m_folder;
    std::unique_ptr<ReferenceEngine> m_engine;
    std::unique_ptr<DesignEditor> m_editor;
    std::unique_ptr<TclInterpreter> m_tcl;
};

// One of each kind of change, each of which the one before makes possible or not.
inline const QStringList EachKind{"zel_resource place -rsc {top/my ip/a[1]$x} -id 12",
    "zel_resource place -rsc top/duo -id 20", "zel_resource place -rsc top/core -id 50",
    "zel_resource reset -ip top/core", "zel_resource place -rsc {top/{br}%2} -id 50",
    "zel_setting -id 10 -key CH0 -value FAST", "zel_resource configure -ip top/duo -key rate -value 5",
    "zel_resource configure -ip top/duo/ref -key frequency -value 62.5",
    "zel_resource configure -ip {top/{br}%2} -key frequency -value 148.5", "zel_resource remove -ip top/duo",
    "zel_setting -id 10 -key CH1 -value OFF", "zel_resource remove -ip top/core",
    "zel_setting -id 10 -key CH1 -value FAST"};

} // namespace zeltest
