// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SignatureNames.h"

#include <QMetaEnum>

using SorrelKit::PastSigner;
using SorrelKit::SignatureIssue;
using SorrelKit::Signer;

QString SignatureNames::scheme(Signer::Scheme scheme)
{
    switch (scheme) {
    case Signer::Scheme::None:
        break;
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
    }
    return {};
}

QStringList SignatureNames::schemes(const QList<Signer::Scheme> &schemes)
{
    QStringList names;
    for (const Signer::Scheme each : schemes)
        names.append(scheme(each));
    return names;
}

QString SignatureNames::code(SignatureIssue::Code code)
{
    const QString key = QLatin1String(QMetaEnum::fromType<SignatureIssue::Code>().valueToKey(int(code)));
    QString name;
    for (const QChar character : key) {
        if (character.isUpper() && !name.isEmpty())
            name += QLatin1Char('-');
        name += character.toLower();
    }
    return name;
}

QStringList SignatureNames::capabilities(PastSigner::Capabilities capabilities)
{
    const QMetaEnum all = QMetaEnum::fromType<PastSigner::Capability>();
    QStringList names;
    for (int i = 0; i < all.keyCount(); ++i) {
        if (!capabilities.testFlag(PastSigner::Capability(all.value(i))))
            continue;
        QString name = QLatin1String(all.key(i));
        name[0] = name.at(0).toLower();
        names.append(name);
    }
    return names;
}

QString SignatureNames::joined(const QStringList &texts)
{
    if (texts.size() < 2)
        return texts.join(QString());
    return texts.mid(0, texts.size() - 1).join(QStringLiteral(", ")) + QStringLiteral(" and ") + texts.constLast();
}

QString SignatureNames::schemesText(const QList<Signer::Scheme> &list)
{
    return (list.size() == 1 ? QStringLiteral("scheme ") : QStringLiteral("schemes ")) + joined(schemes(list));
}
