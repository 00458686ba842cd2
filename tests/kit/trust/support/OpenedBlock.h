// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef OPENEDBLOCK_H
#define OPENEDBLOCK_H

#include "archive/ByteSource.h"
#include "archive/ZipDirectory.h"
#include "limits/Budget.h"
#include "trust/block/BlockVerifier.h"

#include <QByteArray>
#include <QStringList>

#include <memory>

namespace fixture {

/// A package in memory whose signing block can be verified.
class OpenedBlock
{
public:
    static constexpr qint64 Work = 400000000;
    static constexpr qint64 HeldBytes = 64 << 20;

    explicit OpenedBlock(const QByteArray &package, qint64 work = Work, qint64 bytes = HeldBytes)
        : OpenedBlock(std::make_unique<BytesInMemory>(SharedBytes(package)), work, bytes)
    {
    }
    explicit OpenedBlock(std::unique_ptr<ByteSource> bytes, qint64 work = Work, qint64 held = HeldBytes)
        : source(std::move(bytes)), budget(work, held)
    {
        isArchive = directory.read(*source);
        verifier = std::make_unique<SorrelKit::BlockVerifier>(*source, directory, &budget);
    }

    /// The result of a scheme, by its own id.
    SorrelKit::SchemeResult verify(SorrelKit::Signer::Scheme scheme, SorrelKit::SdkRange sdk = {})
    {
        switch (scheme) {
        case SorrelKit::Signer::Scheme::V2:
            return verifier->verifyV2(sdk);
        case SorrelKit::Signer::Scheme::V3:
            return verifier->verifyV3(sdk);
        default:
            return verifier->verifyV31(sdk);
        }
    }

    std::unique_ptr<ByteSource> source;
    ZipDirectory directory;
    Budget budget;
    bool isArchive = false;
    std::unique_ptr<SorrelKit::BlockVerifier> verifier;
};

/// The errors of a result, and its warnings behind "warning: ", in their order.
inline QStringList messagesOf(const SorrelKit::SchemeResult &result)
{
    QStringList messages;
    for (const SorrelKit::SignatureIssue &issue : result.issues.errors())
        messages.append(issue.message());
    for (const SorrelKit::SignatureIssue &issue : result.issues.warnings())
        messages.append(QStringLiteral("warning: ") + issue.message());
    return messages;
}

/// The same in one text.
inline QString messageOf(const SorrelKit::SchemeResult &result)
{
    return messagesOf(result).join(QStringLiteral("; "));
}

} // namespace fixture

#endif
