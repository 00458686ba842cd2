// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/jar/JarVerifier.h"

#include "archive/ZipArchive.h"
#include "limits/Budget.h"
#include "trust/jar/JarDigests.h"
#include "trust/jar/SignatureBlockFile.h"
#include "trust/jar/SignatureFile.h"

#include <algorithm>
#include <utility>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

constexpr char jarManifestName[] = "META-INF/MANIFEST.MF";
constexpr char metaDirectory[] = "META-INF/";
constexpr int metaDirectorySize = sizeof metaDirectory - 1;

bool endsWith(const ByteView &name, const char *suffix)
{
    return name.hasText(name.size() - qint64(qstrlen(suffix)), suffix);
}

bool isInMetaDirectory(const ByteView &name)
{
    return name.hasText(0, metaDirectory);
}

/// The number of characters behind the base name of a block file; 0 for any other member.
int blockSuffixSize(const ByteView &name)
{
    if (!isInMetaDirectory(name))
        return 0;
    for (const char *const suffix : {".RSA", ".DSA", ".EC"}) {
        if (endsWith(name, suffix))
            return int(qstrlen(suffix));
    }
    return 0;
}

bool needsDigest(const ByteView &name)
{
    return !isInMetaDirectory(name) && !endsWith(name, "/");
}

/// Whether SHA-1 is the strongest of the digests for versions that know better ones.
bool isWeak(const std::vector<JarDigest> &digests, SdkRange sdk)
{
    return sdk.max >= SdkRange::JellyBeanMr2 && std::all_of(digests.begin(), digests.end(), [](const JarDigest &each) {
               return each.algorithm == HashAlgorithm::Sha1;
           });
}

ByteView viewOf(const char *text)
{
    return {reinterpret_cast<const uchar *>(text), qint64(qstrlen(text))};
}

} // namespace

SchemeResult JarVerifier::verify(SdkRange sdk, const QVector<int> &foundSchemes)
{
    m_sdk = sdk;
    m_result = SchemeResult(Signer::Scheme::V1);
    m_manifestMember = m_archive.directory().find(viewOf(jarManifestName));
    const qint64 work = MemberWork * m_archive.directory().count();
    if (!m_budget->spendWork(work)) {
        m_result.isFound = m_manifestMember >= 0;
        m_result.issues.addError(Code::TooCostly);
        return m_result;
    }
    const std::vector<int> blocks = blockFiles();
    m_result.isFound = m_manifestMember >= 0 && !blocks.empty();
    if (m_manifestMember < 0)
        m_result.issues.addError(Code::NoJarManifest);
    else if (blocks.empty())
        m_result.issues.addError(Code::NoSigner);
    else if (hasSoundEnds() && hasSoundNames() && readManifest(m_manifestMember)) {
        if (int(blocks.size()) > MaxSigners)
            m_result.issues.addError(Code::TooManySigners);
        for (size_t i = 0; i < blocks.size() && !m_result.issues.hasErrors(); ++i)
            verifySigner(blocks[i], foundSchemes);
        if (!m_result.issues.hasErrors())
            checkMembers();
    }
    m_budget->releaseBytes(m_manifest.heldBytes());
    return m_result;
}

bool JarVerifier::hasSoundEnds()
{
    constexpr quint32 FirstSignature = 0x04034b50;
    constexpr qint64 EndRecordSize = 22;
    constexpr qint64 CommentSizeAt = 20;
    const ZipDirectory &directory = m_archive.directory();
    ByteSource &source = m_archive.source();
    const QByteArray first = source.read(0, sizeof FirstSignature);
    const QByteArray end = source.read(directory.endAt(), EndRecordSize);
    if (directory.leadingBytes() != 0 || ByteView(first).u32(0) != FirstSignature)
        m_result.issues.addError(Code::UnreadableMember, QString(),
                                 QStringLiteral("the archive does not begin with a member"));
    if (source.size() - directory.endAt() - EndRecordSize != ByteView(end).u16(CommentSizeAt))
        m_result.issues.addError(Code::UnreadableMember, QString(),
                                 QStringLiteral("the archive does not end with its comment"));
    return !m_result.issues.hasErrors();
}

bool JarVerifier::hasSoundNames()
{
    ZipDirectory &directory = m_archive.directory();
    if (directory.count() != directory.claimedCount())
        m_result.issues.addError(Code::UnreadableMember, QString(), QStringLiteral("the directory is damaged"));
    for (int i = 0; i < directory.count(); ++i) {
        const QByteArray name = directory.name(i).toByteArray();
        if (directory.find(ByteView(name)) != i)
            m_result.issues.addError(Code::DuplicateMember, nameOf(i));
        else if (nameOf(i).toUtf8() != name)
            m_result.issues.addError(Code::UnreadableMember, nameOf(i), QStringLiteral("the name is no text"));
    }
    return !m_result.issues.hasErrors();
}

std::vector<int> JarVerifier::blockFiles()
{
    std::vector<int> blocks;
    for (int i = 0; i < m_archive.directory().count(); ++i) {
        if (blockSuffixSize(m_archive.directory().name(i)) > 0)
            blocks.push_back(i);
    }
    return blocks;
}

QString JarVerifier::nameOf(int number) const
{
    return ZipDirectory::nameText(m_archive.directory().name(number));
}

std::optional<QByteArray> JarVerifier::read(int number, qint64 maxBytes)
{
    const QString name = nameOf(number);
    const std::optional<ZipArchive::Data> data = m_archive.data(number);
    if (data && (data->size > maxBytes || data->packedSize > maxBytes)) {
        m_result.issues.addError(Code::TooCostly, name);
        return {};
    }
    const qint64 work = data ? Budget::PackedByteWork * data->packedSize + Budget::ByteWork * data->size : 0;
    if (work > m_budget->workLeft()) {
        m_result.issues.addError(Code::TooCostly, name);
        return {};
    }
    const QByteArray content = data ? m_archive.file(name, maxBytes, m_budget) : QByteArray();
    if (!data || content.size() != m_archive.directory().member(number).size) {
        m_result.issues.addError(Code::UnreadableMember, name);
        return {};
    }
    return content;
}

bool JarVerifier::readManifest(int number)
{
    const std::optional<QByteArray> file = read(number, MaxManifestBytes);
    if (!file)
        return false;
    m_manifest = JarManifest(*file, m_budget);
    switch (m_manifest.fault()) {
    case JarManifest::Fault::None:
        break;
    case JarManifest::Fault::NoName:
        m_result.issues.addError(Code::BadJarManifest, nameOf(number),
                                 QStringLiteral("section %1 has no name").arg(m_manifest.faultDetail()));
        return false;
    case JarManifest::Fault::Duplicate:
        m_result.issues.addError(Code::DuplicateSection, m_manifest.faultDetail());
        return false;
    case JarManifest::Fault::TooCostly:
        m_result.issues.addError(Code::TooCostly, nameOf(number));
        return false;
    }
    m_signersOf.assign(size_t(m_manifest.count()), 0);
    return true;
}

void JarVerifier::verifySigner(int block, const QVector<int> &foundSchemes)
{
    const ByteView name = m_archive.directory().name(block);
    const ByteView base = name.part(0, name.size() - blockSuffixSize(name));
    const QString subject = ZipDirectory::nameText(base.from(metaDirectorySize));
    const QByteArray fileName = base.toByteArray() + ".SF";
    const int file = m_archive.directory().find(ByteView(fileName));
    if (file < 0) {
        m_result.issues.addWarning(Code::MissingSignatureFile, subject);
        return;
    }
    const std::optional<QByteArray> blockBytes = read(block, MaxBlockBytes);
    const std::optional<QByteArray> fileBytes = read(file, MaxManifestBytes);
    if (!blockBytes || !fileBytes)
        return;
    const qint64 bytes = qint64(fileBytes->size()) + blockBytes->size();
    if (!m_budget->holdBytes(bytes)) {
        m_result.issues.addError(Code::TooCostly, subject);
        return;
    }
    const SignatureBlockFile::Result result =
        SignatureBlockFile::verify(ByteView(*blockBytes), ByteView(*fileBytes), m_sdk, m_budget);
    m_budget->releaseBytes(bytes);
    if (result.code != Code::None)
        m_result.issues.addError(result.code, subject, result.detail);
    else
        compareWithManifest(*fileBytes, subject, foundSchemes, {result.certificate, {block, file}});
}

void JarVerifier::compareWithManifest(const QByteArray &signatureFile, const QString &subject,
                                      const QVector<int> &foundSchemes, JarSigner signer)
{
    SignatureFile file(signatureFile, m_sdk, m_budget);
    const SignatureFile::State state = file.compare(m_manifest, subject, m_result.issues, m_budget);
    switch (state) {
    case SignatureFile::State::TooCostly:
        m_result.issues.addError(Code::TooCostly, subject);
        break;
    case SignatureFile::State::Skipped:
        m_skipped.emplace_back(Code::BadJarManifest, Signer::Scheme::V1, subject, file.skippedBecause());
        break;
    case SignatureFile::State::Changed:
        break;
    case SignatureFile::State::Good:
        file.checkSchemes(foundSchemes, subject, m_result.issues);
        for (const int section : file.sections())
            m_signersOf[size_t(section)] = SignerSet(m_signersOf[size_t(section)] | 1U << m_signers.size());
        m_signers.push_back(std::move(signer));
        break;
    }
    m_budget->releaseBytes(file.heldBytes());
}

void JarVerifier::checkListedMembers()
{
    for (int i = 0; i < m_manifest.count(); ++i) {
        const QByteArray &name = m_manifest.name(i);
        if (name.endsWith('/') || m_archive.directory().find(ByteView(name)) < 0)
            m_result.issues.addError(Code::MissingMember, QString::fromUtf8(name));
    }
}

void JarVerifier::checkMembers()
{
    for (const SignatureIssue &skipped : m_skipped) {
        if (m_signers.empty())
            m_result.issues.addError(skipped.code(), skipped.subject(), skipped.detail());
        else
            m_result.issues.addWarning(skipped.code(), skipped.subject(), skipped.detail());
    }
    if (m_signers.empty()) {
        m_result.issues.addError(Code::NoSigner);
        return;
    }
    checkListedMembers();
    const qint64 bytes = MemberBytes * m_archive.directory().count();
    if (!m_budget->holdBytes(bytes)) {
        m_result.issues.addError(Code::TooCostly);
        return;
    }
    compareMembers();
    m_budget->releaseBytes(bytes);
    if (m_packageSigners == 0)
        m_result.issues.addError(Code::NoSigner, QString(), QStringLiteral("no member is signed"));
    addUnprotected();
    addSigners();
}

void JarVerifier::compareMembers()
{
    MemberDigests digests(m_archive);
    std::vector<int> compared;
    bool isFirst = true;
    bool hasWeakDigest = false;
    for (int i = 0; i < m_archive.directory().count(); ++i) {
        const ByteView name = m_archive.directory().name(i);
        if (!needsDigest(name))
            continue;
        const int section = m_manifest.find(name);
        if (section < 0) {
            m_result.issues.addError(Code::UnlistedMember, nameOf(i));
            continue;
        }
        std::vector<JarDigest> wanted = jarDigests(m_manifest.section(section), "-Digest", m_sdk);
        if (wanted.empty()) {
            m_result.issues.addError(Code::UnknownDigest, nameOf(i));
            continue;
        }
        hasWeakDigest = hasWeakDigest || isWeak(wanted, m_sdk);
        const SignerSet signers = m_signersOf[size_t(section)];
        if (signers == 0)
            m_result.issues.addError(Code::UnsignedMember, nameOf(i));
        else if (isFirst)
            m_packageSigners = signers;
        else if (signers != m_packageSigners)
            m_result.issues.addError(Code::MemberSignersDiffer, nameOf(i));
        isFirst = isFirst && signers == 0;
        digests.add(i, std::move(wanted));
        compared.push_back(i);
    }
    if (hasWeakDigest)
        m_result.issues.addWarning(Code::WeakHash, QString::fromLatin1(jarManifestName), QStringLiteral("SHA-1"));
    addResults(compared, digests.check());
}

void JarVerifier::addResults(const std::vector<int> &members, const std::vector<MemberDigests::Result> &results)
{
    for (size_t i = 0; i < members.size(); ++i) {
        switch (results[i].state) {
        case MemberDigests::State::Right:
            break;
        case MemberDigests::State::Wrong:
            m_result.issues.addError(Code::MemberChanged, nameOf(members[i]),
                                     QString::fromLatin1(Digest::name(results[i].algorithm)));
            break;
        case MemberDigests::State::Unreadable:
            m_result.issues.addError(Code::UnreadableMember, nameOf(members[i]));
            break;
        case MemberDigests::State::TooCostly:
            m_result.issues.addError(Code::TooCostly, nameOf(members[i]));
            break;
        }
    }
}

void JarVerifier::addUnprotected()
{
    std::vector<int> known{m_manifestMember};
    for (size_t i = 0; i < m_signers.size(); ++i) {
        if ((m_packageSigners >> i & 1) != 0)
            known.insert(known.end(), m_signers[i].files.begin(), m_signers[i].files.end());
    }
    for (int i = 0; i < m_archive.directory().count(); ++i) {
        const ByteView name = m_archive.directory().name(i);
        const bool isEmpty = endsWith(name, "/") && m_archive.directory().member(i).size == 0;
        if (!needsDigest(name) && !isEmpty && std::find(known.begin(), known.end(), i) == known.end())
            m_result.issues.addWarning(Code::UnprotectedMember, nameOf(i));
    }
}

void JarVerifier::addSigners()
{
    for (size_t i = 0; i < m_signers.size(); ++i) {
        if ((m_packageSigners >> i & 1) == 0)
            continue;
        VerifiedSigner signer;
        signer.signer.certificate = m_signers[i].certificate;
        signer.signer.scheme = Signer::Scheme::V1;
        m_result.signers.append(signer);
    }
}

} // namespace SorrelKit
