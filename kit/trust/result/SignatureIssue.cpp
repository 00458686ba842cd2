// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/SignatureIssue.h>

#include <QMetaEnum>
#include <QSharedData>

#include <algorithm>
#include <iterator>

namespace SorrelKit {

class SignatureIssueData : public QSharedData
{
public:
    SignatureIssue::Code code = SignatureIssue::Code::None;
    Signer::Scheme scheme = Signer::Scheme::None;
    QString subject;
    QString detail;
};

namespace {

using Code = SignatureIssue::Code;

struct IssueText {
    Code code;
    const char *text;
};

constexpr IssueText issueTexts[] = {
    {Code::None, "no error"},
    {Code::CannotOpen, "the package cannot be opened"},
    {Code::NotSigned, "the package has no signature that this version of Android accepts"},
    {Code::TooCostly, "verification takes too much"},
    {Code::TooManyIssues, "there are more issues than are listed"},
    {Code::NoSdkVersion, "no API level is in the range"},
    {Code::SchemeRequired, "the package needs a newer signature scheme"},
    {Code::SignersDiffer, "the signature schemes have different signers"},
    {Code::SetSignersDiffer, "the packages of the set have different signers"},
    {Code::SchemeStripped, "a signature was removed"},
    {Code::UnknownScheme, "a signature scheme is unknown"},
    {Code::BadBlock, "the signing block is damaged"},
    {Code::NoSigner, "there is no signer"},
    {Code::TooManySigners, "there are too many signers"},
    {Code::BadSigner, "a signer is damaged"},
    {Code::NoKnownSignature, "no signature has a known algorithm"},
    {Code::UnknownAlgorithm, "an algorithm is unknown"},
    {Code::BadSignature, "a signature is wrong"},
    {Code::AlgorithmsDiffer, "signatures and digests have different algorithms"},
    {Code::BadPublicKey, "a public key is damaged"},
    {Code::NoCertificate, "there is no certificate"},
    {Code::BadCertificate, "a certificate is damaged"},
    {Code::KeysDiffer, "the certificate has another key than the signer"},
    {Code::DigestsDiffer, "digests of the same content differ"},
    {Code::ContentChanged, "the content was changed"},
    {Code::BadAttribute, "an attribute is damaged"},
    {Code::UnknownAttribute, "an attribute is unknown"},
    {Code::SdkVersionsDiffer, "API levels of a signer differ"},
    {Code::SdkVersionsOverlap, "several signers are for the same API levels"},
    {Code::SdkVersionsUncovered, "no signer is for some API levels"},
    {Code::BadLineage, "the lineage of keys is damaged"},
    {Code::LineageDiffers, "the lineage of keys does not lead to the signer"},
    {Code::NoJarManifest, "there is no META-INF/MANIFEST.MF"},
    {Code::BadJarManifest, "a manifest or signature file is damaged"},
    {Code::DuplicateSection, "a section occurs twice"},
    {Code::DuplicateMember, "a member occurs twice"},
    {Code::MissingMember, "a member is missing"},
    {Code::UnreadableMember, "a member cannot be read"},
    {Code::MissingSignatureFile, "a signature block has no signature file"},
    {Code::BadSignatureBlock, "a signature block is damaged"},
    {Code::UnsupportedAlgorithm, "some versions of Android do not know an algorithm"},
    {Code::UnknownDigest, "no digest has a known algorithm"},
    {Code::ManifestChanged, "the manifest was changed"},
    {Code::SectionChanged, "a section of the manifest was changed"},
    {Code::UnlistedMember, "a member is not in the manifest"},
    {Code::UnsignedMember, "a member is not signed"},
    {Code::MemberChanged, "a member was changed"},
    {Code::UnprotectedMember, "a member is not protected by signatures"},
    {Code::MemberSignersDiffer, "members have different signers"},
    {Code::BadV4Signature, "the v4 signature is damaged"},
    {Code::UnknownV4Version, "the version of the v4 signature is unknown"},
    {Code::RootHashDiffers, "the root hash is wrong"},
    {Code::HashTreeDiffers, "the hash tree is wrong"},
    {Code::V4Differs, "the v4 signature is for another package"},
    {Code::NoStamp, "there is no source stamp"},
    {Code::BadStamp, "the source stamp is damaged"},
    {Code::StampDiffers, "the source stamp is for another package"},
    {Code::WeakHash, "a hash is weak"},
    {Code::WeakKey, "a key is weak"},
    {Code::DebugCertificate, "the certificate is for tests"},
    {Code::Expired, "the certificate has expired"},
    {Code::NotYetValid, "the certificate is not valid yet"},
};

QString textOf(Code code)
{
    const auto *const row = std::find_if(std::begin(issueTexts), std::end(issueTexts),
                                         [code](const IssueText &each) { return each.code == code; });
    return row == std::end(issueTexts) ? QString() : QString::fromLatin1(row->text);
}

} // namespace

SignatureIssue::SignatureIssue() : d(new SignatureIssueData) {}

SignatureIssue::SignatureIssue(Code code, Signer::Scheme scheme, const QString &subject, const QString &detail)
    : SignatureIssue()
{
    d->code = code;
    d->scheme = scheme;
    d->subject = subject;
    d->detail = detail;
}

SignatureIssue::SignatureIssue(const SignatureIssue &other) = default;
SignatureIssue::SignatureIssue(SignatureIssue &&other) noexcept = default;
SignatureIssue &SignatureIssue::operator=(const SignatureIssue &other) = default;
SignatureIssue &SignatureIssue::operator=(SignatureIssue &&other) noexcept = default;
SignatureIssue::~SignatureIssue() = default;

SignatureIssue::Code SignatureIssue::code() const
{
    return d->code;
}

Signer::Scheme SignatureIssue::scheme() const
{
    return d->scheme;
}

QString SignatureIssue::subject() const
{
    return d->subject;
}

QString SignatureIssue::detail() const
{
    return d->detail;
}

QString SignatureIssue::message() const
{
    QString text = textOf(d->code);
    if (!d->subject.isEmpty())
        text.prepend(d->subject + QLatin1String(": "));
    return d->detail.isEmpty() ? text : text + QLatin1String(": ") + d->detail;
}

} // namespace SorrelKit
