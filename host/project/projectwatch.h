// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QTimer>

namespace mirn::zelchip {

class DesignEditor;

// Keeps an open project for this program as long as it is shown, so that a second program learns at once that it can
// only look at it, and finds out whether somebody else changes the project's files meanwhile. Where another program has
// the project, it is taken as soon as that one has ended. The window's notice owns it; a batch needs none, because it
// takes a project at its first change.
//
// A project of ours on a local file system is looked at when the system reports a change of its files, so that an idle
// program sleeps; any other at each beat of a timer, since a file system of the network reports nothing and neither
// does the end of another program.
class ProjectWatch final : public QObject
{
    Q_OBJECT
public:
    enum class State {
        Unwatched,
        Ours, // changes are accepted
        LookOnly, // changes are refused
        Outdated, // the files are no longer what the window shows; changes are refused as long as they are not read
                  // again
    };

    explicit ProjectWatch(QObject* parent);

    // Begins with a project, which must live until the next call of begin() or end().
    void begin(DesignEditor& editor);

    // Leaves the project to others.
    void end();

    [[nodiscard]] State state() const { return m_state; }

    // Why the project can only be looked at, in one sentence; otherwise empty.
    [[nodiscard]] const QString& reason() const { return m_reason; }

    // Looks at the files now instead of at the next beat of the timer.
    void look();

Q_SIGNALS:
    void changed();

private:
    // Tells cheaply whether a closer look is worth while.
    struct Trace
    {
        QDateTime times[3];
        qint64 sizes[3] = {};
        [[nodiscard]] bool operator==(const Trace& other) const;
    };
    [[nodiscard]] QStringList files() const;
    [[nodiscard]] Trace trace() const;
    void listen();
    void rest();
    [[nodiscard]] State find(QString* reason);

    DesignEditor* m_editor = nullptr;
    QTimer m_timer;
    QFileSystemWatcher m_reports;
    bool m_areReportsSure = false;
    Trace m_trace;
    State m_state = State::Unwatched;
    QString m_reason;
};

} // namespace mirn::zelchip
