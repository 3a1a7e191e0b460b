// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QSet>

#include <cstdint>
#include <functional>
#include <vector>

namespace mirn::zelchipview {

// A set of element ids that share a state (selected, highlighted, filtered). It tells which ids a change touched, so
// that only those are painted again. Owned by the controller. Small numbers, as devices use, take a bit each.
class ZELCHIPGUI_EXPORT ElementIdSet final
{
public:
    // Who repaints.
    using Listener = std::function<void(const std::vector<int>& changed)>;

    // Called after each real change, never with an empty list.
    void setListener(Listener listener);

    // By element id. Takes no time that grows with the set.
    [[nodiscard]] bool contains(int id) const
    {
        const auto word = static_cast<unsigned>(id) / WordBits;
        return word < m_words.size() ? ((m_words[word] >> (static_cast<unsigned>(id) % WordBits)) & 1) != 0
                                     : !m_others.isEmpty() && m_others.contains(id);
    }

    // Whether no element is in that state.
    [[nodiscard]] bool isEmpty() const { return m_count == 0; }

    // Made anew by each call.
    [[nodiscard]] QSet<int> ids() const;

    // What is there already, or not there, changes nothing.
    void insert(int id);
    void insert(const std::vector<int>& ids); // tells of all of them together
    void remove(int id);
    void assign(const QSet<int>& ids);
    void clear();

private:
    static constexpr unsigned WordBits = 64;

    // Give whether anything changed; tell nobody.
    bool set(int id);
    bool unset(int id);
    void makeRoomFor(int id);
    [[nodiscard]] std::vector<int> list() const;
    void notify(const std::vector<int>& changed) const;

    std::vector<std::uint64_t> m_words; // a bit for each id from 0
    QSet<int> m_others; // negative and large ids
    std::size_t m_count = 0;
    Listener m_listener;
};

} // namespace mirn::zelchipview
