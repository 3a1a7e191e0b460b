// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace soak {

// What makes room scarce for a program.
class Room
{
public:
    Room() = default;
    virtual ~Room() = default;
    Room(const Room&) = delete;
    Room& operator=(const Room&) = delete;

    virtual void leave(qint64 bytes, qint64 process) = 0; // below 0: enough
    [[nodiscard]] virtual QByteArray complaint() const = 0; // in the system's words
};

// A small file system of its own, which nobody else sees and which ends with this process. Needs to be root.
class SmallDisk final : public Room
{
public:
    SmallDisk() = default;
    ~SmallDisk() override;

    [[nodiscard]] bool mount(const QString& folder);

    void leave(qint64 bytes, qint64 process) override;
    [[nodiscard]] QByteArray complaint() const override { return "No space left on device"; }

private:
    QByteArray m_folder;
    bool m_isMounted = false;
};

// The largest size that the program's files may have.
class FileSizeLimit final : public Room
{
public:
    void leave(qint64 bytes, qint64 process) override;
    [[nodiscard]] QByteArray complaint() const override { return "File too large"; }
};

} // namespace soak
