// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SETVERIFIER_H
#define SORRELKIT_SETVERIFIER_H

#include "archive/ZipArchive.h"
#include "package/BytesAccess.h"
#include "trust/PackageVerifier.h"

#include <SorrelKit/Package.h>
#include <SorrelKit/SignatureRequest.h>

#include <memory>

namespace SorrelKit {

/// Verifies the bytes of a Package: the one package, or each package of a set. Public as Signatures.
class SetVerifier
{
public:
    /// The budget of all packages together, besides the digests of their content.
    static constexpr qint64 MaxWork = 1 << 28;
    static constexpr qint64 MaxBytes = 32 << 20;

    /// Opens the package. Its facts are read now, for the range of API levels.
    SetVerifier(const Package &package, const SignatureRequest &request);

    /// Whether there is a package with a manifest.
    bool isOpen() const { return m_archive != nullptr; }
    /// Verifies it. Precondition: isOpen().
    void verify(SignaturesData *result) const;

private:
    void verifySet(SignaturesData *result, Budget *budget) const;
    SignaturesData::Pointer verifiedPart(ZipArchive &package, const QString &name, Budget *budget) const;
    std::shared_ptr<ByteSource> openV4Signature() const;

    SORRELKIT_PRIVATE_NAMESPACE::PackageBytes m_bytes;
    std::unique_ptr<ZipArchive> m_archive; ///< null when there is no package
    PackageVerifier::Task m_task;
    QString m_v4SignatureFile; ///< empty for the one beside the package
};

} // namespace SorrelKit

#endif
