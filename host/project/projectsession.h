// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QPointF>
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

// An open project folder or bare drawing: its engine, its design editor, and the state of the process-wide services for
// it. Opening touches none of these services, so that a failure leaves the present session alone; activate() hands
// over. The main window or the batch owns it. It knows no widget.
class ProjectSession final
{
public:
    // What to do with a lock if this machine cannot tell whether it is still in use.
    enum class DoubtfulLock { Stays, IsTakenOver };

    // Opens a project folder, its project.json, or a drawing, which gets an empty design. Without the name of an
    // implementation it is the project's default one. Returns null on failure; *error then says where and why.
    [[nodiscard]] static std::unique_ptr<ProjectSession> open(const QString& path, QString* error,
        DoubtfulLock lock = DoubtfulLock::Stays, const QString& implementation = {});

    // Deactivates the session.
    ~ProjectSession();

    // Makes this the process's open project. No other session may be active, and the chip view must not exist yet.
    void activate();

    // Leaves no project open. The chip view and its controller must be gone. The session may be activated again.
    void deactivate();

    // The engine for the chip view; the session owns it.
    [[nodiscard]] zelchipengine* engine() const;

    // The way to change the design; the session owns it. The saved state and the journal have been brought back by
    // then.
    [[nodiscard]] DesignEditor& editor() const { return *m_editor; }

    // Messages for the user about how the last session ended.
    [[nodiscard]] const QStringList& recoveryMessages() const { return m_recoveryMessages; }

    // The absolute path it was opened from.
    [[nodiscard]] const QString& path() const { return m_path; }

    // "DEVICE/PROJECT", or the drawing's file name.
    [[nodiscard]] const QString& title() const { return m_title; }

    // Whether it was opened from a drawing, without a project.
    [[nodiscard]] bool isBareDrawing() const { return m_isBareDrawing; }

    [[nodiscard]] const QString& drawingFile() const { return m_drawingFile; }

    // The middles of the device's sites in the drawing, by site id. Empty once the chip view has the drawing.
    [[nodiscard]] QHash<int, QPointF> sitePoints() const;

    // Whether the device has a filter file, which names kinds of elements that can be marked.
    [[nodiscard]] bool hasFilter() const;

    // The warnings about the project's files and the drawing.
    [[nodiscard]] const QStringList& warnings() const { return m_warnings; }

private:
    ProjectSession();

    bool openProject(const QString& directory, QString* error);
    bool useImplementation(QString* error);
    bool openDrawing(const QString& file, QString* error);
    bool useScratchProject(const QString& name, QString* error);
    [[nodiscard]] std::unique_ptr<MirnProject> newProject() const;
    bool readDrawing(QString* error);
    [[nodiscard]] QString scratchDirectory();

    std::unique_ptr<zelengine::ReferenceEngine> m_engine;
    std::unique_ptr<DesignEditor> m_editor;
    std::unique_ptr<PreparedParser> m_parser; // until the controller takes it over
    std::unique_ptr<QTemporaryDir> m_temporaryDirectory; // used if no place for cached files is writable
    QString m_path;
    QString m_title;
    QString m_scratchName; // the name of a project without implementations of its own
    QString m_flow;
    QString m_drawingFile;
    QString m_implementation; // its name; empty for the project's default one
    QString m_implementationDirectory;
    QStringList m_warnings;
    QStringList m_recoveryMessages;
    bool m_isBareDrawing = false;
    bool m_isActive = false;
};

} // namespace mirn::zelchip
