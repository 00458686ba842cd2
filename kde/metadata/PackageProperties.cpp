// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageProperties.h"

#include "AndroidVersion.h"
#include "PrintableText.h"

#include <SorrelKit/Certificate.h>
#include <SorrelKit/Permission.h>
#include <SorrelKit/Signatures.h>
#include <SorrelKit/Signer.h>

#include <QStringList>

#include <algorithm>

using SorrelKit::Permission;

namespace {

/// Hexadecimal digits of a fingerprint: more than anyone can match with a key of their own.
constexpr int FingerprintDigits = 16;

QString textOf(QString text)
{
    if (text.size() > PackageProperties::MaxCharacters) {
        text.truncate(PackageProperties::MaxCharacters);
        if (text.at(text.size() - 1).isHighSurrogate())
            text.chop(1);
        text += QChar(0x2026);
    }
    return isolatedText(text);
}

bool isDangerous(const Permission &permission)
{
    return permission.level() == Permission::Level::Dangerous;
}

QString sentence(const QString &start, const QStringList &items)
{
    return items.isEmpty() ? QString() : start + items.join(QStringLiteral("; "));
}

} // namespace

PackageProperties::PackageProperties(const SorrelKit::Package &package, const QLocale &locale)
    : m_package(package), m_locale(locale)
{
}

QString PackageProperties::title() const
{
    return textOf(m_package.label(m_locale));
}

QString PackageProperties::packageAndVersion() const
{
    QStringList parts{textOf(m_package.packageName())};
    const QString code = QString::number(m_package.versionCode());
    if (!m_package.versionName().isEmpty())
        parts.append(QStringLiteral("version %1 (%2)").arg(textOf(m_package.versionName()), code));
    else if (m_package.versionCode() != 0)
        parts.append(QStringLiteral("version ") + code);
    parts.append(QStringLiteral("for %1 and later").arg(AndroidVersion::withLevel(m_package.minSdkVersion())));
    return parts.join(QStringLiteral(", "));
}

QString PackageProperties::permissions() const
{
    QList<Permission> all = m_package.permissions();
    if (all.isEmpty())
        return QStringLiteral("No permissions");
    const auto others = std::stable_partition(all.begin(), all.end(), isDangerous);
    const auto end = all.begin() + qMin(int(all.size()), MaxPermissions);
    QStringList dangerous;
    QStringList harmless;
    for (auto permission = all.begin(); permission != end; ++permission)
        (permission < others ? dangerous : harmless).append(textOf(permission->label(m_locale)));
    QStringList sentences{sentence(QStringLiteral("Dangerous permissions: "), dangerous),
                          sentence(QStringLiteral("Other permissions: "), harmless)};
    if (end != all.end())
        sentences.append(QStringLiteral("%1 more").arg(all.end() - end));
    sentences.removeAll(QString());
    return sentences.join(QStringLiteral(". "));
}

QString PackageProperties::signer(qint64 fileSize) const
{
    if (fileSize > MaxVerifiedBytes)
        return {};
    const SorrelKit::Signatures signatures(m_package);
    if (!signatures.isVerified())
        return {};
    QStringList names;
    for (const SorrelKit::Signer &signer : signatures.signers()) {
        const SorrelKit::Certificate certificate = signer.certificate();
        const QString digits = QString::fromLatin1(certificate.fingerprint().toHex().left(FingerprintDigits));
        const QString name = certificate.subject().isEmpty() ? QStringLiteral("no name") : certificate.subject();
        names.append(QStringLiteral("%1 (certificate %2)").arg(textOf(name), digits));
    }
    return names.join(QStringLiteral(", "));
}
