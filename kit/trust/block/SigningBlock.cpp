// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/SigningBlock.h"

#include "archive/ByteSource.h"
#include "archive/ZipDirectory.h"

#include <algorithm>
#include <limits>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

const char *const blockMagic = "APK Sig Block 42";
constexpr qint64 MagicSize = 16;
constexpr qint64 SizeSize = 8;
constexpr qint64 FooterSize = SizeSize + MagicSize;
constexpr qint64 IdSize = 4;
constexpr qint64 EndRecordSize = 22;
constexpr qint64 LocatorSize = 20;
constexpr quint32 LocatorSignature = 0x07064b50;

// A size that is longer than any file becomes -1.
qint64 sizeAt(const ByteView &bytes, qint64 at)
{
    const quint64 value = bytes.u32(at) | quint64(bytes.u32(at + 4)) << 32;
    return value > quint64(std::numeric_limits<qint64>::max()) ? -1 : qint64(value);
}

} // namespace

SigningBlock::SigningBlock(ByteSource &source, const ZipDirectory &directory) : m_source(&source)
{
    if (readEnd(directory))
        readPairs();
}

bool SigningBlock::fail(Code code, const char *detail)
{
    m_fault = code;
    m_faultDetail = QLatin1String(detail);
    m_pairs.clear();
    return false;
}

bool SigningBlock::readEnd(const ZipDirectory &directory)
{
    m_endAt = directory.endAt();
    const QByteArray endBytes = m_source->read(m_endAt, EndRecordSize);
    const ByteView end(endBytes);
    if (!end.has(0, EndRecordSize))
        return false;
    const qint64 directorySize = end.u32(12);
    m_directoryAt = end.u32(16);
    const QByteArray footer = m_source->read(m_directoryAt - FooterSize, FooterSize);
    if (!ByteView(footer).hasText(SizeSize, blockMagic))
        return false;

    if (m_directoryAt > m_endAt || directorySize != m_endAt - m_directoryAt)
        return fail(Code::BadBlock, "the directory does not end at the end record");
    if (end.u16(20) != m_source->size() - m_endAt - EndRecordSize)
        return fail(Code::BadBlock, "the comment does not end with the file");
    const QByteArray locator = m_source->read(m_endAt - LocatorSize, LocatorSize);
    if (directory.isZip64() || ByteView(locator).u32(0) == LocatorSignature)
        return fail(Code::BadBlock, "the archive is in the form of ZIP64");
    const qint64 size = sizeAt(ByteView(footer), 0);
    if (size < FooterSize || size > m_directoryAt - SizeSize)
        return fail(Code::BadBlock, "its size is wrong");
    m_blockAt = m_directoryAt - SizeSize - size;
    const QByteArray header = m_source->read(m_blockAt, SizeSize);
    if (header != footer.left(int(SizeSize)))
        return fail(Code::BadBlock, "its sizes differ");
    return true;
}

bool SigningBlock::readPairs()
{
    const qint64 end = m_directoryAt - FooterSize;
    for (qint64 at = m_blockAt + SizeSize; at < end;) {
        if (m_pairs.size() == MaxPairs)
            return fail(Code::TooCostly, "the block has too many values");
        const QByteArray head = m_source->read(at, SizeSize + IdSize);
        const qint64 size = sizeAt(ByteView(head), 0);
        const qint64 left = end - at - SizeSize;
        if (head.size() < SizeSize + IdSize || size < IdSize || size > left)
            return fail(Code::BadBlock, "the size of a value is wrong");
        const qint64 valueAt = at + SizeSize + IdSize;
        m_pairs.append({ByteView(head).u32(SizeSize), valueAt, size - IdSize});
        at = valueAt + size - IdSize;
    }
    return true;
}

const SigningBlock::Pair *SigningBlock::find(quint32 id) const
{
    const auto found =
        std::find_if(m_pairs.constBegin(), m_pairs.constEnd(), [id](const Pair &each) { return each.id == id; });
    return found == m_pairs.constEnd() ? nullptr : &*found;
}

QVector<quint32> SigningBlock::ids() const
{
    QVector<quint32> result;
    result.reserve(m_pairs.size());
    for (const Pair &pair : m_pairs)
        result.append(pair.id);
    return result;
}

qint64 SigningBlock::valueSize(quint32 id) const
{
    const Pair *const pair = find(id);
    return pair == nullptr ? 0 : pair->valueSize;
}

QByteArray SigningBlock::value(quint32 id) const
{
    const Pair *const pair = find(id);
    if (pair == nullptr || pair->valueSize > MaxValueBytes)
        return {};
    const QByteArray bytes = m_source->read(pair->valueAt, pair->valueSize);
    return bytes.size() == pair->valueSize ? bytes : QByteArray();
}

} // namespace SorrelKit
