// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <functional>
#include <memory>

namespace mirn::zelchip {

// Compresses bytes that come piece by piece, in the zlib format. Between two pieces it keeps a few hundred kilobytes,
// however many there are.
class Deflater final
{
public:
    using Sink = std::function<void(const QByteArray& compressed)>;

    explicit Deflater(Sink sink);
    ~Deflater();

    void add(const QByteArray& bytes);
    void finish(); // nothing may be added after it

private:
    void run(const QByteArray& bytes, int flush);

    struct State;
    const Sink m_sink;
    const std::unique_ptr<State> m_state;
};

} // namespace mirn::zelchip
