// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace mirn::zelchip {

// The scripts that were entered, oldest first, and a walk through them. Texts that are edited during the walk,
// including the unfinished one at its newest end, are kept until add() ends the walk. The console input owns it,
// and whoever keeps it for the next run takes and sets the entries.
class CommandHistory final
{
public:
    static constexpr int DefaultCapacity = 500;

    explicit CommandHistory(int capacity = DefaultCapacity);

    // Ignores blank scripts and one that equals the newest; ends the walk.
    void add(const QString& script);

    [[nodiscard]] QStringList entries() const { return m_entries; }
    void setEntries(const QStringList& entries);

    // Makes one step of the walk: takes the text that is shown now and returns the one to show instead. Returns nothing
    // at the end of the history.
    std::optional<QString> older(const QString& shown);
    std::optional<QString> newer(const QString& shown);

private:
    void append(const QString& script);
    void endWalk();
    std::optional<QString> stepTo(int position, const QString& shown);

    const int m_capacity;
    QStringList m_entries;
    QStringList m_walked; // the entries as edited during this walk, followed by the unfinished text
    int m_position = 0; // index in m_walked
};

} // namespace mirn::zelchip
