// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/jar/SignatureFile.h"

#include "limits/Budget.h"
#include "trust/jar/JarDigests.h"

#include <algorithm>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

enum class DigestState {
    Missing,
    Right,
    Wrong
};

DigestState stateOf(const ByteView &section, const char *suffix, SdkRange sdk, const ByteView &bytes)
{
    const std::vector<JarDigest> digests = jarDigests(section, suffix, sdk);
    if (digests.empty())
        return DigestState::Missing;
    const bool isRight =
        std::all_of(digests.begin(), digests.end(), [&bytes](const JarDigest &each) { return each.isOf(bytes); });
    return isRight ? DigestState::Right : DigestState::Wrong;
}

QString sectionText(const QByteArray &name)
{
    return QString::fromUtf8(name);
}

} // namespace

bool SignatureFile::isSkipped()
{
    if (m_file.fault() == JarManifest::Fault::NoName)
        m_skippedBecause = QLatin1String("section ") + m_file.faultDetail() + QLatin1String(" has no name");
    else if (m_file.fault() == JarManifest::Fault::Duplicate)
        m_skippedBecause = QLatin1String("two sections for ") + m_file.faultDetail();
    else if (JarManifest::value(m_file.mainSection(), "Signature-Version").isNull())
        m_skippedBecause = QStringLiteral("Signature-Version is missing");
    return !m_skippedBecause.isNull();
}

SignatureFile::State SignatureFile::compare(const JarManifest &manifest, const QString &subject, IssueList &issues,
                                            Budget *budget)
{
    // The manifest is hashed as a whole and in sections.
    const qint64 work = 2 * Budget::ByteWork * manifest.bytes().size() + SectionWork * m_file.count();
    if (m_file.fault() == JarManifest::Fault::TooCostly || !budget->spendWork(work))
        return State::TooCostly;
    if (isSkipped())
        return State::Skipped;
    const bool isBySigntool = JarManifest::value(m_file.mainSection(), "Created-By").contains("signtool");
    const char *const suffix = isBySigntool ? "-Digest" : "-Digest-Manifest";
    const DigestState whole = stateOf(m_file.mainSection(), suffix, m_sdk, manifest.bytes());
    const DigestState main =
        isBySigntool ? DigestState::Missing
                     : stateOf(m_file.mainSection(), "-Digest-Manifest-Main-Attributes", m_sdk, manifest.mainSection());

    bool isGood = main != DigestState::Wrong;
    if (!isGood)
        issues.addError(Code::ManifestChanged, subject, QStringLiteral("main attributes"));
    if (whole == DigestState::Wrong && main == DigestState::Missing) {
        issues.addError(Code::ManifestChanged, subject);
        isGood = false;
    } else if (whole != DigestState::Right) {
        issues.addWarning(Code::ManifestChanged, subject, QStringLiteral("only the sections are verified"));
    }

    for (int i = 0; i < m_file.count(); ++i) {
        const int number = manifest.find(ByteView(m_file.name(i)));
        if (number >= 0)
            m_sections.push_back(number);
        if (whole == DigestState::Right)
            continue;
        if (number < 0) {
            m_skippedBecause = sectionText(m_file.name(i)) + QLatin1String(" is not in the manifest");
            return State::Skipped;
        }
        isGood = compareSection(manifest, number, m_file.section(i), subject, issues) && isGood;
    }
    return isGood ? State::Good : State::Changed;
}

bool SignatureFile::compareSection(const JarManifest &manifest, int number, const ByteView &section,
                                   const QString &subject, IssueList &issues) const
{
    const DigestState state = stateOf(section, "-Digest", m_sdk, manifest.section(number));
    if (state == DigestState::Missing)
        issues.addError(Code::UnknownDigest, subject, sectionText(manifest.name(number)));
    else if (state == DigestState::Wrong)
        issues.addError(Code::SectionChanged, subject, sectionText(manifest.name(number)));
    return state == DigestState::Right;
}

void SignatureFile::checkSchemes(const QVector<int> &found, const QString &subject, IssueList &issues) const
{
    const QByteArray listed = JarManifest::value(m_file.mainSection(), "X-Android-APK-Signed");
    for (int at = 0, end = 0; at < listed.size(); at = end + 1) {
        end = int(listed.indexOf(',', at));
        end = end < 0 ? int(listed.size()) : end;
        bool isNumber = false;
        const int scheme = listed.mid(at, end - at).trimmed().toInt(&isNumber);
        if (!isNumber)
            continue;
        const bool isKnown =
            (scheme == 2 && m_sdk.max >= SdkRange::Nougat) || (scheme == 3 && m_sdk.max >= SdkRange::Pie);
        const QString detail = QLatin1Char('v') + QString::number(scheme);
        if (isKnown && !found.contains(scheme))
            issues.addError(Code::SchemeStripped, subject, detail);
        else if (scheme != 2 && scheme != 3)
            issues.addWarning(Code::UnknownScheme, subject, detail);
    }
}

} // namespace SorrelKit
