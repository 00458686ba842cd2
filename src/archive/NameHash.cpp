// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/NameHash.h"

#include <QRandomGenerator>

#include <array>

namespace {

using Key = std::array<quint64, 2>;

constexpr quint64 EachByte = 0x0101010101010101;
constexpr quint64 HighBits = 0x8080808080808080;

// The high bits of the bytes in @p word that are 0, or not ASCII. No byte borrows from the next one.
quint64 oddBytes(quint64 word)
{
    return (word | ~((word | HighBits) - EachByte)) & HighBits;
}

quint64 rotated(quint64 value, int bits)
{
    return value << bits | value >> (64 - bits);
}

struct State {
    explicit State(const Key &key)
        : v0(key[0] ^ 0x736f6d6570736575U),
          v1(key[1] ^ 0x646f72616e646f6dU),
          v2(key[0] ^ 0x6c7967656e657261U),
          v3(key[1] ^ 0x7465646279746573U)
    {
    }

    void round()
    {
        v0 += v1;
        v2 += v3;
        v1 = rotated(v1, 13) ^ v0;
        v3 = rotated(v3, 16) ^ v2;
        v0 = rotated(v0, 32);
        v2 += v1;
        v0 += v3;
        v1 = rotated(v1, 17) ^ v2;
        v3 = rotated(v3, 21) ^ v0;
        v2 = rotated(v2, 32);
    }
    void add(quint64 word)
    {
        v3 ^= word;
        round();
        v0 ^= word;
    }
    quint64 result()
    {
        v2 ^= 0xff;
        round();
        round();
        round();
        return v0 ^ v1 ^ v2 ^ v3;
    }

    quint64 v0;
    quint64 v1;
    quint64 v2;
    quint64 v3;
};

} // namespace

NameHash::Hashed NameHash::of(const ByteView &name)
{
    static const Key key{QRandomGenerator::system()->generate64(), QRandomGenerator::system()->generate64()};
    constexpr int WordSize = 8;
    State state(key);
    const uchar *const data = name.data();
    const qint64 rest = name.size() % WordSize;
    const qint64 whole = name.size() - rest;
    quint64 odd = 0;
    for (qint64 at = 0; at < whole; at += WordSize) {
        const auto word = qFromLittleEndian<quint64>(data + at);
        odd |= oddBytes(word);
        state.add(word);
    }
    quint64 last = 0;
    if (whole > 0 && rest > 0) // the end of the last eight bytes
        last = qFromLittleEndian<quint64>(data + name.size() - WordSize) >> (8 * (WordSize - rest));
    for (qint64 at = 0; whole == 0 && at < rest; ++at)
        last |= quint64(data[at]) << (8 * at);
    // The bytes behind the end count as plain.
    odd |= oddBytes(last | EachByte << (8 * rest));
    state.add(last | quint64(name.size()) << 56);
    return {state.result(), odd == 0};
}
