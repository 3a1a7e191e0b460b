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

    [[nodiscard]] bool isEmpty() const { return m_sentence.isEmpty(); }
    [[nodiscard]] const QString& sentence() const { return m_sentence; }

    friend bool operator==(const Refusal& refusal, const QString& sentence) { return refusal.m_sentence == sentence; }

private:
    QString m_sentence;
};

} // namespace mirn::zelengine
