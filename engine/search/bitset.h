// SPDX-License-Identifier: MIT
#pragma once

#include <QtAlgorithms>
#include <QtGlobal>

#include <vector>

namespace mirn::zelengine {

// A set of small numbers, as bits in words. Two sets that are combined must have the same size.
class BitSet final
{
public:
    static constexpr int WordBits = 64;

    explicit BitSet(int size = 0)
        : m_words(static_cast<std::size_t>((size + WordBits - 1) / WordBits))
    { }

    void insert(int value) { word(value) |= bit(value); }
    void remove(int value) { word(value) &= ~bit(value); }
    [[nodiscard]] bool contains(int value) const { return (words()[indexOf(value)] & bit(value)) != 0; }
    void add(const BitSet& other)
    {
        combine(other, [](quint64 a, quint64 b) { return a | b; });
    }
    void subtract(const BitSet& other)
    {
        combine(other, [](quint64 a, quint64 b) { return a & ~b; });
    }
    void intersect(const BitSet& other)
    {
        combine(other, [](quint64 a, quint64 b) { return a & b; });
    }

    [[nodiscard]] int count() const
    {
        int result = 0;
        for (quint64 word : m_words)
            result += static_cast<int>(qPopulationCount(word));
        return result;
    }

    [[nodiscard]] bool isEmpty() const
    {
        for (quint64 word : m_words) {
            if (word != 0)
                return false;
        }
        return true;
    }

    // Returns the least value; -1 if there is none.
    [[nodiscard]] int first() const
    {
        for (std::size_t index = 0; index < m_words.size(); ++index) {
            if (m_words[index] != 0)
                return static_cast<int>(index) * WordBits + static_cast<int>(qCountTrailingZeroBits(m_words[index]));
        }
        return -1;
    }

    // Calls the function with each value, in ascending order.
    template <typename Function> void forEach(const Function& function) const
    {
        for (std::size_t index = 0; index < m_words.size(); ++index) {
            for (quint64 rest = m_words[index]; rest != 0; rest &= rest - 1)
                function(static_cast<int>(index) * WordBits + static_cast<int>(qCountTrailingZeroBits(rest)));
        }
    }

    [[nodiscard]] std::vector<int> values() const
    {
        std::vector<int> result;
        forEach([&result](int value) { result.push_back(value); });
        return result;
    }

    // The words themselves, for whoever keeps their earlier values.
    [[nodiscard]] const std::vector<quint64>& words() const { return m_words; }
    void setWord(std::size_t index, quint64 word) { m_words[index] = word; }

private:
    [[nodiscard]] static std::size_t indexOf(int value) { return static_cast<std::size_t>(value / WordBits); }
    [[nodiscard]] static quint64 bit(int value) { return quint64(1) << (value % WordBits); }
    [[nodiscard]] quint64& word(int value) { return m_words[indexOf(value)]; }

    template <typename Operation> void combine(const BitSet& other, const Operation& operation)
    {
        for (std::size_t index = 0; index < m_words.size(); ++index)
            m_words[index] = operation(m_words[index], other.m_words[index]);
    }

    std::vector<quint64> m_words;
};

} // namespace mirn::zelengine
