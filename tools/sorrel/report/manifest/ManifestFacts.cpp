// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ManifestFacts.h"

#include <QStringList>
#include <QXmlStreamReader>

namespace {

QString installLocation(const QString &value)
{
    if (value == QLatin1String("0"))
        return QStringLiteral("auto");
    if (value == QLatin1String("1"))
        return QStringLiteral("internalOnly");
    return value == QLatin1String("2") ? QStringLiteral("preferExternal") : value;
}

QJsonObject overlayJson(const ManifestAttributes &attributes)
{
    return {
        {QStringLiteral("targetPackage"), attributes.text("targetPackage")},
        {QStringLiteral("targetName"), attributes.text("targetName")},
        {QStringLiteral("category"), attributes.text("category")},
        {QStringLiteral("priority"), attributes.number("priority")},
        {QStringLiteral("static"), attributes.isTrue("isStatic")},
        {QStringLiteral("requiredProperty"), attributes.text("requiredSystemPropertyName")},
        {QStringLiteral("requiredPropertyValue"), attributes.text("requiredSystemPropertyValue")},
    };
}

} // namespace

ManifestFacts::ManifestFacts(const SorrelKit::Package &package)
{
    // No fact is deeper: application/activity/intent-filter/action.
    constexpr int MaxDepth = 4;
    // A package without these elements has the same keys.
    addRoot({});
    addApplication({});
    m_json.insert(QStringLiteral("maxSdkVersion"), 0);
    QXmlStreamReader reader(package.manifestXml(SorrelKit::Package::References::Values));
    QStringList path;
    int depth = -1; // of the element below the root
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::EndElement) {
            if (depth <= MaxDepth && !path.isEmpty())
                path.removeLast();
            --depth;
        } else if (token == QXmlStreamReader::StartElement) {
            ++depth;
            if (depth == 0) {
                addRoot(ManifestAttributes(reader.attributes()));
            } else if (depth <= MaxDepth) {
                path.append(reader.name().toString());
                add(path.join(QLatin1Char('/')), ManifestAttributes(reader.attributes()));
            }
        }
    }
    m_devices.addTo(&m_json, package.targetSdkVersion());
    m_libraries.addTo(&m_json);
    m_json.insert(QStringLiteral("provides"), QJsonArray::fromStringList(m_provided.names()));
    m_json.insert(QStringLiteral("originalPackages"), m_originalPackages);
    m_json.insert(QStringLiteral("packageVerifiers"), m_verifiers);
    m_json.insert(QStringLiteral("metaData"), m_metaData);
}

void ManifestFacts::addRoot(const ManifestAttributes &attributes)
{
    for (const char *name :
         {"compileSdkVersion", "compileSdkVersionCodename", "platformBuildVersionCode", "platformBuildVersionName"})
        m_json.insert(QLatin1String(name), attributes.textInAnyNamespace(name));
    m_json.insert(QStringLiteral("installLocation"), installLocation(attributes.text("installLocation")));
}

void ManifestFacts::add(const QString &path, const ManifestAttributes &attributes)
{
    m_devices.add(path, attributes);
    m_libraries.add(path, attributes);
    m_provided.add(path, attributes);
    if (path == QLatin1String("application"))
        addApplication(attributes);
    else if (path == QLatin1String("uses-sdk"))
        m_json.insert(QStringLiteral("maxSdkVersion"), attributes.number("maxSdkVersion"));
    else if (path == QLatin1String("original-package"))
        m_originalPackages.append(attributes.text("name"));
    else if (path == QLatin1String("package-verifier"))
        m_verifiers.append(QJsonObject{{QStringLiteral("name"), attributes.text("name")},
                                       {QStringLiteral("publicKey"), attributes.text("publicKey")}});
    else if (path == QLatin1String("overlay"))
        m_json.insert(QStringLiteral("overlay"), overlayJson(attributes));
    else if (path == QLatin1String("application/meta-data"))
        m_metaData.append(QJsonObject{{QStringLiteral("name"), attributes.text("name")},
                                      {QStringLiteral("value"), attributes.text("value")},
                                      {QStringLiteral("resource"), attributes.text("resource")}});
}

void ManifestFacts::addApplication(const ManifestAttributes &attributes)
{
    constexpr int GameCategory = 0;
    constexpr int NoCategory = -1;
    m_json.insert(QStringLiteral("debuggable"), attributes.isTrue("debuggable"));
    m_json.insert(QStringLiteral("testOnly"), attributes.isTrue("testOnly"));
    m_json.insert(QStringLiteral("game"),
                  attributes.isTrue("isGame") || attributes.number("appCategory", NoCategory) == GameCategory);
}
