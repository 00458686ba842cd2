// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "BinaryXml.h"
#include "DrawableFixture.h"
#include "Pictures.h"
#include "entry/ShortcutFile.h"
#include "format/AndroidAttributes.h"
#include "package/Manifest.h"
#include "package/PackageData.h"

#include <SorrelKit/Package.h>

#include <QMetaEnum>
#include <QtTest>

#include <memory>
#include <vector>

using namespace fixture;
using SorrelKit::Entry;
using SorrelKit::Manifest;
using SorrelKit::Package;
using SorrelKit::PackageData;
using Kind = SorrelKit::Entry::Kind;

Q_DECLARE_METATYPE(XmlElement)

namespace {

constexpr quint32 ShortLabel = 0x7f010000;
constexpr quint32 LongLabel = 0x7f010001;
constexpr quint32 MissingString = 0x7f010009;
constexpr quint32 FirstDocument = 0x7f020000;
constexpr quint32 SecondDocument = 0x7f020001;
constexpr quint32 IconId = 0x7f030000;

QString latin(const char *value)
{
    return QString::fromLatin1(value);
}

XmlAttribute named(const char *value)
{
    return text(Attr::Name, latin(value));
}

XmlAttribute reference(quint32 id, quint32 resource)
{
    XmlAttribute attribute;
    attribute.id = id;
    attribute.value = {ValueType::Reference, resource};
    return attribute;
}

XmlElement filter(const char *action, const Elements &others = {})
{
    return element(latin("intent-filter"), {}, Elements{element(latin("action"), {named(action)})} + others);
}

XmlElement category(const char *name)
{
    return element(latin("category"), {named(name)});
}

XmlElement data(const char *type)
{
    return element(latin("data"), {text(Attr::MimeType, latin(type))});
}

XmlElement metaData(const char *name, quint32 resource = FirstDocument)
{
    return element(latin("meta-data"), {named(name), reference(Attr::Resource, resource)});
}

XmlElement mainFilter(const char *name = "android.intent.category.LAUNCHER")
{
    return filter("android.intent.action.MAIN", {category(name)});
}

// The devices of a test's packages, which entries read from.
std::vector<std::unique_ptr<PackageDevice>> devices;

/// A package whose application has these elements, with documents, two strings and an icon.
class Sample
{
public:
    explicit Sample(const Elements &components, const QVector<XmlElement> &documents = {},
                    const Attributes &application = {})
    {
        XmlAttribute package;
        package.name = latin("package");
        package.text = latin("org.example");
        package.value = {ValueType::String, 0};
        const XmlElement root =
            element(latin("manifest"), {package}, {element(latin("application"), application, components)});
        QVector<Member> members{{latin("icon.png"), picture(4, 2, Red)}};
        QStringList paths{latin("first.xml"), latin("second.xml")};
        for (int i = 0; i < documents.size(); ++i)
            members.append({paths.at(i), binaryXml(documents.at(i))});
        devices.push_back(std::make_unique<PackageDevice>(table(paths), binaryXml(root), members));
        m_device = devices.back().get();
    }

    QList<Entry> entries(Kind kind) { return Package(m_device).entries(kind); }
    Entry only(Kind kind)
    {
        const QList<Entry> found = entries(kind);
        return found.size() == 1 ? found.constFirst() : Entry();
    }

private:
    static QByteArray table(const QStringList &paths)
    {
        PackageBuilder package;
        package.types({latin("string"), latin("xml"), latin("drawable")}).keys({latin("key")});
        package.type(TypeBuilder(1).value(0, String, 0).value(1, String, 1))
            .type(TypeBuilder(1, ConfigBuilder().locale("de").build()).value(0, String, 2))
            .type(TypeBuilder(2).value(0, String, 3).value(1, String, 4))
            .type(TypeBuilder(3).value(0, String, 5));
        return TableBuilder()
            .strings(QStringList{latin("New"), latin("New note"), latin("Neu")} + paths
                     + QStringList{latin("icon.png")})
            .package(package)
            .build();
    }

    PackageDevice *m_device;
};

XmlElement activity(const char *name, const Elements &children, const Attributes &more = {})
{
    return element(latin("activity"), Attributes{named(name)} + more, children);
}

XmlElement shortcut(const char *id, const Attributes &more = {}, bool hasIntent = true)
{
    const XmlElement intent =
        element(latin("intent"), {text(Attr::Action, latin("VIEW")), text(Attr::TargetClass, latin("org.Editor"))});
    return element(latin("shortcut"),
                   Attributes{text(Attr::ShortcutId, latin(id)), reference(Attr::ShortcutShortLabel, ShortLabel)}
                       + more,
                   hasIntent ? Elements{intent} : Elements());
}

XmlElement shortcuts(const Elements &items)
{
    return element(latin("shortcuts"), {}, items);
}

// Launchers whose file of shortcuts is the first document.
Sample withShortcuts(const Elements &items, int launchers = 1)
{
    Elements activities;
    for (int i = 0; i < launchers; ++i) {
        activities.append(activity(QStringLiteral(".L%1").arg(i).toLatin1().constData(),
                                   {mainFilter(), metaData("android.app.shortcuts")}));
    }
    return Sample(activities, {shortcuts(items)});
}

QStringList idsOf(const QList<Entry> &entries, bool areShown)
{
    QStringList ids;
    for (const Entry &entry : entries) {
        if (!areShown || entry.isShown())
            ids.append(entry.id());
    }
    return ids;
}

} // namespace

class TestEntries : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { devices.clear(); }
    void kinds_data();
    void kinds();
    void everyKindHasNothing_data();
    void everyKindHasNothing();
    void launchersAreAKind();
    void permissionsOfTheSystem_data();
    void permissionsOfTheSystem();
    void statesCount_data();
    void statesCount();
    void aliases();
    void labelsAndPicturesAreInherited();
    void roundIconsOfTheSameElementComeFirst();
    void bannersHaveFiles();
    void typesOfData();
    void addresses();
    void settings();
    void settingsOfNoDocument_data();
    void settingsOfNoDocument();
    void shortcutsOfALauncher();
    void shortcutsThatAndroidTakes_data();
    void shortcutsThatAndroidTakes();
    void shortcutsNeedALauncher();
    void fifteenShortcutsAreTaken();
    void idsCountOnce();
    void shortcutsUpToTheCeiling();
    void documentsUpToTheCeiling();
    void charactersUpToTheCeiling();
    void aDocumentOfManyLaunchersIsReadOnce();
    void directShares_data();
    void directShares();
};

void TestEntries::kinds_data()
{
    QTest::addColumn<QByteArray>("tag");
    QTest::addColumn<XmlElement>("child");
    QTest::addColumn<QList<int>>("kinds");
    const auto row = [](const char *name, const char *tag, const XmlElement &child, const QList<Kind> &kinds) {
        QList<int> numbers;
        for (const Kind kind : kinds)
            numbers.append(int(kind));
        QTest::newRow(name) << QByteArray(tag) << child << numbers;
    };
    const char *const wallpaper = "android.service.wallpaper.WallpaperService";
    const char *const watchFace = "com.google.android.wearable.watchface.category.WATCH_FACE";
    const char *const tile = "android.service.quicksettings.action.QS_TILE";

    row("launcher", "activity", mainFilter(), {Kind::Launcher});
    row("television", "activity", mainFilter("android.intent.category.LEANBACK_LAUNCHER"), {Kind::Television});
    row("car", "activity", mainFilter("android.intent.category.CAR_LAUNCHER"), {Kind::Car});
    row("home screen", "activity", mainFilter("android.intent.category.HOME"), {Kind::HomeScreen});
    row("several", "activity-alias",
        filter("android.intent.action.MAIN",
               {category("android.intent.category.LAUNCHER"), category("android.intent.category.LEANBACK_LAUNCHER")}),
        {Kind::Launcher, Kind::Television});
    row("without the action", "activity",
        filter("android.intent.action.VIEW", {category("android.intent.category.HOME")}), {});
    row("without the category", "activity", filter("android.intent.action.MAIN"), {});
    row("a launcher that is a service", "service", mainFilter(), {});
    row("car app", "service", filter("androidx.car.app.CarAppService"), {Kind::CarService});
    row("media", "service", filter("android.media.browse.MediaBrowserService"), {Kind::CarService});
    row("media as an activity", "activity", filter("android.media.browse.MediaBrowserService"), {});
    row("live wallpaper", "service", filter(wallpaper), {Kind::LiveWallpaper});
    row("watch face", "service", filter(wallpaper, {category(watchFace)}), {Kind::WatchFace, Kind::LiveWallpaper});
    row("watch face of no wallpaper", "service", filter("other", {category(watchFace)}), {});
    row("wallpaper in a receiver", "receiver", filter(wallpaper), {});
    row("tile", "service", filter(tile), {Kind::QuickSettingsTile});
    row("tile as an alias", "activity-alias", filter(tile), {});
    row("input method", "service", filter("android.view.InputMethod"), {Kind::InputMethod});
    row("screen saver", "service", filter("android.service.dreams.DreamService"), {Kind::ScreenSaver});
    row("widget", "receiver", filter("android.appwidget.action.APPWIDGET_UPDATE"), {Kind::Widget});
    row("widget in a service", "service", filter("android.appwidget.action.APPWIDGET_UPDATE"), {});
    row("share", "activity", filter("android.intent.action.SEND", {category("android.intent.category.DEFAULT")}),
        {Kind::ShareTarget});
    row("share several", "activity",
        filter("android.intent.action.SEND_MULTIPLE", {category("android.intent.category.DEFAULT")}),
        {Kind::ShareTarget});
    row("share by name alone", "activity", filter("android.intent.action.SEND"), {});
    row("instant", "activity",
        element(latin("meta-data"), {named("default-url"), text(Attr::Value, latin("https://x"))}), {Kind::Instant});
    row("other meta-data", "activity", element(latin("meta-data"), {named("default-uri")}), {});
    row("not a filter", "service", element(latin("meta-data"), {}, {element(latin("action"), {named(tile)})}), {});
    row("action without a name", "service", element(latin("intent-filter"), {}, {element(latin("action"))}), {});
}

void TestEntries::kinds()
{
    QFETCH(QByteArray, tag);
    QFETCH(XmlElement, child);
    QFETCH(QList<int>, kinds);
    Sample sample({element(QString::fromLatin1(tag), {named(".A")}, {child})});
    const QMetaEnum all = QMetaEnum::fromType<Kind>();
    QVERIFY(all.keyCount() == 15);
    for (int i = 0; i < all.keyCount(); ++i) {
        const QList<Entry> entries = sample.entries(Kind(all.value(i)));
        QCOMPARE(int(entries.size()), int(kinds.contains(all.value(i))));
        if (entries.isEmpty())
            continue;
        QCOMPARE(entries.constFirst().kind(), Kind(all.value(i)));
        QCOMPARE(entries.constFirst().name(), latin("org.example.A"));
        QCOMPARE(entries.constFirst().packageName(), latin("org.example"));
        QVERIFY(entries.constFirst().id().isEmpty());
        QVERIFY(entries.constFirst().longLabel().isEmpty());
    }
}

void TestEntries::everyKindHasNothing_data()
{
    QTest::addColumn<int>("kind");
    const QMetaEnum all = QMetaEnum::fromType<Kind>();
    for (int i = 0; i < all.keyCount(); ++i)
        QTest::newRow(all.key(i)) << all.value(i);
}

void TestEntries::everyKindHasNothing()
{
    QFETCH(int, kind);
    QVERIFY(Package().entries(Kind(kind)).isEmpty());
    QVERIFY(Sample({}).entries(Kind(kind)).isEmpty());
    PackageDevice device(emptyTable(), smallManifest());
    QVERIFY(Package(&device).entries(Kind(kind)).isEmpty());
}

void TestEntries::launchersAreAKind()
{
    Sample sample({activity(".A", {mainFilter()}), activity(".B", {mainFilter()}, {boolean(Attr::Enabled, false)}),
                   activity(".A", {mainFilter()})});
    const QList<Entry> launchers = sample.entries(Kind::Launcher);
    QCOMPARE(launchers.size(), 2);
    QCOMPARE(launchers.at(1).name(), latin("org.example.B"));
    QVERIFY(launchers.at(0).isShown() && !launchers.at(1).isShown());
    QCOMPARE(Entry().kind(), Kind::Launcher);
    QVERIFY(!Entry().isShown());
    QVERIFY(Entry().permission().isEmpty() && Entry().bannerResource() == 0 && Entry().bannerFiles().isEmpty());
    QVERIFY(Entry().settingsActivity().isEmpty() && Entry().mimeTypes().isEmpty() && Entry().defaultUrl().isEmpty());
}

void TestEntries::permissionsOfTheSystem_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("permission");
    QTest::newRow("tile") << QByteArray("android.service.quicksettings.action.QS_TILE") << int(Kind::QuickSettingsTile)
                          << latin("android.permission.BIND_QUICK_SETTINGS_TILE");
    QTest::newRow("wallpaper") << QByteArray("android.service.wallpaper.WallpaperService") << int(Kind::LiveWallpaper)
                               << latin("android.permission.BIND_WALLPAPER");
    QTest::newRow("input method") << QByteArray("android.view.InputMethod") << int(Kind::InputMethod)
                                  << latin("android.permission.BIND_INPUT_METHOD");
    QTest::newRow("screen saver") << QByteArray("android.service.dreams.DreamService") << int(Kind::ScreenSaver)
                                  << QString();
}

void TestEntries::permissionsOfTheSystem()
{
    QFETCH(QByteArray, action);
    QFETCH(int, kind);
    QFETCH(QString, permission);
    const auto service = [&](const Attributes &more) {
        return element(latin("service"), Attributes{named(".S")} + more, {filter(action.constData())});
    };
    const XmlAttribute guard = text(Attr::Permission, permission);
    QCOMPARE(Sample({service({})}).only(Kind(kind)).isShown(), permission.isEmpty());
    QCOMPARE(Sample({service({text(Attr::Permission, latin("other"))})}).only(Kind(kind)).isShown(),
             permission.isEmpty());
    if (permission.isEmpty())
        return;
    const Entry own = Sample({service({guard})}).only(Kind(kind));
    QCOMPARE(own.permission(), permission);
    QVERIFY(own.isShown());
    QVERIFY(Sample({service({})}, {}, {guard}).only(Kind(kind)).isShown());
}

void TestEntries::statesCount_data()
{
    QTest::addColumn<QVector<bool>>("states"); // of the application, of the component, exported
    QTest::addColumn<bool>("isEnabled");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("all") << QVector<bool>{true, true, true} << true << true;
    QTest::newRow("application disabled") << QVector<bool>{false, true, true} << false << false;
    QTest::newRow("component disabled") << QVector<bool>{true, false, true} << false << false;
    QTest::newRow("not exported") << QVector<bool>{true, true, false} << true << false;
}

void TestEntries::statesCount()
{
    QFETCH(QVector<bool>, states);
    QFETCH(bool, isEnabled);
    QFETCH(bool, isShown);
    const Attributes own{boolean(Attr::Enabled, states.at(1)), boolean(Attr::Exported, states.at(2))};
    const auto entryOf = [&](const XmlElement &component, Kind kind, const QVector<XmlElement> &documents = {}) {
        return Sample({component}, documents, {boolean(Attr::Enabled, states.at(0))}).only(kind);
    };
    const QList<Entry> entries{
        entryOf(activity(".A", {mainFilter("android.intent.category.LEANBACK_LAUNCHER")}, own), Kind::Television),
        entryOf(element(latin("service"), Attributes{named(".S")} + own, {filter("androidx.car.app.CarAppService")}),
                Kind::CarService),
        entryOf(element(latin("receiver"), Attributes{named(".R")} + own,
                        {filter("android.appwidget.action.APPWIDGET_UPDATE")}),
                Kind::Widget),
        entryOf(activity(".A", {mainFilter(), metaData("android.app.shortcuts")}, own), Kind::Shortcut,
                {shortcuts({shortcut("a")})}),
    };
    for (const Entry &entry : entries) {
        QVERIFY(!entry.name().isEmpty());
        QCOMPARE(entry.isEnabled(), isEnabled);
        QCOMPARE(entry.isExported(), states.at(2));
        QCOMPARE(entry.isShown(), isShown);
    }
}

void TestEntries::aliases()
{
    Sample sample({activity(".Main", {}, {reference(Attr::Banner, IconId), text(Attr::Permission, latin("p"))}),
                   element(latin("activity-alias"), {named(".Tv"), text(Attr::TargetActivity, latin(".Main"))},
                           {mainFilter("android.intent.category.LEANBACK_LAUNCHER")})},
                  {}, {text(Attr::Permission, latin("all"))});
    const Entry entry = sample.only(Kind::Television);
    QVERIFY(entry.isAlias());
    QCOMPARE(entry.name(), latin("org.example.Tv"));
    QCOMPARE(entry.className(), latin("org.example.Main"));
    QCOMPARE(entry.bannerResource(), IconId);
    QCOMPARE(entry.permission(), QString());
}

void TestEntries::labelsAndPicturesAreInherited()
{
    const Attributes pictures{reference(Attr::Label, ShortLabel), reference(Attr::Icon, IconId),
                              reference(Attr::Banner, IconId), reference(Attr::Logo, IconId)};
    XmlElement ownFilter = mainFilter("android.intent.category.HOME");
    const XmlElement bare = activity(".A", {ownFilter});
    const XmlElement inActivity = activity(".A", {ownFilter}, pictures);
    ownFilter.attributes = pictures;
    Sample samples[] = {Sample({bare}, {}, pictures), Sample({inActivity}), Sample({activity(".A", {ownFilter})})};
    for (Sample &sample : samples) {
        const Entry entry = sample.only(Kind::HomeScreen);
        QCOMPARE(entry.label(QLocale(QLocale::German)), latin("Neu"));
        QCOMPARE(entry.labels().size(), 2);
        QCOMPARE(entry.iconResource(), IconId);
        QCOMPARE(entry.roundIconResource(), IconId);
        QCOMPARE(entry.bannerResource(), IconId);
        QCOMPARE(entry.logoResource(), IconId);
        QCOMPARE(entry.iconFiles().size(), 1);
    }
    const Entry plain = Sample({bare}).only(Kind::HomeScreen);
    QCOMPARE(plain.label(), latin("org.example.A"));
    QCOMPARE(plain.iconResource() + plain.bannerResource() + plain.logoResource(), 0U);
}

void TestEntries::roundIconsOfTheSameElementComeFirst()
{
    constexpr quint32 Round = 0x7f030001;
    constexpr quint32 Other = 0x7f030002;
    const auto round = [](const Attributes &application, const Attributes &own) {
        return Sample({activity(".A", {mainFilter()}, own)}, {}, application).only(Kind::Launcher).roundIconResource();
    };
    const XmlAttribute icon = reference(Attr::Icon, IconId);
    QCOMPARE(round({}, {icon, reference(Attr::RoundIcon, Round)}), Round);
    QCOMPARE(round({reference(Attr::RoundIcon, Other)}, {icon, reference(Attr::RoundIcon, Round)}), Round);
    QCOMPARE(round({reference(Attr::RoundIcon, Other)}, {icon}), IconId);
    QCOMPARE(round({icon, reference(Attr::RoundIcon, Other)}, {}), Other);
    QCOMPARE(round({}, {}), 0U);
}

void TestEntries::bannersHaveFiles()
{
    const XmlElement television = activity(".A", {mainFilter("android.intent.category.LEANBACK_LAUNCHER")});
    const Entry entry = Sample({television}, {}, {reference(Attr::Banner, IconId)}).only(Kind::Television);
    QCOMPARE(entry.bannerFiles().size(), 1);
    QCOMPARE(entry.bannerFiles().constFirst().path(), latin("icon.png"));
    QCOMPARE(entry.bannerFiles().constFirst().size(), QSize(4, 2));
    QVERIFY(entry.iconFiles().isEmpty());
    const Entry path = Sample({television}, {}, {text(Attr::Banner, latin("icon.png"))}).only(Kind::Television);
    QCOMPARE(path.bannerResource(), 0U);
    QCOMPARE(path.bannerFiles().size(), 1);
    QVERIFY(
        Sample({television}, {}, {reference(Attr::Banner, IconId + 9)}).only(Kind::Television).bannerFiles().isEmpty());
}

void TestEntries::typesOfData()
{
    const XmlElement usual = category("android.intent.category.DEFAULT");
    Sample sample({activity(".A", {filter("android.intent.action.SEND", {usual, data("text/plain"), data("image/*")}),
                                   filter("android.intent.action.VIEW", {usual, data("video/*")}),
                                   filter("android.intent.action.SEND_MULTIPLE", {usual, data("image/*"), data("*/*")}),
                                   filter("android.intent.action.SEND", {data("audio/*")})})});
    QCOMPARE(sample.only(Kind::ShareTarget).mimeTypes(),
             QStringList({latin("text/plain"), latin("image/*"), latin("*/*")}));
}

void TestEntries::addresses()
{
    const XmlAttribute name = named("default-url");
    Sample texts(
        {activity(".A", {element(latin("meta-data"), {name, text(Attr::Value, latin("https://a.example"))})})});
    QCOMPARE(texts.only(Kind::Instant).defaultUrl(), latin("https://a.example"));
    Sample references({activity(".A", {element(latin("meta-data"), {name, reference(Attr::Value, ShortLabel)})})});
    QCOMPARE(references.only(Kind::Instant).defaultUrl(), latin("New"));
    Sample nothing({activity(".A", {element(latin("meta-data"), {name})})});
    QCOMPARE(nothing.only(Kind::Instant).name(), latin("org.example.A"));
    QCOMPARE(nothing.only(Kind::Instant).defaultUrl(), QString());
}

void TestEntries::settings()
{
    const auto entryOf = [](const char *action, const char *details, const char *root, Kind kind) {
        const XmlElement document = element(latin(root), {text(Attr::SettingsActivity, latin("org.example.Settings"))});
        return Sample({element(latin("service"), {named(".S")}, {filter(action), metaData(details)})}, {document})
            .only(kind);
    };
    const QList<Entry> entries{
        entryOf("android.view.InputMethod", "android.view.im", "input-method", Kind::InputMethod),
        entryOf("android.service.wallpaper.WallpaperService", "android.service.wallpaper", "wallpaper",
                Kind::LiveWallpaper),
        entryOf("android.service.dreams.DreamService", "android.service.dream", "dream", Kind::ScreenSaver),
    };
    for (const Entry &entry : entries) {
        QCOMPARE(entry.detailsResource(), FirstDocument);
        QCOMPARE(entry.settingsActivity(), latin("org.example.Settings"));
    }
}

void TestEntries::settingsOfNoDocument_data()
{
    QTest::addColumn<XmlElement>("metaData");
    QTest::addColumn<quint32>("resource");
    QTest::newRow("no file") << metaData("android.view.im", SecondDocument) << SecondDocument;
    QTest::newRow("a picture") << metaData("android.view.im", IconId) << IconId;
    QTest::newRow("a text") << metaData("android.view.im", ShortLabel) << ShortLabel;
    QTest::newRow("no resource") << metaData("android.view.im", MissingString) << MissingString;
    QTest::newRow("no reference") << element(latin("meta-data"), {named("android.view.im")}) << 0U;
    QTest::newRow("another name") << metaData("android.view.other") << 0U;
}

void TestEntries::settingsOfNoDocument()
{
    QFETCH(XmlElement, metaData);
    QFETCH(quint32, resource);
    const Entry entry =
        Sample({element(latin("service"), {named(".S")}, {filter("android.view.InputMethod"), metaData})},
               {element(latin("input-method"), {text(Attr::SettingsActivity, latin("wrong"))})})
            .only(Kind::InputMethod);
    QCOMPARE(entry.name(), latin("org.example.S"));
    QCOMPARE(entry.detailsResource(), resource);
    QCOMPARE(entry.settingsActivity(), QString());
}

void TestEntries::shortcutsOfALauncher()
{
    Sample sample = withShortcuts(
        {shortcut("new", {reference(Attr::ShortcutLongLabel, LongLabel), reference(Attr::Icon, IconId)})});
    const Entry entry = sample.only(Kind::Shortcut);
    QCOMPARE(entry.id(), latin("new"));
    QCOMPARE(entry.name(), latin("org.example.L0"));
    QCOMPARE(entry.className(), latin("org.Editor"));
    QCOMPARE(entry.label(QLocale::c()), latin("New"));
    QCOMPARE(entry.label(QLocale(QLocale::German)), latin("Neu"));
    QCOMPARE(entry.longLabel(QLocale::c()), latin("New note"));
    QCOMPARE(entry.iconResource(), IconId);
    QCOMPARE(entry.iconFiles().size(), 1);
    QCOMPARE(entry.bannerResource(), 0U);
    QVERIFY(entry.isShown());
}

void TestEntries::shortcutsThatAndroidTakes_data()
{
    QTest::addColumn<XmlElement>("item");
    QTest::addColumn<bool>("isListed");
    QTest::addColumn<bool>("isShown");
    const auto row = [](const char *name, const XmlElement &item, bool isListed, bool isShown) {
        QTest::newRow(name) << item << isListed << isShown;
    };
    const XmlAttribute id = text(Attr::ShortcutId, latin("a"));
    const XmlAttribute label = reference(Attr::ShortcutShortLabel, ShortLabel);
    const XmlElement intent = element(latin("intent"), {text(Attr::Action, latin("VIEW"))});
    row("usual", shortcut("a"), true, true);
    row("enabled", shortcut("a", {boolean(Attr::Enabled, true)}), true, true);
    row("disabled", shortcut("a", {boolean(Attr::Enabled, false)}), true, false);
    row("disabled without an intent", shortcut("a", {boolean(Attr::Enabled, false)}, false), true, false);
    row("without an intent", shortcut("a", {}, false), true, false);
    row("an intent without an action", element(latin("shortcut"), {id, label}, {intent, element(latin("intent"))}),
        true, false);
    row("two intents", element(latin("shortcut"), {id, label}, {intent, intent}), true, true);
    row("without an id", element(latin("shortcut"), {label}, {intent}), false, false);
    row("an empty id", shortcut(""), false, false);
    row("an id that is a reference",
        element(latin("shortcut"), {reference(Attr::ShortcutId, ShortLabel), label}, {intent}), false, false);
    row("without a label", element(latin("shortcut"), {id}, {intent}), true, false);
    row("a label that is a text",
        element(latin("shortcut"), {id, text(Attr::ShortcutShortLabel, latin("New"))}, {intent}), true, false);
    row("a label that is missing",
        element(latin("shortcut"), {id, reference(Attr::ShortcutShortLabel, MissingString)}, {intent}), true, true);
    row("another element", element(latin("item"), {id, label}, {intent}), false, false);
    row("a shortcut within one", element(latin("group"), {}, {shortcut("a")}), false, false);
}

void TestEntries::shortcutsThatAndroidTakes()
{
    QFETCH(XmlElement, item);
    QFETCH(bool, isListed);
    QFETCH(bool, isShown);
    Sample sample = withShortcuts({item});
    const QList<Entry> entries = sample.entries(Kind::Shortcut);
    QCOMPARE(int(entries.size()), int(isListed));
    if (isListed) {
        QCOMPARE(entries.constFirst().isShown(), isShown);
        QVERIFY(!entries.constFirst().label().isEmpty());
    }
}

void TestEntries::shortcutsNeedALauncher()
{
    const QVector<XmlElement> documents{shortcuts({shortcut("a")}), element(latin("other"), {}, {shortcut("b")})};
    const auto count = [&](const XmlElement &component) {
        return int(Sample({component}, documents).entries(Kind::Shortcut).size());
    };
    QCOMPARE(count(activity(".A", {mainFilter(), metaData("android.app.shortcuts")})), 1);
    QCOMPARE(count(activity(".A", {metaData("android.app.shortcuts")})), 0);
    QCOMPARE(count(activity(".A", {mainFilter(), metaData("android.app.other")})), 0);
    QCOMPARE(count(activity(".A", {mainFilter(), metaData("android.app.shortcuts", SecondDocument)})), 0);
    QCOMPARE(count(activity(".A", {mainFilter(), metaData("android.app.shortcuts", IconId)})), 0);
    QCOMPARE(count(element(latin("service"), {named(".S")}, {mainFilter(), metaData("android.app.shortcuts")})), 0);
}

void TestEntries::fifteenShortcutsAreTaken()
{
    Elements items{shortcut("hidden", {}, false)};
    QStringList ids;
    for (int i = 0; i <= SorrelKit::ShortcutFile::TakenShortcuts; ++i) {
        ids.append(QStringLiteral("s%1").arg(i));
        items.append(shortcut(ids.last().toLatin1().constData()));
    }
    const QList<Entry> entries = withShortcuts(items).entries(Kind::Shortcut);
    QCOMPARE(idsOf(entries, false), QStringList{latin("hidden")} + ids);
    ids.removeLast();
    QCOMPARE(idsOf(entries, true), ids);
}

void TestEntries::idsCountOnce()
{
    const Elements activities{activity(".A", {mainFilter(), metaData("android.app.shortcuts")}),
                              activity(".B", {mainFilter(), metaData("android.app.shortcuts", SecondDocument)}),
                              activity(".C", {mainFilter(), metaData("android.app.shortcuts")})};
    Sample sample(activities, {shortcuts({shortcut("a"), shortcut("b"), shortcut("a")}),
                               shortcuts({shortcut("b"), shortcut("c")})});
    const QList<Entry> entries = sample.entries(Kind::Shortcut);
    QCOMPARE(idsOf(entries, true), QStringList({latin("a"), latin("b"), latin("c")}));
    QCOMPARE(entries.at(1).name(), latin("org.example.A"));
    QCOMPARE(entries.at(2).name(), latin("org.example.B"));
}

void TestEntries::shortcutsUpToTheCeiling()
{
    const auto count = [](int shortcuts) {
        Elements items;
        for (int i = 0; i < shortcuts; ++i)
            items.append(shortcut(QByteArray::number(i).constData(), {}, false));
        return int(withShortcuts(items).entries(Kind::Shortcut).size());
    };
    QCOMPARE(count(Manifest::MaxEntries), int(Manifest::MaxEntries));
    QCOMPARE(count(Manifest::MaxEntries + 1), int(Manifest::MaxEntries));
}

void TestEntries::documentsUpToTheCeiling()
{
    // The text is in the pool, in one byte or two for each character.
    const auto rootOf = [](int characters) {
        return shortcuts({shortcut("a"), element(latin("x"), {named(QByteArray(characters, 'x').constData())})});
    };
    constexpr int Characters = 1000;
    const int perCharacter =
        int(binaryXml(rootOf(Characters + 1000)).size() - binaryXml(rootOf(Characters)).size()) / 1000;
    const int most =
        Characters + int(PackageData::MaxDocumentBytes - binaryXml(rootOf(Characters)).size()) / perCharacter;
    const auto count = [&](int characters) {
        Sample sample({activity(".A", {mainFilter(), metaData("android.app.shortcuts")})}, {rootOf(characters)});
        return int(sample.entries(Kind::Shortcut).size());
    };
    QVERIFY(binaryXml(rootOf(most)).size() <= PackageData::MaxDocumentBytes);
    QCOMPARE(count(most), 1);
    QCOMPARE(count(most + 4), 0);
}

void TestEntries::charactersUpToTheCeiling()
{
    // Any number of elements may use one text.
    constexpr int Length = 1 << 12;
    const auto count = [](int elements) {
        Elements items{shortcut("a")};
        for (int i = 0; i < elements; ++i)
            items.append(element(latin("x"), {named(QByteArray(Length, 'x').constData())}));
        return int(withShortcuts(items).entries(Kind::Shortcut).size());
    };
    QCOMPARE(count(int(PackageData::MaxDocumentCharacters) / Length - 1), 1);
    QCOMPARE(count(int(PackageData::MaxDocumentCharacters) / Length), 0);
}

void TestEntries::aDocumentOfManyLaunchersIsReadOnce()
{
    QCOMPARE(withShortcuts({shortcut("a")}, 1000).entries(Kind::Shortcut).size(), 1);
    const XmlElement target =
        element(latin("share-target"), {text(Attr::TargetClass, latin("org.C"))}, {data("text/plain"), category("c")});
    QCOMPARE(withShortcuts({target}, 1000).entries(Kind::DirectShare).size(), 1);
}

void TestEntries::directShares_data()
{
    QTest::addColumn<XmlElement>("item");
    QTest::addColumn<bool>("isShown");
    const XmlAttribute target = text(Attr::TargetClass, latin("org.C"));
    const char *const tag = "share-target";
    QTest::newRow("usual") << element(latin(tag), {target},
                                      {data("text/plain"), category("org.one"), category("org.two")})
                           << true;
    QTest::newRow("without a class") << element(latin(tag), {}, {data("text/plain"), category("org.one")}) << false;
    QTest::newRow("without a type") << element(latin(tag), {target}, {category("org.one")}) << false;
    QTest::newRow("without a category") << element(latin(tag), {target}, {data("text/plain")}) << false;
}

void TestEntries::directShares()
{
    QFETCH(XmlElement, item);
    QFETCH(bool, isShown);
    Sample sample = withShortcuts({shortcut("a"), item});
    const Entry entry = sample.only(Kind::DirectShare);
    QCOMPARE(entry.name(), latin("org.example.L0"));
    QCOMPARE(entry.isShown(), isShown);
    QVERIFY(entry.labels().isEmpty());
    QCOMPARE(entry.iconResource(), 0U);
    if (isShown) {
        QCOMPARE(entry.id(), latin("org.one"));
        QCOMPARE(entry.className(), latin("org.C"));
        QCOMPARE(entry.mimeTypes(), QStringList{latin("text/plain")});
    }
}

QTEST_GUILESS_MAIN(TestEntries)
#include "tst_entries.moc"
