// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "Bytes.h"
#include "Cost.h"
#include "Devices.h"
#include "EncodedTable.h"
#include "LogCapture.h"
#include "RawZip.h"
#include "archive/ZipArchive.h"
#include "format/AndroidAttributes.h"
#include "normalize/IconMembers.h"
#include "picture/PictureFile.h"

#include <SorrelKit/PackageNormalizer.h>

#include <QDir>
#include <QDomDocument>
#include <QTemporaryDir>
#include <QtTest>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

using namespace fixture;
using SorrelKit::IconMembers;
using SorrelKit::PackageNormalizer;

namespace {

const QString tableName = QStringLiteral("resources.arsc");
const QString manifestName = QStringLiteral("AndroidManifest.xml");
const TableEncoding everyEncoding[] = {TableEncoding::Dense, TableEncoding::ShortOffsets, TableEncoding::Sparse};

enum StringNumber : int {
    English,
    German,
    SmallIcon,
    LargeIcon,
    XmlIcon,
    NoIcon,
    OtherPicture,
    TableItself,
};

// A label, an icon in several densities, and an icon that refers to it and to itself.
QByteArray table()
{
    const auto density = [](int value) { return ConfigBuilder().density(value).build(); };
    return TableBuilder()
        .strings({"Notes", "Notizen", "res/small.png", "res/large.webp", "res/icon.xml", "res/missing.png",
                  "res/other.png", tableName})
        .package(PackageBuilder()
                     .types({"string", "drawable"})
                     .keys({"name", "icon", "other"})
                     .type(TypeBuilder(1).value(0, String, English).value(3, String, OtherPicture))
                     .type(TypeBuilder(1, ConfigBuilder().locale("de").build()).value(0, String, German))
                     .type(TypeBuilder(2, density(160)).value(0, String, SmallIcon).value(1, Reference, 0x7f020000))
                     .type(TypeBuilder(2, density(320)).value(0, String, LargeIcon).value(1, Reference, 0x7f020001))
                     .type(TypeBuilder(2, density(480)).value(0, String, XmlIcon))
                     .type(TypeBuilder(2, density(640)).value(0, String, NoIcon))
                     .type(TypeBuilder(2, density(120)).value(0, String, TableItself)))
        .build();
}

/// A manifest whose application and launcher have these attributes.
QByteArray manifest(const QVector<Attribute> &application = {androidReference("icon", 0x7f020001)},
                    const QVector<Attribute> &activity = {})
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start("manifest", {plainText("package", "org.example.app")})
        .empty("uses-sdk", {androidValue("minSdkVersion", Integer, 26)})
        .start("application", application)
        .start("activity",
               QVector<Attribute>{androidText("name", ".Main"), androidReference("label", 0x7f010000)} + activity)
        .launcherFilter()
        .end("activity")
        .end("application")
        .end("manifest");
    return builder.build();
}

QVector<Member> pictures()
{
    return {{"res/small.png", picture(2, 2, 0x102030)},
            {"res/large.webp", picture(4, 4, 0x102030, "WEBP")},
            {"res/icon.xml", smallManifest()},
            {"res/other.png", picture(3, 3, 0x102030)},
            {"classes.dex", "dex"}};
}

/// The same package in the given form.
QByteArray packageIn(TableEncoding encoding, bool isCompact = false)
{
    return package(encodedTable(table(), encoding, isCompact), manifest(), pictures());
}

/// All answers of @p apk about the package and its launchers; icons as their pixels.
QStringList answers(ApkFile &apk)
{
    QStringList lines{apk.mainPackage(), QString::number(apk.minSdkVersion())};
    for (const bool includeDisabled : {false, true}) {
        for (const ApkLauncherInfo &launcher : apk.getLauncherInfo(includeDisabled)) {
            lines.append(launcher.launcherPackage() + ' ' + launcher.launcherClass());
            const QMap<QString, QString> labels = launcher.labels();
            for (auto it = labels.cbegin(); it != labels.cend(); ++it)
                lines.append(it.key() + ": " + it.value());
            for (const QImage &icon : launcher.icons()) {
                const QImage pixels = icon.convertToFormat(QImage::Format_ARGB32);
                const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(pixels.constBits()),
                                                           int(pixels.sizeInBytes()));
                lines.append(QString("%1 x %2: ").arg(icon.width()).arg(icon.height()) + bytes.toHex());
            }
        }
    }
    return lines << apk.getManifest().toString() << QString::number(apk.getError());
}

/// Every value of every resource.
QStringList values(const ApkResources &resources)
{
    constexpr int LastEntry = 400;
    QStringList lines;
    for (int type = 1; resources.refToString(0x7f000000 | type << 16).contains('/'); ++type) {
        for (int entry = 0; entry <= LastEntry; ++entry) {
            const QString reference = resources.refToString(0x7f000000 | type << 16 | entry);
            lines.append(resources.lookupAll(reference).join('|'));
            const QMap<QString, QString> byLocale = resources.lookupByLocale(reference, 5);
            for (auto it = byLocale.cbegin(); it != byLocale.cend(); ++it)
                lines.append(it.key() + ": " + it.value());
        }
    }
    return lines;
}

QStringList answersTo(const QByteArray &bytes)
{
    PackageDevice device(bytes);
    ApkFile apk(&device);
    return answers(apk);
}

/// A table of one type, with a text for each resource.
QByteArray tableOf(const QStringList &texts)
{
    TypeBuilder type(1);
    for (int i = 0; i < texts.size(); ++i)
        type.value(i, String, i);
    return TableBuilder().strings(texts).package(PackageBuilder().types({"drawable"}).type(type)).build();
}

/// A normalizer on @p bytes, and queries about its result.
struct Normalized {
    explicit Normalized(const QByteArray &package) : device(package), normalizer(&device) {}

    QStringList members() { return membersOf(normalizer.normalized()); }
    QByteArray member(const QString &name)
    {
        ZipArchive archive(normalizer.normalized());
        return archive.open() ? archive.file(name, 1 << 27) : QByteArray();
    }
    QStringList answers() { return ::answers(*normalizer.apkFile()); }

    static QStringList membersOf(const QByteArray &archive)
    {
        ZipArchive files(archive);
        return files.open() ? files.names() : QStringList{"no archive"};
    }

    PackageDevice device;
    PackageNormalizer normalizer;
};

} // namespace

class TestPackageNormalizer : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_log = std::make_unique<LogCapture>(); }
    void cleanup() { m_log.reset(); }

    void aClassicPackageIsHandedOutAsItIs();
    void packagesInOtherFormsAnswerAsTheClassicOne();
    void aPackageMayHaveNoTable();
    void aManifestNeedNotSayThatItIsOne();
    void archivesThatAndroidTakes_data();
    void archivesThatAndroidTakes();
    void aSetAnswersAsItsBase();
    void aSetWithoutABaseIsNoPackage();
    void aSparseBuildAnswersAsTheDenseOne_data();
    void aSparseBuildAnswersAsTheDenseOne();
    void everySampleAnswersTheSameInEveryForm_data();
    void everySampleAnswersTheSameInEveryForm();

    void theArchiveHasTheMembersThatAreNeeded();
    void theArchiveIsTheSameOnEachCall();
    void theArchiveIsMadeOfAClassicPackageToo();
    void theTableOfTheArchiveIsTheRewrittenOne();
    void picturesOfEveryIconAreThere();
    void anIconMayBeNamedByItsPath();
    void namesMayBeInAnyScript();
    void whatIsNoLaunchersIconIsNotThere();
    void referencesThatLeadBackEnd();
    void aManifestMayBeMissing();
    void aDamagedManifestStays();
    void aDamagedPoolStays();

    void filesAreReadByName();
    void devicesAreClosedAgain();
    void thePackageOutlivesTheNormalizer();
    void theOriginalIsReadFromTheDevice();

    // every failure
    void couldNotOpen_data();
    void couldNotOpen();
    void anOpenDeviceIsRefused();
    void sequentialDevicesAreRefused();
    void damagedTables();
    void tablesThatLibsorrelAloneReads();

    // the ceilings
    void manifestsUpToTheCeiling();
    void iconsAreThoseThatWereWritten();
    void picturesUpToTheCeiling();
    void pathsUpToTheCeiling();
    void pathLengthsUpToTheCeiling();
    void referencesUpToTheBudget();
    void charactersUpToTheBudget();
    void aHostileTableIsAnswered();

    void everyByteMayBeDamaged();

private:
    std::unique_ptr<LogCapture> m_log; ///< captures libsorrel's messages about damaged packages
};

void TestPackageNormalizer::aClassicPackageIsHandedOutAsItIs()
{
    const QByteArray bytes = packageIn(TableEncoding::Dense);
    Normalized it(bytes);
    QVERIFY(!it.normalizer.isNeeded());
    QCOMPARE(it.normalizer.error().code(), SorrelKit::Error::Code::None);
    QCOMPARE(it.normalizer.error().message(), QString("no error"));
    const std::unique_ptr<ApkFile> apk = it.normalizer.apkFile();
    QVERIFY(apk->open());
    QVERIFY(it.device.isOpen());
    QCOMPARE(answers(*apk), answersTo(bytes));
}

void TestPackageNormalizer::packagesInOtherFormsAnswerAsTheClassicOne()
{
    const QStringList expected = answersTo(packageIn(TableEncoding::Dense));
    QVERIFY(expected.contains("de: Notizen"));
    QCOMPARE(expected.filter(" x ").size(), 4); // two pictures, asked for twice
    QCOMPARE(expected.last(), QString("0"));
    for (const bool isCompact : {false, true}) {
        for (const TableEncoding encoding : everyEncoding) {
            Normalized it(packageIn(encoding, isCompact));
            QCOMPARE(it.normalizer.isNeeded(), encoding != TableEncoding::Dense || isCompact);
            QCOMPARE(it.answers(), expected);
            QCOMPARE(it.normalizer.error().code(), SorrelKit::Error::Code::None);
            if (it.normalizer.isNeeded())
                QCOMPARE(answersTo(packageIn(encoding, isCompact)).last(), QString("3"));
        }
    }
}

void TestPackageNormalizer::aPackageMayHaveNoTable()
{
    const QByteArray document = manifest({androidText("icon", "res/small.png"), androidText("label", "Plain")});
    const QByteArray bytes = zip(QVector<Member>{{manifestName, document}} + pictures());
    QCOMPARE(answersTo(bytes).last(), QString("2"));

    Normalized it(bytes);
    QVERIFY(it.normalizer.isNeeded());
    QCOMPARE(it.members(), (QStringList{tableName, manifestName, "res/small.png"}));
    const std::unique_ptr<ApkFile> apk = it.normalizer.apkFile();
    QVERIFY(apk->resources().isValid());
    QCOMPARE(apk->mainPackage(), QString("org.example.app"));
    QCOMPARE(apk->minSdkVersion(), 26);
    QCOMPARE(apk->getLauncherInfo(false).size(), 1);
    QCOMPARE(apk->getLauncherInfo(false).first().icons().size(), 1);
    QCOMPARE(apk->getError(), 0);
}

void TestPackageNormalizer::aManifestNeedNotSayThatItIsOne()
{
    QByteArray document = manifest();
    poke16(document, 0, 0);
    const QByteArray bytes = package(table(), document, pictures());
    QCOMPARE(answersTo(bytes).first(), QString()); // libsorrel finds no manifest in it
    Normalized it(bytes);
    QVERIFY(it.normalizer.isNeeded());
    QCOMPARE(it.answers(), answersTo(packageIn(TableEncoding::Dense)));
    QCOMPARE(it.member(manifestName), manifest());

    // Android looks at no type. Too few bytes have none.
    poke16(document, 0, 1);
    QVERIFY(Normalized(package(table(), document)).normalizer.isNeeded());
    QVERIFY(!Normalized(package(table(), QByteArray(7, '\0'))).normalizer.isNeeded());
    QVERIFY(!Normalized(package(table(), QByteArray())).normalizer.isNeeded());
}

void TestPackageNormalizer::archivesThatAndroidTakes_data()
{
    constexpr int UnknownMethod = 1234;
    constexpr int LongestComment = 0xffff;
    const QVector<RawMember> members{{manifestName.toLatin1(), smallManifest()}, {tableName.toLatin1(), emptyTable()}};
    const QByteArray good = rawZip(members);
    const int endAt = int(good.size()) - ZipEndSize;
    QTest::addColumn<QByteArray>("bytes");
    QVector<RawMember> changed = members;
    changed[0].localMethod = UnknownMethod;
    QTest::newRow("another method in the header of the manifest") << rawZip(changed);
    changed = members;
    changed[1].localMethod = UnknownMethod;
    QTest::newRow("another method in the header of the table") << rawZip(changed);
    changed = members;
    changed[0].method = UnknownMethod;
    QTest::newRow("an unknown method of the manifest") << rawZip(changed);
    changed = members;
    changed[1].method = UnknownMethod;
    QTest::newRow("an unknown method of the table") << rawZip(changed);
    QByteArray disks = good;
    poke16(disks, endAt + 4, 7);
    QTest::newRow("numbers of disks") << disks;
    QByteArray gap = good;
    QTest::newRow("bytes behind the directory") << gap.insert(endAt, "gap");
    QByteArray comment = good + QByteArray(LongestComment, 'c');
    poke16(comment, endAt + 20, LongestComment);
    QTest::newRow("the longest comment") << comment;
    QByteArray sizes = good;
    const int recordAt = int(sizes.indexOf("PK\1\2"));
    poke32(sizes, 18, 5);
    poke32(sizes, recordAt + 20, 5);
    QTest::newRow("two sizes of the stored manifest") << sizes;
}

void TestPackageNormalizer::archivesThatAndroidTakes()
{
    QFETCH(QByteArray, bytes);
    const LogCapture log;
    PackageDevice original(bytes);
    ApkFile refusing(&original);
    QVERIFY(!refusing.open() || refusing.mainPackage().isEmpty());

    PackageDevice device(bytes);
    const PackageNormalizer normalizer(&device);
    QVERIFY(normalizer.isNeeded());
    QVERIFY(!normalizer.error());
    const std::unique_ptr<ApkFile> apk = normalizer.apkFile();
    QVERIFY(apk->open());
    QCOMPARE(apk->mainPackage(), QStringLiteral("org.example.app"));
    QCOMPARE(apk->getError(), 0);
}

void TestPackageNormalizer::aSetAnswersAsItsBase()
{
    const QStringList expected = answersTo(packageIn(TableEncoding::Dense));
    XmlBuilder split = XmlBuilder::manifest();
    split.empty(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x")),
                                             plainText(QStringLiteral("split"), QStringLiteral("config.de"))});
    for (const TableEncoding encoding : everyEncoding) {
        for (const Compression compression : {Compression::Stored, Compression::Deflated}) {
            Normalized it(zip({{"split.apk", package(emptyTable(), split.build())}, {"base.apk", packageIn(encoding)}},
                              compression));
            QVERIFY(it.normalizer.isNeeded());
            QCOMPARE(it.normalizer.error().code(), SorrelKit::Error::Code::None);
            QCOMPARE(answers(*it.normalizer.apkFile()), expected);
            QVERIFY(!it.device.isOpen());
        }
    }
    Normalized damaged(zip({{"base.apk", package(emptyTable().chopped(1), smallManifest())}}));
    QVERIFY(!damaged.normalizer.isNeeded());
    QCOMPARE(damaged.normalizer.error().code(), SorrelKit::Error::Code::BadTable);
}

void TestPackageNormalizer::aSetWithoutABaseIsNoPackage()
{
    Normalized it(zip({{"base.apk", QByteArray("no package")}}));
    QVERIFY(!it.normalizer.isNeeded());
    const std::unique_ptr<ApkFile> apk = it.normalizer.apkFile();
    QVERIFY(apk->getLauncherInfo(false).isEmpty());
    QCOMPARE(apk->getError(), 2);
}

void TestPackageNormalizer::aSparseBuildAnswersAsTheDenseOne_data()
{
    QTest::addColumn<QString>("build");
    QTest::newRow("linked") << "babel.sparse.apk";
    QTest::newRow("optimized") << "babel.optimized.apk";
}

void TestPackageNormalizer::aSparseBuildAnswersAsTheDenseOne()
{
    QFETCH(QString, build);
    const QDir samples(SORREL_SAMPLES_DIR);
    ApkFile dense(samples.filePath("babel.aapt2.apk"));
    QCOMPARE(dense.getLauncherInfo(false).isEmpty(), false);
    ApkFile refused(samples.filePath(build));
    QVERIFY(!refused.resources().isValid());

    const PackageNormalizer normalizer(samples.filePath(build));
    QVERIFY(normalizer.isNeeded());
    const std::unique_ptr<ApkFile> sparse = normalizer.apkFile();
    QCOMPARE(answers(*sparse), answers(dense));
    QVERIFY(values(dense.resources()).filter("|").size() > 1);
    // The optimizer changes only the paths.
    if (build == "babel.sparse.apk")
        QCOMPARE(values(sparse->resources()), values(dense.resources()));
    else
        QCOMPARE(values(sparse->resources()).size(), values(dense.resources()).size());
}

void TestPackageNormalizer::everySampleAnswersTheSameInEveryForm_data()
{
    QTest::addColumn<QString>("package");
    for (const char *app : {"atlas", "kiosk", "notes", "toolbox"}) {
        for (const char *compiler : {"aapt", "aapt2"})
            QTest::addRow("%s, %s", app, compiler) << QString("%1.%2.apk").arg(app, compiler);
    }
}

void TestPackageNormalizer::everySampleAnswersTheSameInEveryForm()
{
    QFETCH(QString, package);
    const QString fileName = QDir(SORREL_SAMPLES_DIR).filePath(package);
    ApkFile original(fileName);
    const QStringList expected = answers(original);
    const QStringList expectedValues = values(original.resources());
    QVERIFY(package.startsWith("kiosk") || !expected.filter(" x ").isEmpty());
    QVERIFY(!PackageNormalizer(fileName).isNeeded());
    ZipArchive archive(fileName);
    QVERIFY(archive.open());
    QVector<Member> others;
    for (const QString &name : archive.names()) {
        if (name != tableName)
            others.append({name, archive.file(name, 1 << 27)});
    }
    const QByteArray wholeTable = archive.file(tableName, 1 << 27);
    for (const bool isCompact : {false, true}) {
        for (const TableEncoding encoding : everyEncoding) {
            const Member rewritten{tableName, encodedTable(wholeTable, encoding, isCompact)};
            Normalized it(zip(others + QVector<Member>{rewritten}, Compression::Stored));
            QCOMPARE(it.normalizer.isNeeded(), encoding != TableEncoding::Dense || isCompact);
            const std::unique_ptr<ApkFile> apk = it.normalizer.apkFile();
            QCOMPARE(answers(*apk), expected);
            QCOMPARE(values(apk->resources()), expectedValues);
        }
    }
}

void TestPackageNormalizer::theArchiveHasTheMembersThatAreNeeded()
{
    Normalized it(packageIn(TableEncoding::Sparse));
    QStringList members = it.members();
    members.sort();
    QCOMPARE(members, (QStringList{manifestName, "res/large.webp", "res/small.png", tableName}));
    for (const Member &member : pictures().mid(0, 2))
        QCOMPARE(it.member(member.name), member.content);
    QCOMPARE(it.member(manifestName), manifest());
    // No member is compressed.
    QVERIFY(it.normalizer.normalized().contains(picture(2, 2, 0x102030)));
}

void TestPackageNormalizer::theArchiveIsTheSameOnEachCall()
{
    Normalized one(packageIn(TableEncoding::Sparse));
    Normalized other(packageIn(TableEncoding::ShortOffsets));
    QVERIFY(!one.normalizer.normalized().isEmpty());
    QCOMPARE(one.normalizer.normalized(), one.normalizer.normalized());
    QCOMPARE(one.normalizer.normalized(), other.normalizer.normalized());
}

void TestPackageNormalizer::theArchiveIsMadeOfAClassicPackageToo()
{
    Normalized it(packageIn(TableEncoding::Dense));
    QCOMPARE(it.normalizer.normalized(), Normalized(packageIn(TableEncoding::Sparse)).normalizer.normalized());
    QVERIFY(!it.normalizer.isNeeded());
    Normalized again(it.normalizer.normalized());
    QVERIFY(!again.normalizer.isNeeded());
    QCOMPARE(again.normalizer.normalized(), it.normalizer.normalized());
}

void TestPackageNormalizer::theTableOfTheArchiveIsTheRewrittenOne()
{
    Normalized it(packageIn(TableEncoding::Sparse, true));
    QCOMPARE(it.member(tableName), table());
}

void TestPackageNormalizer::picturesOfEveryIconAreThere()
{
    const auto member = [](int number) { return QString("res/%1.png").arg(number); };
    XmlBuilder builder = XmlBuilder::manifest();
    const auto icon = [&member](int number) { return QVector<Attribute>{androidText("icon", member(number))}; };
    builder.start("manifest", {plainText("package", "org.example.app")})
        .start("application", icon(0))
        .start("activity", icon(1))
        .start("intent-filter", icon(2))
        .empty("action", {androidText("name", "android.intent.action.MAIN")})
        .empty("category", {androidText("name", "android.intent.category.LAUNCHER")})
        .end("intent-filter")
        .end("activity")
        .start("activity-alias", icon(3))
        .launcherFilter()
        .end("activity-alias")
        .start("activity")
        .launcherFilter()
        .end("activity")
        .end("application")
        .end("manifest");
    QVector<Member> members;
    QStringList expected{tableName, manifestName};
    for (int number = 0; number < 4; ++number) {
        members.append({member(number), picture(number + 1, 1, 0)});
        expected.append(member(number));
    }
    const QByteArray bytes = package(encodedTable(table(), TableEncoding::Sparse, false), builder.build(), members);
    Normalized it(bytes);
    QCOMPARE(it.members(), expected);
    QCOMPARE(it.answers(), answersTo(package(table(), builder.build(), members)));
    QCOMPARE(it.normalizer.apkFile()->getLauncherInfo(true).size(), 3);
}

void TestPackageNormalizer::anIconMayBeNamedByItsPath()
{
    const auto withIcon = [](const QString &path) {
        Normalized it(package(table(), manifest({androidText("icon", path)}), pictures()));
        return it.members().mid(2);
    };
    QCOMPARE(withIcon("res/other.png"), QStringList{"res/other.png"});
    QCOMPARE(withIcon("res/none.png"), QStringList());
    QCOMPARE(withIcon(""), QStringList());
    QCOMPARE(withIcon("@"), QStringList());
    QCOMPARE(withIcon(tableName), QStringList());
    QCOMPARE(withIcon(manifestName), QStringList());
}

void TestPackageNormalizer::namesMayBeInAnyScript()
{
    const QString path = QString::fromUtf8("res/значок-图标-😀.png");
    const QByteArray document = manifest({androidText("icon", path)});
    const QVector<Member> members{{tableName, encodedTable(table(), TableEncoding::Sparse, false)},
                                  {manifestName, document},
                                  {path, picture(5, 5, 1)}};
    QBuffer buffer;
    QuaZip archive(&buffer);
    archive.setUtf8Enabled(true); // build tools write UTF-8 names, fixture::zip() uses the encoding of the system
    QVERIFY(archive.open(QuaZip::mdCreate));
    for (const Member &member : members) {
        QuaZipFile file(&archive);
        QVERIFY(file.open(QIODevice::WriteOnly, QuaZipNewInfo(member.name)));
        QCOMPARE(file.write(member.content), qint64(member.content.size()));
    }
    archive.close();

    Normalized it(buffer.data());
    QCOMPARE(it.members(), (QStringList{tableName, manifestName, path}));
    QCOMPARE(it.normalizer.apkFile()->getLauncherInfo(false).first().icons().size(), 1);
}

void TestPackageNormalizer::whatIsNoLaunchersIconIsNotThere()
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start("manifest", {androidText("icon", "res/other.png")})
        .start("application", {androidText("logo", "res/other.png")})
        .empty("service", {androidText("icon", "res/other.png")})
        .empty("meta-data", {androidText("icon", "res/other.png")})
        .end("application")
        .end("manifest");
    Normalized it(package(table(), builder.build(), pictures()));
    QCOMPARE(it.members(), (QStringList{tableName, manifestName}));
}

void TestPackageNormalizer::referencesThatLeadBackEnd()
{
    const QByteArray circle = TableBuilder()
                                  .strings({"res/small.png"})
                                  .package(PackageBuilder()
                                               .types({"drawable"})
                                               .type(TypeBuilder(1)
                                                         .encoding(TableEncoding::Sparse)
                                                         .value(0, Reference, 0x7f010001)
                                                         .value(1, Reference, 0x7f010000)))
                                  .build();
    Normalized it(package(circle, manifest({androidReference("icon", 0x7f010000)}), pictures()));
    QVERIFY(it.normalizer.isNeeded());
    QCOMPARE(it.members(), (QStringList{tableName, manifestName}));
}

void TestPackageNormalizer::aManifestMayBeMissing()
{
    QVERIFY(!Normalized(zip({{"classes.dex", "dex"}})).normalizer.isNeeded()); // no package at all
    Normalized it(zip({{tableName, encodedTable(table(), TableEncoding::Sparse, false)}}));
    QVERIFY(it.normalizer.isNeeded());
    QCOMPARE(it.members(), QStringList{tableName});
    const std::unique_ptr<ApkFile> apk = it.normalizer.apkFile();
    QVERIFY(apk->resources().isValid());
    apk->getManifest();
    QCOMPARE(apk->getError(), 4);
    QCOMPARE(it.normalizer.error().code(), SorrelKit::Error::Code::None);
}

void TestPackageNormalizer::aDamagedManifestStays()
{
    const QByteArray half = manifest().left(manifest().size() / 2);
    Normalized it(package(encodedTable(table(), TableEncoding::Sparse, false), half, pictures()));
    QCOMPARE(it.members(), (QStringList{tableName, manifestName}));
    QCOMPARE(it.member(manifestName), half);
    const std::unique_ptr<ApkFile> apk = it.normalizer.apkFile();
    apk->getManifest();
    QCOMPARE(apk->getError(), 5);
}

void TestPackageNormalizer::aDamagedPoolStays()
{
    QByteArray pool = PoolBuilder().strings({"one"}).build();
    poke32(pool, PoolBuilder::CountAt, -1);
    const QByteArray bytes =
        TableBuilder()
            .chunk(pool)
            .package(PackageBuilder()
                         .types({"string"})
                         .type(TypeBuilder(1).encoding(TableEncoding::Sparse).value(2, Integer, 1)))
            .build();
    Normalized it(package(bytes, manifest(), pictures()));
    QVERIFY(it.normalizer.isNeeded());
    QCOMPARE(it.members(), (QStringList{tableName, manifestName}));
    const std::unique_ptr<ApkFile> apk = it.normalizer.apkFile();
    QVERIFY(!apk->resources().isValid());
    QCOMPARE(apk->getError(), 3);
}

void TestPackageNormalizer::filesAreReadByName()
{
    QTemporaryDir directory;
    const auto written = [&directory](const QString &name, const QByteArray &bytes) {
        QFile file(directory.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
    };
    const QString sparse = written("sparse.apk", packageIn(TableEncoding::Sparse));
    const QString dense = written("dense.apk", packageIn(TableEncoding::Dense));
    const PackageNormalizer needed(sparse);
    QVERIFY(needed.isNeeded());
    QVERIFY(QFile::remove(sparse)); // the table and the manifest are in memory; the pictures are lost
    QCOMPARE(Normalized::membersOf(needed.normalized()), (QStringList{tableName, manifestName}));

    const PackageNormalizer notNeeded(dense);
    QVERIFY(!notNeeded.isNeeded());
    QCOMPARE(answers(*notNeeded.apkFile()), answersTo(packageIn(TableEncoding::Dense)));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList{"dense.apk"});
}

void TestPackageNormalizer::devicesAreClosedAgain()
{
    Normalized it(packageIn(TableEncoding::Sparse));
    QCOMPARE(it.device.timesOpened(), 0);
    QVERIFY(it.normalizer.isNeeded());
    QVERIFY(!it.device.isOpen());
    QVERIFY(it.normalizer.isNeeded());
    QCOMPARE(it.normalizer.error().code(), SorrelKit::Error::Code::None);
    QCOMPARE(it.device.timesOpened(), 1);
    QVERIFY(!it.normalizer.normalized().isEmpty());
    QVERIFY(!it.device.isOpen());
    QCOMPARE(it.device.timesOpened(), 2);
}

void TestPackageNormalizer::thePackageOutlivesTheNormalizer()
{
    std::unique_ptr<ApkFile> apk;
    {
        PackageDevice device(packageIn(TableEncoding::Sparse));
        apk = PackageNormalizer(&device).apkFile();
    }
    QVERIFY(apk->open());
    QCOMPARE(answers(*apk), answersTo(packageIn(TableEncoding::Dense)));
}

void TestPackageNormalizer::theOriginalIsReadFromTheDevice()
{
    PackageDevice device(packageIn(TableEncoding::Dense));
    const std::unique_ptr<ApkFile> apk = PackageNormalizer(&device).apkFile();
    QVERIFY(!device.isOpen());
    QCOMPARE(answers(*apk), answersTo(packageIn(TableEncoding::Dense)));
    QVERIFY(device.isOpen());
}

void TestPackageNormalizer::couldNotOpen_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("missing") << "/nowhere/to/be.apk";
    QTest::newRow("directory") << QDir::tempPath();
    QTest::newRow("no regular file") << "/dev/zero";
    QTest::newRow("no archive") << QCoreApplication::applicationFilePath();
    QTest::newRow("no name") << QString();
}

void TestPackageNormalizer::couldNotOpen()
{
    QFETCH(QString, fileName);
    const PackageNormalizer normalizer(fileName);
    QVERIFY(!normalizer.isNeeded());
    QCOMPARE(normalizer.error().code(), SorrelKit::Error::Code::CannotOpen);
    QCOMPARE(normalizer.error().message(), QString("could not open APK file"));
    QVERIFY(normalizer.normalized().isNull());
    const std::unique_ptr<ApkFile> apk = normalizer.apkFile();
    QVERIFY(!apk->open());
    QCOMPARE(apk->getError(), 1);
    QCOMPARE(apk->getErrorString(), normalizer.error().message());
}

void TestPackageNormalizer::anOpenDeviceIsRefused()
{
    PackageDevice device(packageIn(TableEncoding::Sparse));
    QVERIFY(device.open(QIODevice::ReadOnly));
    const PackageNormalizer normalizer(&device);
    QVERIFY(!normalizer.isNeeded());
    QCOMPARE(normalizer.error().code(), SorrelKit::Error::Code::CannotOpen);
    QVERIFY(normalizer.normalized().isNull());
    QVERIFY(device.isOpen());
    QIODevice *none = nullptr;
    QCOMPARE(PackageNormalizer(none).error().code(), SorrelKit::Error::Code::CannotOpen);
    QCOMPARE(PackageNormalizer(none).apkFile()->open(), false);
}

void TestPackageNormalizer::sequentialDevicesAreRefused()
{
    SequentialDevice device(packageIn(TableEncoding::Sparse));
    device.close();
    const PackageNormalizer normalizer(&device);
    QCOMPARE(normalizer.error().code(), SorrelKit::Error::Code::CannotOpen);
    QVERIFY(!normalizer.isNeeded());
}

// A type with an entry whose header is longer than libsorrel takes.
static QByteArray longHeader()
{
    QByteArray entry(0x8000, '\0');
    poke16(entry, 0, entry.size());
    return TypeBuilder(1).entry(0, entry + Bytes().u16(8).u16(0x1000).u32(1).data()).build();
}

void TestPackageNormalizer::damagedTables()
{
    const QByteArray damaged =
        TableBuilder().strings({}).package(PackageBuilder().types({"string"}).chunk(longHeader())).build();
    Normalized it(package(damaged, manifest(), pictures()));
    QVERIFY(!it.normalizer.isNeeded());
    QCOMPARE(it.normalizer.error().code(), SorrelKit::Error::Code::BadTable);
    QCOMPARE(it.normalizer.error().message(),
             QString("could not parse resources.arsc: damaged entry in resource table"));
    QVERIFY(it.normalizer.normalized().isNull());

    const QByteArray none("no table");
    QCOMPARE(Normalized(package(none, manifest())).normalizer.error().message(),
             QString("could not parse resources.arsc: not a resource table"));
    QCOMPARE(Normalized(package(none, manifest())).answers().last(), QString("3"));
    // With such a table, a manifest that needs changes does not count either.
    QByteArray document = manifest();
    poke16(document, 0, 0);
    QVERIFY(!Normalized(package(none, document)).normalizer.isNeeded());
}

void TestPackageNormalizer::tablesThatLibsorrelAloneReads()
{
    // A bad offset of a pool is a fault here, but libsorrel ignores the offset.
    QByteArray inner = PackageBuilder().types({"string"}).type(TypeBuilder(1).value(0, Integer, 5)).build();
    poke32(inner, PackageBuilder::KeyPoolOffsetAt, 0x7000);
    Normalized it(package(TableBuilder().strings({}).chunk(inner).build(), manifest()));
    QVERIFY(!it.normalizer.isNeeded());
    QCOMPARE(it.normalizer.error().code(), SorrelKit::Error::Code::BadTable);
    const std::unique_ptr<ApkFile> apk = it.normalizer.apkFile();
    QCOMPARE(apk->resources().lookupAll("@string/0"), QStringList{"5"});
    QCOMPARE(apk->getError(), 0);
}

void TestPackageNormalizer::manifestsUpToTheCeiling()
{
    constexpr int Most = 16 << 20;
    const auto withSize = [](int size) {
        QByteArray document = manifest();
        document.append(size - document.size(), '\0'); // after the document, where no reader looks
        return package(encodedTable(table(), TableEncoding::Sparse, false), document, {});
    };
    Normalized most(withSize(Most));
    QCOMPARE(most.members(), (QStringList{tableName, manifestName}));
    QCOMPARE(most.normalizer.apkFile()->mainPackage(), QString("org.example.app"));
    QCOMPARE(Normalized(withSize(Most + 1)).members(), QStringList{tableName});
}

// ApkFile uses the written text of an attribute, other readers use its value.
void TestPackageNormalizer::iconsAreThoseThatWereWritten()
{
    const Member written{"res/written.png", picture(3, 3, 0)};
    const Member value{"res/value.png", picture(5, 5, 0)};
    const auto widthOfIcon = [&](const Attribute &icon, const QByteArray &resources) {
        Normalized it(package(resources, manifest({writtenAs(icon, written.name)}), {written, value}));
        const QList<QImage> icons = it.normalizer.apkFile()->getLauncherInfo(true).constFirst().icons();
        return icons.isEmpty() ? 0 : icons.constFirst().width();
    };
    const QByteArray resources = encodedTable(tableOf({value.name}), TableEncoding::Sparse, false);
    QCOMPARE(widthOfIcon(androidText("icon", value.name), resources), 3);
    QCOMPARE(widthOfIcon(androidReference("icon", 0x7f010000), resources), 3);
}

void TestPackageNormalizer::picturesUpToTheCeiling()
{
    // The number of copied members when one icon leads to members of these sizes.
    const auto taken = [](const QVector<qint64> &sizes) {
        PackageBuilder inner;
        inner.types({"drawable"});
        QStringList names;
        QVector<Member> members;
        for (const qint64 size : sizes) {
            const int number = int(names.size());
            names.append(QString("res/%1.png").arg(number));
            members.append({names.last(), QByteArray(int(size), 'x')});
            inner.type(TypeBuilder(1, ConfigBuilder().density(100 + number).build()).value(0, String, number));
        }
        const QByteArray resources = TableBuilder().strings(names).package(inner).build();
        Normalized it(package(resources, manifest({androidReference("icon", 0x7f010000)}), members));
        return it.members().size() - 2;
    };
    constexpr qint64 Most = PictureFile::MaxBytes;
    // The path of the last member takes a few of the bytes.
    constexpr int Full = int(IconMembers::MaxBytes / Most) - 1;
    QCOMPARE(taken({1, 1}), 2);
    QCOMPARE(taken({Most, Most + 1, 1}), 2);
    QCOMPARE(taken(QVector<qint64>(Full, Most) << Most - 1000), Full + 1);
    QCOMPARE(taken(QVector<qint64>(Full, Most) << Most), Full);
    QCOMPARE(taken(QVector<qint64>(Full, Most) << Most << 1), Full + 1);
    // An oversized member is not read, and costs nothing.
    QCOMPARE(taken(QVector<qint64>(Full, Most + 1) << 1), 1);
}

/// The paths of a manifest with these icons, in @p resources.
QStringList pathsOf(const QVector<TypedValue> &icons, const QStringList &texts,
                    const QByteArray &resources = emptyTable(),
                    Budget budget = Budget(IconMembers::MaxWork, IconMembers::MaxBytes))
{
    XmlElement root;
    root.name = "application";
    for (int i = 0; i < icons.size(); ++i) {
        XmlElement activity;
        activity.name = "activity";
        activity.attributes.append({Attr::Icon, "icon", texts.value(i), icons.at(i)});
        root.children.append(activity);
    }
    const ResourceTable table(resources);
    return IconMembers(table, budget).paths(root);
}

QStringList pathsOf(const QStringList &texts)
{
    return pathsOf(QVector<TypedValue>(texts.size(), {ValueType::String, 0}), texts);
}

QVector<TypedValue> references(int count)
{
    QVector<TypedValue> values;
    for (int i = 0; i < count; ++i)
        values.append({ValueType::Reference, quint32(0x7f010000 + i)});
    return values;
}

void TestPackageNormalizer::pathsUpToTheCeiling()
{
    QStringList icons;
    for (int i = 0; i < IconMembers::MaxPaths; ++i)
        icons.append(QString::number(i));
    QCOMPARE(pathsOf(icons), icons);
    QCOMPARE(pathsOf(icons + icons), icons);
    QCOMPARE(pathsOf(icons + QStringList{"one more"}), icons);
}

void TestPackageNormalizer::pathLengthsUpToTheCeiling()
{
    const QString longest(IconMembers::MaxPathLength, 'x');
    QCOMPARE(pathsOf({longest + 'x', longest, "next"}), (QStringList{longest, "next"}));
}

void TestPackageNormalizer::referencesUpToTheBudget()
{
    constexpr int Count = 100;
    constexpr qint64 Each = Budget::LookupWork + 2 * Budget::ValueWork + 3; // of one chunk, one value, and a path
    constexpr qint64 Bytes = IconMembers::ReferenceBytes + 2 * 3;
    QStringList texts;
    for (int i = 0; i < Count; ++i)
        texts.append(QString::number(100 + i));
    const QStringList most = texts.mid(0, Count - 1);
    const QByteArray resources = tableOf(texts);
    const QVector<TypedValue> all = references(Count);
    QCOMPARE(pathsOf(all, {}, resources, Budget(Count * Each, Count * Bytes)), texts);
    QCOMPARE(pathsOf(all, {}, resources, Budget(Count * Each - 1, Count * Bytes)), most);
    QCOMPARE(pathsOf(all, {}, resources, Budget(Count * Each, Count * Bytes - 1)), most);
    // A reference that was followed before costs nothing.
    QCOMPARE(pathsOf(all + all, {}, resources, Budget(Count * Each, Count * Bytes)), texts);
}

void TestPackageNormalizer::charactersUpToTheBudget()
{
    // The first path is too long, but costs its characters.
    const QStringList texts{QString(IconMembers::MaxPathLength + 1, 'x'), "path"};
    const qint64 work = 2 * (Budget::LookupWork + 2 * Budget::ValueWork) + texts.first().size() + texts.last().size();
    QCOMPARE(pathsOf(references(2), {}, tableOf(texts), Budget(work, 1000)), QStringList{"path"});
    QVERIFY(pathsOf(references(2), {}, tableOf(texts), Budget(work - 1, 1000)).isEmpty());
}

void TestPackageNormalizer::aHostileTableIsAnswered()
{
    // Thousands of icons. Each is searched for in as many types as a table may have.
    constexpr int Icons = 10000;
    const QByteArray types = TypeBuilder(1, ConfigBuilder(28).build()).build().repeated(ResourceTable::MaxTypeChunks);
    const QByteArray resources = TableBuilder().package(PackageBuilder().types({"drawable"}).chunk(types)).build();
    const QVector<TypedValue> icons = references(Icons);
    const Cost taken = cost([&] { pathsOf(icons, {}, resources); });
    QVERIFY(taken.ended);
}

void TestPackageNormalizer::everyByteMayBeDamaged()
{
    const QByteArray whole = zip({{tableName, encodedTable(table(), TableEncoding::Sparse, true)},
                                  {manifestName, manifest()},
                                  {"res/small.png", picture(2, 2, 0x102030)}},
                                 Compression::Stored);
    int failed = 0;
    int needed = 0;
    for (int at = 0; at < whole.size(); ++at) {
        QByteArray damaged = whole;
        poke8(damaged, at, ~whole.at(at));
        Normalized it(damaged);
        const bool isNeeded = it.normalizer.isNeeded();
        needed += int(isNeeded);
        failed += int(it.normalizer.error().code() != SorrelKit::Error::Code::None);
        QCOMPARE(it.normalizer.normalized().isNull(), it.normalizer.error().code() != SorrelKit::Error::Code::None);
        QVERIFY(!isNeeded || it.normalizer.error().code() == SorrelKit::Error::Code::None);
        const std::unique_ptr<ApkFile> apk = it.normalizer.apkFile();
        QVERIFY(!apk->isOpen());
        QVERIFY(!answers(*apk).isEmpty());
    }
    QVERIFY(failed > 0);
    QVERIFY(needed > 0);
}

QTEST_GUILESS_MAIN(TestPackageNormalizer)
#include "tst_packagenormalizer.moc"
