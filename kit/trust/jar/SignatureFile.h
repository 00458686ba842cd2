// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNATUREFILE_H
#define SORRELKIT_SIGNATUREFILE_H

#include "trust/jar/JarManifest.h"
#include "trust/result/IssueList.h"
#include "trust/result/SdkRange.h"

#include <QString>
#include <QVector>

#include <vector>

namespace SorrelKit {

/**
 * A signature file of v1, META-INF/NAME.SF, whose signature was verified: the digests of the manifest, of its first
 * section, and of the sections of the members that the signer signed.
 *
 * When the digest of the whole manifest is right, so are its sections. Otherwise somebody added members, and the digest
 * of each section counts. Android leaves the first section unprotected then, unless there is a digest for it; here, the
 * manifest is changed. Signers that call themselves "signtool" have the digest of the whole manifest in an attribute of
 * another name, and that of the first section is not looked at.
 *
 * Android skips a signature file without Signature-Version, with sections that are not in the manifest or that occur
 * twice, and one that is damaged.
 */
class SignatureFile
{
public:
    /// The result of a comparison with the manifest.
    enum class State {
        Good,
        Skipped, ///< Android does not look at the file; skippedBecause() has the reason
        Changed, ///< the manifest is another one; the issues have the reasons
        TooCostly,
    };

    /// Work of looking up a section and beginning its digests.
    static constexpr qint64 SectionWork = 256;

    /// Parses @p file for the versions in @p sdk. See JarManifest for what it costs.
    SignatureFile(const QByteArray &file, SdkRange sdk, Budget *budget) : m_file(file, budget), m_sdk(sdk) {}

    /// Bytes that were taken from the budget.
    qint64 heldBytes() const { return m_file.heldBytes(); }

    /// Compares with @p manifest, and adds the differences to @p issues, for the signer @p subject.
    State compare(const JarManifest &manifest, const QString &subject, IssueList &issues, Budget *budget);
    /// Why the file is skipped.
    QString skippedBecause() const { return m_skippedBecause; }
    /// The numbers of the manifest's sections that the file has, after compare() returned State::Good.
    const std::vector<int> &sections() const { return m_sections; }

    /// Reports the newer schemes that the file lists (X-Android-APK-Signed), but that are not among @p found: somebody
    /// removed these signatures.
    void checkSchemes(const QVector<int> &found, const QString &subject, IssueList &issues) const;

private:
    bool isSkipped();
    /// Compares the digests in @p section with section @p number of the manifest.
    bool compareSection(const JarManifest &manifest, int number, const ByteView &section, const QString &subject,
                        IssueList &issues) const;

    JarManifest m_file;
    SdkRange m_sdk;
    QString m_skippedBecause;
    std::vector<int> m_sections;
};

} // namespace SorrelKit

#endif
