// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mirn::zelimporter {

// Texts in UTF-8 that are kept once; each has a number, in the order of their first appearance. A text costs its bytes
// and about twenty more.
class TextNumbers
{
public:
    // Returns -1 if there is no such text.
    [[nodiscard]] int find(std::string_view text) const;
    // Returns the number of the text: that of an equal one, or a new one, which is the size() of before.
    int add(std::string_view text);
    // Valid until the next text is added.
    [[nodiscard]] std::string_view text(int number) const;
    [[nodiscard]] QString string(int number) const;
    [[nodiscard]] int size() const { return static_cast<int>(m_ends.size()); }

private:
    [[nodiscard]] std::size_t slotOf(std::string_view text) const;
    void grow();

    std::string m_bytes; // of all texts, one behind the other
    std::vector<std::size_t> m_ends; // where each ends
    std::vector<std::int32_t> m_slots; // a hash table of numbers, with -1 for what is free
};

} // namespace mirn::zelimporter
