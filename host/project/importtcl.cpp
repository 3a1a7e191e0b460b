// SPDX-License-Identifier: MIT
#include "host/project/importtcl.h"

#include "host/tcl/arguments.h"
#include "host/tcl/translation.h"
#include "importer/optiontexts.h"
#include "importer/tableimport.h"

#include <chrono>
#include <future>

namespace mirn::zelchip {

namespace {

constexpr int LookMilliseconds = 20; // between two looks at the import

// Returns what is wrong with the options; empty if nothing is.
QString readOptions(const Arguments& arguments, zelimporter::ImportOptions& options)
{
    options.project = arguments.text(QStringLiteral("-o"));
    options.sites = arguments.text(QStringLiteral("-sites"));
    options.resources = arguments.text(QStringLiteral("-resources"));
    options.connections = arguments.text(QStringLiteral("-connections"));
    options.name = arguments.text(QStringLiteral("-name"));
    options.replaces = arguments.has(QStringLiteral("-replace"));
    QString error;
    const auto read = [&](const char* name, QString (*reader)(const QString&, zelimporter::ImportOptions&)) {
        const QString option = QString::fromLatin1(name);
        if (error.isEmpty() && arguments.has(option))
            error = reader(arguments.text(option), options);
    };
    read("-columns", zelimporter::readColumnOption);
    read("-separator", zelimporter::readSeparatorOption);
    read("-unit", zelimporter::readUnitOption);
    read("-y", zelimporter::readAxisOption);
    if (error.isEmpty() && !options.connections.isEmpty() && options.resources.isEmpty())
        error = tr("connections connect resources; expected their table as well, as -resources FILE");
    return error;
}

} // namespace

TclResult importTables(TclInterpreter& interpreter, const Arguments& arguments)
{
    zelimporter::ImportOptions options;
    const QString error = readOptions(arguments, options);
    if (!error.isEmpty())
        return TclResult::error(error);
    zelimporter::TableImport import(options);
    std::future<zelimporter::TableImport::Result> running
        = std::async(std::launch::async, [&import] { return import.run(); });
    while (running.wait_for(std::chrono::milliseconds(LookMilliseconds)) != std::future_status::ready) {
        if (!interpreter.stayResponsive())
            import.cancel();
    }
    const zelimporter::TableImport::Result result = running.get();
    if (result.isCancelled)
        return TclResult::error(tr("the import was cancelled; nothing was made"));
    return result.error.isEmpty() ? TclResult::value(TclInterpreter::list(result.warnings))
                                  : TclResult::error(result.error);
}

} // namespace mirn::zelchip
