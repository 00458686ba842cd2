// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Arguments.h"

#include "PrintableText.h"

namespace {

constexpr ushort FirstByteHalf = 0xdc80;
constexpr ushort LastByteHalf = 0xdcff;
constexpr ushort ByteHalves = 0xdc00; ///< added to a byte

bool isContinuation(uchar byte)
{
    return (byte & 0xc0) == 0x80;
}

// The size of a UTF-8 character by its first byte; 0 for a byte that begins no character.
int sizeByLead(uchar lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xc2 && lead <= 0xdf)
        return 2;
    if (lead >= 0xe0 && lead <= 0xef)
        return 3;
    return lead >= 0xf0 && lead <= 0xf4 ? 4 : 0;
}

// The size of the UTF-8 character at @p at; 0 when there is none.
int characterSize(const QByteArray &bytes, int at)
{
    const auto byte = [&](int offset) { return uchar(bytes.at(at + offset)); };
    const int size = sizeByLead(byte(0));
    if (size == 0 || size > bytes.size() - at)
        return 0;
    for (int i = 1; i < size; ++i) {
        if (!isContinuation(byte(i)))
            return 0;
    }
    // An overlong form, half of a surrogate pair, or beyond U+10FFFF.
    if ((byte(0) == 0xe0 && byte(1) < 0xa0) || (byte(0) == 0xed && byte(1) > 0x9f)
        || (byte(0) == 0xf0 && byte(1) < 0x90) || (byte(0) == 0xf4 && byte(1) > 0x8f))
        return 0;
    return size;
}

} // namespace

QStringList argumentTexts(int argc, char *argv[])
{
    QStringList texts;
    for (int i = 0; i < argc; ++i)
        texts.append(argumentText(argv[i]));
    return texts;
}

QString argumentText(const QByteArray &bytes)
{
    QString text;
    int valid = 0; // the text has the bytes up to here
    const auto appendValid = [&](int end) {
        // Qt drops a byte order mark at the start of its input.
        const QByteArray marked = 'x' + bytes.mid(valid, end - valid);
        text += QString::fromUtf8(marked.constData(), marked.size()).mid(1);
    };
    for (int at = 0; at < bytes.size();) {
        const int size = characterSize(bytes, at);
        if (size == 0) {
            appendValid(at);
            text += QChar(ushort(ByteHalves + uchar(bytes.at(at))));
            valid = at + 1;
        }
        at += qMax(1, size);
    }
    appendValid(int(bytes.size()));
    return text;
}

QByteArray argumentBytes(const QString &text)
{
    QByteArray bytes;
    forEachCharacter(text, [&](int first, int size, char32_t) {
        const ushort unit = text.at(first).unicode();
        if (size == 1 && unit >= FirstByteHalf && unit <= LastByteHalf)
            bytes += char(unit - ByteHalves);
        else
            bytes += text.mid(first, size).toUtf8();
    });
    return bytes;
}
