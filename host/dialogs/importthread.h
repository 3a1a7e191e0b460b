// SPDX-License-Identifier: MIT
#pragma once

#include "importer/tableimport.h"

#include <QThread>

namespace mirn::zelchip {

// Imports tables in a thread of its own. Its end cancels the import.
class ImportThread final : public QThread
{
    Q_OBJECT
public:
    // Call start(); finished() says when there is a result.
    ImportThread(const zelimporter::ImportOptions& options, QObject* parent);
    ~ImportThread() override;

    void cancel() { m_import.cancel(); }
    [[nodiscard]] double progress() const { return m_import.progress(); } // 0 to 1
    // Only after the thread has finished.
    [[nodiscard]] const zelimporter::TableImport::Result& result() const { return m_result; }

protected:
    void run() override;

private:
    zelimporter::TableImport m_import;
    zelimporter::TableImport::Result m_result;
};

} // namespace mirn::zelchip
