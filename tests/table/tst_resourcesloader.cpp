// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ApkResources.h"
#include "Bytes.h"
#include "Cost.h"
#include "Devices.h"
#include "LocalEncoding.h"
#include "LogCapture.h"
#include "PoolBuilder.h"
#include "TableBuilder.h"
#include "Walker.h"
#include "stream/Extractor.h"
#include "table/ApkResourcesData.h"
#include "table/ResourcesLoader.h"

#include <QtTest>

#include <vector>

using namespace fixture;

namespace {

constexpr int TableType = 0x0002;
constexpr int UnknownType = 0x0777;
constexpr int Decimal = 0x10;
constexpr int String = 0x03;
constexpr int HeaderSizeAt = 2;
constexpr int SizeAt = 4;
constexpr int TableHeaderSize = 12;

/// The error text of the devices in this test. It also ends the log lines.
const QString deviceText = QStringLiteral("device");

bool load(ApkResources &table, const QByteArray &bytes)
{
    SequentialDevice device(bytes, QIODevice::ReadOnly);
    device.setErrorText(deviceText);
    return table.load(&device);
}

/// The log line of a load that ends with the fault @p text.
QString errorLine(const QString &text)
{
    return "Error extracting resources: " + text + ": " + deviceText;
}

/// The log lines of loading these bytes.
QStringList logOf(const QByteArray &bytes)
{
    LogCapture log;
    ApkResources table;
    load(table, bytes);
    return log.texts();
}

PackageBuilder application(int value = 10)
{
    return PackageBuilder().types({"string"}).keys({"title"}).type(TypeBuilder(1).value(0, Decimal, value));
}

/// A small table with one item of each kind.
QByteArray goodTable()
{
    const QByteArray german = ConfigBuilder(36).locale("de", "AT").build();
    return TableBuilder()
        .strings({"Notes", "Notizen"})
        .package(PackageBuilder()
                     .types({"string", "drawable"})
                     .keys({"title"})
                     .type(TypeBuilder(1).value(0, String, 0).value(1, 0x01, 0x7f020000))
                     .type(TypeBuilder(1, german).value(0, String, 1).map(2, 1))
                     .type(TypeBuilder(2, ConfigBuilder(28).density(240).build()).value(0, 0x1c, 0x80112233)))
        .build();
}

} // namespace

class TestResourcesLoader : public QObject
{
    Q_OBJECT

private slots:
    // the value class
    void aNewTableIsEmptyAndNotValid();
    void aGoodTableIsLoaded();
    void aTableIsReplacedByTheNextLoad();
    void keepsValidAfterALaterLoadFails();
    void aFailedLoadMayBeFollowedByAGoodOne();
    void copiesKeepTheirContent();
    void copiesOfALoadedTableShareIt();
    void theDeviceStaysTheCallers();

    // the loader
    void theLoaderReplacesTheRecord();
    void keepsWhatTheRecordHadAsValid();
    void aReaderThatHadFailedStaysSo();
    void theReaderStandsAtTheEndOfTheChunk();
    void thePoolIsNamedTable();
    void failuresAreLogged();
    void failuresAreLoggedInTheLocalEncoding_data();
    void failuresAreLoggedInTheLocalEncoding();
    void debugLinesHaveTheirContext();

    // the chunks of a table
    void thePackageCountIsIgnored();
    void keepsTheTablesHeaderSizeUnused();
    void aTableWithoutChildrenIsValid();
    void onlyTheFirstChunkIsRead();
    void aPoolMayStandAlone();
    void aPackageMayStandAlone();
    void thePackagesHeaderSizeIsSigned();
    void theLaterPoolReplacesTheEarlier();
    void aFaultyPoolLeavesTheEarlier();
    void thePoolMayFollowThePackages();
    void packagesKeepTheOrderOfTheFile();
    void tablesMayBeNested();
    void tablesNestedWithoutEndAreLoaded();
    void packagesInPackagesAreNotLoaded();
    void unexpectedChunksAreLoggedAndSkipped_data();
    void unexpectedChunksAreLoggedAndSkipped();
    void anUnexpectedChunkAloneIsAValidTable();
    void theLastByteOfATableStartsAChunk();
    void keepsChunksOfNoSizeAsStepsBack();
    void manyChunksOfNoSizeAreRefusedWithAShortLog();

    // faults
    void anEmptyDeviceIsRefused();
    void aTruncatedPackageIsKeptInPart();
    void nothingIsReadAfterAFault();
    void chunksMayNotEndAfterTheirTable();
    void everyPrefixIsRefused();
    void devicesThatDeliverLittleAreRefused();

    // every error text
    void chunkTooShort();
    void fileTooShort();
    void boundaryOutOfBounds();
    void tooManyStepsBack();
    void badInput();
    void stringExtendsPastStringblockEnd();
    void stringPoolContainsBadCount();
    void typechunkIdOutOfRange();
    void bogusEntryCountInTypeChunk();
    void resourceTableContainsEntryNotInIndex();
    void tooManyPackagesInResourceTable();

    void hugeClaimsTakeNoMemory();
    void theBufferOfADeviceMakesNoDifference();
    void everyFieldMayBeDamaged();
};

void TestResourcesLoader::aNewTableIsEmptyAndNotValid()
{
    const ApkResources table;
    QVERIFY(!table.isValid());
    QVERIFY(table.lookupAll("@string/0").isEmpty());
    QCOMPARE(table.refToString(0x7f010000), QString("@?7f010000"));
    QCOMPARE(table.valueToString(String, 0), QString("unknown string #0"));

    const ApkResourcesData data;
    QVERIFY(!data.valid);
    QVERIFY(data.packages.isEmpty());
    QCOMPARE(data.stringPool.count(), 0);
}

void TestResourcesLoader::aGoodTableIsLoaded()
{
    LogCapture log;
    ApkResources table;
    QVERIFY(load(table, goodTable()));
    QVERIFY(table.isValid());
    QVERIFY(log.lines().isEmpty());
    QCOMPARE(table.lookupAll("@string/0"), (QStringList{"Notes", "Notizen"}));
    QCOMPARE(table.lookupAllByConfig("@drawable/0"), (QMap<QString, QString>{{"hdpi", "#ffffffff80112233"}}));
    QCOMPARE(table.lookupByLocale("@string/0", 5), (QMap<QString, QString>{{"", "Notes"}, {"de-AT", "Notizen"}}));
    QCOMPARE(table.refToString(0x7f020003), QString("@drawable/3"));
}

void TestResourcesLoader::aTableIsReplacedByTheNextLoad()
{
    ApkResources table;
    QVERIFY(load(table, goodTable()));
    QVERIFY(load(table, TableBuilder().package(PackageBuilder(1, "android").types({"id"})).build()));
    QCOMPARE(table.lookupAll("@string/0"), QStringList());
    QCOMPARE(table.refToString(0x7f010000), QString("@?7f010000"));
    QCOMPARE(table.refToString(0x01010000), QString("@android:id/0"));
    QCOMPARE(table.valueToString(String, 0), QString("unknown string table#0"));
}

void TestResourcesLoader::keepsValidAfterALaterLoadFails()
{
    LogCapture log;
    ApkResources table;
    QVERIFY(load(table, goodTable()));
    QVERIFY(load(table, QByteArray()));
    QVERIFY(table.isValid());
    QCOMPARE(log.texts(), QStringList{errorLine("file too short")});
    QCOMPARE(table.lookupAll("@string/0"), QStringList());
    QCOMPARE(table.valueToString(String, 0), QString("unknown string table#0"));

    // everything before the fault is available
    QVERIFY(load(table, TableBuilder().package(application(20)).chunk("x").build()));
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"20"});
}

void TestResourcesLoader::aFailedLoadMayBeFollowedByAGoodOne()
{
    LogCapture log;
    ApkResources table;
    QVERIFY(!load(table, QByteArray()));
    QVERIFY(!table.isValid());
    QVERIFY(!load(table, goodTable().chopped(1)));
    QVERIFY(load(table, goodTable()));
    QVERIFY(table.isValid());
    QCOMPARE(table.refToString(0x7f010000), QString("@string/0"));
}

void TestResourcesLoader::copiesKeepTheirContent()
{
    LogCapture log;
    ApkResources table;
    const ApkResources unloaded = table;
    load(table, goodTable());
    const ApkResources copy(table);
    ApkResources assigned;
    assigned = table;
    QVERIFY(load(table, TableBuilder().build()));
    QVERIFY(load(assigned, QByteArray()));

    QVERIFY(!unloaded.isValid());
    QCOMPARE(unloaded.lookupAll("@string/0"), QStringList());
    QVERIFY(copy.isValid());
    QCOMPARE(copy.lookupAll("@string/0"), (QStringList{"Notes", "Notizen"}));
    QCOMPARE(table.lookupAll("@string/0"), QStringList());
    QVERIFY(assigned.isValid());
    QCOMPARE(assigned.refToString(0x7f010000), QString("@?7f010000"));
}

void TestResourcesLoader::copiesOfALoadedTableShareIt()
{
    ApkResources copy;
    {
        ApkResources table;
        load(table, goodTable());
        copy = table;
        const ApkResources &self = copy;
        copy = self;
    }
    QVERIFY(copy.isValid());
    QCOMPARE(copy.lookupAll("@string/0"), (QStringList{"Notes", "Notizen"}));
}

void TestResourcesLoader::theDeviceStaysTheCallers()
{
    LogCapture log;
    SequentialDevice device(goodTable());
    ApkResources table;
    QVERIFY(table.load(&device));
    QVERIFY(device.isOpen());
    QCOMPARE(device.delivered(), goodTable().size());
}

void TestResourcesLoader::theLoaderReplacesTheRecord()
{
    LogCapture log;
    ApkResourcesData data;
    for (const int id : {0x7f, 0x02}) {
        SequentialDevice device(
            TableBuilder().strings({QString::number(id)}).package(PackageBuilder(id, "name")).build());
        Extractor reader(&device);
        ResourcesLoader().load(&data, &reader);
        QVERIFY(data.valid);
        QCOMPARE(data.packages.size(), 1);
        QCOMPARE(data.packages.first().id(), id);
        QCOMPARE(data.packages.first().name(), QString("name"));
        QCOMPARE(data.stringPool.count(), 1);
        QCOMPARE(data.stringPool.get(0), QString::number(id));
    }
    // the pool is empty and there are no packages, even when the new load brings none
    SequentialDevice device(chunk(UnknownType));
    Extractor reader(&device);
    ResourcesLoader().load(&data, &reader);
    QVERIFY(data.valid);
    QVERIFY(data.packages.isEmpty());
    QCOMPARE(data.stringPool.count(), 0);
}

void TestResourcesLoader::keepsWhatTheRecordHadAsValid()
{
    LogCapture log;
    for (const bool valid : {false, true}) {
        ApkResourcesData data;
        data.valid = valid;
        SequentialDevice device(goodTable().chopped(1));
        Extractor reader(&device);
        ResourcesLoader().load(&data, &reader);
        QVERIFY(reader.failed());
        QCOMPARE(data.valid, valid);
    }
}

void TestResourcesLoader::aReaderThatHadFailedStaysSo()
{
    LogCapture log;
    SequentialDevice device(goodTable());
    device.setErrorText(deviceText);
    Extractor reader(&device);
    reader.setError("earlier");
    ApkResourcesData data;
    ResourcesLoader().load(&data, &reader);
    QVERIFY(!data.valid);
    QVERIFY(data.packages.isEmpty());
    QCOMPARE(reader.position, 8);
    QCOMPARE(log.texts(), QStringList{errorLine("earlier")});
}

void TestResourcesLoader::theReaderStandsAtTheEndOfTheChunk()
{
    LogCapture log;
    for (const QByteArray &bytes : {goodTable(), chunk(UnknownType, "head", "body")}) {
        SequentialDevice device(bytes + "rest");
        Extractor reader(&device);
        ApkResourcesData data;
        ResourcesLoader().load(&data, &reader);
        QCOMPARE(reader.position, bytes.size());
        QCOMPARE(reader.boundary, 0x7fffffff);
        QCOMPARE(reader.get8(), qint8('r'));
    }
}

void TestResourcesLoader::thePoolIsNamedTable()
{
    LogCapture log;
    for (const QByteArray &bytes : {QByteArray(), goodTable(), goodTable().left(30)}) {
        ApkResources table;
        load(table, bytes);
        QCOMPARE(table.valueToString(String, -1), QString("unknown string table#-1"));
    }
}

void TestResourcesLoader::failuresAreLogged()
{
    LogCapture log;
    ApkResources table;
    SequentialDevice device(goodTable().chopped(1));
    QVERIFY(!table.load(&device));
    // a device without an error text shows a general one
    QCOMPARE(log.texts(), QStringList{"Error extracting resources: file too short: " + device.errorString()});
}

void TestResourcesLoader::failuresAreLoggedInTheLocalEncoding_data()
{
    QTest::addColumn<QByteArray>("codec");
    for (const QByteArray &codec : LocalEncoding::all())
        QTest::newRow(codec.constData()) << codec;
}

void TestResourcesLoader::failuresAreLoggedInTheLocalEncoding()
{
    QFETCH(QByteArray, codec);
    const LocalEncoding encoding(codec);
    const QString text = QString::fromUtf8("g\u00fcltig, \u4e2d");
    LogCapture log;
    SequentialDevice device((QByteArray()));
    device.setErrorText(text);
    ApkResources table;
    table.load(&device);
    const QByteArray local = text.toLocal8Bit();
    QCOMPARE(log.texts(), QStringList{"Error extracting resources: file too short: " + QString::fromUtf8(local)});
}

void TestResourcesLoader::debugLinesHaveTheirContext()
{
    LogCapture log;
    ApkResources table;
    load(table, TableBuilder().chunk(chunk(UnknownType)).chunk("x").build());
    QCOMPARE(log.texts(), (QStringList{"Skipping unexpected 0x0777 chunk", errorLine("chunk too short")}));
    for (const LogCapture::Line &line : log.lines()) {
        QCOMPARE(line.type, QtDebugMsg);
        QCOMPARE(line.category, QString("default"));
        QVERIFY(line.file.endsWith("ResourcesLoader.cpp"));
        QVERIFY(line.line > 0);
    }
    QVERIFY(log.lines().at(0).function.contains("ResourcesLoader::parseChunk"));
    QVERIFY(log.lines().at(1).function.contains("ResourcesLoader::load"));
}

void TestResourcesLoader::thePackageCountIsIgnored()
{
    for (const qint64 count : {0, 2, 0x7fffffff, -1}) {
        QByteArray bytes = goodTable();
        poke32(bytes, 8, count);
        ApkResources table;
        QVERIFY(load(table, bytes));
        QCOMPARE(table.lookupAll("@string/0"), (QStringList{"Notes", "Notizen"}));
    }
}

void TestResourcesLoader::keepsTheTablesHeaderSizeUnused()
{
    for (const int headerSize : {0, 8, 16, 0x7fff, 0x8000, 0xffff}) {
        QByteArray bytes = goodTable();
        poke16(bytes, HeaderSizeAt, headerSize);
        ApkResources table;
        QVERIFY(load(table, bytes));
        QCOMPARE(table.lookupAll("@string/0"), (QStringList{"Notes", "Notizen"}));
    }
}

void TestResourcesLoader::aTableWithoutChildrenIsValid()
{
    ApkResources table;
    QVERIFY(load(table, TableBuilder().build()));
    QVERIFY(table.lookupAll("@string/0").isEmpty());
    QCOMPARE(logOf(chunk(TableType)), QStringList{errorLine("chunk too short")});
    QCOMPARE(logOf(chunk(TableType, "abc")), QStringList{errorLine("chunk too short")});
}

void TestResourcesLoader::onlyTheFirstChunkIsRead()
{
    LogCapture log;
    SequentialDevice device(goodTable() + TableBuilder().package(application(20)).build());
    ApkResources table;
    QVERIFY(table.load(&device));
    QCOMPARE(device.delivered(), goodTable().size());
    QCOMPARE(table.lookupAll("@string/0"), (QStringList{"Notes", "Notizen"}));

    SequentialDevice alone(PoolBuilder().strings({"one"}).build() + goodTable());
    QVERIFY(table.load(&alone));
    QCOMPARE(table.lookupAll("@string/0"), QStringList());
}

void TestResourcesLoader::aPoolMayStandAlone()
{
    ApkResources table;
    QVERIFY(load(table, PoolBuilder().strings({"one"}).build()));
    QCOMPARE(table.valueToString(String, 0), QString("one"));
}

void TestResourcesLoader::aPackageMayStandAlone()
{
    ApkResources table;
    QVERIFY(load(table, application().build()));
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"10"});
}

// A header size of -1 moves the position 285 bytes back, and so the end of the package 285 bytes on.
void TestResourcesLoader::thePackagesHeaderSizeIsSigned()
{
    QByteArray bytes = application().build();
    poke16(bytes, HeaderSizeAt, -1);
    for (const int field : {PackageBuilder::TypePoolOffsetAt, PackageBuilder::KeyPoolOffsetAt})
        poke32(bytes, field, qint64(peek32(bytes, field)) - 285);
    LogCapture log;
    ApkResources table;
    QVERIFY(load(table, bytes + chunk(UnknownType, QByteArray(), QByteArray(285 - 8, 'x'))));
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"10"});
    QCOMPARE(log.texts(), QStringList{"Skipping unexpected 0x0777 chunk"});
}

void TestResourcesLoader::theLaterPoolReplacesTheEarlier()
{
    ApkResources table;
    QVERIFY(load(table, TableBuilder().strings({"one", "two"}).package(application()).strings({"three"}).build()));
    QCOMPARE(table.valueToString(String, 0), QString("three"));
    QCOMPARE(table.valueToString(String, 1), QString("unknown string table#1"));
}

void TestResourcesLoader::aFaultyPoolLeavesTheEarlier()
{
    LogCapture log;
    QByteArray pool = PoolBuilder().strings({"two"}).build();
    poke32(pool, PoolBuilder::OffsetsAt, 100);
    ApkResources table;
    QVERIFY(!load(table, TableBuilder().strings({"one"}).chunk(pool).build()));
    QCOMPARE(table.valueToString(String, 0), QString("one"));
}

void TestResourcesLoader::thePoolMayFollowThePackages()
{
    const PackageBuilder package = PackageBuilder().types({"string"}).type(TypeBuilder(1).value(0, String, 1));
    ApkResources table;
    QVERIFY(load(table, TableBuilder().package(package).strings({"one", "two"}, Encoding::Utf16).build()));
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"two"});
}

void TestResourcesLoader::packagesKeepTheOrderOfTheFile()
{
    ApkResources table;
    QVERIFY(load(table, TableBuilder()
                            .package(PackageBuilder(2, "two").types({"string"}))
                            .package(application(1))
                            .package(application(2))
                            .package(PackageBuilder(2, "too late").types({"drawable"}))
                            .build()));
    QCOMPARE(table.refToString(0x02010000), QString("@two:string/0"));
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"1"});
}

void TestResourcesLoader::tablesMayBeNested()
{
    const QByteArray inner = TableBuilder().strings({"inner"}).package(application(1)).build();
    ApkResources table;
    QVERIFY(load(table, TableBuilder().strings({"outer"}).chunk(inner).package(PackageBuilder(2, "two")).build()));
    QCOMPARE(table.valueToString(String, 0), QString("inner"));
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"1"});
    QCOMPARE(table.refToString(0x02010000), QString("@#02010000"));
}

void TestResourcesLoader::tablesNestedWithoutEndAreLoaded()
{
    constexpr int Depth = 200000;
    const QByteArray pool = PoolBuilder().strings({"deep"}).build();
    const QByteArray after = PoolBuilder().strings({"after"}).build();
    Bytes bytes;
    for (int left = Depth; left > 0; --left)
        bytes.u16(TableType).u16(TableHeaderSize).u32(TableHeaderSize * left + pool.size()).u32(0);
    bytes.raw(pool);
    ApkResources table;
    QVERIFY(load(table, bytes.data()));
    QCOMPARE(table.valueToString(String, 0), QString("deep"));
    // the outer table continues at the end of the nested ones
    QVERIFY(load(table, TableBuilder().chunk(bytes.data()).chunk(after).build()));
    QCOMPARE(table.valueToString(String, 0), QString("after"));
    // the innermost one is cut
    LogCapture log;
    ApkResources cut;
    QVERIFY(!load(cut, bytes.data().chopped(1)));
}

void TestResourcesLoader::packagesInPackagesAreNotLoaded()
{
    LogCapture log;
    ApkResources table;
    QVERIFY(load(table, TableBuilder().package(PackageBuilder().chunk(application().build())).build()));
    QCOMPARE(table.lookupAll("@string/0"), QStringList());
    QCOMPARE(log.texts(), QStringList{"Skipping unexpected 0x0200 chunk"});
}

void TestResourcesLoader::unexpectedChunksAreLoggedAndSkipped_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("digits");
    QTest::newRow("null") << 0x0000 << "0x0000";
    QTest::newRow("document") << 0x0003 << "0x0003";
    QTest::newRow("element") << 0x0102 << "0x0102";
    QTest::newRow("type") << 0x0201 << "0x0201";
    QTest::newRow("type spec") << 0x0202 << "0x0202";
    QTest::newRow("largest positive") << 0x7fff << "0x7fff";
    QTest::newRow("top bit") << 0x8000 << "0x8000";
    QTest::newRow("all bits") << 0xffff << "0xffff";
}

void TestResourcesLoader::unexpectedChunksAreLoggedAndSkipped()
{
    QFETCH(int, type);
    QFETCH(QString, digits);
    LogCapture log;
    ApkResources table;
    QVERIFY(load(table, TableBuilder()
                            .chunk(chunk(type, QByteArray(), QByteArray(13, '\xff')))
                            .strings({"one"})
                            .package(application())
                            .build()));
    QCOMPARE(log.texts(), QStringList{"Skipping unexpected " + digits + " chunk"});
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"10"});
    QCOMPARE(table.valueToString(String, 0), QString("one"));
}

void TestResourcesLoader::anUnexpectedChunkAloneIsAValidTable()
{
    LogCapture log;
    ApkResources table;
    QVERIFY(load(table, chunk(UnknownType, "head", "body")));
    QVERIFY(table.isValid());
    QVERIFY(table.lookupAll("@string/0").isEmpty());
    QCOMPARE(log.texts(), QStringList{"Skipping unexpected 0x0777 chunk"});
}

void TestResourcesLoader::theLastByteOfATableStartsAChunk()
{
    for (int count = 1; count < 8; ++count) {
        const QByteArray bytes = TableBuilder().chunk(QByteArray(count, '\0')).build();
        QCOMPARE(logOf(bytes), QStringList{errorLine("chunk too short")});
    }
}

void TestResourcesLoader::keepsChunksOfNoSizeAsStepsBack()
{
    LogCapture log;
    const QByteArray none = Bytes().u16(UnknownType).u16(8).u32(0).data();
    // after each chunk the position is back at its start, so the table ends 8 bytes later on the device
    const QByteArray bytes = TableBuilder().chunk(none.repeated(3)).strings({"one"}).build();
    ApkResources table;
    QVERIFY(load(table, bytes + chunk(UnknownType, QByteArray(), QByteArray(16, 'x'))));
    QCOMPARE(log.lines().size(), 4);
    QCOMPARE(table.valueToString(String, 0), QString("one"));
}

void TestResourcesLoader::manyChunksOfNoSizeAreRefusedWithAShortLog()
{
    const QByteArray none = Bytes().u16(UnknownType).u16(8).u32(0).data();
    // the table is skipped to its end, and each step back has moved that end on
    const QByteArray rest(8 * (Extractor::MaxStepsBack + 1), 'x');
    const QStringList log = logOf(TableBuilder().chunk(none.repeated(100000)).build() + rest);
    QCOMPARE(log.last(), errorLine("too many steps back"));
    QVERIFY(log.size() <= Extractor::MaxStepsBack + 2);
}

void TestResourcesLoader::anEmptyDeviceIsRefused()
{
    LogCapture log;
    ApkResources table;
    QVERIFY(!load(table, QByteArray()));
    QVERIFY(!table.isValid());
    QCOMPARE(log.texts(), QStringList{errorLine("file too short")});
}

void TestResourcesLoader::aTruncatedPackageIsKeptInPart()
{
    LogCapture log;
    const PackageBuilder last = PackageBuilder(2, "two")
                                    .types({"string"})
                                    .type(TypeBuilder(1).value(0, Decimal, 1))
                                    .type(TypeBuilder(1).value(1, Decimal, 2));
    SequentialDevice device(TableBuilder().strings({"one"}).package(application()).package(last).build().chopped(1));
    Extractor reader(&device);
    ApkResourcesData data;
    ResourcesLoader().load(&data, &reader);
    QVERIFY(!data.valid);
    QCOMPARE(data.packages.size(), 2);
    QCOMPARE(data.packages.at(0).lookupAll("string", 0, ApkResources()), QStringList{"10"});
    QCOMPARE(data.packages.at(1).name(), QString("two"));
    QCOMPARE(data.packages.at(1).lookupAll("string", 0, ApkResources()), QStringList{"1"});
    QCOMPARE(data.stringPool.get(0), QString("one"));

    ApkResources table;
    QVERIFY(!load(table, TableBuilder().package(application()).package(last).build().chopped(1)));
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"10"});
    QCOMPARE(table.refToString(0x02010007), QString("@two:string/7"));
}

void TestResourcesLoader::nothingIsReadAfterAFault()
{
    LogCapture log;
    const PackageBuilder faulty = PackageBuilder().types({"string"}).type(TypeBuilder(0));
    const QByteArray inner = TableBuilder().package(faulty).chunk(chunk(UnknownType)).build();
    ApkResources table;
    QVERIFY(!load(table, TableBuilder().chunk(inner).strings({"one"}).chunk(chunk(UnknownType)).build()));
    QCOMPARE(table.valueToString(String, 0), QString("unknown string table#0"));
    QCOMPARE(log.texts(), QStringList{errorLine("Typechunk id out of range")});
}

void TestResourcesLoader::chunksMayNotEndAfterTheirTable()
{
    QByteArray inner = chunk(UnknownType, QByteArray(), "body");
    poke32(inner, SizeAt, inner.size() + 1);
    // this holds even when the device has more bytes
    QCOMPARE(logOf(TableBuilder().chunk(inner).build() + "more"), QStringList{errorLine("boundary out of bounds")});
}

void TestResourcesLoader::hugeClaimsTakeNoMemory()
{
    QByteArray count = PoolBuilder().strings({"one"}).build();
    poke32(count, SizeAt, 0x30000000);
    poke32(count, PoolBuilder::CountAt, 0x08000000);
    QVector<QByteArray> tables{count};
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        QByteArray data = PoolBuilder(encoding).strings({"one"}).build();
        poke32(data, SizeAt, 0x18000000);
        tables.append(data);
    }
    for (const QByteArray &table : tables) {
        QCOMPARE(logOf(table), QStringList{errorLine("file too short")});
        const Cost taken = cost([&table] { logOf(table); });
        QVERIFY(taken.ended);
        QVERIFY2(taken.memory < 64 << 20, qPrintable(QString::number(taken.memory)));
    }
}

void TestResourcesLoader::everyPrefixIsRefused()
{
    LogCapture log;
    const QByteArray good = goodTable();
    for (int size = 0; size < good.size(); ++size) {
        const std::vector<char> block(good.cbegin(), good.cbegin() + size);
        for (const int atEnd : {0, -1}) {
            SequentialDevice device(QByteArray::fromRawData(block.data(), size));
            device.setAnswerAtEnd(atEnd);
            ApkResources table;
            QVERIFY2(!table.load(&device), qPrintable(QString::number(size)));
            visit(table, 10);
        }
    }
}

void TestResourcesLoader::devicesThatDeliverLittleAreRefused()
{
    for (const int largestRead : {0, 1, 3, 100}) {
        LogCapture log;
        SequentialDevice device(goodTable());
        device.setErrorText(deviceText);
        device.setLargestRead(largestRead);
        ApkResources table;
        QVERIFY(!table.load(&device));
        QCOMPARE(log.texts(), QStringList{errorLine("file too short")});
        visit(table, 10);
    }
}

// The device ends at the same byte, even after a fault in the middle of a chunk.
void TestResourcesLoader::theBufferOfADeviceMakesNoDifference()
{
    const QByteArray rest(20, '\0');
    const QByteArray good = goodTable() + rest;
    const auto loaded = [](const QByteArray &bytes, QIODevice::OpenMode mode) {
        const LogCapture log;
        SequentialDevice device(bytes, mode);
        ApkResources table;
        table.load(&device);
        return log.texts() << QString::number(device.taken()) << QString::number(visit(table, 10));
    };
    QVector<QByteArray> damaged;
    for (int at = 0; at < good.size() - 3; at += 2) {
        for (const qint64 value : {qint64(0), qint64(9), qint64(0x7fff), qint64(0x7fffffff), qint64(0xffffffff)}) {
            damaged.append(good);
            poke32(damaged.last(), at, value);
        }
    }
    // The header of the last chunk is cut off, and the enclosing chunk stays open.
    for (int more = 1; more < rest.size(); ++more) {
        damaged.append(good);
        poke32(damaged.last(), SizeAt, good.size() - rest.size() + more);
    }
    for (const QByteArray &bytes : std::as_const(damaged))
        QCOMPARE(loaded(bytes, QIODevice::ReadOnly), loaded(bytes, QIODevice::ReadOnly | QIODevice::Unbuffered));
}

void TestResourcesLoader::everyFieldMayBeDamaged()
{
    LogCapture log;
    const QByteArray good = goodTable();
    const auto tryBytes = [](const QByteArray &bytes) {
        ApkResources table;
        load(table, bytes);
        visit(table, 10);
    };
    for (int at = 0; at < good.size() - 3; at += 2) {
        for (const qint64 value : {qint64(0), qint64(1), qint64(7), qint64(8), qint64(0x7fff), qint64(0x8000),
                                   qint64(0xffff), qint64(0x7fffffff), qint64(0x80000000), qint64(0xffffffff)}) {
            QByteArray damaged = good;
            poke32(damaged, at, value);
            tryBytes(damaged);
            if (value <= 0xffff) {
                damaged = good;
                poke16(damaged, at, value);
                tryBytes(damaged);
            }
        }
    }
}

// every error text

void TestResourcesLoader::chunkTooShort()
{
    QCOMPARE(logOf(chunk(TableType)), QStringList{errorLine("chunk too short")});
}

void TestResourcesLoader::fileTooShort()
{
    QCOMPARE(logOf(goodTable().left(7)), QStringList{errorLine("file too short")});
}

void TestResourcesLoader::boundaryOutOfBounds()
{
    QByteArray bytes = chunk(UnknownType);
    poke32(bytes, SizeAt, 9);
    QCOMPARE(logOf(TableBuilder().chunk(bytes).build() + "x"), QStringList{errorLine("boundary out of bounds")});
}

void TestResourcesLoader::tooManyStepsBack()
{
    const QByteArray none = Bytes().u16(UnknownType).u16(8).u32(0).data();
    const QByteArray bytes = TableBuilder().chunk(none.repeated(Extractor::MaxStepsBack + 1)).build();
    QCOMPARE(logOf(bytes + bytes).last(), errorLine("too many steps back"));
}

void TestResourcesLoader::badInput()
{
    QByteArray pool = PoolBuilder(Encoding::Utf16).strings({"one"}).build();
    poke32(pool, PoolBuilder::StylesStartAt, peek32(pool, PoolBuilder::StringsStartAt) + 5);
    QCOMPARE(logOf(TableBuilder().chunk(pool).build()), QStringList{errorLine("bad input")});
}

void TestResourcesLoader::stringExtendsPastStringblockEnd()
{
    QByteArray pool = PoolBuilder().strings({"one"}).build();
    poke32(pool, PoolBuilder::OffsetsAt, 0x7fffffff);
    QCOMPARE(logOf(TableBuilder().chunk(pool).build()), QStringList{errorLine("string extends past stringblock end")});
}

void TestResourcesLoader::stringPoolContainsBadCount()
{
    QByteArray pool = PoolBuilder().strings({"one"}).build();
    poke32(pool, PoolBuilder::CountAt, -1);
    QCOMPARE(logOf(TableBuilder().chunk(pool).build()), QStringList{errorLine("string pool contains bad count")});
}

void TestResourcesLoader::typechunkIdOutOfRange()
{
    const PackageBuilder package = PackageBuilder().type(TypeBuilder(1));
    QCOMPARE(logOf(TableBuilder().package(package).build()), QStringList{errorLine("Typechunk id out of range")});
}

void TestResourcesLoader::bogusEntryCountInTypeChunk()
{
    QByteArray type = TypeBuilder(1).build();
    poke32(type, TypeBuilder::EntryCountAt, 1);
    const PackageBuilder package = PackageBuilder().types({"string"}).chunk(type);
    QCOMPARE(logOf(TableBuilder().package(package).build()), QStringList{errorLine("Bogus entry count in type chunk")});
}

void TestResourcesLoader::resourceTableContainsEntryNotInIndex()
{
    const PackageBuilder package = PackageBuilder().types({"string"}).type(TypeBuilder(1).unlisted("x"));
    QCOMPARE(logOf(TableBuilder().package(package).build()),
             QStringList{errorLine("resource table contains entry not in index")});
}

void TestResourcesLoader::tooManyPackagesInResourceTable()
{
    const auto table = [](int packages) {
        TableBuilder builder;
        for (int i = 0; i < packages; ++i)
            builder.package(PackageBuilder(i));
        return builder.build();
    };
    QCOMPARE(logOf(table(ResourcesLoader::MaxPackages)), QStringList());
    QCOMPARE(logOf(table(ResourcesLoader::MaxPackages + 1)),
             QStringList{errorLine("too many packages in resource table")});
}

QTEST_GUILESS_MAIN(TestResourcesLoader)
#include "tst_resourcesloader.moc"
