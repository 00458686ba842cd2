// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiffJson.h"

#include "DiffNames.h"

#include <QJsonArray>

using SorrelKit::Component;
using SorrelKit::ComponentChange;
using SorrelKit::MemberChange;
using SorrelKit::PackageDiff;
using SorrelKit::SizeChange;
using SorrelKit::TextChange;

namespace {

QJsonObject sideJson(const DiffSide &side, const DiffJson::SignerJson &signerJson)
{
    QJsonObject json = side.file.toJson();
    json.insert(QStringLiteral("package"), side.package.packageName());
    // A string, because JSON numbers have 53 bits.
    json.insert(QStringLiteral("versionCode"), QString::number(side.package.versionCode()));
    json.insert(QStringLiteral("versionName"), side.package.versionName());
    json.insert(QStringLiteral("minSdkVersion"), side.package.minSdkVersion());
    json.insert(QStringLiteral("targetSdkVersion"), side.package.targetSdkVersion());
    json.insert(QStringLiteral("signer"), signerJson(side.signatures));
    return json;
}

QJsonArray textsJson(const QList<TextChange> &changes)
{
    QJsonArray json;
    for (const TextChange &change : changes) {
        QJsonObject text;
        text.insert(QStringLiteral("change"), DiffNames::kind(change.kind()));
        text.insert(QStringLiteral("name"), change.name());
        if (change.kind() != TextChange::Kind::Added)
            text.insert(QStringLiteral("before"), change.before());
        if (change.kind() != TextChange::Kind::Removed)
            text.insert(QStringLiteral("after"), change.after());
        json.append(text);
    }
    return json;
}

QJsonObject componentJson(const Component &component)
{
    QJsonObject json;
    json.insert(QStringLiteral("exported"), component.isExported());
    json.insert(QStringLiteral("enabled"), component.isEnabled());
    json.insert(QStringLiteral("permission"), component.permission());
    json.insert(QStringLiteral("writePermission"), component.writePermission());
    return json;
}

QJsonArray componentsJson(const QList<ComponentChange> &changes)
{
    QJsonArray json;
    for (const ComponentChange &change : changes) {
        const bool isRemoved = change.kind() == TextChange::Kind::Removed;
        const Component component = isRemoved ? change.before() : change.after();
        QJsonObject object;
        object.insert(QStringLiteral("change"), DiffNames::kind(change.kind()));
        object.insert(QStringLiteral("kind"), DiffNames::componentKind(component.kind()));
        object.insert(QStringLiteral("name"), component.name());
        object.insert(QStringLiteral("opened"), change.isOpened());
        if (change.kind() != TextChange::Kind::Added)
            object.insert(QStringLiteral("before"), componentJson(change.before()));
        if (!isRemoved)
            object.insert(QStringLiteral("after"), componentJson(change.after()));
        json.append(object);
    }
    return json;
}

QJsonObject sizesJson(const SizeChange &sizes)
{
    QJsonObject json;
    json.insert(QStringLiteral("packedBefore"), sizes.packedBefore());
    json.insert(QStringLiteral("packedAfter"), sizes.packedAfter());
    json.insert(QStringLiteral("sizeBefore"), sizes.sizeBefore());
    json.insert(QStringLiteral("sizeAfter"), sizes.sizeAfter());
    return json;
}

QJsonArray categoriesJson(const QList<SizeChange> &sizes)
{
    QJsonArray json;
    for (const SizeChange &size : sizes) {
        QJsonObject object = sizesJson(size);
        object.insert(QStringLiteral("category"), DiffNames::category(size.category()));
        json.append(object);
    }
    return json;
}

QJsonObject membersJson(const PackageDiff &diff)
{
    QJsonArray list;
    for (const MemberChange &member : diff.members()) {
        QJsonObject object = sizesJson(member.sizes());
        object.insert(QStringLiteral("change"), DiffNames::kind(member.kind()));
        object.insert(QStringLiteral("split"), member.package());
        object.insert(QStringLiteral("path"), member.path());
        object.insert(QStringLiteral("category"), DiffNames::category(member.sizes().category()));
        list.append(object);
    }
    QJsonObject json;
    for (const TextChange::Kind kind : {TextChange::Kind::Added, TextChange::Kind::Removed, TextChange::Kind::Changed})
        json.insert(DiffNames::kind(kind), diff.memberCount(kind));
    json.insert(QStringLiteral("list"), list);
    return json;
}

} // namespace

QJsonObject DiffJson::toJson(const DiffSide &before, const DiffSide &after, const PackageDiff &diff,
                             const SignerJson &signerJson)
{
    QJsonObject json;
    json.insert(QStringLiteral("before"), sideJson(before, signerJson));
    json.insert(QStringLiteral("after"), sideJson(after, signerJson));
    json.insert(QStringLiteral("different"), !diff.isEmpty());
    json.insert(QStringLiteral("complete"), diff.isComplete());
    json.insert(QStringLiteral("sameApplication"), diff.isSameApplication());
    json.insert(QStringLiteral("signerMatch"), DiffNames::match(diff.signerMatch()));
    json.insert(QStringLiteral("signers"), textsJson(diff.signers()));
    json.insert(QStringLiteral("facts"), textsJson(diff.facts()));
    json.insert(QStringLiteral("permissions"), textsJson(diff.permissions()));
    json.insert(QStringLiteral("features"), textsJson(diff.features()));
    json.insert(QStringLiteral("components"), componentsJson(diff.components()));
    json.insert(QStringLiteral("launchers"), textsJson(diff.launchers()));
    json.insert(QStringLiteral("labels"), textsJson(diff.labels()));
    json.insert(QStringLiteral("nativeAbis"), textsJson(diff.nativeAbis()));
    json.insert(QStringLiteral("splits"), textsJson(diff.splits()));
    json.insert(QStringLiteral("schemes"), textsJson(diff.schemes()));
    json.insert(QStringLiteral("fileSize"), sizesJson(diff.fileSize()));
    json.insert(QStringLiteral("sizes"), categoriesJson(diff.sizes()));
    json.insert(QStringLiteral("files"), membersJson(diff));
    json.insert(QStringLiteral("otherBytes"), diff.hasOtherBytes());
    return json;
}
