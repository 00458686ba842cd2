// SPDX-License-Identifier: LGPL-2.1-or-later
#include "diff/TextList.h"

namespace SorrelKit {

namespace {

QString nameOf(Signer::Scheme scheme)
{
    switch (scheme) {
    case Signer::Scheme::V1:
        return QStringLiteral("v1");
    case Signer::Scheme::V2:
        return QStringLiteral("v2");
    case Signer::Scheme::V3:
        return QStringLiteral("v3");
    case Signer::Scheme::V31:
        return QStringLiteral("v3.1");
    case Signer::Scheme::V4:
        return QStringLiteral("v4");
    case Signer::Scheme::Stamp:
        return QStringLiteral("stamp");
    case Signer::Scheme::None:
        break;
    }
    return {};
}

} // namespace

void TextList::add(const QString &name, const QString &value)
{
    if (m_values.contains(name))
        return;
    m_names.append(name);
    m_values.insert(name, value);
}

TextList TextList::facts(const Package &package)
{
    const QVersionNumber openGl = package.openGlEsVersion();
    TextList list;
    list.add(QStringLiteral("package"), package.packageName());
    list.add(QStringLiteral("versionName"), package.versionName());
    list.add(QStringLiteral("versionCode"), QString::number(package.versionCode()));
    list.add(QStringLiteral("minSdkVersion"), QString::number(package.minSdkVersion()));
    list.add(QStringLiteral("targetSdkVersion"), QString::number(package.targetSdkVersion()));
    list.add(QStringLiteral("openGlEsVersion"), openGl.isNull() ? QString() : openGl.toString());
    return list;
}

TextList TextList::features(const Package &package)
{
    // A feature that is listed twice is required when one of the two is.
    TextList list;
    for (const bool isRequired : {true, false}) {
        for (const Feature &feature : package.features()) {
            if (feature.isRequired() == isRequired)
                list.add(feature.name(), isRequired ? QStringLiteral("required") : QStringLiteral("optional"));
        }
    }
    return list;
}

TextList TextList::launchers(const Package &package)
{
    TextList list;
    for (const Entry &launcher : package.launchers())
        list.add(launcher.name(), launcher.isShown() ? QStringLiteral("shown") : QStringLiteral("hidden"));
    return list;
}

TextList TextList::labels(const Package &package)
{
    TextList list;
    const QMap<QString, QString> labels = package.labels();
    for (auto label = labels.cbegin(); label != labels.cend(); ++label)
        list.add(label.key(), label.value());
    return list;
}

TextList TextList::signers(const Signatures &signatures)
{
    TextList list;
    for (const Signer &signer : signatures.signers()) {
        const Certificate certificate = signer.certificate();
        list.add(QString::fromLatin1(certificate.fingerprint().toHex()), certificate.subject());
    }
    return list;
}

TextList TextList::schemes(const Signatures &signatures)
{
    TextList list;
    for (const Signer::Scheme scheme : signatures.schemes())
        list.add(nameOf(scheme), QString());
    return list;
}

TextList TextList::names(const QStringList &names)
{
    TextList list;
    for (const QString &name : names)
        list.add(name, QString());
    return list;
}

QList<TextChange> TextList::changesSince(const TextList &before) const
{
    QList<TextChange> changes;
    for (const QString &name : m_names) {
        if (!before.m_values.contains(name))
            changes.append(TextChange(TextChange::Kind::Added, name, QString(), m_values.value(name)));
    }
    for (const QString &name : before.m_names) {
        if (!m_values.contains(name))
            changes.append(TextChange(TextChange::Kind::Removed, name, before.m_values.value(name), QString()));
    }
    for (const QString &name : m_names) {
        const auto old = before.m_values.constFind(name);
        if (old != before.m_values.cend() && *old != m_values.value(name))
            changes.append(TextChange(TextChange::Kind::Changed, name, *old, m_values.value(name)));
    }
    return changes;
}

} // namespace SorrelKit
