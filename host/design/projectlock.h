// SPDX-License-Identifier: MIT
#pragma once

#include <QLockFile>
#include <QString>

namespace mirn::zelchip {

// The file that says which program may change a project. A lock whose program ended on this machine is replaced without
// a word; one that is damaged or of another machine stays until somebody decides that it is of no use any more.
class ProjectLock final
{
public:
    // The file and its folder need not exist.
    explicit ProjectLock(const QString& fileName);

    [[nodiscard]] bool isHeld() const { return m_lock.isLocked(); }

    // Empty when it is held now, else who has it, or why it cannot be had, in one sentence. Also empty where its folder
    // is none, because then the system refuses the change itself and says why.
    [[nodiscard]] QString claim();
    void release() { m_lock.unlock(); }
    // False when it is held, but the file says that somebody else has it by now.
    [[nodiscard]] bool isUndisputed() const;

    // Why a lock stands there of which this machine cannot tell whether it is still of use, in one sentence with the
    // file, the machine and the time. Empty where there is none.
    [[nodiscard]] QString doubt() const;

    // Removes such a lock. Empty on success, and where there is none; else why not.
    [[nodiscard]] QString takeOver();

private:
    // What the file says of the program that made it.
    struct Holder
    {
        qint64 process = 0; // 0: it says nothing that can be read
        QString program;
        QString machine;
    };

    [[nodiscard]] Holder holder() const;
    [[nodiscard]] bool isOfRunningProgram() const;
    [[nodiscard]] QString objectionToFile() const;

    const QString m_fileName;
    QLockFile m_lock;
};

} // namespace mirn::zelchip
