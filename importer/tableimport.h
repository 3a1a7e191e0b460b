// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importoptions.h"

#include <QString>
#include <QStringList>

#include <atomic>

namespace mirn::zelimporter {

class ProjectFolder;

// Makes a project of tables. It needs no application object and runs in any thread.
class TableImport
{
public:
    explicit TableImport(ImportOptions options);

    struct Result
    {
        QString error; // one or more sentences; empty for success
        bool isCancelled = false; // then there is no error, and nothing was made
        QStringList warnings; // one sentence each
        QString summary; // one sentence: what was made
    };

    [[nodiscard]] Result run();

    // From another thread: how much is done, 0 to 1, and the request to end.
    [[nodiscard]] double progress() const { return m_progress; }
    void cancel() { m_isCancelled = true; }

private:
    [[nodiscard]] QString importInto(ProjectFolder& folder, Result& result);
    [[nodiscard]] ImportProgress stage(double from, double to);

    const ImportOptions m_options;
    std::atomic<double> m_progress{0};
    std::atomic<bool> m_isCancelled{false};
};

} // namespace mirn::zelimporter
