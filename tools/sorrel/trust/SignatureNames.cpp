// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SignatureNames.h"

#include <QMetaEnum>

using SorrelKit::PastSigner;
using SorrelKit::SignatureIssue;
using SorrelKit::Signer;

QStringList SignatureNames::schemes(const QList<Signer::Scheme> &schemes)
{
    QStringList names;
    for (const Signer::Scheme each : schemes)
        names.append(Signer::schemeName(each));
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
