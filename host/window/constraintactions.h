// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace mirn::zelchip {

class DesignEditor;
class HostActions;
class WindowMemory;

// Writes the placement into files of constraints and sets it from tables, by the actions of the File menu. It is a
// child of the window.
class ConstraintActions final : public QObject
{
    Q_OBJECT
public:
    // Actions and memory must live as long. The function returns the editor of the open project.
    ConstraintActions(
        const HostActions& actions, WindowMemory& memory, std::function<DesignEditor&()> editor, QWidget* window);

Q_SIGNALS:
    // The outcome, if no dialog says it; a sentence for users.
    void told(const QString& sentence);

private:
    void exportConstraints();
    void importConstraints();
    void placeFrom(const QString& file);

    WindowMemory& m_memory;
    const std::function<DesignEditor&()> m_editor;
    QWidget* const m_window;
};

} // namespace mirn::zelchip
