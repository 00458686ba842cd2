// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SignatureReport.h"

#include "AndroidVersion.h"
#include "CertificateReport.h"
#include "PrintableText.h"
#include "SignatureNames.h"

#include <QHash>
#include <QJsonArray>

#include <algorithm>
#include <utility>

using SorrelKit::Certificate;
using SorrelKit::SignatureIssue;
using SorrelKit::Signatures;
using SorrelKit::Signer;

namespace {

/// Lines of one kind of issue. JSON has all.
constexpr int MaxLinesPerCode = 10;

// The list begins with those on the newest version of Android. The schemes of the others are in descending order.
QList<Signer> allSigners(const Signatures &signatures)
{
    QList<Signer> signers = signatures.signers();
    const auto isListed = [current = signers](const Signer &signer) {
        return std::any_of(current.cbegin(), current.cend(), [&](const Signer &each) {
            return each.scheme() == signer.scheme() && each.certificate() == signer.certificate()
                   && each.minSdkVersion() == signer.minSdkVersion();
        });
    };
    for (const Signer::Scheme scheme :
         {Signer::Scheme::V31, Signer::Scheme::V3, Signer::Scheme::V2, Signer::Scheme::V1}) {
        for (const Signer &signer : signatures.signers(scheme)) {
            if (!isListed(signer))
                signers.append(signer);
        }
    }
    return signers;
}

QString signerNames(const Signatures &signatures)
{
    QStringList names;
    for (const Signer &signer : signatures.signers())
        names.append(CertificateReport::name(signer.certificate()));
    return SignatureNames::joined(names);
}

// "for Android 7.0 and later by scheme v2"
QString rangeText(const Signatures &signatures)
{
    return QStringLiteral("for %1 by %2")
        .arg(AndroidVersion::range(signatures.minSdkVersion(), signatures.maxSdkVersion()),
             SignatureNames::schemesText(signatures.schemes()));
}

QString issueText(const SignatureIssue &issue)
{
    const QString scheme = Signer::schemeName(issue.scheme());
    return (scheme.isEmpty() ? QString() : scheme + QStringLiteral(": ")) + issue.message();
}

QJsonObject issueJson(const QString &code, const QString &scheme, const QString &subject, const QString &detail,
                      const QString &message)
{
    return {{QStringLiteral("code"), code},
            {QStringLiteral("scheme"), scheme},
            {QStringLiteral("subject"), subject},
            {QStringLiteral("detail"), detail},
            {QStringLiteral("message"), message}};
}

QJsonArray issuesJson(const QList<SignatureIssue> &issues)
{
    QJsonArray json;
    for (const SignatureIssue &issue : issues)
        json.append(issueJson(SignatureNames::code(issue.code()), Signer::schemeName(issue.scheme()), issue.subject(),
                              issue.detail(), issue.message()));
    return json;
}

QString issueLine(const QString &kind, const QString &text)
{
    return QStringLiteral("  ") + kind + QStringLiteral("  ") + printableText(text) + QLatin1Char('\n');
}

// The lines of @p issues, at most MaxLinesPerCode of a kind.
QString issueLines(const QList<SignatureIssue> &issues, const QString &kind)
{
    QHash<int, int> counts;
    QString lines;
    for (const SignatureIssue &issue : issues) {
        if (++counts[int(issue.code())] <= MaxLinesPerCode)
            lines += issueLine(kind, issueText(issue));
    }
    int more = 0;
    for (const int count : std::as_const(counts))
        more += std::max(0, count - MaxLinesPerCode);
    return more == 0 ? lines : lines + issueLine(kind, QStringLiteral("%1 more, which --json lists").arg(more));
}

// Each certificate once. When there are several, each has its subject and schemes.
ReportRows fingerprintRows(const Signatures &signatures)
{
    struct Named {
        Certificate certificate;
        QList<Signer::Scheme> schemes;
    };
    QList<Named> all;
    for (const Signer &signer : allSigners(signatures)) {
        const auto same = std::find_if(all.begin(), all.end(),
                                       [&](const Named &each) { return each.certificate == signer.certificate(); });
        if (same == all.end())
            all.append({signer.certificate(), {signer.scheme()}});
        else if (!same->schemes.contains(signer.scheme()))
            same->schemes.append(signer.scheme());
    }
    ReportRows rows;
    for (const Named &each : std::as_const(all)) {
        const QString name =
            QStringLiteral(" (%1, by %2)")
                .arg(CertificateReport::name(each.certificate), SignatureNames::schemesText(each.schemes));
        rows.add(QStringLiteral("  SHA-256"),
                 CertificateReport::sha256(each.certificate) + (all.size() > 1 ? name : QString()));
    }
    return rows;
}

ReportRows certificateRows(const Signatures &signatures)
{
    constexpr int Indent = 2;
    ReportRows rows;
    for (const Signer &signer : allSigners(signatures))
        CertificateReport::addRows(signer, Indent, &rows);
    if (!signatures.stamp().isNull()) {
        rows.add(QStringLiteral("  stamp"), QStringLiteral("of the package's source"));
        CertificateReport::addRows(signatures.stamp(), 2 * Indent, &rows);
    }
    return rows;
}

// A line for each package of a set.
QString packageLines(const Signatures &set, const TextStyle &style)
{
    ReportRows rows;
    for (const Signatures &package : set.packages()) {
        const QString name =
            QStringLiteral("  ") + (package.name().isEmpty() ? QStringLiteral("base") : package.name());
        if (package.isVerified())
            rows.add(name, QStringLiteral("verified ") + rangeText(package));
        else
            rows.add(name, QStringLiteral("NOT VERIFIED"), ReportRows::Emphasis::Error);
    }
    return rows.toText(style);
}

} // namespace

QString SignatureReport::toText(const TextStyle &style, Details details) const
{
    const QString error = style.error(QStringLiteral("error  "));
    QString text = style.title(printableText(m_file.text())) + QStringLiteral(": ");
    if (isVerified())
        text += printableText(QStringLiteral("signed by %1, unchanged since; ").arg(signerNames(m_signatures)))
                + style.strong(QStringLiteral("verified")) + QLatin1Char(' ') + printableText(rangeText(m_signatures))
                + QLatin1Char('\n');
    else
        text += style.error(QStringLiteral("NOT VERIFIED")) + QLatin1Char('\n');
    for (const Refusal &refusal : m_refusals)
        text += issueLine(error, refusal.message);
    text += issueLines(m_signatures.errors(), error);
    if (m_signatures.isVerified())
        text += fingerprintRows(m_signatures).toText(style);
    text += packageLines(m_signatures, style);
    if (details == Details::Certificates)
        text += certificateRows(m_signatures).toText(style);
    return text + issueLines(m_signatures.warnings(), style.warning(QStringLiteral("warning")));
}

QJsonObject SignatureReport::toJson() const
{
    QJsonObject json = toJson(m_signatures);
    QJsonArray errors;
    for (const Refusal &refusal : m_refusals)
        errors.append(issueJson(refusal.code, QString(), QString(), QString(), refusal.message));
    const QJsonArray ofSignatures = json.value(QLatin1String("errors")).toArray();
    for (const QJsonValue &issue : ofSignatures)
        errors.append(issue);
    json.insert(QStringLiteral("errors"), errors);
    json.insert(QStringLiteral("verified"), isVerified());
    const QJsonObject name = m_file.toJson();
    for (auto member = name.begin(); member != name.end(); ++member)
        json.insert(member.key(), member.value());
    return json;
}

QJsonObject SignatureReport::toJson(const Signatures &signatures)
{
    QJsonArray signers;
    for (const Signer &signer : allSigners(signatures))
        signers.append(CertificateReport::toJson(signer));
    QJsonObject json{
        {QStringLiteral("verified"), signatures.isVerified()},
        {QStringLiteral("schemes"), QJsonArray::fromStringList(SignatureNames::schemes(signatures.schemes()))},
        {QStringLiteral("minSdkVersion"), signatures.minSdkVersion()},
        {QStringLiteral("maxSdkVersion"), signatures.maxSdkVersion()},
        {QStringLiteral("signers"), signers},
        {QStringLiteral("stamp"),
         signatures.stamp().isNull() ? QJsonValue() : QJsonValue(CertificateReport::toJson(signatures.stamp()))},
        {QStringLiteral("errors"), issuesJson(signatures.errors())},
        {QStringLiteral("warnings"), issuesJson(signatures.warnings())},
    };
    if (signatures.packages().isEmpty())
        return json;
    QJsonArray packages;
    for (const Signatures &package : signatures.packages()) {
        QJsonObject each = toJson(package);
        each.insert(QStringLiteral("name"), package.name());
        packages.append(each);
    }
    json.insert(QStringLiteral("packages"), packages);
    return json;
}

QJsonObject SignatureReport::signerJson(const Signatures &signatures)
{
    QJsonArray signers;
    if (signatures.isVerified()) {
        for (const Signer &signer : signatures.signers())
            signers.append(CertificateReport::toJson(signer.certificate()));
    }
    return {
        {QStringLiteral("verified"), signatures.isVerified()},
        {QStringLiteral("schemes"), QJsonArray::fromStringList(SignatureNames::schemes(signatures.schemes()))},
        {QStringLiteral("signers"), signers},
        {QStringLiteral("errors"), issuesJson(signatures.errors())},
    };
}

ReportRows SignatureReport::signerRows(const Signatures &signatures)
{
    ReportRows rows;
    if (!signatures.isVerified()) {
        rows.add(QStringLiteral("  NOT VERIFIED"), issueText(signatures.errors().value(0)),
                 ReportRows::Emphasis::Error);
        return rows;
    }
    for (const Signer &signer : signatures.signers()) {
        rows.add(QStringLiteral("  signer"), CertificateReport::name(signer.certificate()));
        rows.add(QStringLiteral("    SHA-256"), CertificateReport::sha256(signer.certificate()));
    }
    rows.add(QStringLiteral("  verified"), rangeText(signatures), ReportRows::Emphasis::Strong);
    return rows;
}
