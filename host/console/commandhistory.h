// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace mirn::zelchip {

// The scripts that were entered, oldest first, and a walk through them. What is edited during the walk, the unfinished
// text at its newest end included, is kept until the walk ends with add().
class CommandHistory final
{
public:
    static constexpr int DefaultCapacity = 500;

    explicit CommandHistory(int capacity = DefaultCapacity);

    // Blank scripts are left out, and so is one that equals the newest.
    void add(const QString& script);

    [[nodiscard]] QStringList entries() const { return m_entries; }
    void setEntries(const QStringList& entries);

    // One step of the walk: takes the text that is shown now and gives the one to show in its place, nothing at the
    // end.
    std::optional<QString> older(const QString& shown);
    std::optional<QString> newer(const QString& shown);

private:
    void append(const QString& script);
    void endWalk();
    std::optional<QString> stepTo(int position, const QString& shown);

    const int m_capacity;
    QStringList m_entries;
    QStringList m_walked; // the entries as they are edited in this walk, and behind them the unfinished text
    int m_position = 0; // in m_walked
};

} // namespace mirn::zelchip
