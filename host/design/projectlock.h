// SPDX-License-Identifier: MIT
#pragma once

#include <QLockFile>
#include <QString>

namespace mirn::zelchip {

// The lock file that says which program may change a project; the project's journal owns it. A lock whose program has
// ended on this machine is replaced without asking. One that is damaged or was made on another machine stays until the
// user decides to take it over.
class ProjectLock final
{
public:
    // Neither the file nor its folder need exist.
    explicit ProjectLock(const QString& fileName);

    [[nodiscard]] bool isHeld() const { return m_lock.isLocked(); }

    // Takes the lock if it is not held yet. Returns an empty text for success, else one sentence that says who has it
    // or why it cannot be had. A missing folder counts as success: the system then refuses the change itself and says
    // why.
    [[nodiscard]] QString claim();
    void release() { m_lock.unlock(); }
    // Returns false if the lock is held, but its file names another program by now.
    [[nodiscard]] bool isUndisputed() const;
    // Whether another program that runs on this machine holds the lock.
    [[nodiscard]] bool isOfAnother() const;

    // Says, in one sentence, why this machine cannot tell whether the existing lock is still in use; names the file,
    // the machine and the time. Empty if there is no such doubt.
    [[nodiscard]] QString doubt() const;

    // Removes a lock that is in doubt. Returns an empty text for success and if there is nothing to remove, else why
    // not.
    [[nodiscard]] QString takeOver();

private:
    // The program that made the lock, as the file says.
    struct Holder
    {
        qint64 process = 0; // 0 if the file is unreadable
        QString program;
        QString machine;
    };

    [[nodiscard]] Holder holder() const;
    [[nodiscard]] bool isOfRunningProgram() const;
    [[nodiscard]] QString fileError() const;

    const QString m_fileName;
    QLockFile m_lock;
};

} // namespace mirn::zelchip
