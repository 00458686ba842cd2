// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "BinaryXml.h"
#include "Bounds.h"
#include "DrawableFixture.h"
#include "PackageWalker.h"
#include "PlatformInMemory.h"
#include "SetFixture.h"
#include "format/AndroidAttributes.h"
#include "permissions/PermissionRequests.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>

#include <QtTest>

#include <functional>

using namespace fixture;
using namespace SorrelKit;

/*
 * Permissions, entries in documents, themes, platforms and sets that were made to take too much, and damaged copies of
 * them. All copies of one file together keep the bounds of a single file.
 */

namespace {

constexpr unsigned SmallStack = 512 << 10;
constexpr int IconSize = 8;
constexpr int AttributeType = int(ValueType::Attribute);
constexpr quint32 FirstString = 0x7f010000;
constexpr quint32 Shortcuts = 0x7f020000;
constexpr quint32 FirstStyle = 0x7f030000;
constexpr quint32 ColorAttribute = 0x7f040000;
constexpr quint32 FirstPlatformStyle = 0x01030000;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

XmlAttribute named(const QString &name)
{
    return text(Attr::Name, name);
}

XmlAttribute reference(quint32 id, quint32 resource)
{
    XmlAttribute attribute;
    attribute.id = id;
    attribute.value = {ValueType::Reference, resource};
    return attribute;
}

XmlElement manifestElement(const Elements &children)
{
    XmlAttribute package;
    package.name = latin("package");
    package.text = latin("org.example");
    package.value.type = ValueType::String;
    return element(latin("manifest"), {package}, children);
}

XmlElement launcher(int number, const Attributes &attributes, const Elements &children = {})
{
    const XmlElement filter = element(latin("intent-filter"), {},
                                      {element(latin("action"), {named(latin("android.intent.action.MAIN"))}),
                                       element(latin("category"), {named(latin("android.intent.category.LAUNCHER"))})});
    return element(latin("activity"), Attributes{named(QStringLiteral(".A%1").arg(number))} + attributes,
                   Elements{filter} + children);
}

XmlElement launcherWithShortcuts(int number = 0)
{
    const XmlElement metaData =
        element(latin("meta-data"), {named(latin("android.app.shortcuts")), reference(Attr::Resource, Shortcuts)});
    return launcher(number, {}, {metaData});
}

XmlElement application(const Elements &children, const Attributes &attributes = {})
{
    return element(latin("application"), attributes, children);
}

XmlElement shortcut(int number, quint32 label, quint32 icon)
{
    const XmlElement intent =
        element(latin("intent"), {text(Attr::Action, latin("VIEW")), text(Attr::TargetClass, latin("org.Editor"))});
    return element(latin("shortcut"),
                   {text(Attr::ShortcutId, QString::number(number)), reference(Attr::ShortcutShortLabel, label),
                    reference(Attr::ShortcutLongLabel, label + 1), reference(Attr::Icon, icon)},
                   {intent});
}

XmlElement shortcuts(int count, const std::function<XmlElement(int)> &itemOf)
{
    Elements items;
    for (int i = 0; i < count; ++i)
        items.append(itemOf(i));
    return element(latin("shortcuts"), {}, items);
}

XmlElement shareTarget()
{
    return element(latin("share-target"), {text(Attr::TargetClass, latin("org.Share"))},
                   {element(latin("data"), {text(Attr::MimeType, latin("text/*"))}),
                    element(latin("category"), {named(latin("people"))})});
}

// Strings of which each refers to the next, without an end when @p isCycle; the file of shortcuts; and styles.
QByteArray tableOf(int strings, bool isCycle = true, const TypeBuilder &styles = TypeBuilder(3))
{
    TypeBuilder chain(1);
    for (int i = 0; i + 1 < strings; ++i)
        chain.value(i, Reference, FirstString + quint32(i) + 1);
    if (isCycle)
        chain.value(strings - 1, Reference, FirstString);
    else
        chain.value(strings - 1, String, 0);
    return TableBuilder()
        .strings({latin("res/shortcuts.xml"), latin("res/icon.xml")})
        .package(PackageBuilder()
                     .types({latin("string"), latin("xml"), latin("style"), latin("attr")})
                     .type(chain)
                     .type(TypeBuilder(2).value(0, String, 0).value(1, String, 1))
                     .type(styles))
        .build();
}

// The file of the icon has the colour of the theme.
QByteArray packageOf(const XmlElement &manifest, const QByteArray &table, const QByteArray &document = QByteArray())
{
    XmlAttribute ofTheme;
    ofTheme.id = Attr::Color;
    ofTheme.value = {ValueType::Attribute, ColorAttribute};
    return zip({{latin("AndroidManifest.xml"), binaryXml(manifest)},
                {latin("resources.arsc"), table},
                {latin("res/shortcuts.xml"), document},
                {latin("res/icon.xml"), binaryXml(element(latin("color"), {ofTheme}))}},
               Compression::Stored);
}

Elements permissionsOf(int count)
{
    Elements elements;
    for (int i = 0; i < count; ++i)
        elements.append(element(latin("uses-permission"), {named(QString::number(i))}));
    return elements;
}

// Declared permissions and groups: group n is in group n + 1, and the last one in the first.
Elements declarationsOf(int count)
{
    Elements elements;
    for (int i = 0; i < count; ++i) {
        const QString group = QStringLiteral("g%1").arg(i);
        const QString next = QStringLiteral("g%1").arg((i + 1) % count);
        const quint32 label = FirstString + quint32(i);
        elements.append(element(latin("uses-permission"), {named(QString::number(i))}));
        elements.append(
            element(latin("permission"), {named(QString::number(i)), text(Attr::PermissionGroup, group),
                                          reference(Attr::Label, label), reference(Attr::ProtectionLevel, label)}));
        elements.append(element(latin("permission-group"),
                                {named(group), text(Attr::PermissionGroup, next), reference(Attr::Label, label)}));
    }
    return elements;
}

Elements featuresOf(int count)
{
    Elements elements;
    for (int i = 0; i < count; ++i)
        elements.append(element(latin("uses-feature"), {named(QStringLiteral("android.hardware.f%1").arg(i))}));
    return elements;
}

// Style n inherits from parentOf(n), and sets an attribute of its own.
TypeBuilder stylesOf(int count, const std::function<quint32(int)> &parentOf, int type = 3)
{
    TypeBuilder styles(type);
    for (int i = 0; i < count; ++i) {
        const quint32 attribute = ColorAttribute + quint32(i);
        styles.entry(i, mapOf({mapItem(attribute, AttributeType, attribute + 1)}, parentOf(i)));
    }
    return styles;
}

quint32 nextStyle(int number)
{
    return FirstStyle + quint32(number) + 1;
}

QByteArray themedPackage(const TypeBuilder &styles)
{
    const XmlElement root = manifestElement(
        {application({launcher(0, {})}, {reference(Attr::Theme, FirstStyle), reference(Attr::Icon, Shortcuts + 1)})});
    return packageOf(root, tableOf(2, true, styles));
}

QByteArray platformOfStyles(const TypeBuilder &styles)
{
    return TableBuilder()
        .package(PackageBuilder(1, latin("android")).types({latin("attr"), latin("id"), latin("style")}).type(styles))
        .build();
}

// A platform whose string, and whose icon, are those of the package.
QByteArray platformThatRefersBack()
{
    return TableBuilder()
        .package(PackageBuilder(1, latin("android"))
                     .types({latin("attr"), latin("id"), latin("style"), latin("string")})
                     .type(TypeBuilder(4).value(0, Reference, FirstString).value(1, Reference, Shortcuts)))
        .build();
}

ProtobufWriter forLanguage(const QString &language)
{
    return ProtobufWriter().message(3, languageTargeting({language}));
}

void ask(const QByteArray &bytes, const QByteArray &platformBytes = QByteArray(), int overlays = 0)
{
    PackageDevice device(bytes);
    if (platformBytes.isNull() && overlays == 0) {
        if (visit(Package(&device), 1, IconSize) < 0)
            qFatal("a picture has another size or format");
        return;
    }
    const PlatformInMemory platform(platformBytes.isNull() ? platformTable() : platformBytes);
    Package package(&device);
    package.setPlatform(platform.platform());
    IconRequest request(IconSize);
    request.setTheme(IconRequest::Theme::Package);
    QList<quint32> styles;
    for (int i = 0; i < overlays; ++i)
        styles.append(FirstStyle + quint32(i));
    request.setThemeOverlays(styles);
    DrawableRenderer renderer(package);
    const QImage image = renderer.icon(request);
    if (!image.isNull() && image.size() != QSize(IconSize, IconSize))
        qFatal("a picture has another size");
    if (package.label().isNull() || package.labels().size() > 2 || package.platformResources().size() > 100)
        qFatal("there are more texts than the package has");
}

// Calls @p visit with a copy of @p bytes for each byte, whose bits are all flipped there, and with some prefixes.
void visitDamaged(const QByteArray &bytes, const std::function<void(const QByteArray &)> &visit)
{
    for (int at = 0; at < bytes.size(); ++at) {
        QByteArray damaged = bytes;
        damaged[at] = char(~bytes.at(at));
        visit(damaged);
        if (at % 16 == 0)
            visit(bytes.left(at));
    }
}

QString excessOf(const std::function<void()> &function, qint64 inflated)
{
    return Bounds::excess(costInThread(function, isInstrumented() ? 8 * SmallStack : SmallStack), 0, inflated);
}

} // namespace

class TestHostileQueries : public QObject
{
    Q_OBJECT

private slots:
    void boundsHold_data();
    void boundsHold();
    void damagedShortcuts();
    void damagedPermissions();
    void damagedThemes();
    void damagedPlatform();
    void damagedContentsOfASet();
    void damagedManifestsOfASet();

private:
    static void addPermissions();
    static void addShortcuts();
    static void addThemes();
    static void addSets();
};

void TestHostileQueries::boundsHold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("platform");
    QTest::addColumn<int>("overlays");
    addPermissions();
    addShortcuts();
    addThemes();
    addSets();
}

namespace {

void addRow(const char *name, const QByteArray &bytes, const QByteArray &platform = QByteArray(), int overlays = 0)
{
    QTest::newRow(name) << bytes << platform << overlays;
}

} // namespace

void TestHostileQueries::addPermissions()
{
    const int most = PermissionRequests::MaxPermissions;
    const QByteArray table = tableOf(3000);
    addRow("as many permissions as a package may have", packageOf(manifestElement(permissionsOf(most)), table));
    addRow("more permissions", packageOf(manifestElement(permissionsOf(most + 1)), table));
    addRow("permissions up to the nodes of a manifest", packageOf(manifestElement(permissionsOf(49'000)), table));
    addRow("more permissions than a manifest may have", packageOf(manifestElement(permissionsOf(65'535)), table));
    addRow("permission groups in a cycle, labels without an end",
           packageOf(manifestElement(declarationsOf(3000)), table));
    addRow("features", packageOf(manifestElement(featuresOf(49'000)), table));
}

void TestHostileQueries::addShortcuts()
{
    const auto packageOfShortcuts = [](int launchers, const XmlElement &document, int strings = 2000) {
        Elements activities;
        for (int i = 0; i < launchers; ++i)
            activities.append(launcherWithShortcuts(i));
        return packageOf(manifestElement({application(activities)}), tableOf(strings), binaryXml(document));
    };
    addRow("shortcuts", packageOfShortcuts(1, shortcuts(2000, [](int i) {
                                               return shortcut(i, FirstString + quint32(i), FirstString + quint32(i));
                                           })));
    addRow("more shortcuts than a document may have",
           packageOfShortcuts(1, shortcuts(10'000, [](int i) { return shortcut(i, FirstString, Shortcuts); })));
    addRow("shortcuts whose icons and labels are their own file",
           packageOfShortcuts(1000, shortcuts(1024, [](int i) { return shortcut(i, Shortcuts, Shortcuts); })));
    addRow("targets for sharing", packageOfShortcuts(1000, shortcuts(1500, [](int) { return shareTarget(); })));
}

void TestHostileQueries::addThemes()
{
    addRow("theme with ten thousand parents", themedPackage(stylesOf(10'000, nextStyle)), platformTable());
    addRow("theme that is its own parent", themedPackage(stylesOf(1, [](int) { return FirstStyle; })), platformTable());
    addRow("theme whose parent in the platform has it as parent",
           themedPackage(stylesOf(1, [](int) { return FirstPlatformStyle; })),
           platformOfStyles(stylesOf(1, [](int) { return FirstStyle; })));
    const QByteArray overlays = themedPackage(stylesOf(10'000, nextStyle));
    addRow("a thousand overlays with thousands of parents", overlays, platformTable(), 1000);
    addRow("ten thousand overlays without a parent", themedPackage(stylesOf(10'000, [](int) { return 0U; })),
           platformTable(), 10'000);
    const XmlElement root = manifestElement(
        {application({launcher(0, {})}, {reference(Attr::Label, PlatformLabel), reference(Attr::Icon, FirstString)})});
    const QByteArray table = TableBuilder()
                                 .package(PackageBuilder()
                                              .types({latin("string"), latin("xml")})
                                              .type(TypeBuilder(1).value(0, Reference, PlatformLabel))
                                              .type(TypeBuilder(2).value(0, Reference, PlatformLabel + 1)))
                                 .build();
    addRow("platform whose strings refer back to the package", packageOf(root, table), platformThatRefersBack());
}

void TestHostileQueries::addSets()
{
    constexpr int Splits = 10'000;
    QVector<Member> members{memberOf("base.apk", SetManifest())};
    SetManifest split;
    split.split = "config.de";
    const QByteArray splitBytes = packageOf(split);
    QVector<ProtobufWriter> apks;
    for (int i = 0; i < Splits; ++i) {
        const QByteArray path = QByteArray::number(i) + ".apk";
        members.append({QString::fromLatin1(path), splitBytes});
        apks.append(apkOf(path.constData(), forLanguage(QString::number(i))));
    }
    addRow("ten thousand splits", zip(members, Compression::Stored));
    const ProtobufWriter variant = variantOf({}, {moduleOf("base", apks)});
    const QVector<Member> base = members.mid(0, 1);
    addRow("table of ten thousand splits", setOf(tocOf({variant}), base));
    QByteArray nested;
    for (int depth = 0; depth < 5000; ++depth)
        nested = ProtobufWriter().bytes(1, nested).data();
    addRow("table of messages in messages", setOf(nested, base));
}

void TestHostileQueries::boundsHold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, platform);
    QFETCH(int, overlays);
    const QString excess = excessOf([&] { ask(bytes, platform, overlays); }, bytes.size());
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

void TestHostileQueries::damagedShortcuts()
{
    const XmlElement root = manifestElement({application({launcherWithShortcuts()})});
    const QByteArray document =
        binaryXml(element(latin("shortcuts"), {}, {shortcut(1, FirstString, Shortcuts + 1), shareTarget()}));
    const QByteArray table = tableOf(2, false);
    const auto ids = [&](const QByteArray &damaged) {
        PackageDevice device(packageOf(root, table, damaged));
        const Package package(&device);
        int count = 0;
        for (const Entry::Kind kind : {Entry::Kind::Shortcut, Entry::Kind::DirectShare}) {
            for (const Entry &entry : package.entries(kind))
                count += entry.id().isEmpty() ? 0 : 1;
        }
        return count;
    };
    QCOMPARE(ids(document), 2);
    QCOMPARE(ids(document.left(document.size() / 2)), 0);
    const QString excess = excessOf(
        [&] { visitDamaged(document, [&](const QByteArray &damaged) { ask(packageOf(root, table, damaged)); }); },
        document.size());
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

void TestHostileQueries::damagedPermissions()
{
    const QByteArray table = tableOf(2, false);
    const QByteArray manifest = binaryXml(manifestElement(declarationsOf(2)));
    PackageDevice device(package(table, manifest));
    const Package declaring(&device);
    const QList<Permission> permissions = declaring.permissions();
    QCOMPARE(declaring.permissionNames().size(), 2);
    QVERIFY(permissions.first().isDeclared());
    QCOMPARE(permissions.first().group(), latin("g0"));
    const QString excess =
        excessOf([&] { visitDamaged(manifest, [&](const QByteArray &damaged) { ask(package(table, damaged)); }); },
                 manifest.size());
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

void TestHostileQueries::damagedThemes()
{
    const QByteArray table = tableOf(2, false, stylesOf(4, [](int number) { return nextStyle(number % 3); }));
    const XmlElement root = manifestElement(
        {application({launcher(0, {})}, {reference(Attr::Theme, FirstStyle), reference(Attr::Icon, Shortcuts + 1)})});
    const QString excess = excessOf(
        [&] {
            visitDamaged(table, [&](const QByteArray &damaged) { ask(packageOf(root, damaged), platformTable(), 3); });
        },
        table.size());
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

void TestHostileQueries::damagedPlatform()
{
    const XmlElement root = manifestElement({application(
        {launcher(0, {})}, {reference(Attr::Label, PlatformAlias), reference(Attr::Icon, PlatformColor)})});
    const QByteArray bytes = packageOf(root, emptyTable());
    const QByteArray table = platformTable();
    const PlatformInMemory platform(table);
    PackageDevice device(bytes);
    Package package(&device);
    package.setPlatform(platform.platform());
    QCOMPARE(package.label(QLocale(QLocale::German)), latin("Gut"));
    const QString excess =
        excessOf([&] { visitDamaged(table, [&](const QByteArray &damaged) { ask(bytes, damaged); }); }, table.size());
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

void TestHostileQueries::damagedContentsOfASet()
{
    SetManifest german;
    german.split = "config.de";
    const QVector<Member> members{memberOf("base.apk", SetManifest()), memberOf("de.apk", german)};
    const QByteArray toc = tocOf({variantOf(
        sdkTargeting({21}), {moduleOf("base", {apkOf("base.apk"), apkOf("de.apk", forLanguage(latin("de")))})})});
    QCOMPARE(chosen(setOf(toc, members), phone()), QStringList({latin("base.apk"), latin("de.apk")}));
    const QString excess = excessOf(
        [&] { visitDamaged(toc, [&](const QByteArray &damaged) { ask(setOf(damaged, members)); }); }, toc.size());
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

void TestHostileQueries::damagedManifestsOfASet()
{
    SetManifest feature;
    feature.split = "camera";
    feature.isFeature = true;
    feature.delivery = "install-time";
    feature.feature = "android.hardware.camera";
    const QByteArray manifest = manifestOf(feature);
    const Member base = memberOf("base.apk", SetManifest());
    const QString excess = excessOf(
        [&] {
            visitDamaged(manifest, [&](const QByteArray &damaged) {
                const QByteArray split = zip({{latin("AndroidManifest.xml"), damaged}}, Compression::Stored);
                ask(zip({base, {latin("camera.apk"), split}}, Compression::Stored));
            });
        },
        manifest.size());
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

QTEST_GUILESS_MAIN(TestHostileQueries)
#include "tst_hostile_queries.moc"
