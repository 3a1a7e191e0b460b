// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <utility>

namespace mirn::zelengine {

// The answer of an operation that may refuse a change: one sentence for users that says why nothing was changed. It is
// empty if the change was made, or is allowed.
class [[nodiscard]] Refusal final
{
public:
    Refusal() = default;
    Refusal(QString sentence) // implicit, so that a rule can return its sentence
        : m_sentence(std::move(sentence))
    { }
    // `other` is the resource whose placement the sentence names as the reason.
    Refusal(QString sentence, int other)
        : m_sentence(std::move(sentence))
        , m_other(other)
    { }

    [[nodiscard]] bool isEmpty() const { return m_sentence.isEmpty(); }
    [[nodiscard]] const QString& sentence() const { return m_sentence; }
    [[nodiscard]] int other() const { return m_other; } // -1 if the reason is no other placement

    friend bool operator==(const Refusal& refusal, const QString& sentence) { return refusal.m_sentence == sentence; }

private:
    QString m_sentence;
    int m_other = -1;
};

} // namespace mirn::zelengine
