// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PROTOBUFWRITER_H
#define PROTOBUFWRITER_H

#include <QByteArray>
#include <QString>

namespace fixture {

/// Writes a protocol buffer message, field by field.
class ProtobufWriter
{
public:
    ProtobufWriter &number(int field, quint64 value)
    {
        varint(quint64(field) << 3);
        return varint(value);
    }
    ProtobufWriter &bytes(int field, const QByteArray &value)
    {
        varint(quint64(field) << 3 | 2);
        varint(quint64(value.size()));
        m_data += value;
        return *this;
    }
    ProtobufWriter &text(int field, const char *value) { return bytes(field, QByteArray(value)); }
    ProtobufWriter &text(int field, const QString &value) { return bytes(field, value.toUtf8()); }
    ProtobufWriter &message(int field, const ProtobufWriter &value) { return bytes(field, value.m_data); }
    /// Any bytes.
    ProtobufWriter &raw(const QByteArray &data)
    {
        m_data += data;
        return *this;
    }

    QByteArray data() const { return m_data; }

private:
    ProtobufWriter &varint(quint64 value)
    {
        for (; value >= 0x80; value >>= 7)
            m_data += char(uchar((value & 0x7f) | 0x80));
        m_data += char(uchar(value));
        return *this;
    }

    QByteArray m_data;
};

} // namespace fixture

#endif
