// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PROTOBUFVIEW_H
#define SORRELKIT_PROTOBUFVIEW_H

#include "format/ByteView.h"
#include "limits/Budget.h"

#include <QString>

namespace SorrelKit {

/**
 * The fields of a protocol buffer message, one after another. Each has a tag, a varint whose lowest three bits are the
 * wire type, and above them the number of the field:
 *
 * | wire type | value                                                       |
 * |-----------|-------------------------------------------------------------|
 * | 0         | a varint: 7 bits a byte, the lowest first; bit 7 goes on    |
 * | 1         | 8 bytes                                                     |
 * | 2         | a varint, the length, and as many bytes: a text, a message  |
 * | 5         | 4 bytes                                                     |
 *
 * Meets raw input. Other wire types, a length past the end of the message, a varint of more than 64 bits and a tag of
 * more than 32 bits are damage: the message ends there. A message in a field is a view of its own, so the nesting is
 * that of the code that reads it.
 */
class ProtobufView
{
public:
    /// The message @p message, whose bytes outlive the view, as @p budget does. Each field costs Budget::ValueWork.
    ProtobufView(const ByteView &message, Budget *budget) : m_message(message), m_budget(budget) {}

    /// Goes to the next field. False at the end, at damage, and when the budget is spent.
    bool next();
    /// Whether the message was not read to its end.
    bool isDamaged() const { return m_isDamaged; }

    /// The number of the field. This function and those below are about the field that next() went to.
    int field() const { return m_field; }
    /// The value of a varint, or of 4 or 8 bytes; 0 for a text or a message.
    quint64 number() const { return m_number; }
    /// The number when it is one of an int32 that is not negative, else 0.
    int smallNumber() const { return m_number <= 0x7fffffff ? int(m_number) : 0; }
    /// The bytes of a text or a message; empty for a number.
    ByteView bytes() const { return m_bytes; }
    /// The bytes as UTF-8.
    QString text() const { return QString::fromUtf8(m_bytes.toByteArray()); }

private:
    bool readVarint(quint64 *value);
    bool readFixed(int count);
    bool fail();

    ByteView m_message;
    Budget *m_budget;
    qint64 m_at = 0;
    int m_field = 0;
    quint64 m_number = 0;
    ByteView m_bytes;
    bool m_isDamaged = false;
};

} // namespace SorrelKit

#endif
