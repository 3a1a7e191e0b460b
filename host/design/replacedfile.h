// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/filebeside.h"

#include <QIODevice>

#include <functional>

namespace mirn::zelchip {

// A file that is written piece by piece and then takes the place of another one, all at once, as replaceFile() does
// with a content in memory. Unless replace() succeeds, the old file stays and nothing else is left.
class ReplacedFile final : public QIODevice
{
public:
    // Called after each block that was written; if it returns false, no more is written.
    using GoesOn = std::function<bool()>;

    // It is open at once; a failure shows with the first block, or by replace().
    explicit ReplacedFile(const QString& fileName, GoesOn goesOn = {}, FileLayer& files = FileLayer::system());

    // Writes what is left, and replaces the file. Returns an empty text, or the system's words.
    [[nodiscard]] QString replace();

    // Whether something failed or was stopped: then further work would be in vain.
    [[nodiscard]] bool hasEnded() const { return m_isStopped || m_problem != 0; }

    // Has everything from now on fail.
    void stop() { m_isStopped = true; }

    [[nodiscard]] bool isSequential() const override { return true; }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* bytes, qint64 size) override;

private:
    void writeBlock();

    FileLayer& m_files;
    const QString m_folder;
    FileBeside m_beside;
    const GoesOn m_goesOn;
    QByteArray m_block;
    int m_problem; // errno of the first failure
    bool m_isStopped = false;
};

} // namespace mirn::zelchip
