// SPDX-License-Identifier: MIT
#include "host/project/projectwatch.h"

#include "host/design/designeditor.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <utility>

namespace mirn::zelchip {

namespace {

// Watching the folders by the system's notifications would not see changes on network file systems.
constexpr int BeatMilliseconds = 1500;

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
    m_state = State::Unwatched;
    m_reason.clear();
    if (m_editor)
        std::exchange(m_editor, nullptr)->release();
}

ProjectWatch::Trace ProjectWatch::trace() const
{
    Trace result;
    const QString names[]
        = {m_editor->placementFile(), m_editor->journalFile(), m_editor->journalFile() + QLatin1String(".lock")};
    for (std::size_t i = 0; i < std::size(names); ++i) {
        const QFileInfo file(names[i]);
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
    QString reason;
    const State state = find(&reason);
    if (state == m_state && reason == m_reason)
        return;
    m_state = state;
    m_reason = reason;
    Q_EMIT changed();
}

} // namespace mirn::zelchip
