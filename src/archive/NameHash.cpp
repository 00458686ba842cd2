// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/NameHash.h"

#include <QRandomGenerator>

#include <array>

namespace {

using Key = std::array<quint64, 2>;

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

quint64 NameHash::of(const ByteView &name)
{
    static const Key key{QRandomGenerator::system()->generate64(), QRandomGenerator::system()->generate64()};
    constexpr int WordSize = 8;
    State state(key);
    const uchar *const data = name.data();
    const qint64 whole = name.size() - name.size() % WordSize;
    for (qint64 at = 0; at < whole; at += WordSize)
        state.add(qFromLittleEndian<quint64>(data + at));
    quint64 last = quint64(name.size()) << 56;
    for (qint64 at = whole; at < name.size(); ++at)
        last |= quint64(data[at]) << (8 * (at - whole));
    state.add(last);
    return state.result();
}
