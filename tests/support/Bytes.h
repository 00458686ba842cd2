// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BYTES_H
#define BYTES_H

#include <QByteArray>

/// Little-endian bytes for fixtures: written one field after another, and damaged afterwards.
namespace fixture {

class Bytes
{
public:
    Bytes &u8(qint64 value);
    Bytes &u16(qint64 value);
    Bytes &u32(qint64 value);
    Bytes &raw(const QByteArray &bytes);
    Bytes &zeros(int count);
    /// Zeros up to a multiple of 4 bytes.
    Bytes &align();

    int size() const { return int(m_data.size()); }
    QByteArray data() const { return m_data; }

private:
    Bytes &integer(qint64 value, int width);

    QByteArray m_data;
};

void poke8(QByteArray &bytes, int at, qint64 value);
void poke16(QByteArray &bytes, int at, qint64 value);
void poke32(QByteArray &bytes, int at, qint64 value);
quint16 peek16(const QByteArray &bytes, int at);
quint32 peek32(const QByteArray &bytes, int at);

/// A chunk of type @p type: its 8-byte header, the further header fields @p header, then @p body.
QByteArray chunk(int type, const QByteArray &header = QByteArray(), const QByteArray &body = QByteArray());

} // namespace fixture

#endif
