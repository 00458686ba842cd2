// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/v4/IdSigFile.h"

#include "archive/ByteSource.h"
#include "trust/block/PrefixedFields.h"
#include "trust/block/SigningBlock.h"

#include <QtEndian>

namespace SorrelKit {

namespace {

constexpr qint64 IdSigPrefixSize = 4;
constexpr qint64 HashingNumbersSize = 5;

/// The bytes at @p *at with their number before them, which is MaxInfoBytes at most. Null when they do not exist.
QByteArray infoAt(ByteSource &source, qint64 *at)
{
    const QByteArray prefix = source.read(*at, IdSigPrefixSize);
    const qint64 size = ByteView(prefix).u32(0);
    *at += IdSigPrefixSize;
    if (prefix.size() != IdSigPrefixSize || size > IdSigFile::MaxInfoBytes)
        return {};
    const QByteArray bytes = source.read(*at, size);
    *at += size;
    return bytes.size() == size && size > 0 ? bytes : QByteArray();
}

IdSigFile::SigningInfo signingInfo(PrefixedFields &fields)
{
    IdSigFile::SigningInfo info;
    info.apkDigest = fields.bytes();
    info.certificate = fields.bytes();
    info.additionalData = fields.bytes();
    info.publicKey = fields.bytes();
    info.algorithm = fields.u32();
    info.signature = fields.bytes();
    return info;
}

template <typename Integer>
void appendInteger(QByteArray &to, Integer value)
{
    char bytes[sizeof(Integer)];
    qToLittleEndian(value, bytes);
    to.append(bytes, int(sizeof bytes));
}

void appendPrefixed(QByteArray &to, const ByteView &bytes)
{
    appendInteger(to, quint32(bytes.size()));
    to += bytes.toByteArray();
}

} // namespace

bool IdSigFile::read(ByteSource &source)
{
    const QByteArray version = source.read(0, IdSigPrefixSize);
    if (version.size() != IdSigPrefixSize)
        return fail(SignatureIssue::Code::BadV4Signature, QStringLiteral("version"));
    if (ByteView(version).u32(0) != Version)
        return fail(SignatureIssue::Code::UnknownV4Version, QString::number(ByteView(version).u32(0)));
    qint64 at = IdSigPrefixSize;
    m_hashing = infoAt(source, &at);
    if (!readHashing())
        return fail(SignatureIssue::Code::BadV4Signature, QStringLiteral("hashing info"));
    m_signing = infoAt(source, &at);
    if (!readSigning())
        return fail(SignatureIssue::Code::BadV4Signature, QStringLiteral("signing info"));
    if (!readTree(source, at))
        return fail(SignatureIssue::Code::BadV4Signature, QStringLiteral("hash tree"));
    return true;
}

QByteArray IdSigFile::signedData(const SigningInfo &info, qint64 packageSize) const
{
    QByteArray data;
    appendInteger(data, packageSize);
    data += m_hashing.left(int(HashingNumbersSize));
    for (const ByteView &each : {m_salt, m_rootHash, info.apkDigest, info.certificate, info.additionalData})
        appendPrefixed(data, each);
    QByteArray size;
    appendInteger(size, quint32(data.size() + IdSigPrefixSize));
    return size + data;
}

bool IdSigFile::fail(SignatureIssue::Code code, const QString &detail)
{
    m_fault = code;
    m_faultDetail = detail;
    return false;
}

bool IdSigFile::readHashing()
{
    const ByteView hashing(m_hashing);
    PrefixedFields fields(hashing.from(HashingNumbersSize));
    m_salt = fields.bytes();
    m_rootHash = fields.bytes();
    return fields.isRead();
}

bool IdSigFile::readSigning()
{
    PrefixedFields fields{ByteView(m_signing)};
    m_infos.append(signingInfo(fields));
    if (fields.hasMore()) {
        const quint32 schemeId = fields.u32();
        PrefixedFields newer = fields.fields();
        m_infos.append(signingInfo(newer));
        m_infos.last().schemeId = schemeId;
        if (schemeId != SigningBlock::SchemeV31 || !newer.isRead())
            return false;
    }
    return fields.isRead();
}

bool IdSigFile::readTree(ByteSource &source, qint64 at)
{
    if (at == source.size())
        return true;
    const QByteArray prefix = source.read(at, IdSigPrefixSize);
    m_treeAt = at + IdSigPrefixSize;
    m_treeSize = ByteView(prefix).u32(0);
    return prefix.size() == IdSigPrefixSize && m_treeSize == source.size() - m_treeAt;
}

} // namespace SorrelKit
