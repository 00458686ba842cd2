// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ApkResources.h"
#include "Bytes.h"
#include "Devices.h"
#include "LogCapture.h"
#include "PoolBuilder.h"
#include "TableBuilder.h"
#include "stream/Extractor.h"
#include "table/ResourcePackage.h"

#include <QtTest>

#include <limits>
#include <vector>

using namespace fixture;

namespace {

constexpr int StringPoolType = 0x0001;
constexpr int TypeSpecType = 0x0202;
constexpr int UnknownType = 0x0777;
constexpr int Decimal = 0x10;
constexpr int HeaderSizeAt = 2;
constexpr int SizeAt = 4;
constexpr int EntrySize = 16;
constexpr int PackageHeaderSize = 284;
constexpr int TypeHeaderSize = TypeBuilder::ConfigAt + 64;

/// Loads the package chunk at offset @p before of the device, like the caller of load(): reads its header and pushes
/// its boundary. Returns the fault's text without the device's own text, or an empty string.
QString load(ResourcePackage &package, SequentialDevice &device, int before = 0)
{
    const QString deviceText = QStringLiteral("device");
    device.setErrorText(deviceText);
    Extractor reader(&device);
    reader.skip(before);
    reader.get16();
    const int headerSize = reader.get16();
    reader.pushBoundary64(qint64(reader.get32()) - 8);
    package.load(&reader, headerSize);
    return reader.failed() ? reader.errorString().chopped(2 + deviceText.size()) : QString();
}

QString load(ResourcePackage &package, const QByteArray &bytes, int before = 0)
{
    SequentialDevice device(bytes, QIODevice::ReadOnly);
    return load(package, device, before);
}

/// The fault at the end of loading these bytes.
QString fault(const QByteArray &bytes)
{
    ResourcePackage package;
    return load(package, bytes);
}

QStringList values(const ResourcePackage &package, int entry, const QString &type = QStringLiteral("string"))
{
    return package.lookupAll(type, entry, ApkResources());
}

QMap<QString, QString> byConfig(const ResourcePackage &package, int entry)
{
    return package.lookupAllByConfig(QStringLiteral("string"), entry, ApkResources());
}

/// A package with the one type "string".
PackageBuilder strings()
{
    return PackageBuilder().types({"string"});
}

QByteArray packageOf(const QByteArray &typeChunk)
{
    return strings().chunk(typeChunk).build();
}

QByteArray packageOf(const TypeBuilder &type)
{
    return packageOf(type.build());
}

QByteArray localeConfig(const char *language)
{
    return ConfigBuilder().locale(language).build();
}

/// Three entries of type "string": 10, a map, 30.
TypeBuilder threeEntries()
{
    return TypeBuilder(1).value(0, Decimal, 10).map(1, 2).value(2, Decimal, 30);
}

/// A chunk with a size of 0.
QByteArray emptySizeChunk()
{
    return Bytes().u16(UnknownType).u16(8).u32(0).data();
}

/// Calls every query of a package.
void visit(const ResourcePackage &package)
{
    const ApkResources table;
    for (const char *type : {"string", "drawable", ""}) {
        for (int entry = -1; entry < 5; ++entry) {
            package.lookupAll(type, entry, table);
            package.lookupAllByConfig(type, entry, table);
            package.lookupByLocale(type, entry, table, 5);
        }
    }
    for (int type = 0; type < 4; ++type)
        package.refToString(package.id() << 24 | type << 16);
}

} // namespace

class TestResourcePackage : public QObject
{
    Q_OBJECT

private slots:
    // the package header
    void aNewPackageIsEmpty();
    void theIdIsTheFieldAsRead();
    void theNameEndsAtItsFirstZeroUnit();
    void theNameIsUtf16();
    void keepsTheLastUnitOutOfTheName();
    void aNameThatIsCutShortChangesNothingElse();
    void anEarlierFaultStopsTheLoadAfterTheName();
    void loadingDropsTheTypesOfBefore();
    void thePublicCountsAreIgnored();
    void furtherHeaderFieldsAreSkipped();
    void keepsShortHeadersAsStepsBack();
    void poolOffsetsCountFromThePackage();
    void anOffsetOfZeroIsNoPool();
    void anOffsetOfZeroIsNotThePackagesStart();

    // the chunks of a package
    void poolsMayStandAnywhere();
    void aPoolAtNeitherOffsetIsLoggedAndIgnored();
    void thePoolOfTypesIsTestedFirst();
    void thePoolOfKeysIsLoaded();
    void typeSpecsAreIgnored();
    void aTypeSpecHasAnId();
    void unexpectedChunksAreLoggedAndSkipped_data();
    void unexpectedChunksAreLoggedAndSkipped();
    void debugLinesHaveTheirContext();
    void theLastByteOfAPackageStartsAChunk();
    void keepsChunksOfNoSizeAsStepsBack();
    void onlySoManyStepsBackAreTaken();
    void manyChunksOfNoSizeAreRefusedWithAShortLog();

    // type chunks
    void theTypeIdNamesTheTypePool_data();
    void theTypeIdNamesTheTypePool();
    void keepsNegativeTypeIds();
    void aTypeBeforeItsPoolIsRefused();
    void reservedBytesOfATypeAreIgnored();
    void theOffsetsMayFillTheChunk();
    void moreOffsetsThanTheChunkHoldsAreRefused_data();
    void moreOffsetsThanTheChunkHoldsAreRefused();
    void ofTwoFaultsInATypeTheEntryCountIsTold();
    void furtherTypeHeaderFieldsAreSkipped();
    void aTypeHeaderThatEndsTooEarlyIsAFault();
    void aConfigurationStaysWithinTheTypeHeader();
    void valuesKeepTheirConfiguration();
    void equalConfigurationsAreOne();
    void valuesKeepTheOrderOfTheFile();
    void typesAreKeptApart();
    void theOffsetArrayIsReadInPieces();

    // entries
    void offsetsMayBeInAnyOrder();
    void theLaterOfTwoEntriesWithOneOffsetWins();
    void anEntryWithoutAnOffsetHasNoValue();
    void offsetsThatNoEntryStartsAtAreHarmless();
    void aGapBeforeTheEntriesIsSkipped();
    void anEntriesStartTooLowIsAStepBack();
    void anEntriesStartOutOfTheChunkIsAFault();
    void anEntriesStartOutOfRangeIsAFault();
    void aTypeWithoutEntriesIsFine();
    void valuesAreStoredAsRead();
    void mapEntriesAreSkippedWhole();
    void mapEntriesWithALongerHeaderAreSkippedWhole();
    void hugeMapsAreOutOfBounds();
    void aNegativeMapCountIsAStepBack();
    void longerEntryHeadersAreSkipped();
    void keepsNegativeEntrySizesAsStepsBack();
    void onlyTheMapFlagCounts();
    void theKeyOfAnEntryIsIgnored();
    void theSizeOfAValueIsIgnored();
    void aValueThatIsCutShortIsKeptAsNull();

    // faults
    void valuesBeforeAFaultAreKept();
    void nothingIsReadAfterAFault();
    void copiesAreIndependent();
    void hugeClaimsTakeNoMemory();
    void everyPrefixIsRefused();
    void devicesThatDeliverLittleAreRefused();

    // every error text
    void typechunkIdOutOfRange();
    void bogusEntryCountInTypeChunk();
    void resourceTableContainsEntryNotInIndex_data();
    void resourceTableContainsEntryNotInIndex();
    void chunkTooShort();
    void fileTooShort();
    void boundaryOutOfBounds();
    void tooManyStepsBack();
    void badInput();
    void stringExtendsPastStringblockEnd();
    void stringPoolContainsBadCount();
    void tooLongTypeNameInResourceTable();
    void tooManyValuesOfOneResource();
    void tooManyValuesInPackage();
};

void TestResourcePackage::aNewPackageIsEmpty()
{
    const ResourcePackage package;
    QCOMPARE(package.id(), -1);
    QVERIFY(package.name().isEmpty());
    QVERIFY(values(package, 0).isEmpty());
    QCOMPARE(package.refToString(0x7f010000), QString("@#7f010000"));
}

void TestResourcePackage::theIdIsTheFieldAsRead()
{
    for (const int id : {0x7f, 1, 0, 0x1234567f, -1, std::numeric_limits<int>::min()}) {
        ResourcePackage package;
        QCOMPARE(load(package, PackageBuilder(id).build()), QString());
        QCOMPARE(package.id(), id);
    }
}

void TestResourcePackage::theNameEndsAtItsFirstZeroUnit()
{
    QByteArray bytes = PackageBuilder(0x7f, "org.example.notes").build();
    poke16(bytes, PackageBuilder::NameAt + 2 * 11, 0);
    ResourcePackage package;
    QCOMPARE(load(package, bytes), QString());
    QCOMPARE(package.name(), QString("org.example"));

    ResourcePackage nameless;
    QCOMPARE(load(nameless, PackageBuilder(0x7f, QString()).build()), QString());
    QCOMPARE(nameless.name(), QString());
}

void TestResourcePackage::theNameIsUtf16()
{
    const QString name = QString::fromUtf8("caf\u00e9.\u4e2d.\U0001f600");
    ResourcePackage package;
    QCOMPARE(load(package, PackageBuilder(0x7f, name).build()), QString());
    QCOMPARE(package.name(), name);
}

void TestResourcePackage::keepsTheLastUnitOutOfTheName()
{
    const QString letters = QString(127, 'n');
    for (const QString &name : {letters, letters + 'x', letters.left(126)}) {
        ResourcePackage package;
        QCOMPARE(load(package, PackageBuilder(0x7f, name).build()), QString());
        QCOMPARE(package.name(), name.left(127));
    }
}

void TestResourcePackage::aNameThatIsCutShortChangesNothingElse()
{
    ResourcePackage package;
    QCOMPARE(load(package, PackageBuilder(2, "first").types({"string"}).build()), QString());
    const QByteArray cut = PackageBuilder(3, "second").types({"string"}).build().left(PackageBuilder::NameAt + 255);
    QCOMPARE(load(package, cut), QString("file too short"));
    QCOMPARE(package.id(), 3);
    QCOMPARE(package.name(), QString("first"));
    QCOMPARE(package.refToString(0x7f010000), QString("@#7f010000"));
}

void TestResourcePackage::anEarlierFaultStopsTheLoadAfterTheName()
{
    SequentialDevice device(packageOf(threeEntries()));
    Extractor reader(&device);
    reader.skip(8);
    reader.setError("earlier");
    ResourcePackage package;
    package.load(&reader, PackageHeaderSize);
    QCOMPARE(package.id(), 0x7f);
    QCOMPARE(package.name(), QString());
    QCOMPARE(reader.position, PackageBuilder::NameAt + 256);
    QVERIFY(reader.errorString().startsWith("earlier: "));
}

void TestResourcePackage::loadingDropsTheTypesOfBefore()
{
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(threeEntries())), QString());
    QCOMPARE(load(package, strings().withoutPools().build()), QString());
    QCOMPARE(package.refToString(0x7f010000), QString("@#7f010000"));
    QVERIFY(values(package, 0).isEmpty());
}

void TestResourcePackage::thePublicCountsAreIgnored()
{
    QByteArray bytes = packageOf(threeEntries());
    poke32(bytes, PackageBuilder::TypePoolOffsetAt + 4, 0xffffffff);
    poke32(bytes, PackageBuilder::KeyPoolOffsetAt + 4, 0x80000000);
    ResourcePackage package;
    QCOMPARE(load(package, bytes), QString());
    QCOMPARE(values(package, 0), QStringList{"10"});
}

void TestResourcePackage::furtherHeaderFieldsAreSkipped()
{
    for (const int count : {1, 4, 20}) {
        QByteArray bytes = strings().type(threeEntries()).extraHeader(count).build();
        bytes.replace(PackageHeaderSize, count, QByteArray(count, '\x5a'));
        ResourcePackage package;
        QCOMPARE(load(package, bytes), QString());
        QCOMPARE(values(package, 2), QStringList{"30"});
    }
}

// The position steps back but the device does not: the pools are found 8 bytes before their place, and the package ends
// 8 bytes after its last chunk.
void TestResourcePackage::keepsShortHeadersAsStepsBack()
{
    QByteArray bytes = packageOf(threeEntries());
    poke16(bytes, HeaderSizeAt, PackageHeaderSize - 8);
    poke32(bytes, PackageBuilder::TypePoolOffsetAt, PackageBuilder::TypePoolAt - 8);
    poke32(bytes, PackageBuilder::KeyPoolOffsetAt, peek32(bytes, PackageBuilder::KeyPoolOffsetAt) - 8);
    LogCapture log;
    ResourcePackage package;
    QCOMPARE(load(package, bytes + chunk(UnknownType)), QString());
    QCOMPARE(log.texts(), QStringList{"Skipping unexpected 0x0777 chunk"});
    QCOMPARE(values(package, 0), QStringList{"10"});
}

void TestResourcePackage::poolOffsetsCountFromThePackage()
{
    const int before = 20;
    LogCapture log;
    ResourcePackage package;
    QCOMPARE(load(package, QByteArray(before, 'x') + packageOf(threeEntries()), before), QString());
    QCOMPARE(values(package, 0), QStringList{"10"});
    QVERIFY(log.lines().isEmpty());
}

void TestResourcePackage::anOffsetOfZeroIsNoPool()
{
    for (const int field : {PackageBuilder::TypePoolOffsetAt, PackageBuilder::KeyPoolOffsetAt}) {
        const int before = 20;
        QByteArray bytes = strings().build();
        const int poolAt = before + int(peek32(bytes, field));
        poke32(bytes, field, 0);
        LogCapture log;
        ResourcePackage package;
        QCOMPARE(load(package, QByteArray(before, 'x') + bytes, before), QString());
        QCOMPARE(log.texts(), QStringList{QString("Skipping unknown string pool at %1").arg(poolAt + 8, 0, 16)});
    }
}

// A header size of 0 moves the position back to the package's start, which is where an offset of 0 would point.
void TestResourcePackage::anOffsetOfZeroIsNotThePackagesStart()
{
    const int before = 20;
    QByteArray bytes = strings().build();
    poke16(bytes, HeaderSizeAt, 0);
    poke32(bytes, PackageBuilder::TypePoolOffsetAt, 0);
    poke32(bytes, PackageBuilder::KeyPoolOffsetAt, 0);
    const QByteArray rest = chunk(UnknownType, QByteArray(), QByteArray(PackageHeaderSize - 8, 'x'));
    LogCapture log;
    ResourcePackage package;
    QCOMPARE(load(package, QByteArray(before, 'x') + bytes + rest, before), QString());
    QCOMPARE(log.texts().first(), QString("Skipping unknown string pool at 1c"));
    QCOMPARE(package.refToString(0x7f010000), QString("@#7f010000"));
}

void TestResourcePackage::poolsMayStandAnywhere()
{
    const QByteArray typePool = PoolBuilder().strings({"drawable", "string"}).build();
    const QByteArray keyPool = PoolBuilder().strings({"key"}).build();
    const QByteArray spec = chunk(TypeSpecType, Bytes().u32(1).u32(0).data());
    const QByteArray type = TypeBuilder(2).value(0, Decimal, 7).build();
    QByteArray bytes = PackageBuilder().withoutPools().chunk(spec).chunk(keyPool).chunk(typePool).chunk(type).build();
    poke32(bytes, PackageBuilder::KeyPoolOffsetAt, PackageHeaderSize + spec.size());
    poke32(bytes, PackageBuilder::TypePoolOffsetAt, PackageHeaderSize + spec.size() + keyPool.size());
    LogCapture log;
    ResourcePackage package;
    QCOMPARE(load(package, bytes), QString());
    QCOMPARE(values(package, 0), QStringList{"7"});
    QVERIFY(log.lines().isEmpty());
}

void TestResourcePackage::aPoolAtNeitherOffsetIsLoggedAndIgnored()
{
    const QByteArray notAPool = chunk(StringPoolType, QByteArray(5, '\xff'));
    const QByteArray before = strings().build();
    LogCapture log;
    ResourcePackage package;
    QCOMPARE(load(package, strings().chunk(notAPool).type(threeEntries()).build()), QString());
    QCOMPARE(log.texts(), QStringList{QString("Skipping unknown string pool at %1").arg(before.size() + 8, 0, 16)});
    QCOMPARE(values(package, 0), QStringList{"10"});
}

void TestResourcePackage::thePoolOfTypesIsTestedFirst()
{
    QByteArray bytes = packageOf(threeEntries());
    const int keyPoolAt = int(peek32(bytes, PackageBuilder::KeyPoolOffsetAt));
    poke32(bytes, PackageBuilder::KeyPoolOffsetAt, PackageBuilder::TypePoolAt);
    LogCapture log;
    ResourcePackage package;
    QCOMPARE(load(package, bytes), QString());
    QCOMPARE(values(package, 0), QStringList{"10"});
    QCOMPARE(log.texts(), QStringList{QString("Skipping unknown string pool at %1").arg(keyPoolAt + 8, 0, 16)});
}

void TestResourcePackage::thePoolOfKeysIsLoaded()
{
    QByteArray bytes = strings().keys({"title"}).build();
    const int keyPoolAt = int(peek32(bytes, PackageBuilder::KeyPoolOffsetAt));
    poke32(bytes, keyPoolAt + PoolBuilder::OffsetsAt, 100);
    QCOMPARE(fault(bytes), QString("string extends past stringblock end"));
}

void TestResourcePackage::typeSpecsAreIgnored()
{
    const QByteArray spec = chunk(TypeSpecType, Bytes().u8(99).zeros(3).u32(0x7fffffff).data(), QByteArray(3, '\xff'));
    LogCapture log;
    ResourcePackage package;
    QCOMPARE(load(package, strings().chunk(spec).type(threeEntries()).chunk(spec).build()), QString());
    QCOMPARE(values(package, 0), QStringList{"10"});
    QVERIFY(log.lines().isEmpty());
}

void TestResourcePackage::aTypeSpecHasAnId()
{
    QCOMPARE(fault(strings().chunk(chunk(TypeSpecType)).build()), QString("chunk too short"));
    QCOMPARE(fault(strings().chunk(chunk(TypeSpecType, QByteArray(1, 'x'))).build()), QString());
}

void TestResourcePackage::unexpectedChunksAreLoggedAndSkipped_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("digits");
    QTest::newRow("null") << 0x0000 << "0x0000";
    QTest::newRow("table") << 0x0002 << "0x0002";
    QTest::newRow("document") << 0x0003 << "0x0003";
    QTest::newRow("resource-id map") << 0x0180 << "0x0180";
    QTest::newRow("package") << 0x0200 << "0x0200";
    QTest::newRow("library") << 0x0203 << "0x0203";
    QTest::newRow("largest positive") << 0x7fff << "0x7fff";
    QTest::newRow("top bit") << 0x8000 << "0x8000";
    QTest::newRow("all bits") << 0xffff << "0xffff";
}

void TestResourcePackage::unexpectedChunksAreLoggedAndSkipped()
{
    QFETCH(int, type);
    QFETCH(QString, digits);
    const QByteArray unexpected = chunk(type, QByteArray(), QByteArray(11, '\xff'));
    LogCapture log;
    ResourcePackage package;
    QCOMPARE(load(package, strings().chunk(unexpected).type(threeEntries()).build()), QString());
    QCOMPARE(log.texts(), QStringList{"Skipping unexpected " + digits + " chunk"});
    QCOMPARE(values(package, 0), QStringList{"10"});
}

void TestResourcePackage::debugLinesHaveTheirContext()
{
    LogCapture log;
    ResourcePackage package;
    load(package, strings().chunk(chunk(UnknownType)).chunk(PoolBuilder().build()).build());
    QCOMPARE(log.lines().size(), 2);
    for (const LogCapture::Line &line : log.lines()) {
        QCOMPARE(line.type, QtDebugMsg);
        QCOMPARE(line.category, QString("default"));
        QVERIFY(line.file.endsWith("ResourcePackage.cpp"));
        QVERIFY(line.line > 0);
        QVERIFY(line.function.contains("ResourcePackage::parse"));
    }
}

void TestResourcePackage::theLastByteOfAPackageStartsAChunk()
{
    for (int count = 1; count < 8; ++count)
        QCOMPARE(fault(strings().chunk(QByteArray(count, '\0')).build()), QString("chunk too short"));
    LogCapture log;
    QCOMPARE(fault(strings().chunk(chunk(UnknownType)).build()), QString());
}

// After each chunk the position is back at its start, so the package ends 8 bytes later on the device.
void TestResourcePackage::keepsChunksOfNoSizeAsStepsBack()
{
    LogCapture log;
    const QByteArray bytes = strings().chunk(emptySizeChunk().repeated(3)).type(threeEntries()).build();
    ResourcePackage package;
    QCOMPARE(load(package, bytes + chunk(UnknownType, QByteArray(), QByteArray(16, 'x'))), QString());
    QCOMPARE(log.lines().size(), 4);
    QCOMPARE(values(package, 0), QStringList{"10"});
}

void TestResourcePackage::onlySoManyStepsBackAreTaken()
{
    LogCapture log;
    for (const int count : {Extractor::MaxStepsBack, Extractor::MaxStepsBack + 1}) {
        const QByteArray bytes = strings().chunk(emptySizeChunk().repeated(count)).build();
        const QByteArray rest = chunk(UnknownType, QByteArray(), QByteArray(8 * (count - 1), 'x'));
        QCOMPARE(fault(bytes + rest), count > Extractor::MaxStepsBack ? QString("too many steps back") : QString());
    }
}

void TestResourcePackage::manyChunksOfNoSizeAreRefusedWithAShortLog()
{
    LogCapture log;
    QCOMPARE(fault(strings().chunk(emptySizeChunk().repeated(100000)).build()), QString("too many steps back"));
    QVERIFY(log.lines().size() <= Extractor::MaxStepsBack + 1);
}

void TestResourcePackage::theTypeIdNamesTheTypePool_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("expected");
    const QString outOfRange = QStringLiteral("Typechunk id out of range");
    QTest::newRow("0") << 0 << outOfRange;
    QTest::newRow("first") << 1 << QString();
    QTest::newRow("last") << 2 << QString();
    QTest::newRow("one too many") << 3 << outOfRange;
    QTest::newRow("largest positive") << 0x7f << outOfRange;
}

void TestResourcePackage::theTypeIdNamesTheTypePool()
{
    QFETCH(int, id);
    QFETCH(QString, expected);
    ResourcePackage package;
    const PackageBuilder builder = PackageBuilder().types({"drawable", "string"});
    QCOMPARE(load(package, PackageBuilder(builder).type(TypeBuilder(id).value(0, Decimal, 5)).build()), expected);
    QCOMPARE(values(package, 0, "drawable"), id == 1 ? QStringList{"5"} : QStringList());
    QCOMPARE(values(package, 0, "string"), id == 2 ? QStringList{"5"} : QStringList());
}

void TestResourcePackage::keepsNegativeTypeIds()
{
    for (const int id : {0x80, 0xff}) {
        ResourcePackage package;
        QCOMPARE(load(package, packageOf(TypeBuilder(id).value(0, Decimal, 5))), QString());
        QVERIFY(values(package, 0).isEmpty());
        QVERIFY(values(package, 0, QString()).isEmpty());
    }
}

void TestResourcePackage::aTypeBeforeItsPoolIsRefused()
{
    const QByteArray type = TypeBuilder(1).value(0, Decimal, 5).build();
    const QByteArray pool = PoolBuilder().strings({"string"}).build();
    QByteArray bytes = PackageBuilder().withoutPools().chunk(type).chunk(pool).build();
    poke32(bytes, PackageBuilder::TypePoolOffsetAt, PackageHeaderSize + type.size());
    QCOMPARE(fault(bytes), QString("Typechunk id out of range"));
}

void TestResourcePackage::reservedBytesOfATypeAreIgnored()
{
    QByteArray type = threeEntries().build();
    type.replace(TypeBuilder::TypeIdAt + 1, 3, QByteArray(3, '\xff'));
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type)), QString());
    QCOMPARE(values(package, 0), QStringList{"10"});
}

void TestResourcePackage::theOffsetsMayFillTheChunk()
{
    TypeBuilder type(1);
    type.offset(9, 0xffffffff);
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type)), QString());
    QVERIFY(values(package, 9).isEmpty());
}

void TestResourcePackage::moreOffsetsThanTheChunkHoldsAreRefused_data()
{
    QTest::addColumn<qint64>("count");
    QTest::newRow("one too many") << qint64(11);
    QTest::newRow("just below the wrap") << qint64(0x3fffffff);
    QTest::newRow("4 x count is 0 in 32 bits") << qint64(0x40000000);
    QTest::newRow("4 x count is 4 in 32 bits") << qint64(0x40000001);
    QTest::newRow("largest positive") << qint64(0x7fffffff);
    QTest::newRow("smallest") << qint64(0x80000000);
    QTest::newRow("4 x count is 0 in 32 bits, negative") << qint64(0xc0000000);
    QTest::newRow("-1") << qint64(0xffffffff);
}

void TestResourcePackage::moreOffsetsThanTheChunkHoldsAreRefused()
{
    QFETCH(qint64, count);
    TypeBuilder type(1);
    type.offset(9, 0xffffffff);
    QByteArray bytes = type.build();
    poke32(bytes, TypeBuilder::EntryCountAt, count);
    QCOMPARE(fault(packageOf(bytes)), QString("Bogus entry count in type chunk"));
}

void TestResourcePackage::ofTwoFaultsInATypeTheEntryCountIsTold()
{
    QByteArray type = threeEntries().build();
    poke8(type, TypeBuilder::TypeIdAt, 0);
    QCOMPARE(fault(packageOf(type)), QString("Typechunk id out of range"));
    poke32(type, TypeBuilder::EntryCountAt, 1000);
    QCOMPARE(fault(packageOf(type)), QString("Bogus entry count in type chunk"));
}

void TestResourcePackage::furtherTypeHeaderFieldsAreSkipped()
{
    QByteArray type = threeEntries().build();
    type.insert(threeEntries().offsetsAt(), QByteArray(6, '\x11'));
    poke16(type, HeaderSizeAt, TypeHeaderSize + 6);
    poke32(type, SizeAt, type.size());
    poke32(type, TypeBuilder::EntriesStartAt, TypeHeaderSize + 6 + 3 * 4);
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type)), QString());
    QCOMPARE(values(package, 2), QStringList{"30"});
}

void TestResourcePackage::aTypeHeaderThatEndsTooEarlyIsAFault()
{
    QByteArray type = threeEntries().build();
    // no field of the header can be read, so the type id is 0; the position steps back, the device does not
    for (const int headerSize : {8, 0, 0x8000}) {
        poke16(type, HeaderSizeAt, headerSize);
        QCOMPARE(fault(packageOf(type) + QByteArray(0x9000, 'x')), QString("Typechunk id out of range"));
    }
    poke16(type, HeaderSizeAt, TypeBuilder::ConfigAt + 3);
    QCOMPARE(fault(packageOf(type)), QString("chunk too short"));
    // the rest of the chunk after such a header is negative
    poke16(type, HeaderSizeAt, type.size() + 1);
    QCOMPARE(fault(packageOf(type) + QByteArray(1, 'x')), QString("Bogus entry count in type chunk"));
}

void TestResourcePackage::aConfigurationStaysWithinTheTypeHeader()
{
    QByteArray type = threeEntries().build();
    poke32(type, TypeBuilder::ConfigAt, 65);
    QCOMPARE(fault(packageOf(type) + "x"), QString("boundary out of bounds"));
    poke32(type, TypeBuilder::ConfigAt, 64);
    QCOMPARE(fault(packageOf(type)), QString());
    poke32(type, TypeBuilder::ConfigAt, 36);
    QCOMPARE(fault(packageOf(type)), QString());
}

void TestResourcePackage::valuesKeepTheirConfiguration()
{
    const PackageBuilder builder = strings()
                                       .type(TypeBuilder(1, localeConfig("de")).value(0, Decimal, 1))
                                       .type(TypeBuilder(1).value(0, Decimal, 2))
                                       .type(TypeBuilder(1, localeConfig("fr")).value(0, Decimal, 3));
    ResourcePackage package;
    QCOMPARE(load(package, builder.build()), QString());
    QCOMPARE(byConfig(package, 0), (QMap<QString, QString>{{"", "2"}, {"de", "1"}, {"fr", "3"}}));
}

void TestResourcePackage::equalConfigurationsAreOne()
{
    const PackageBuilder builder = strings()
                                       .type(TypeBuilder(1, localeConfig("de")).value(0, Decimal, 1))
                                       .type(TypeBuilder(1, localeConfig("fr")).value(0, Decimal, 2))
                                       .type(TypeBuilder(1, localeConfig("de")).value(0, Decimal, 3).value(1, 0x12, 0));
    ResourcePackage package;
    QCOMPARE(load(package, builder.build()), QString());
    QCOMPARE(values(package, 0), (QStringList{"1", "2", "3"}));
    QCOMPARE(byConfig(package, 0), (QMap<QString, QString>{{"de", "3"}, {"fr", "2"}}));
    QCOMPARE(byConfig(package, 1), (QMap<QString, QString>{{"de", "false"}}));
}

void TestResourcePackage::valuesKeepTheOrderOfTheFile()
{
    PackageBuilder builder = PackageBuilder().types({"drawable", "string"});
    QStringList expected;
    for (int i = 0; i < 50; ++i) {
        const int value = (i * 37) % 50;
        builder.type(TypeBuilder(2, ConfigBuilder().mcc(value).build()).value(3, Decimal, value).value(1, Decimal, -1));
        builder.type(TypeBuilder(1).value(3, Decimal, -2));
        expected.append(QString::number(value));
    }
    ResourcePackage package;
    QCOMPARE(load(package, builder.build()), QString());
    QCOMPARE(values(package, 3), expected);
    QCOMPARE(values(package, 1).size(), 50);
    QCOMPARE(values(package, 2), QStringList());
}

void TestResourcePackage::typesAreKeptApart()
{
    const PackageBuilder builder = PackageBuilder()
                                       .types({"string", "drawable", "string"})
                                       .type(TypeBuilder(2).value(0, Decimal, 2))
                                       .type(TypeBuilder(1).value(0, Decimal, 1))
                                       .type(TypeBuilder(3).value(0, Decimal, 3));
    ResourcePackage package;
    QCOMPARE(load(package, builder.build()), QString());
    // a name belongs to the first type that has it
    QCOMPARE(values(package, 0, "string"), QStringList{"1"});
    QCOMPARE(values(package, 0, "drawable"), QStringList{"2"});
    QCOMPARE(values(package, 0, "color"), QStringList());
    QCOMPARE(values(package, -1, "string"), QStringList());
}

// A device may deliver less than the whole offset array at once, so each offset is read separately.
void TestResourcePackage::theOffsetArrayIsReadInPieces()
{
    SequentialDevice device(packageOf(TypeBuilder(1).value(0, Decimal, 5).value(999, Decimal, 6)));
    device.setLargestRead(256);
    ResourcePackage package;
    QCOMPARE(load(package, device), QString());
    QCOMPARE(values(package, 999), QStringList{"6"});
}

void TestResourcePackage::offsetsMayBeInAnyOrder()
{
    TypeBuilder type(1);
    for (const int entry : {4, 0, 3, 1, 2})
        type.value(entry, Decimal, 100 + entry);
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type)), QString());
    for (int entry = 0; entry < 5; ++entry)
        QCOMPARE(values(package, entry), QStringList{QString::number(100 + entry)});
}

void TestResourcePackage::theLaterOfTwoEntriesWithOneOffsetWins()
{
    TypeBuilder type(1);
    type.value(0, Decimal, 1).value(1, Decimal, 2).offset(2, 0).offset(3, EntrySize).offset(4, 0);
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type)), QString());
    QCOMPARE(values(package, 0), QStringList());
    QCOMPARE(values(package, 1), QStringList());
    QCOMPARE(values(package, 2), QStringList());
    QCOMPARE(values(package, 3), QStringList{"2"});
    QCOMPARE(values(package, 4), QStringList{"1"});
}

void TestResourcePackage::anEntryWithoutAnOffsetHasNoValue()
{
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(TypeBuilder(1).value(3, Decimal, 4).offset(5, 0xffffffff))), QString());
    for (int entry = 0; entry < 8; ++entry)
        QCOMPARE(values(package, entry), entry == 3 ? QStringList{"4"} : QStringList());
}

void TestResourcePackage::offsetsThatNoEntryStartsAtAreHarmless()
{
    TypeBuilder type(1);
    type.value(0, Decimal, 1).offset(1, 8).offset(2, EntrySize).offset(3, 0x7fffffff).offset(4, 0x80000000);
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type)), QString());
    QCOMPARE(values(package, 0), QStringList{"1"});
    for (int entry = 1; entry < 5; ++entry)
        QCOMPARE(values(package, entry), QStringList());
}

void TestResourcePackage::aGapBeforeTheEntriesIsSkipped()
{
    for (const int count : {1, 4, 5000}) {
        ResourcePackage package;
        QCOMPARE(load(package, packageOf(threeEntries().gap(count))), QString());
        QCOMPARE(values(package, 2), QStringList{"30"});
    }
}

// The position steps back but the device does not: entries are read at the device's position, and the chunk ends later.
void TestResourcePackage::anEntriesStartTooLowIsAStepBack()
{
    QByteArray type = threeEntries().build();
    poke32(type, TypeBuilder::EntriesStartAt, peek32(type, TypeBuilder::EntriesStartAt) - 4);
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type) + QByteArray(4, 'x')),
             QString("resource table contains entry not in index"));
    QCOMPARE(values(package, 0), QStringList{"10"});
    QCOMPARE(values(package, 2), QStringList{"30"});
}

void TestResourcePackage::anEntriesStartOutOfTheChunkIsAFault()
{
    QByteArray type = threeEntries().build();
    for (const qint64 start : {qint64(type.size() + 1), qint64(0x7fffffff)}) {
        poke32(type, TypeBuilder::EntriesStartAt, start);
        ResourcePackage package;
        QCOMPARE(load(package, packageOf(type)), QString("chunk too short"));
        QCOMPARE(values(package, 0), QStringList());
    }
    // the end of the chunk is still within it
    poke32(type, TypeBuilder::EntriesStartAt, type.size());
    QCOMPARE(fault(packageOf(type)), QString());
}

// The number of bytes to skip is computed in 64 bits, and exceeds 32 bits.
void TestResourcePackage::anEntriesStartOutOfRangeIsAFault()
{
    QByteArray type = threeEntries().build();
    poke32(type, TypeBuilder::EntriesStartAt, 0x80000000);
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type)), QString("chunk too short"));
    QCOMPARE(values(package, 0), QStringList());
}

void TestResourcePackage::aTypeWithoutEntriesIsFine()
{
    QCOMPARE(fault(packageOf(TypeBuilder(1))), QString());
}

void TestResourcePackage::valuesAreStoredAsRead()
{
    TypeBuilder type(1);
    type.value(0, Decimal, 0xffffffff).value(1, 0x80, 5).value(2, 0xff, 0x80000000).value(3, 0, 0);
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type)), QString());
    QCOMPARE(values(package, 0), QStringList{"-1"});
    QCOMPARE(values(package, 1), QStringList{"?ffffffffffffff80/00000005"});
    QCOMPARE(values(package, 2), QStringList{"?ffffffffffffffff/ffffffff80000000"});
    QCOMPARE(values(package, 3), QStringList{QString()});
}

void TestResourcePackage::mapEntriesAreSkippedWhole()
{
    // Items take 12 bytes each. A map of up to 16 KiB may be peeked as a whole, a larger one is not.
    for (const int count : {0, 1, 7, 1100, 1364, 1365, 5000}) {
        const QByteArray bytes = packageOf(TypeBuilder(1).map(0, count).value(1, Decimal, 20).map(2, count));
        for (const QIODevice::OpenMode mode :
             {QIODevice::OpenMode(QIODevice::ReadOnly), QIODevice::ReadOnly | QIODevice::Unbuffered}) {
            SequentialDevice device(bytes, mode);
            ResourcePackage package;
            QCOMPARE(load(package, device), QString());
            QCOMPARE(values(package, 0), QStringList());
            QCOMPARE(values(package, 1), QStringList{"20"});
            QCOMPARE(values(package, 2), QStringList());
        }
    }
}

void TestResourcePackage::mapEntriesWithALongerHeaderAreSkippedWhole()
{
    QByteArray map = mapEntry(2);
    poke16(map, 0, 21);
    map.insert(16, QByteArray(5, '\xff'));
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(TypeBuilder(1).entry(0, map).value(1, Decimal, 20))), QString());
    QCOMPARE(values(package, 1), QStringList{"20"});
}

// 0x15555556 * 12 is 8 in 32 bits.
void TestResourcePackage::hugeMapsAreOutOfBounds()
{
    for (const qint64 count : {2, 0x15555556, 0x7fffffff}) {
        QByteArray map = mapEntry(1);
        poke32(map, 12, count);
        QCOMPARE(fault(packageOf(TypeBuilder(1).entry(0, map))), QString("chunk too short"));
    }
}

void TestResourcePackage::aNegativeMapCountIsAStepBack()
{
    QByteArray map = mapEntry(0);
    poke32(map, 12, -1);
    // the next entry seems to be 12 bytes before its place
    TypeBuilder type(1);
    type.entry(0, map).offset(1, map.size() - 12).unlisted(simpleEntry(Decimal, 5));
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type) + QByteArray(12, 'x')),
             QString("resource table contains entry not in index"));
    QCOMPARE(values(package, 1), QStringList{"5"});
}

void TestResourcePackage::longerEntryHeadersAreSkipped()
{
    QByteArray entry = simpleEntry(Decimal, 5);
    poke16(entry, 0, 13);
    entry.insert(8, QByteArray(5, '\xff'));
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(TypeBuilder(1).entry(0, entry).value(1, Decimal, 6))), QString());
    QCOMPARE(values(package, 0), QStringList{"5"});
    QCOMPARE(values(package, 1), QStringList{"6"});
}

// An entry of size -8 ends at its start, so the next entry on the device is read as the same entry again.
void TestResourcePackage::keepsNegativeEntrySizesAsStepsBack()
{
    QByteArray back = simpleEntry(Decimal, 1);
    poke16(back, 0, -8);
    ResourcePackage package;
    const QByteArray bytes = packageOf(TypeBuilder(1).entry(0, back).value(1, Decimal, 2));
    QCOMPARE(load(package, bytes + simpleEntry(Decimal, 3)), QString());
    QCOMPARE(values(package, 0), (QStringList{"1", "2"}));
    QCOMPARE(values(package, 1), QStringList{"3"});
}

void TestResourcePackage::onlyTheMapFlagCounts()
{
    TypeBuilder type(1);
    type.entry(0, simpleEntry(Decimal, 5, 0x0002)).entry(1, simpleEntry(Decimal, 6, 0xfffe));
    QByteArray map = mapEntry(1);
    poke16(map, 2, 0xffff);
    type.entry(2, map).value(3, Decimal, 7);
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type)), QString());
    QCOMPARE(values(package, 0), QStringList{"5"});
    QCOMPARE(values(package, 1), QStringList{"6"});
    QCOMPARE(values(package, 2), QStringList());
    QCOMPARE(values(package, 3), QStringList{"7"});
}

void TestResourcePackage::theKeyOfAnEntryIsIgnored()
{
    TypeBuilder type(1);
    type.entry(0, simpleEntry(Decimal, 5, 0, -1)).entry(1, simpleEntry(Decimal, 6, 0, 1000)).entry(2, mapEntry(0, -1));
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(type)), QString());
    QCOMPARE(values(package, 0), QStringList{"5"});
    QCOMPARE(values(package, 1), QStringList{"6"});
}

void TestResourcePackage::theSizeOfAValueIsIgnored()
{
    QByteArray entry = simpleEntry(Decimal, 5);
    poke16(entry, 8, 0xffff);
    poke8(entry, 10, 0xff);
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(TypeBuilder(1).entry(0, entry))), QString());
    QCOMPARE(values(package, 0), QStringList{"5"});
}

void TestResourcePackage::aValueThatIsCutShortIsKeptAsNull()
{
    ResourcePackage package;
    QCOMPARE(load(package, packageOf(TypeBuilder(1).entry(0, simpleEntry(Decimal, 5).left(8)))),
             QString("chunk too short"));
    QCOMPARE(values(package, 0), QStringList{QString()});
}

void TestResourcePackage::valuesBeforeAFaultAreKept()
{
    const TypeBuilder faulty = TypeBuilder(1, localeConfig("de")).value(1, Decimal, 2).unlisted("x");
    ResourcePackage package;
    QCOMPARE(load(package, strings().type(TypeBuilder(1).value(0, Decimal, 1)).type(faulty).build()),
             QString("resource table contains entry not in index"));
    QCOMPARE(package.name(), QString("org.example.app"));
    QCOMPARE(values(package, 0), QStringList{"1"});
    QCOMPARE(byConfig(package, 1), (QMap<QString, QString>{{"de", "2"}}));
}

void TestResourcePackage::nothingIsReadAfterAFault()
{
    const TypeBuilder later = TypeBuilder(1).value(0, Decimal, 1);
    LogCapture log;
    ResourcePackage package;
    QCOMPARE(load(package, strings().type(TypeBuilder(0)).type(later).chunk(chunk(UnknownType)).build()),
             QString("Typechunk id out of range"));
    QCOMPARE(values(package, 0), QStringList());
    QVERIFY(log.lines().isEmpty());

    // this also holds within a type chunk: after an entry that exceeds the chunk, the next one is not read
    QByteArray runaway = simpleEntry(Decimal, 1);
    poke16(runaway, 0, 1000);
    QCOMPARE(fault(packageOf(TypeBuilder(1).entry(0, runaway).unlisted("x"))), QString("chunk too short"));
}

void TestResourcePackage::copiesAreIndependent()
{
    ResourcePackage package;
    load(package, packageOf(TypeBuilder(1).value(0, Decimal, 1)));
    const ResourcePackage copy = package;
    load(package, PackageBuilder(2, "other").types({"drawable"}).type(TypeBuilder(1).value(0, Decimal, 2)).build());
    QCOMPARE(copy.id(), 0x7f);
    QCOMPARE(copy.name(), QString("org.example.app"));
    QCOMPARE(values(copy, 0), QStringList{"1"});
    QCOMPARE(copy.refToString(0x7f010000), QString("@string/0"));
    QCOMPARE(package.refToString(0x7f010000), QString("@drawable/0"));
}

void TestResourcePackage::hugeClaimsTakeNoMemory()
{
    QByteArray type = threeEntries().build();
    poke32(type, SizeAt, 0x30000000);
    poke32(type, TypeBuilder::EntryCountAt, 0x08000000);
    QByteArray bytes = packageOf(type);
    poke32(bytes, SizeAt, 0x7fffffff);
    QCOMPARE(fault(bytes), QString("file too short"));
}

void TestResourcePackage::everyPrefixIsRefused()
{
    LogCapture log;
    const QByteArray good = PackageBuilder()
                                .types({"string", "drawable"})
                                .keys({"title"})
                                .chunk(chunk(TypeSpecType, Bytes().u32(1).u32(0).data()))
                                .type(threeEntries())
                                .type(TypeBuilder(2, localeConfig("de")).value(0, Decimal, 4))
                                .build();
    QCOMPARE(fault(good), QString());
    for (int size = 0; size < good.size(); ++size) {
        const std::vector<char> block(good.cbegin(), good.cbegin() + size);
        for (const int atEnd : {0, -1}) {
            SequentialDevice device(QByteArray::fromRawData(block.data(), size));
            device.setAnswerAtEnd(atEnd);
            ResourcePackage package;
            QVERIFY2(!load(package, device).isEmpty(), qPrintable(QString::number(size)));
            visit(package);
        }
    }
}

void TestResourcePackage::devicesThatDeliverLittleAreRefused()
{
    for (const int largestRead : {0, 1, 3, 255}) {
        SequentialDevice device(packageOf(threeEntries()));
        device.setLargestRead(largestRead);
        ResourcePackage package;
        QVERIFY(!load(package, device).isEmpty());
        QVERIFY(package.name().isEmpty());
        visit(package);
    }
}

// every error text

void TestResourcePackage::typechunkIdOutOfRange()
{
    QCOMPARE(fault(packageOf(TypeBuilder(2))), QString("Typechunk id out of range"));
}

void TestResourcePackage::bogusEntryCountInTypeChunk()
{
    QByteArray type = TypeBuilder(1).build();
    poke32(type, TypeBuilder::EntryCountAt, 1);
    QCOMPARE(fault(packageOf(type)), QString("Bogus entry count in type chunk"));
}

void TestResourcePackage::resourceTableContainsEntryNotInIndex_data()
{
    QTest::addColumn<QByteArray>("type");
    const QByteArray entry = simpleEntry(Decimal, 5);
    QTest::newRow("no offsets, one byte") << TypeBuilder(1).unlisted("x").build();
    QTest::newRow("no offsets, an entry") << TypeBuilder(1).unlisted(entry).build();
    QTest::newRow("no entry has an offset") << TypeBuilder(1).offset(3, 0xffffffff).unlisted(entry).build();
    QTest::newRow("before the entries") << TypeBuilder(1).unlisted("pad.").value(0, Decimal, 1).build();
    QTest::newRow("between entries")
        << TypeBuilder(1).value(0, Decimal, 1).unlisted(entry).value(1, Decimal, 2).build();
    QTest::newRow("after the entries") << TypeBuilder(1).value(0, Decimal, 1).unlisted(QByteArray(1, '\0')).build();
    QTest::newRow("past all offsets") << TypeBuilder(1).value(1, Decimal, 1).offset(0, 8).unlisted(entry).build();
}

void TestResourcePackage::resourceTableContainsEntryNotInIndex()
{
    QFETCH(QByteArray, type);
    QCOMPARE(fault(packageOf(type)), QString("resource table contains entry not in index"));
}

void TestResourcePackage::chunkTooShort()
{
    QByteArray bytes = strings().build();
    poke16(bytes, HeaderSizeAt, bytes.size() + 1);
    QCOMPARE(fault(bytes), QString("chunk too short"));
}

void TestResourcePackage::fileTooShort()
{
    QCOMPARE(fault(strings().build().chopped(1)), QString("file too short"));
}

void TestResourcePackage::boundaryOutOfBounds()
{
    QByteArray inner = chunk(UnknownType);
    poke32(inner, SizeAt, 9);
    QCOMPARE(fault(strings().chunk(inner).build()), QString("boundary out of bounds"));
    // a chunk without a valid frame is not logged
    LogCapture log;
    fault(strings().chunk(inner).build());
    QVERIFY(log.lines().isEmpty());
}

void TestResourcePackage::tooManyStepsBack()
{
    LogCapture log;
    const QByteArray chunks = emptySizeChunk().repeated(Extractor::MaxStepsBack + 1);
    QCOMPARE(fault(strings().chunk(chunks).build()), QString("too many steps back"));
}

void TestResourcePackage::badInput()
{
    QByteArray bytes = strings().build();
    poke32(bytes, PackageBuilder::TypePoolAt + PoolBuilder::StylesStartAt,
           peek32(bytes, PackageBuilder::TypePoolAt + PoolBuilder::StringsStartAt) + 7);
    QCOMPARE(fault(bytes), QString("bad input"));
}

void TestResourcePackage::stringExtendsPastStringblockEnd()
{
    QByteArray bytes = strings().build();
    poke32(bytes, PackageBuilder::TypePoolAt + PoolBuilder::OffsetsAt, 0x7ffffffe);
    QCOMPARE(fault(bytes), QString("string extends past stringblock end"));
}

void TestResourcePackage::stringPoolContainsBadCount()
{
    QByteArray bytes = strings().build();
    poke32(bytes, PackageBuilder::TypePoolAt + PoolBuilder::CountAt, -1);
    QCOMPARE(fault(bytes), QString("string pool contains bad count"));
}

void TestResourcePackage::tooLongTypeNameInResourceTable()
{
    const auto bytes = [](int length) {
        return PackageBuilder().types({"a", QString(length, QLatin1Char('t'))}).build();
    };
    QCOMPARE(fault(bytes(ResourcePackage::MaxTypeNameLength)), QString());
    QCOMPARE(fault(bytes(ResourcePackage::MaxTypeNameLength + 1)), QString("too long type name in resource table"));
    // Types above the highest type id are never rendered.
    QStringList names;
    for (int i = 0; i < 0xff; ++i)
        names.append(QString::number(i));
    names.append(QString(ResourcePackage::MaxTypeNameLength + 1, QLatin1Char('t')));
    QCOMPARE(fault(PackageBuilder().types(names).build()), QString());
}

void TestResourcePackage::tooManyValuesOfOneResource()
{
    const auto bytes = [](int values) {
        const QByteArray type = TypeBuilder(1, ConfigBuilder(4).build()).value(0, Decimal, 1).build();
        return PackageBuilder().types({"a"}).chunk(type.repeated(values)).build();
    };
    QCOMPARE(fault(bytes(ResourcePackage::MaxValues)), QString());
    QCOMPARE(fault(bytes(ResourcePackage::MaxValues + 1)), QString("too many values of one resource"));
}

void TestResourcePackage::tooManyValuesInPackage()
{
    constexpr int Chunks = 64;
    constexpr int ValuesOfAChunk = ResourcePackage::MaxEntries / Chunks;
    const auto bytes = [](int more) {
        TypeBuilder type(1, ConfigBuilder(4).build());
        for (int i = 0; i < ValuesOfAChunk; ++i)
            type.value(i, Decimal, i);
        PackageBuilder package;
        package.types({"a"}).chunk(type.build().repeated(Chunks));
        for (int i = 0; i < more; ++i)
            package.type(TypeBuilder(1).value(0, Decimal, 1));
        return package.build();
    };
    QCOMPARE(fault(bytes(0)), QString());
    QCOMPARE(fault(bytes(1)), QString("too many values in package"));
}

QTEST_GUILESS_MAIN(TestResourcePackage)
#include "tst_resourcepackage.moc"
