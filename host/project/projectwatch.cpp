// SPDX-License-Identifier: MIT
#include "host/project/projectwatch.h"

#include "host/design/designeditor.h"

#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>
#include <iterator>
#include <utility>

namespace mirn::zelchip {

namespace {

constexpr int BeatMilliseconds = 1500;

// Whether the system reports every change of a folder's files, whoever makes it.
bool reportsChanges(const QString& folder)
{
    const QByteArrayList local{"ext2", "ext3", "ext4", "xfs", "btrfs", "zfs", "f2fs", "tmpfs", "overlay"};
    return local.contains(QStorageInfo(folder).fileSystemType());
}

} // namespace

bool ProjectWatch::Trace::operator==(const Trace& other) const
{
    return std::equal(std::begin(times), std::end(times), std::begin(other.times))
        && std::equal(std::begin(sizes), std::end(sizes), std::begin(other.sizes));
}

ProjectWatch::ProjectWatch(QObject* parent)
    : QObject(parent)
{
    m_timer.setInterval(BeatMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &ProjectWatch::look);
    // Many changes in a row, such as those of one's own journal, are looked at once.
    const auto lookSoon = [this] {
        if (m_editor && !m_timer.isActive())
            m_timer.start();
    };
    connect(&m_reports, &QFileSystemWatcher::fileChanged, this, lookSoon);
    connect(&m_reports, &QFileSystemWatcher::directoryChanged, this, lookSoon);
}

void ProjectWatch::begin(DesignEditor& editor)
{
    m_editor = &editor;
    m_state = State::Unwatched;
    m_trace = {};
    m_timer.start();
    look();
}

void ProjectWatch::end()
{
    m_timer.stop();
    const QStringList watched = m_reports.files() + m_reports.directories();
    if (!watched.isEmpty())
        m_reports.removePaths(watched);
    m_state = State::Unwatched;
    m_reason.clear();
    if (m_editor)
        std::exchange(m_editor, nullptr)->release();
}

QStringList ProjectWatch::files() const
{
    return {m_editor->placementFile(), m_editor->journalFile(), m_editor->journalFile() + QLatin1String(".lock")};
}

// A file that was replaced is a new one to the system. Where something cannot be watched, the timer goes on.
void ProjectWatch::listen()
{
    m_areReportsSure = true;
    const QStringList names = files();
    for (const QString& name : names) {
        const QFileInfo file(name);
        const QString folder = file.absolutePath();
        if (!m_reports.directories().contains(folder))
            m_areReportsSure = reportsChanges(folder) && m_reports.addPath(folder) && m_areReportsSure;
        if (file.exists() && !m_reports.files().contains(name))
            m_areReportsSure = m_reports.addPath(name) && m_areReportsSure;
    }
}

// Waits for a report, or for the next beat.
void ProjectWatch::rest()
{
    if (m_state == State::Ours && m_areReportsSure)
        m_timer.stop();
    else
        m_timer.start();
}

ProjectWatch::Trace ProjectWatch::trace() const
{
    Trace result;
    const QStringList names = files();
    for (std::size_t i = 0; i < std::size(result.times); ++i) {
        const QFileInfo file(names[static_cast<int>(i)]);
        result.times[i] = file.lastModified();
        result.sizes[i] = file.exists() ? file.size() : -1;
    }
    return result;
}

ProjectWatch::State ProjectWatch::find(QString* reason)
{
    if (!(std::exchange(m_trace, trace()) == m_trace) && m_editor->isOutdated())
        return State::Outdated;
    if (m_editor->isClaimed())
        return State::Ours;
    *reason = m_editor->lockInDoubt(); // in doubt it is the user who decides
    if (reason->isEmpty())
        *reason = m_editor->claim();
    if (!reason->isEmpty())
        return m_editor->isOutdated() ? State::Outdated : State::LookOnly;
    m_trace = trace(); // with the lock that has just been made
    return State::Ours;
}

// What was found to be outdated stays so until the project is opened again: the editor accepts nothing more.
void ProjectWatch::look()
{
    if (!m_editor || (m_state == State::Outdated && m_editor->isOutdated()))
        return;
    listen(); // before the look: what changes after it is reported
    QString reason;
    const State state = find(&reason);
    const bool isSame = state == m_state && reason == m_reason;
    m_state = state;
    m_reason = reason;
    rest();
    if (!isSame)
        Q_EMIT changed();
}

} // namespace mirn::zelchip
