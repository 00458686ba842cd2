// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "format/AndroidAttributes.h"
#include "package/Manifest.h"

#include <SorrelKit/Package.h>

#include <QtTest>

using namespace fixture;
using SorrelKit::Component;
using SorrelKit::Manifest;
using SorrelKit::Package;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

fixture::Attribute text(const char *name, const char *value)
{
    return androidText(latin(name), latin(value));
}

fixture::Attribute boolean(const char *name, bool value)
{
    return androidValue(latin(name), Boolean, value ? -1 : 0);
}

/// A manifest whose application has the elements that a test adds.
class Application
{
public:
    explicit Application(const QVector<fixture::Attribute> &attributes = {}, int targetSdkVersion = 0,
                         const QString &package = latin("org.example"))
    {
        m_builder.attributeId(latin("name"), Attr::Name)
            .attributeId(latin("exported"), Attr::Exported)
            .attributeId(latin("enabled"), Attr::Enabled)
            .attributeId(latin("permission"), Attr::Permission)
            .attributeId(latin("readPermission"), Attr::ReadPermission)
            .attributeId(latin("writePermission"), Attr::WritePermission)
            .attributeId(latin("targetSdkVersion"), Attr::TargetSdkVersion)
            .startNamespace(latin("android"), androidUri)
            .start(latin("manifest"), {plainText(latin("package"), package)});
        if (targetSdkVersion != 0) {
            m_builder.empty(latin("uses-sdk"), {androidValue(latin("targetSdkVersion"), Integer, targetSdkVersion)});
        }
        m_builder.start(latin("application"), attributes);
    }

    Application &element(const char *name, const QVector<fixture::Attribute> &attributes, bool hasFilter = false)
    {
        m_builder.start(latin(name), attributes);
        if (hasFilter)
            m_builder.empty(latin("intent-filter"));
        m_builder.end(latin(name));
        return *this;
    }

    QList<Component> components()
    {
        const QByteArray manifest = m_builder.end(latin("application")).end(latin("manifest")).build();
        PackageDevice device(emptyTable(), manifest);
        return Package(&device).components();
    }

private:
    XmlBuilder m_builder;
};

Component onlyComponent(Application application)
{
    const QList<Component> components = application.components();
    return components.size() == 1 ? components.constFirst() : Component();
}

} // namespace

class TestComponents : public QObject
{
    Q_OBJECT

private slots:
    void kindsInTheOrderOfTheManifest();
    void exportedByDefault_data();
    void exportedByDefault();
    void permissionsGuard();
    void providersHaveTwoPermissions();
    void bothHaveToBeEnabled();
    void firstOfANameCounts();
    void noApplication();
    void componentsUpToTheCeiling();
    void charactersUpToTheCeiling();
};

void TestComponents::kindsInTheOrderOfTheManifest()
{
    const QList<Component> components = Application()
                                            .element("provider", {text("name", ".Data")})
                                            .element("activity", {text("name", "org.other.Main")})
                                            .element("activity-alias", {text("name", "Other")})
                                            .element("uses-library", {text("name", "org.library")})
                                            .element("service", {text("name", ".Work")})
                                            .element("receiver", {text("name", ".Listener")})
                                            .element("service", {})
                                            .components();
    QStringList names;
    QList<Component::Kind> kinds;
    for (const Component &component : components) {
        names.append(component.name());
        kinds.append(component.kind());
    }
    QCOMPARE(names, QStringList({latin("org.example.Data"), latin("org.other.Main"), latin("org.example.Other"),
                                 latin("org.example.Work"), latin("org.example.Listener")}));
    QCOMPARE(kinds,
             QList<Component::Kind>({Component::Kind::Provider, Component::Kind::Activity, Component::Kind::Alias,
                                     Component::Kind::Service, Component::Kind::Receiver}));
}

void TestComponents::exportedByDefault_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("attribute"); // -1: none
    QTest::addColumn<bool>("hasFilter");
    QTest::addColumn<bool>("isExported");

    QTest::newRow("plain") << QByteArray("activity") << 30 << -1 << false << false;
    QTest::newRow("filter") << QByteArray("activity") << 30 << -1 << true << true;
    QTest::newRow("attribute") << QByteArray("service") << 30 << 1 << false << true;
    QTest::newRow("attribute against the filter") << QByteArray("receiver") << 30 << 0 << true << false;
    QTest::newRow("alias") << QByteArray("activity-alias") << 30 << -1 << true << true;
    QTest::newRow("old provider") << QByteArray("provider") << 16 << -1 << false << true;
    QTest::newRow("provider") << QByteArray("provider") << 17 << -1 << false << false;
    QTest::newRow("old provider, attribute") << QByteArray("provider") << 16 << 0 << false << false;
    QTest::newRow("provider without a version") << QByteArray("provider") << 0 << -1 << false << true;
    QTest::newRow("old service") << QByteArray("service") << 16 << -1 << false << false;
}

void TestComponents::exportedByDefault()
{
    QFETCH(QByteArray, element);
    QFETCH(int, target);
    QFETCH(int, attribute);
    QFETCH(bool, hasFilter);
    QFETCH(bool, isExported);
    QVector<fixture::Attribute> attributes{text("name", ".X")};
    if (attribute >= 0)
        attributes.append(boolean("exported", attribute == 1));
    const Component component =
        onlyComponent(Application({}, target).element(element.constData(), attributes, hasFilter));
    QCOMPARE(component.name(), latin("org.example.X"));
    QCOMPARE(component.isExported(), isExported);
}

void TestComponents::permissionsGuard()
{
    const QVector<fixture::Attribute> guarded{text("permission", "org.p.ALL")};
    const QList<Component> components = Application(guarded)
                                            .element("activity", {text("name", ".Inherits")})
                                            .element("service", {text("name", ".Own"), text("permission", "org.p.OWN")})
                                            .element("service", {text("name", ".Open"), text("permission", "")})
                                            .element("activity-alias", {text("name", ".Alias")})
                                            .components();
    QCOMPARE(components.size(), 4);
    QCOMPARE(components.at(0).permission(), latin("org.p.ALL"));
    QCOMPARE(components.at(1).permission(), latin("org.p.OWN"));
    QCOMPARE(components.at(1).writePermission(), latin("org.p.OWN"));
    QCOMPARE(components.at(2).permission(), QString());
    QCOMPARE(components.at(3).permission(), QString());
    QCOMPARE(onlyComponent(Application().element("activity", {text("name", ".A")})).permission(), QString());
}

void TestComponents::providersHaveTwoPermissions()
{
    const QList<Component> components =
        Application()
            .element("provider", {text("name", ".Both"), text("permission", "p"), text("readPermission", "r")})
            .element("provider", {text("name", ".Write"), text("writePermission", "w")})
            .element("service", {text("name", ".Service"), text("readPermission", "r")})
            .components();
    QCOMPARE(components.size(), 3);
    QCOMPARE(components.at(0).permission(), latin("r"));
    QCOMPARE(components.at(0).writePermission(), latin("p"));
    QCOMPARE(components.at(1).permission(), QString());
    QCOMPARE(components.at(1).writePermission(), latin("w"));
    QCOMPARE(components.at(2).permission(), QString());
}

void TestComponents::bothHaveToBeEnabled()
{
    const QVector<fixture::Attribute> name{text("name", ".A")};
    QVERIFY(onlyComponent(Application().element("service", name)).isEnabled());
    const QVector<fixture::Attribute> disabled{text("name", ".A"), boolean("enabled", false)};
    QVERIFY(!onlyComponent(Application().element("service", disabled)).isEnabled());
    QVERIFY(!onlyComponent(Application({boolean("enabled", false)}).element("service", name)).isEnabled());
}

void TestComponents::firstOfANameCounts()
{
    const QList<Component> components = Application()
                                            .element("service", {text("name", ".A"), boolean("exported", true)})
                                            .element("service", {text("name", "org.example.A")})
                                            .element("receiver", {text("name", ".A")})
                                            .components();
    QCOMPARE(components.size(), 2);
    QVERIFY(components.at(0).isExported());
    QCOMPARE(components.at(1).kind(), Component::Kind::Receiver);
}

void TestComponents::noApplication()
{
    PackageDevice device(emptyTable(), smallManifest());
    QVERIFY(Package(&device).components().isEmpty());
    QVERIFY(Package().components().isEmpty());
}

void TestComponents::componentsUpToTheCeiling()
{
    const auto count = [](int services) {
        Application application;
        for (int i = 0; i < services; ++i)
            application.element("service", {androidText(latin("name"), QStringLiteral(".S%1").arg(i))});
        return application.components().size();
    };
    QCOMPARE(count(Manifest::MaxComponents), Manifest::MaxComponents);
    QCOMPARE(count(Manifest::MaxComponents + 1), Manifest::MaxComponents);
}

void TestComponents::charactersUpToTheCeiling()
{
    // A completed name has the package, a dot and a digit.
    constexpr int Components = 8;
    const auto count = [](int length) {
        Application application({}, 0, QString(length - 2, QLatin1Char('p')));
        for (int i = 0; i < Components; ++i)
            application.element("service", {androidText(latin("name"), QStringLiteral(".%1").arg(i))});
        return application.components().size();
    };
    // A name counts with one more character before it is completed.
    QCOMPARE(count(Manifest::MaxNameCharacters / Components - 1), Components);
    QCOMPARE(count(Manifest::MaxNameCharacters / Components + 1), Components - 1);
}

QTEST_GUILESS_MAIN(TestComponents)
#include "tst_components.moc"
