// SPDX-License-Identifier: LGPL-2.1-or-later

// Compares the kit's entries with the output of `aapt2 dump badging`, which names launchers for televisions and the
// kinds of components that a package provides. aapt2 looks at neither the states of components nor the permission of a
// wallpaper or an input method, so what the kit lists is compared, whether it is shown or not. aapt2 takes an entry for
// televisions without the action MAIN, which Android's home screens do not find; that row has the difference.

#include "Apk.h"
#include "BinaryXml.h"
#include "Files.h"
#include "format/AndroidAttributes.h"

#include <SorrelKit/Package.h>

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;
using SorrelKit::Entry;
using SorrelKit::Package;
using Kind = SorrelKit::Entry::Kind;

namespace {

QString latin(const char *value)
{
    return QString::fromLatin1(value);
}

XmlElement element(const char *name, const QVector<XmlAttribute> &attributes, const QVector<XmlElement> &children = {})
{
    XmlElement result;
    result.name = latin(name);
    result.attributes = attributes;
    result.children = children;
    return result;
}

XmlAttribute text(quint32 id, const char *name, const QByteArray &value)
{
    XmlAttribute attribute;
    attribute.id = id;
    attribute.name = latin(name);
    attribute.text = QString::fromUtf8(value);
    attribute.value = {ValueType::String, 0};
    return attribute;
}

XmlAttribute named(const QByteArray &value)
{
    return text(Attr::Name, "name", value);
}

/// A package with one component, a child of the application.
QByteArray packageOf(const XmlElement &component)
{
    const XmlElement application = element("application", {}, {component});
    return package(emptyTable(), binaryXml(element("manifest", {text(0, "package", "org.example")}, {application})));
}

XmlElement component(const char *tag, const QByteArray &action, const QByteArray &category,
                     const QByteArray &permission)
{
    QVector<XmlElement> filter{element("action", {named(action)})};
    if (!category.isEmpty())
        filter.append(element("category", {named(category)}));
    QVector<XmlAttribute> attributes{named("org.example.C")};
    if (!permission.isEmpty())
        attributes.append(text(Attr::Permission, "permission", permission));
    return element(tag, attributes, {element("intent-filter", {}, filter)});
}

} // namespace

class TestEntriesAapt2 : public QObject
{
    Q_OBJECT

private slots:
    void entries_data();
    void entries();
};

void TestEntriesAapt2::entries_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("printed");
    QTest::addColumn<bool>("differs");
    const auto row = [](const char *name, const XmlElement &component, Kind kind, const char *printed,
                        bool differs = false) {
        QTest::newRow(name) << packageOf(component) << int(kind) << QByteArray(printed) << differs;
    };
    const char *const main = "android.intent.action.MAIN";
    const char *const leanback = "android.intent.category.LEANBACK_LAUNCHER";
    const char *const television = "leanback-launchable-activity: name='org.example.C'";
    const char *const home = "android.intent.category.HOME";
    const char *const homeScreen = "provides-component:'launcher'";
    const char *const wallpaper = "android.service.wallpaper.WallpaperService";
    const char *const method = "android.view.InputMethod";
    const char *const widget = "android.appwidget.action.APPWIDGET_UPDATE";

    row("television", component("activity", main, leanback, {}), Kind::Television, television);
    row("television, no action", component("activity", "android.intent.action.VIEW", leanback, {}), Kind::Television,
        television, true);
    row("television, a service", component("service", main, leanback, {}), Kind::Television, television);
    row("home screen", component("activity", main, home, {}), Kind::HomeScreen, homeScreen);
    row("home screen, no category", component("activity", main, {}, {}), Kind::HomeScreen, homeScreen);
    row("wallpaper", component("service", wallpaper, {}, "android.permission.BIND_WALLPAPER"), Kind::LiveWallpaper,
        "provides-component:'wallpaper'");
    row("wallpaper, no permission", component("service", wallpaper, {}, {}), Kind::LiveWallpaper,
        "provides-component:'wallpaper'");
    row("input method", component("service", method, {}, "android.permission.BIND_INPUT_METHOD"), Kind::InputMethod,
        "provides-component:'ime'");
    row("input method, another permission", component("service", method, {}, "android.permission.BIND_WALLPAPER"),
        Kind::InputMethod, "provides-component:'ime'");
    row("input method, an activity", component("activity", method, {}, "android.permission.BIND_INPUT_METHOD"),
        Kind::InputMethod, "provides-component:'ime'");
    row("widget", component("receiver", widget, {}, {}), Kind::Widget, "provides-component:'app-widget'");
    row("widget, a service", component("service", widget, {}, {}), Kind::Widget, "provides-component:'app-widget'");
    row("screen saver",
        component("service", "android.service.dreams.DreamService", {}, "android.permission.BIND_DREAM_SERVICE"),
        Kind::ScreenSaver, "provides-component:'dream'");
    row("screen saver, another action", component("service", "dream", {}, "android.permission.BIND_DREAM_SERVICE"),
        Kind::ScreenSaver, "provides-component:'dream'");
}

void TestEntriesAapt2::entries()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, kind);
    QFETCH(QByteArray, printed);
    QFETCH(bool, differs);
    const QTemporaryDir directory;
    const QString file = writeFile(directory.filePath(latin("a.apk")), bytes);
    QProcess aapt2;
    aapt2.start(QStringLiteral(SORREL_AAPT2), {latin("dump"), latin("badging"), file});
    QVERIFY2(aapt2.waitForFinished(60000), qPrintable(aapt2.errorString()));
    const QByteArray output = aapt2.readAllStandardOutput();
    QVERIFY2(output.contains("package: name='org.example'"), output.constData());
    const bool isListed = !Package(file).entries(Kind(kind)).isEmpty();
    QCOMPARE(isListed, differs ? false : output.contains(printed));
    QCOMPARE(output.contains(printed), differs || isListed);
}

QTEST_GUILESS_MAIN(TestEntriesAapt2)
#include "tst_entries_aapt2.moc"
