// SPDX-License-Identifier: LGPL-2.1-or-later
#include "setinfo/SetInfo.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace SorrelKit {

namespace {

QString textOf(const QJsonObject &object, const char *name)
{
    return object.value(QLatin1String(name)).toString().left(SetInfo::MaxTextLength);
}

std::optional<qint64> numberOf(const QJsonObject &object, const char *name)
{
    const QJsonValue value = object.value(QLatin1String(name));
    bool isNumber = value.isDouble();
    const qint64 number = isNumber ? value.toVariant().toLongLong() : value.toString().toLongLong(&isNumber);
    return isNumber ? std::make_optional(number) : std::nullopt;
}

QHash<QString, QString> pairsOf(const QJsonObject &object, const char *name, const char *value)
{
    QHash<QString, QString> pairs;
    const QJsonArray items = object.value(QLatin1String(name)).toArray();
    const int count = std::min(int(items.size()), SetInfo::MaxItems);
    for (int i = 0; i < count; ++i) {
        const QJsonObject item = items.at(i).toObject();
        const QString file = textOf(item, "file");
        if (!file.isEmpty())
            pairs.insert(file, textOf(item, value));
    }
    return pairs;
}

// The keys in a fixed order.
QStringList sortedKeys(const QHash<QString, QString> &hash)
{
    QStringList keys = hash.keys();
    keys.sort();
    return keys;
}

// The base has no name of a split in its manifest.
QString splitOf(const QString &id)
{
    return id == QLatin1String("base") ? QString() : id;
}

} // namespace

SetInfo::SetInfo(ZipArchive &archive, Budget *budget)
{
    for (const char *name : {"manifest.json", "info.json"}) {
        if (!m_fileName.isEmpty() || !archive.contains(QLatin1String(name)))
            continue;
        m_fileName = QLatin1String(name);
        const qint64 bytesLeft = budget->bytesLeft();
        const QByteArray text = archive.file(m_fileName, MaxBytes, budget);
        const qint64 cost = ByteCost * qint64(text.size());
        m_isSound = !text.isEmpty() && budget->spendWork(cost) && budget->holdBytes(cost);
        const QJsonDocument document = m_isSound ? QJsonDocument::fromJson(text) : QJsonDocument();
        m_isSound = document.isObject();
        read(document.object());
        budget->releaseBytes(bytesLeft - budget->bytesLeft());
    }
}

void SetInfo::read(const QJsonObject &root)
{
    const bool isManifest = m_fileName == QLatin1String("manifest.json");
    m_application = textOf(root, isManifest ? "package_name" : "pname");
    m_versionCode = numberOf(root, isManifest ? "version_code" : "versioncode");
    m_splits = pairsOf(root, "split_apks", "id");
    m_expansions = pairsOf(root, "expansions", "install_path");
    const QJsonArray arches = root.value(QLatin1String("arches")).toArray();
    const int count = std::min(int(arches.size()), MaxItems);
    for (int i = 0; i < count; ++i)
        m_abis.append(arches.at(i).toString().left(MaxTextLength));
}

QString SetInfo::splitName(const QString &path) const
{
    return splitOf(m_splits.value(path));
}

QStringList SetInfo::mismatches(const Facts &facts) const
{
    QStringList found;
    const auto add = [&](const QString &text) {
        if (found.size() < MaxMismatches)
            found.append(m_fileName + QLatin1Char(' ') + text);
    };
    if (!m_isSound)
        add(QStringLiteral("is no JSON object, or too large"));
    if (!m_application.isEmpty() && !facts.application.isEmpty() && m_application != facts.application)
        add(QStringLiteral("names the package %1, and the base is %2").arg(m_application, facts.application));
    if (m_versionCode && facts.versionCode && *m_versionCode != *facts.versionCode)
        add(QStringLiteral("has the version %1, and the base has %2").arg(*m_versionCode).arg(*facts.versionCode));
    for (const QString &path : sortedKeys(m_splits)) {
        const QString split = splitName(path);
        if (!facts.paths.contains(path))
            add(QStringLiteral("lists %1, which the set lacks").arg(path));
        else if (facts.splitNames.contains(path) && facts.splitNames.value(path) != split)
            add(QStringLiteral("names the split \"%1\" for %2, and its manifest \"%3\"")
                    .arg(split, path, facts.splitNames.value(path)));
    }
    for (const QString &path : facts.paths) {
        if (!m_splits.isEmpty() && !m_splits.contains(path))
            add(QStringLiteral("does not list %1").arg(path));
    }
    for (const QString &path : sortedKeys(m_expansions)) {
        const QString place = m_expansions.value(path);
        if (!facts.expansions.contains(path))
            add(QStringLiteral("lists %1, which the set lacks").arg(path));
        else if (!place.isEmpty() && place != facts.expansions.value(path))
            add(QStringLiteral("installs %1 as %2, and Android looks for %3")
                    .arg(path, place, facts.expansions.value(path)));
    }
    for (const QString &abi : m_abis) {
        if (!abi.isEmpty() && !facts.abis.contains(abi))
            add(QStringLiteral("names the processor %1, and no package has native code for it").arg(abi));
    }
    return found;
}

} // namespace SorrelKit
