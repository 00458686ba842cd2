// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LibraryFacts.h"

namespace {

// Manifests have digests with or without colons between the bytes.
QString digest(const ManifestAttributes &attributes)
{
    return attributes.text("certDigest").remove(QLatin1Char(':')).toLower();
}

} // namespace

void LibraryFacts::add(const QString &path, const ManifestAttributes &attributes)
{
    const auto addProvided = [&](const QString &kind) {
        m_provided.append(QJsonObject{{QStringLiteral("name"), attributes.text("name")},
                                      {QStringLiteral("kind"), kind},
                                      {QStringLiteral("version"), attributes.longVersion()}});
    };
    if (path == QLatin1String("application/uses-library"))
        addUsed(QStringLiteral("java"), attributes);
    else if (path == QLatin1String("application/uses-native-library"))
        addUsed(QStringLiteral("native"), attributes);
    else if (path == QLatin1String("application/uses-static-library"))
        addUsed(QStringLiteral("static"), attributes);
    else if (path == QLatin1String("application/uses-sdk-library"))
        addUsed(QStringLiteral("sdk"), attributes);
    else if (path == QLatin1String("application/uses-static-library/additional-certificate")
             || path == QLatin1String("application/uses-sdk-library/additional-certificate"))
        m_used.back().certDigests.append(digest(attributes));
    else if (path == QLatin1String("application/library"))
        addProvided(QStringLiteral("java"));
    else if (path == QLatin1String("application/static-library"))
        addProvided(QStringLiteral("static"));
    else if (path == QLatin1String("application/sdk-library"))
        addProvided(QStringLiteral("sdk"));
    else if (path == QLatin1String("uses-package"))
        m_usedPackages.append(QJsonObject{{QStringLiteral("name"), attributes.text("name")},
                                          {QStringLiteral("type"), attributes.text("packageType")},
                                          {QStringLiteral("version"), attributes.longVersion()}});
}

void LibraryFacts::addUsed(const QString &kind, const ManifestAttributes &attributes)
{
    QJsonArray digests;
    if (!digest(attributes).isEmpty())
        digests.append(digest(attributes));
    m_used.push_back({QJsonObject{{QStringLiteral("name"), attributes.text("name")},
                                  {QStringLiteral("kind"), kind},
                                  {QStringLiteral("required"), attributes.isTrue("required", true)},
                                  {QStringLiteral("version"), attributes.longVersion()}},
                      digests});
}

void LibraryFacts::addTo(QJsonObject *json) const
{
    QJsonArray libraries;
    for (const Used &used : m_used) {
        QJsonObject library = used.json;
        library.insert(QStringLiteral("certDigests"), used.certDigests);
        libraries.append(library);
    }
    json->insert(QStringLiteral("libraries"), libraries);
    json->insert(QStringLiteral("providedLibraries"), m_provided);
    json->insert(QStringLiteral("usesPackages"), m_usedPackages);
}
