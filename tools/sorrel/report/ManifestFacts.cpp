// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ManifestFacts.h"

#include <QXmlStreamReader>

namespace {

QString androidValue(const QXmlStreamAttributes &attributes, const char *name)
{
    return attributes.value(QStringLiteral("http://schemas.android.com/apk/res/android"), QLatin1String(name))
        .toString();
}

// A fact of the root, which tools write with or without the namespace.
QString rootValue(const QXmlStreamAttributes &attributes, const char *name)
{
    const QString value = androidValue(attributes, name);
    return value.isEmpty() ? attributes.value(QLatin1String(name)).toString() : value;
}

bool isTrue(const QXmlStreamAttributes &attributes, const char *name, bool fallback = false)
{
    const QString value = androidValue(attributes, name);
    return value.isEmpty() ? fallback : value == QLatin1String("true");
}

QString installLocation(const QString &value)
{
    if (value == QLatin1String("0"))
        return QStringLiteral("auto");
    if (value == QLatin1String("1"))
        return QStringLiteral("internalOnly");
    return value == QLatin1String("2") ? QStringLiteral("preferExternal") : value;
}

} // namespace

ManifestFacts::ManifestFacts(const SorrelKit::Package &package)
{
    // A package without these elements has the same keys.
    addManifest({});
    addOfApplication(QStringLiteral("application"), {});
    QXmlStreamReader reader(package.manifestXml());
    for (int depth = 0; !reader.atEnd();) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::EndElement)
            --depth;
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QString element = reader.name().toString();
        if (depth == 0)
            addManifest(reader.attributes());
        else if (depth == 1)
            addChild(element, reader.attributes());
        else if (depth == 2)
            addOfApplication(element, reader.attributes());
        ++depth;
    }
    addScreens(package.targetSdkVersion());
    m_json.insert(QStringLiteral("libraries"), m_libraries);
    m_json.insert(QStringLiteral("originalPackages"), m_originalPackages);
}

void ManifestFacts::addManifest(const QXmlStreamAttributes &attributes)
{
    for (const char *name :
         {"compileSdkVersion", "compileSdkVersionCodename", "platformBuildVersionCode", "platformBuildVersionName"})
        m_json.insert(QLatin1String(name), rootValue(attributes, name));
    m_json.insert(QStringLiteral("installLocation"), installLocation(androidValue(attributes, "installLocation")));
}

void ManifestFacts::addChild(const QString &element, const QXmlStreamAttributes &attributes)
{
    if (element == QLatin1String("application"))
        addOfApplication(element, attributes);
    else if (element == QLatin1String("supports-screens"))
        m_screens = attributes;
    else if (element == QLatin1String("original-package"))
        m_originalPackages.append(androidValue(attributes, "name"));
}

void ManifestFacts::addOfApplication(const QString &element, const QXmlStreamAttributes &attributes)
{
    if (element == QLatin1String("application")) {
        m_json.insert(QStringLiteral("debuggable"), isTrue(attributes, "debuggable"));
        m_json.insert(QStringLiteral("testOnly"), isTrue(attributes, "testOnly"));
        m_json.insert(QStringLiteral("game"),
                      isTrue(attributes, "isGame") || androidValue(attributes, "appCategory") == QLatin1String("0"));
        return;
    }
    QString kind;
    if (element == QLatin1String("uses-library"))
        kind = QStringLiteral("java");
    else if (element == QLatin1String("uses-native-library"))
        kind = QStringLiteral("native");
    else if (element == QLatin1String("uses-static-library"))
        kind = QStringLiteral("static");
    else if (element == QLatin1String("uses-sdk-library"))
        kind = QStringLiteral("sdk");
    else
        return;
    m_libraries.append(QJsonObject{{QStringLiteral("name"), androidValue(attributes, "name")},
                                   {QStringLiteral("kind"), kind},
                                   {QStringLiteral("required"), isTrue(attributes, "required", true)}});
}

void ManifestFacts::addScreens(int targetSdkVersion)
{
    // Android takes packages for older levels to be unaware of other screens.
    constexpr int FirstSdkWithScreens = 4;
    constexpr int FirstSdkWithXlarge = 9;
    const bool knowsScreens = targetSdkVersion >= FirstSdkWithScreens;
    const bool knowsXlarge = targetSdkVersion >= FirstSdkWithXlarge;
    m_json.insert(QStringLiteral("screens"),
                  QJsonObject{{QStringLiteral("small"), isTrue(m_screens, "smallScreens", knowsScreens)},
                              {QStringLiteral("normal"), isTrue(m_screens, "normalScreens", true)},
                              {QStringLiteral("large"), isTrue(m_screens, "largeScreens", knowsScreens)},
                              {QStringLiteral("xlarge"), isTrue(m_screens, "xlargeScreens", knowsXlarge)},
                              {QStringLiteral("anyDensity"), isTrue(m_screens, "anyDensity", knowsScreens)}});
}
