// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class MirnProject;
class QTemporaryDir;
class zelchipengine;

namespace mirn::zelengine {
class ReferenceEngine;
struct Project;
} // namespace mirn::zelengine

namespace mirn::zelchip {

class DesignEditor;
class PreparedParser;

// What is open: the engine of a project folder or of a bare drawing, and what the process-wide services are to know of
// it. Opening touches none of these services, so that a session which cannot be opened leaves the present one alone;
// activate() hands over. Knows no widget.
class ProjectSession final
{
public:
    // What becomes of a lock of which this machine cannot tell whether it is still of use.
    enum class DoubtfulLock { Stays, IsTakenOver };

    // `path` is a project folder, its project.json, or a drawing, which then opens with an empty design. Null when it
    // cannot be opened; *error then says where and why.
    [[nodiscard]] static std::unique_ptr<ProjectSession> open(
        const QString& path, QString* error, DoubtfulLock lock = DoubtfulLock::Stays);

    // Deactivates it.
    ~ProjectSession();

    // Makes this the process's open project. To be called when no other session is, and before the chip view is
    // constructed.
    void activate();

    // Leaves no project open; for when the chip view and its controller are gone. It may be activated again.
    void deactivate();

    // The session's; for the chip view.
    [[nodiscard]] zelchipengine* engine() const;

    // The way to change the design. The session's; what was saved and what the journal held is back in it.
    [[nodiscard]] DesignEditor& editor() const { return *m_editor; }

    // What a user should know of how the last session ended.
    [[nodiscard]] const QStringList& recoveryMessages() const { return m_recoveryMessages; }

    // What it was opened from.
    [[nodiscard]] const QString& path() const { return m_path; }

    // "DEVICE/PROJECT", or the drawing's file name.
    [[nodiscard]] const QString& title() const { return m_title; }

    [[nodiscard]] const QString& drawingFile() const { return m_drawingFile; }

    // Whether the device names kinds of elements that can be marked.
    [[nodiscard]] bool hasFilter() const;

    // Of the project's files and of the drawing.
    [[nodiscard]] const QStringList& warnings() const { return m_warnings; }

private:
    ProjectSession();

    bool openProject(const QString& directory, QString* error);
    bool openDrawing(const QString& file, QString* error);
    bool useScratchProject(const QString& name, QString* error);
    [[nodiscard]] std::unique_ptr<MirnProject> newProject() const;
    bool readDrawing(QString* error);
    [[nodiscard]] QString scratchDirectory();

    std::unique_ptr<zelengine::ReferenceEngine> m_engine;
    std::unique_ptr<DesignEditor> m_editor;
    std::unique_ptr<PreparedParser> m_parser; // until it is handed over
    std::unique_ptr<QTemporaryDir> m_temporaryDirectory; // where there is no place for cached files
    QString m_path;
    QString m_title;
    QString m_scratchName; // of a project without implementations of its own
    QString m_flow;
    QString m_drawingFile;
    QString m_implementationDirectory;
    QStringList m_warnings;
    QStringList m_recoveryMessages;
    bool m_isActive = false;
};

} // namespace mirn::zelchip
