// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QSettings>
#include <QString>
#include <QStringList>

#include <memory>

namespace mirn::zelchip {

// What the program remembers for its user from one run to the next, in a file in the user's configuration folder. The
// main function makes it for a window that a person uses, without --fresh; a script, a snapshot, a batch or a window in
// a test has none, so that it neither depends on the user's desktop nor changes it.
//
// Whatever is damaged or foreign in the file counts as not remembered.
class WindowSettings final
{
public:
    // Returns the file of the user: below XDG_CONFIG_HOME, or below ~/.config without it. Needs no application object.
    [[nodiscard]] static QString userFile();

    // The file need not exist. Something that is no plain file, or is far too large, is neither read nor written.
    explicit WindowSettings(const QString& fileName);

    // The window's place when it is not maximized; null if none is remembered.
    [[nodiscard]] QRect place() const;
    [[nodiscard]] bool isMaximized() const;
    void setPlace(const QRect& place, bool isMaximized);

    // The arrangement of the docks of a window, as QMainWindow::saveState() returns it.
    [[nodiscard]] QByteArray arrangement(const QString& window) const;
    void setArrangement(const QString& window, const QByteArray& state);

    // Whether something that a menu switches is on; `usually` if that is not remembered.
    [[nodiscard]] bool isOn(const QString& name, bool usually) const;
    void setOn(const QString& name, bool isOn);

    // The scripts that were entered into the console, oldest first. Very long ones are not remembered.
    [[nodiscard]] QStringList history() const;
    void setHistory(const QStringList& history);

    // The folder in which something was opened or saved last; empty if it does not exist any more.
    [[nodiscard]] QString folder() const;
    void setFolder(const QString& folder);

    // The projects and drawings that were opened, newest first, as absolute paths; those of other windows too.
    [[nodiscard]] QStringList recent() const;
    void setRecent(const QStringList& paths);

    // Writes now what would otherwise be written at the end of this object; not every end of the program reaches that.
    void write();

private:
    [[nodiscard]] QString text(const char* key) const;
    void set(const char* key, const QVariant& value);

    std::unique_ptr<QSettings> m_file; // null if the file cannot be used
};

} // namespace mirn::zelchip
