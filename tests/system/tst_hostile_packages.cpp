// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "Bounds.h"
#include "Bytes.h"
#include "Devices.h"
#include "Pictures.h"
#include "document/AndroidNamespace.h"
#include "format/ResourceTypes.h"
#include "launchers/IconLookup.h"
#include "launchers/LauncherFinder.h"
#include "launchers/VisibilityRules.h"
#include "picture/PictureFile.h"
#include "stream/Extractor.h"
#include "table/LocaleLookup.h"
#include "table/ResourcePackage.h"
#include "table/ResourcesLoader.h"

#include <QBuffer>
#include <QDomDocument>
#include <QtTest>

#include <quazip/quazip.h>

#include <functional>

using namespace fixture;

/*
 * Packages of small valid parts that multiply each other: launchers and the targets of their icons, labels and states,
 * names and the texts rendered with them, members and their inflated content. Each is loaded in a process of its own,
 * and every call that a host makes has to stay within the bounds for any input.
 */

namespace {

QList<ApkLauncherInfo> asked(const QByteArray &bytes)
{
    PackageDevice device(bytes);
    return ApkFile(&device).getLauncherInfo(false);
}

QList<ApkLauncherInfo> asked(const QByteArray &resources, const QByteArray &document,
                             const QVector<Member> &members = {})
{
    return asked(package(resources, document, members));
}

const QString application = QStringLiteral("application");
const QString manifest = QStringLiteral("manifest");
const QString icon = QStringLiteral("icon");
const QString label = QStringLiteral("label");
const QString enabled = QStringLiteral("enabled");

using AttributesOf = std::function<QVector<Attribute>(int)>;

// A manifest of launchers. Each has an activity with its own attributes.
QByteArray launchers(int count, const AttributesOf &attributesOf, const QString &package = QStringLiteral("org.x"),
                     Encoding encoding = Encoding::Utf8)
{
    const QString activity = QStringLiteral("activity");
    XmlBuilder builder = XmlBuilder::manifest(encoding);
    builder.start(manifest, {plainText(QStringLiteral("package"), package)}).start(application);
    for (int i = 0; i < count; ++i)
        builder.start(activity, attributesOf(i)).launcherFilter().end(activity);
    return builder.end(application).end(manifest).build();
}

// The same, with one attribute each. The attribute of launcher n refers to entry n of the first type.
QByteArray launchersThatRefer(int count, const QString &attribute)
{
    return launchers(count,
                     [attribute](int i) { return QVector<Attribute>{androidReference(attribute, 0x7f010001 + i)}; });
}

// The same, with different texts that all refer to the first entry, because a number may start with zeros.
QByteArray launchersThatReferToOne(int count, const QString &attribute)
{
    return launchers(count, [attribute](int i) {
        const QString zeros(1 + i % 100, QLatin1Char('0'));
        const QString text = QStringLiteral("@string/") + zeros + QString::number(4294967296 + i);
        return QVector<Attribute>{androidText(attribute, text)};
    });
}

QByteArray localeOf(int number)
{
    const char language[] = {char('a' + number % 26), char('a' + number / 26 % 26), 0};
    const char country[] = {char('a' + number / 676 % 26), char('a' + number / 17576 % 26), 0};
    return ConfigBuilder(16).locale(language, country).build();
}

// Type chunks in which the entry @p entry has a string in each of @p count locales.
void addLocales(PackageBuilder &package, int entry, int count)
{
    for (int i = 0; i < count; ++i)
        package.type(TypeBuilder(1, localeOf(i)).value(entry, String, 0));
}

QByteArray table(const PackageBuilder &package, const QStringList &strings = {QStringLiteral("text")})
{
    return TableBuilder().strings(strings).package(package).build();
}

PackageBuilder strings()
{
    return PackageBuilder().types({QStringLiteral("string")});
}

// Entries that each refer to the next.
QByteArray chain(int length)
{
    TypeBuilder type(1);
    for (int i = 0; i < length; ++i)
        type.value(i, Reference, 0x7f010000 + i + 1);
    return table(strings().type(type));
}

// Entries with a locale of their own. The default of each refers to one entry with many locales.
QByteArray copiesOfManyLocales(int entries, int locales)
{
    PackageBuilder package = strings();
    TypeBuilder own(1, ConfigBuilder(16).locale("zz", "zz").build());
    TypeBuilder byDefault(1);
    for (int i = 0; i < entries; ++i) {
        own.value(i + 1, String, 0);
        byDefault.value(i + 1, Reference, 0x7f010000);
    }
    package.type(own).type(byDefault);
    addLocales(package, 0, locales);
    return table(package);
}

QByteArray manyLocales(int locales)
{
    PackageBuilder package = strings();
    addLocales(package, 0, locales);
    return table(package);
}

ApkResources loaded(const QByteArray &bytes)
{
    SequentialDevice device(bytes);
    ApkResources resources;
    if (!resources.load(&device))
        qFatal("no table");
    return resources;
}

void addRow(const char *name, const QByteArray &resources, const QByteArray &document,
            const QVector<Member> &members = {})
{
    qint64 inflated = resources.size() + document.size();
    for (const Member &member : members)
        inflated += member.content.size();
    QTest::newRow(name) << package(resources, document, members) << inflated;
}

} // namespace

class TestHostilePackages : public QObject
{
    Q_OBJECT

private slots:
    void boundsHold_data();
    void boundsHold();

    void localesUpToTheBudget();
    void labelsUpToTheBudget();
    void iconsUpToTheBudget();
    void iconReferencesThatWaitForTheBudget();
    void picturesBesideALargeManifest();
    void picturesBesideAManifestWithoutRoom();
    void statesUpToTheBudget();
    void classesUpToTheBudget();
};

void TestHostilePackages::boundsHold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("inflated");

    constexpr int Count = 5000;
    const QByteArray chainOfAll = chain(Count);
    const QByteArray locales = manyLocales(20000);
    const QByteArray copies = copiesOfManyLocales(Count, 10000);
    for (const QString &attribute : {icon, label, enabled}) {
        const auto name = [&attribute](const char *text) { return QByteArray(text) + qPrintable(attribute); };
        const QByteArray referring = launchersThatRefer(Count, attribute);
        addRow(name("chain that every launcher starts elsewhere in: ").constData(), chainOfAll, referring);
        addRow(name("texts for one entry of many locales: ").constData(), locales,
               launchersThatReferToOne(Count, attribute));
        addRow(name("default of many locales, and an own one: ").constData(), copies, referring);
    }
    // Strings that look like references are followed as such. Each is a different text for one resource with many
    // values.
    PackageBuilder aliases = strings();
    QStringList texts{QStringLiteral("nothing")};
    for (int i = 0; i < 10000; ++i) {
        texts.append(QStringLiteral("@string/") + QString(i % 100, QLatin1Char('0')) + QString::number(4294967296 + i));
        aliases.type(TypeBuilder(1, localeOf(i)).value(0, String, 0).value(1, String, i + 1));
    }
    addRow("texts in the table for one entry of many values", table(aliases, texts), launchersThatRefer(1, icon));

    QStringList types;
    for (int i = 0; i < 170000; ++i)
        types.append(QString::number(i, 36));
    addRow("pool of many types", table(PackageBuilder().types(types)), launchersThatReferToOne(Count, icon));

    TableBuilder packages;
    for (int i = 0; i < ResourcesLoader::MaxPackages; ++i)
        packages.package(PackageBuilder(0x1000 + i, QString::number(i)));
    addRow("references to none of many packages", packages.build(), launchersThatRefer(Count, icon));

    // As many nodes and labels as allowed, and pictures until the budget is used up.
    QVector<Member> pictures;
    for (int i = 0; i < 20; ++i)
        pictures.append({QStringLiteral("%1.png").arg(i), blackPng(1024, 1024)});
    const auto largest = [](int i) {
        QVector<Attribute> attributes{androidText(icon, QStringLiteral("%1.png").arg(i)),
                                      androidReference(label, 0x7f010001 + i)};
        for (int j = 0; j < 240 && i < 400; ++j)
            attributes.append(plainText(QString::number(j), QString::number(240 * i + j, 36)));
        return attributes;
    };
    addRow("a large manifest, many labels and large pictures", copiesOfManyLocales(500, 200), launchers(450, largest),
           pictures);

    addRow("classes with a long package name", emptyTable(),
           launchers(
               Count, [](int i) { return QVector<Attribute>{androidText(QStringLiteral("name"), QString::number(i))}; },
               QString(30000, QLatin1Char('p'))));
    addRow("icons with long paths", table(strings(), {}), launchers(Count, [](int i) {
               return QVector<Attribute>{androidText(icon, QString::number(i).repeated(50))};
           }));

    QVector<Member> members;
    for (int i = 0; i < 9000; ++i)
        members.append({QString::number(i), QByteArray()});
    const auto missing = [](int i) { return QVector<Attribute>{androidText(icon, QStringLiteral("-%1").arg(i))}; };
    const auto there = [](int i) { return QVector<Attribute>{androidText(icon, QString::number(i))}; };
    addRow("many members, none of them the icons", emptyTable(), launchers(Count, missing), members);
    addRow("many members, all of them icons", emptyTable(), launchers(Count, there), members);

    addRow("table of nothing, inflated", chunk(0x7777, QByteArray(), QByteArray(int(Extractor::MaxBytes), '\0')),
           smallManifest());
    const QByteArray none = chunk(0x7777).repeated(1 << 23);
    addRow("chunks of nothing, inflated: table", chunk(ChunkType::Table, Bytes().u32(1).data(), none), smallManifest());
    addRow("chunks of nothing, inflated: document", emptyTable(), chunk(ChunkType::Xml, QByteArray(), none));
    TypeBuilder type(1, ConfigBuilder(4).build());
    addRow("chunks of no values, inflated", table(strings().chunk(type.build().repeated(1 << 20))), smallManifest());
    for (int i = 0; i < 1000; ++i)
        type.value(999 - i, Integer, i);
    addRow("values, inflated", table(strings().chunk(type.build().repeated(5000))), smallManifest());
}

void TestHostilePackages::boundsHold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, inflated);
    const QString excess = Bounds::excess(cost([&] { asked(bytes); }), bytes.size(), inflated);
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

void TestHostilePackages::localesUpToTheBudget()
{
    // Two own values, and those of another resource. Each value costs one unit there, and one more where it is added.
    const auto count = [](int locales) {
        return loaded(copiesOfManyLocales(1, locales)).lookupByLocale(QStringLiteral("@string/1"), 1).size();
    };
    constexpr qint64 References = 2 * 9 * LocaleLookup::CharacterWork;
    constexpr int Most = int((LocaleLookup::MaxWork - References) / LocaleLookup::ValueWork - 2) / 2;
    QCOMPARE(count(Most), Most + 1);
    QCOMPARE(count(Most + 1), 0);
}

void TestHostilePackages::labelsUpToTheBudget()
{
    // A label in many locales, followed by a label in a single locale.
    const auto labels = [](int locales) {
        PackageBuilder package = strings();
        addLocales(package, 0, locales - 1);
        package.type(TypeBuilder(1, ConfigBuilder(16).locale("zz", "zz").build()).value(0, Reference, 0x7f010000))
            .type(TypeBuilder(1).value(1, String, 0));
        return asked(table(package),
                     launchers(2, [](int i) { return QVector<Attribute>{androidReference(label, 0x7f010000 + i)}; }));
    };
    // The first label refers to itself, so that each level has a map. The rest of the budget is for the second label
    // and the classes.
    constexpr int Levels = 6;
    constexpr qint64 Values = LauncherFinder::MaxBytes / LocaleLookup::ValueBytes;
    constexpr int Most = int((Values - 2) / Levels);
    static_assert(Values - 2 < Levels * (Most + 1) && Values < Levels * (Most + 1));
    QCOMPARE(labels(Most).at(0).labels().size(), Most);
    QCOMPARE(labels(Most).at(1).label(QString()), QStringLiteral("text"));
    QCOMPARE(labels(Most + 1).size(), 2);
    QCOMPARE(labels(Most + 1).at(1).labels().size(), 0);
}

void TestHostilePackages::iconsUpToTheBudget()
{
    // The first icon is a path of this length without a member; the second icon is a picture.
    const QString path = QStringLiteral("icon.png");
    const QByteArray png = picture(7, 7, 0);
    QByteArray bytes = zip({{path, png}}, Compression::Stored);
    const auto widthOfSecond = [&](Budget budget, int length, bool isReference) {
        const PackageBuilder package = strings().type(TypeBuilder(1).value(0, String, 0).value(1, String, 1));
        const QString missing(length, QLatin1Char('p'));
        const ApkResources resources = loaded(table(package, {missing, path}));
        QBuffer buffer(&bytes);
        QuaZip archive(&buffer);
        if (!archive.open(QuaZip::mdUnzip))
            qFatal("no archive");
        IconLookup lookup(resources, &archive, budget);
        lookup.images(isReference ? QStringLiteral("@string/0") : missing);
        return lookup.images(QStringLiteral("@string/1")).value(0).width();
    };
    constexpr int Length = 1000;
    const int reference = int(QStringLiteral("@string/0").size());
    const qint64 held = IconLookup::ValueBytes + 2 * Length;
    for (const bool isReference : {true, false}) {
        const qint64 ofPictures = 2 * ArchiveImages::MemberWork + png.size() + PictureFile(png).decodingBytes();
        const qint64 work = 4 * Budget::ValueWork + 2 * Budget::LookupWork + (isReference ? reference : Length) + Length
                            + reference + path.size() + ofPictures;
        QCOMPARE(widthOfSecond(Budget(work, held), Length, isReference), 7);
        QCOMPARE(widthOfSecond(Budget(work - 1, held), Length, isReference), 0);
        QCOMPARE(widthOfSecond(Budget(work + 1, held), Length + 1, isReference), 0);
    }
}

void TestHostilePackages::iconReferencesThatWaitForTheBudget()
{
    // An icon of two resources: the first has three texts, the second a path.
    const QString path = QStringLiteral("icon.png");
    QByteArray bytes = zip({{path, picture(7, 7, 0)}});
    const auto iconsBesideTexts = [&](int length) {
        PackageBuilder package = strings();
        package.type(TypeBuilder(1, localeOf(1)).value(0, Reference, 0x7f010001));
        package.type(TypeBuilder(1, localeOf(2)).value(0, Reference, 0x7f010002));
        addLocales(package, 1, 3);
        package.type(TypeBuilder(1).value(2, String, 1));
        const ApkResources resources = loaded(table(package, {QString(length, QLatin1Char('p')), path}));
        QBuffer buffer(&bytes);
        QuaZip archive(&buffer);
        if (!archive.open(QuaZip::mdUnzip))
            qFatal("no archive");
        Budget budget(LauncherFinder::MaxWork, 3000);
        return IconLookup(resources, &archive, budget).images(QStringLiteral("@string/0")).size();
    };
    QCOMPARE(iconsBesideTexts(100), 1);
    QCOMPARE(iconsBesideTexts(1000), 0);
}

void TestHostilePackages::picturesBesideALargeManifest()
{
    // A picture that uses all of the remaining budget, in a manifest of @p nodes nodes.
    const auto isDecoded = [](int nodes) {
        constexpr int Attributes = 200;
        constexpr int NodesOfManifest = 3;
        constexpr int NodesOfLauncher = 6; // in addition to the attributes of the activity
        const int full = (nodes - NodesOfManifest) / (Attributes + NodesOfLauncher);
        const int rest = (nodes - NodesOfManifest) % (Attributes + NodesOfLauncher) - NodesOfLauncher;
        const QByteArray document = launchers(full + 1, [full, rest](int i) {
            QVector<Attribute> attributes{androidText(icon, icon)};
            while (attributes.size() < (i < full ? Attributes : rest))
                attributes.append(plainText(QString::number(attributes.size()), icon));
            return attributes;
        });
        return !asked(emptyTable(), document, {{icon, blackPng(4096, 4096)}}).at(0).icons().isEmpty();
    };
    const qint64 path = IconLookup::ValueBytes + 2 * icon.size();
    const qint64 rest = LauncherFinder::MaxBytes - PictureDecoder::MaxBytes - path;
    const int most = LauncherFinder::FreeNodes + int(rest / LauncherFinder::NodeBytes);
    QVERIFY(isDecoded(most));
    QVERIFY(!isDecoded(most + 1));
}

void TestHostilePackages::picturesBesideAManifestWithoutRoom()
{
    // Long classes of launchers without icons come first. The manifest is counted before the icon of the last launcher.
    constexpr int First = 600;
    constexpr int Length = 1 << 14;
    const auto isDecoded = [](int attributes) {
        const auto attributesOf = [attributes](int i) {
            QVector<Attribute> all{androidText(QStringLiteral("name"), QStringLiteral(".A"))};
            if (i == First)
                all.append(androidText(icon, icon));
            while (all.size() < attributes)
                all.append(plainText(QString::number(all.size()), icon));
            return all;
        };
        const QByteArray document = launchers(First + 1, attributesOf, QString(Length - 2, QLatin1Char('p')));
        return !asked(emptyTable(), document, {{icon, picture(7, 7, 0)}}).value(First).icons().isEmpty();
    };
    constexpr qint64 Rest = LauncherFinder::MaxBytes - qint64(First) * Length * LauncherFinder::ClassCharacterBytes;
    constexpr int Attributes = int((LauncherFinder::FreeNodes + Rest / LauncherFinder::NodeBytes) / First) + 1;
    QVERIFY(isDecoded(Attributes / 2));
    QVERIFY(!isDecoded(Attributes));
}

void TestHostilePackages::statesUpToTheBudget()
{
    // The first entry has three states, the second one hides the launchers that refer to it.
    PackageBuilder package = strings();
    for (int i = 0; i < 3; ++i)
        package.type(TypeBuilder(1, localeOf(i)).value(0, Boolean, 0));
    package.type(TypeBuilder(1).value(1, Boolean, 0));
    const ApkResources resources = loaded(table(package));
    const auto isSecondShown = [&resources](Budget budget, const QString &first) {
        VisibilityRules rules(resources, budget);
        QDomDocument document;
        const QDomElement parent = document.createElement(application);
        bool isShown = false;
        for (const QString &reference : {first, QStringLiteral("@string/1")}) {
            QDomElement activity = document.createElement(QStringLiteral("activity"));
            activity.setAttributeNS(androidNamespace, QStringLiteral("android:enabled"), reference);
            isShown = rules.isShown(activity, parent);
        }
        return isShown;
    };
    const QString first = QStringLiteral("@string/0");
    const qint64 work = 4 * VisibilityRules::StateWork + 2 * first.size();
    QVERIFY(!isSecondShown(Budget(work, 0), first));
    QVERIFY(isSecondShown(Budget(work - 1, 0), first));
    // The text of a reference may be too long. Then no later value hides the launcher.
    const QString longest = QStringLiteral("@string/") + QString(int(work), QLatin1Char('0'));
    QVERIFY(isSecondShown(Budget(work, 0), longest));
    QVERIFY(!isSecondShown(Budget(work + longest.size(), 0), longest));
}

void TestHostilePackages::classesUpToTheBudget()
{
    constexpr int Length = 1 << 14;
    constexpr int Most = int(LauncherFinder::MaxBytes / (LauncherFinder::ClassCharacterBytes * Length));
    static_assert(7 * Most + 10 < LauncherFinder::FreeNodes, "the manifest holds nothing");
    const auto found = [](int count) {
        const QByteArray document = launchers(
            count, [](int) { return QVector<Attribute>{androidText(QStringLiteral("name"), QStringLiteral(".A"))}; },
            QString(Length - 2, QLatin1Char('p')));
        return asked(emptyTable(), document).size();
    };
    QCOMPARE(found(Most), Most);
    QCOMPARE(found(Most + 1), Most);
}

QTEST_GUILESS_MAIN(TestHostilePackages)
#include "tst_hostile_packages.moc"
