// SPDX-License-Identifier: LGPL-2.1-or-later
#include "normalize/TableRewriter.h"

#include "ApkResources.h"
#include "Bytes.h"
#include "Cost.h"
#include "Devices.h"
#include "EncodedTable.h"
#include "LogCapture.h"
#include "TableBuilder.h"
#include "archive/ZipArchive.h"
#include "format/ResourceTable.h"
#include "normalize/TypeRewriter.h"

#include <QDir>
#include <QtTest>

#include <cstring>
#include <memory>

using namespace SorrelKit;
using namespace fixture;

Q_DECLARE_METATYPE(fixture::TableEncoding)

namespace {

constexpr int Reference = 0x01;
constexpr int String = 0x03;
constexpr int Decimal = 0x10;
constexpr int HeaderSizeAt = 2;
constexpr int SizeAt = 4;
constexpr int TableHeaderSize = 12;
constexpr int UnknownType = 0x0777;

const TableEncoding everyEncoding[] = {TableEncoding::Dense, TableEncoding::ShortOffsets, TableEncoding::Sparse};

/// An encoding of a table. The rewriter makes the same table from all of them.
struct Form {
    TableEncoding encoding = TableEncoding::Dense;
    bool isCompact = false;
};

QByteArray simple(const Form &form, int dataType, qint64 data, int key)
{
    constexpr int PublicFlag = 2;
    return form.isCompact ? compactEntry(dataType, data, PublicFlag, key)
                          : simpleEntry(dataType, data, PublicFlag, key);
}

/// A map of numbered items.
QByteArray map(int itemCount)
{
    QByteArray bytes = mapEntry(itemCount, 3);
    poke32(bytes, 8, 0x01030005); // parent
    for (int i = 0; i < itemCount; ++i)
        bytes.replace(16 + i * 12, 12, Bytes().u32(0x01010000 + i).u16(8).u8(0).u8(Decimal).u32(1000 + i).data());
    return bytes;
}

/// A table with values and maps in several configurations, a type spec, and a chunk of an unknown type.
TableBuilder someTable(const Form &form)
{
    const auto type = [&form](int id, const ConfigBuilder &config) {
        return TypeBuilder(id, config.build()).encoding(form.encoding);
    };
    const QByteArray spec = chunk(0x0202, Bytes().u8(1).zeros(3).u32(1).data(), Bytes().u32(4).data());
    return TableBuilder()
        .strings({"Notes", "Notizen", "Bloc", "res/icon.png"})
        .package(
            PackageBuilder()
                .types({"string", "drawable", "style"})
                .keys({"title", "icon", "theme", "more"})
                .chunk(spec)
                .type(type(1, ConfigBuilder())
                          .entry(0, simple(form, String, 0, 0))
                          .entry(3, simple(form, Reference, 0x7f010000, 1))
                          .entry(7, simple(form, Decimal, 0x80000001, 2)))
                .type(type(1, ConfigBuilder(36).locale("de", "AT"))
                          .entry(0, simple(form, String, 1, 0))
                          .entry(7, simple(form, Decimal, 5, 3)))
                .type(type(1, ConfigBuilder(28).locale("fr")).entry(3, simple(form, String, 2, 1)))
                .chunk(chunk(UnknownType, "head", "body"))
                .type(type(2, ConfigBuilder(52).density(240)).entry(1, simple(form, String, 3, 1)).entry(2, map(0)))
                .type(type(3, ConfigBuilder()).entry(0, map(2)).entry(5, map(3))))
        .chunk(chunk(UnknownType, {}, "tail"));
}

QByteArray rewritten(const QByteArray &table)
{
    FormatFault fault = FormatFault::None;
    QByteArray bytes = TableRewriter::rewritten(table, &fault);
    if (fault != FormatFault::None)
        qWarning("%s", qPrintable(formatFaultText(fault)));
    return bytes;
}

QString faultOf(const QByteArray &table)
{
    FormatFault fault = FormatFault::NoDocument; // which no table has
    const QByteArray bytes = TableRewriter::rewritten(table, &fault);
    if (bytes.isEmpty() != (fault != FormatFault::None))
        return "either a fault or a table, not both";
    if (fault != FormatFault::None && TableRewriter::isClassic(table))
        return "a faulty table is not classic";
    return formatFaultText(fault);
}

/// A table with this type chunk.
QByteArray tableOf(const QByteArray &type)
{
    return TableBuilder()
        .strings({"a", "b"})
        .package(PackageBuilder().types({"string"}).keys({"key"}).chunk(type))
        .build();
}

QByteArray tableOf(const TypeBuilder &type)
{
    return tableOf(type.build());
}

/// Whether libsorrel accepts @p table.
bool loads(const QByteArray &table)
{
    SequentialDevice device(table);
    ApkResources resources;
    const LogCapture log;
    return resources.load(&device);
}

QStringList lookups(const QByteArray &table)
{
    const LogCapture log;
    SequentialDevice device(table);
    ApkResources resources;
    if (!resources.load(&device))
        return {"not loaded"};
    QStringList lines;
    const auto append = [&lines](const QString &prefix, const QMap<QString, QString> &texts) {
        for (auto it = texts.cbegin(); it != texts.cend(); ++it)
            lines.append(QString("%1 [%2] %3").arg(prefix, it.key(), it.value()));
    };
    for (const char *type : {"string", "drawable", "style"}) {
        for (int entry = 0; entry < 10; ++entry) {
            const QString reference = QString("@%1/%2").arg(type).arg(entry);
            lines.append(reference + ": " + resources.lookupAll(reference).join('|'));
            append("configuration", resources.lookupAllByConfig(reference));
            append("locale", resources.lookupByLocale(reference, 5));
        }
    }
    return lines;
}

/// Every value in the type chunks of @p table, by type, configuration and index.
QStringList values(const QByteArray &table)
{
    QStringList lines;
    const ChunkView whole = ChunkView::at(ByteView(table), 0);
    for (ChunkList chunks(whole.bytes(), whole.headerSize()); chunks.hasNext();) {
        const ChunkView package = chunks.next();
        if (package.type() != ChunkType::Package)
            continue;
        for (ChunkList inner(package.bytes(), package.headerSize()); inner.hasNext();) {
            const ChunkView child = inner.next();
            if (child.type() != ChunkType::Type)
                continue;
            const TypeChunk type(child);
            lines.append(QString("%1 %2")
                             .arg(type.typeId())
                             .arg(QString::fromLatin1(type.configurationBytes().toByteArray().toHex())));
            for (int index = 0; index < TypeChunk::MaxEntries; ++index) {
                const EntryView entry = type.entryAt(type.offset(index));
                if (!entry.isValid())
                    continue;
                const QString what = entry.isMap()
                                         ? QString::fromLatin1(entry.bytes().toByteArray().toHex())
                                         : QString("%1:%2").arg(int(entry.value().type)).arg(entry.value().data);
                lines.append(QString("  %1 %2 %3").arg(index).arg(entry.key()).arg(what));
            }
        }
    }
    return lines;
}

/// Rewrites a copy of @p table in a heap block of its exact size, so that a sanitizer reports each read beyond it.
QByteArray rewrittenCopy(const QByteArray &table)
{
    const auto copy = std::make_unique<char[]>(size_t(table.size()));
    std::memcpy(copy.get(), table.constData(), size_t(table.size()));
    QByteArray result = TableRewriter::rewritten(QByteArray::fromRawData(copy.get(), table.size()));
    result.detach(); // from the copy, because a classic table is returned as it is
    return result;
}

void addForms()
{
    QTest::addColumn<TableEncoding>("encoding");
    QTest::addColumn<bool>("isCompact");
    for (const bool isCompact : {false, true}) {
        const char *entries = isCompact ? "compact" : "classic";
        QTest::addRow("dense, %s entries", entries) << TableEncoding::Dense << isCompact;
        QTest::addRow("short offsets, %s entries", entries) << TableEncoding::ShortOffsets << isCompact;
        QTest::addRow("sparse, %s entries", entries) << TableEncoding::Sparse << isCompact;
    }
}

} // namespace

class TestTableRewriter : public QObject
{
    Q_OBJECT

private slots:
    void makesTheDenseTwin_data() { addForms(); }
    void makesTheDenseTwin();
    void libsorrelAnswersAsForTheDenseTwin_data() { addForms(); }
    void libsorrelAnswersAsForTheDenseTwin();
    void aClassicTableIsLeftAlone();
    void compiledTablesComeBackFromEveryForm_data();
    void compiledTablesComeBackFromEveryForm();
    void tablesWithoutTypesAreClassic();

    void compactEntriesLoseWhatMakesThemCompact();
    void sharedValuesAreRepeated();
    void sharedMapsStayShared();
    void mapsThatOverlapAreTakenApart();
    void gapsBetweenEntriesAreLeftOut();
    void aGapBehindTheOffsetsStaysInAClassicType();
    void entriesAreSortedByIndex();
    void entriesMayHaveFurtherHeaders();
    void ofSparseDuplicatesTheFirstCounts();
    void whatASearchDoesNotFindIsNoEntry();
    void emptyTypesStayEmpty();
    void unknownFlagsStay();
    void headersStayToTheLastByte();
    void poolsMayFollowTypes();
    void packagesMayHaveNoPools();
    void everyPackageIsRewritten();
    void bytesBehindTheTableStay();
    void aLongerTableHeaderIsCut();

    // every fault
    void notAResourceTable();
    void damagedTableHeader();
    void damagedPackageHeader();
    void damagedChunkInTable();
    void damagedChunkInPackage();
    void tableWithinTable();
    void stringPoolNotFound();
    void damagedType_data();
    void damagedType();
    void damagedEntriesGo_data();
    void damagedEntriesGo();
    void sizesThatReachIntoOtherEntries();
    void errorDamagedEntry();
    void tooMuchMemory();
    void theFaultNeedNotBeAskedFor();

    void sharedMapsOfManyItemsTakeNoMemory();
    void resultsUpToTheCeiling();
    void takesTheTableAndTheResult();
    void everyPrefixIsRefused_data() { addForms(); }
    void everyPrefixIsRefused();
    void everyByteMayBeDamaged_data() { addForms(); }
    void everyByteMayBeDamaged();
};

void TestTableRewriter::makesTheDenseTwin()
{
    QFETCH(TableEncoding, encoding);
    QFETCH(bool, isCompact);
    const QByteArray table = someTable({encoding, isCompact}).build();
    const QByteArray twin = someTable({}).build();
    QCOMPARE(TableRewriter::isClassic(table), encoding == TableEncoding::Dense && !isCompact);
    QCOMPARE(rewritten(table), twin);
    QCOMPARE(values(table), values(twin));
    QCOMPARE(rewritten(rewritten(table)), twin);
}

void TestTableRewriter::libsorrelAnswersAsForTheDenseTwin()
{
    QFETCH(TableEncoding, encoding);
    QFETCH(bool, isCompact);
    const QByteArray table = someTable({encoding, isCompact}).build();
    const QByteArray twin = someTable({}).build();
    QVERIFY(lookups(twin).contains("locale [de-AT] Notizen"));
    QVERIFY(lookups(twin).contains("configuration [hdpi] res/icon.png"));
    QCOMPARE(lookups(rewritten(table)), lookups(twin));
    QCOMPARE(lookups(table) == lookups(twin), TableRewriter::isClassic(table));
}

void TestTableRewriter::aClassicTableIsLeftAlone()
{
    const QByteArray table = someTable({}).build();
    QVERIFY(TableRewriter::isClassic(table));
    QVERIFY(rewritten(table).constData() == table.constData()); // without a copy
}

void TestTableRewriter::compiledTablesComeBackFromEveryForm_data()
{
    QTest::addColumn<QString>("package");
    for (const QString &package : QDir(SORREL_SAMPLES_DIR).entryList({"*.aapt.apk", "*.aapt2.apk"}, QDir::Files))
        QTest::newRow(qPrintable(package)) << package;
}

void TestTableRewriter::compiledTablesComeBackFromEveryForm()
{
    QFETCH(QString, package);
    ZipArchive archive(QDir(SORREL_SAMPLES_DIR).filePath(package));
    QVERIFY(archive.open());
    const QByteArray table = archive.file("resources.arsc", TableRewriter::MaxTableBytes);
    QVERIFY(TableRewriter::isClassic(table));
    const QStringList expected = values(table);
    for (const bool isCompact : {false, true}) {
        for (const TableEncoding encoding : everyEncoding) {
            const QByteArray other = encodedTable(table, encoding, isCompact);
            QCOMPARE(other == table, encoding == TableEncoding::Dense && !isCompact);
            // A sparse type does not store how many resources follow the last one with a value.
            if (encoding == TableEncoding::Sparse)
                QCOMPARE(values(rewritten(other)), expected);
            else
                QCOMPARE(rewritten(other), table);
            QVERIFY(loads(rewritten(other)));
        }
    }
}

void TestTableRewriter::tablesWithoutTypesAreClassic()
{
    QVERIFY(TableRewriter::isClassic(TableBuilder().build()));
    QVERIFY(TableRewriter::isClassic(TableBuilder().strings({}).package(PackageBuilder()).build()));
}

void TestTableRewriter::compactEntriesLoseWhatMakesThemCompact()
{
    const QByteArray table = tableOf(TypeBuilder(1).entry(0, compactEntry(0x1d, 0xff112233, 0x16, 0xfffe)));
    QCOMPARE(rewritten(table), tableOf(TypeBuilder(1).entry(0, simpleEntry(0x1d, 0xff112233, 0x16, 0xfffe))));
    // With the map flag, the simple entry would become a map.
    const QByteArray mapToo = tableOf(TypeBuilder(1).entry(0, compactEntry(Decimal, 1, EntryView::MapFlag)));
    QCOMPARE(rewritten(mapToo), tableOf(TypeBuilder(1).entry(0, simpleEntry(Decimal, 1))));
}

void TestTableRewriter::sharedValuesAreRepeated()
{
    const QByteArray twin =
        tableOf(TypeBuilder(1).value(0, Decimal, 7).value(1, Decimal, 8).value(4, Decimal, 7).value(6, Decimal, 8));
    for (const TableEncoding encoding : everyEncoding) {
        const QByteArray table = tableOf(
            TypeBuilder(1).encoding(encoding).value(0, Decimal, 7).value(1, Decimal, 8).offset(4, 0).offset(6, 16));
        QVERIFY(!TableRewriter::isClassic(table));
        QCOMPARE(rewritten(table), twin);
        QCOMPARE(values(table), values(twin));
    }
    const QByteArray compact = tableOf(
        TypeBuilder(1).entry(0, compactEntry(Decimal, 7)).entry(1, compactEntry(Decimal, 8)).offset(4, 0).offset(6, 8));
    QCOMPARE(rewritten(compact), twin);
}

void TestTableRewriter::sharedMapsStayShared()
{
    const TypeBuilder classic = TypeBuilder(1).entry(0, map(2)).value(1, Decimal, 1).offset(2, 0).offset(3, 0);
    QVERIFY(TableRewriter::isClassic(tableOf(classic)));
    QVERIFY(loads(tableOf(classic)));
    // The map takes the position of the first resource that shares it.
    const TypeBuilder other = TypeBuilder(1)
                                  .encoding(TableEncoding::Sparse)
                                  .entry(1, simpleEntry(Decimal, 1))
                                  .offset(0, 16)
                                  .offset(2, 16)
                                  .entry(3, map(2));
    QCOMPARE(rewritten(tableOf(other)), tableOf(classic));
    QCOMPARE(values(tableOf(other)), values(tableOf(classic)));
}

void TestTableRewriter::mapsThatOverlapAreTakenApart()
{
    // The only item of the map at 0 contains an empty map. The end of that map is the start of a value.
    QByteArray outer = map(1);
    outer.replace(12, 16, Bytes().u32(1).u16(16).u16(1).u32(9).u32(0).data());
    const QByteArray table =
        tableOf(TypeBuilder(1).entry(0, outer).entry(2, QByteArray(4, '\0')).offset(1, 16).offset(2, 0));
    const QByteArray inner = Bytes().u16(16).u16(1).u32(9).u32(0).u32(0).data();
    const QByteArray twin = tableOf(TypeBuilder(1).entry(0, outer).entry(1, inner).offset(2, 0));
    QVERIFY(!TableRewriter::isClassic(table));
    QCOMPARE(rewritten(table), twin);
    QCOMPARE(values(table), values(twin));
}

void TestTableRewriter::gapsBetweenEntriesAreLeftOut()
{
    const QByteArray twin = tableOf(TypeBuilder(1).value(0, Decimal, 7).value(1, Decimal, 8));
    const QByteArray gap(8, '\x55');
    const QByteArray before = tableOf(TypeBuilder(1).unlisted(gap).value(0, Decimal, 7).value(1, Decimal, 8));
    const QByteArray between = tableOf(TypeBuilder(1).value(0, Decimal, 7).unlisted(gap).value(1, Decimal, 8));
    const QByteArray behind = tableOf(TypeBuilder(1).value(0, Decimal, 7).value(1, Decimal, 8).unlisted(gap));
    for (const QByteArray &table : {before, between, behind}) {
        QVERIFY(!TableRewriter::isClassic(table));
        QVERIFY(!loads(table));
        QCOMPARE(rewritten(table), twin);
    }
}

void TestTableRewriter::aGapBehindTheOffsetsStaysInAClassicType()
{
    const TypeBuilder type = TypeBuilder(1).value(0, Decimal, 7).gap(12);
    QVERIFY(TableRewriter::isClassic(tableOf(type)));
    QVERIFY(loads(tableOf(type)));
    QCOMPARE(rewritten(tableOf(type)), tableOf(type));
    QCOMPARE(rewritten(tableOf(TypeBuilder(type).encoding(TableEncoding::Sparse))),
             tableOf(TypeBuilder(1).value(0, Decimal, 7)));
}

void TestTableRewriter::entriesAreSortedByIndex()
{
    const QByteArray twin = tableOf(TypeBuilder(1).value(0, Decimal, 7).entry(1, map(1)).value(2, Decimal, 8));
    for (const TableEncoding encoding : everyEncoding) {
        const QByteArray table =
            tableOf(TypeBuilder(1).encoding(encoding).value(2, Decimal, 8).entry(1, map(1)).value(0, Decimal, 7));
        QVERIFY(!TableRewriter::isClassic(table));
        QCOMPARE(rewritten(table), twin);
    }
}

void TestTableRewriter::entriesMayHaveFurtherHeaders()
{
    const QByteArray entry = Bytes().u16(12).u16(0).u32(1).u32(0x77777777).u16(8).u8(0).u8(Decimal).u32(5).data();
    const QByteArray table = tableOf(TypeBuilder(1).encoding(TableEncoding::Sparse).entry(3, entry));
    QCOMPARE(rewritten(table), tableOf(TypeBuilder(1).entry(3, entry)));
    QCOMPARE(lookups(rewritten(table)).filter("@string/3"), QStringList{"@string/3: 5"});
}

void TestTableRewriter::ofSparseDuplicatesTheFirstCounts()
{
    const TypeBuilder type = TypeBuilder(1)
                                 .encoding(TableEncoding::Sparse)
                                 .value(1, Decimal, 10)
                                 .value(2, Decimal, 20)
                                 .value(3, Decimal, 30)
                                 .value(5, Decimal, 50);
    QByteArray chunk = type.build();
    poke16(chunk, type.offsetsAt() + 4, 1);
    QCOMPARE(rewritten(tableOf(chunk)),
             tableOf(TypeBuilder(1).value(1, Decimal, 10).value(3, Decimal, 30).value(5, Decimal, 50)));
}

void TestTableRewriter::whatASearchDoesNotFindIsNoEntry()
{
    const TypeBuilder type = TypeBuilder(1)
                                 .encoding(TableEncoding::Sparse)
                                 .value(1, Decimal, 10)
                                 .value(2, Decimal, 20)
                                 .value(3, Decimal, 30)
                                 .value(5, Decimal, 50);
    const int offsetsAt = type.offsetsAt();
    QByteArray chunk = type.build();
    const int indices[] = {1, 9, 5, 7};
    for (int i = 0; i < 4; ++i)
        poke16(chunk, offsetsAt + 4 * i, indices[i]);
    QCOMPARE(rewritten(tableOf(chunk)), tableOf(TypeBuilder(1).value(1, Decimal, 10).value(7, Decimal, 50)));
    QCOMPARE(values(rewritten(tableOf(chunk))), values(tableOf(chunk)));
}

void TestTableRewriter::emptyTypesStayEmpty()
{
    QCOMPARE(rewritten(tableOf(TypeBuilder(1).encoding(TableEncoding::Sparse))), tableOf(TypeBuilder(1)));
    const TypeBuilder holes = TypeBuilder(1).offset(3, 0xffffffff);
    QVERIFY(TableRewriter::isClassic(tableOf(holes)));
    QCOMPARE(rewritten(tableOf(TypeBuilder(holes).encoding(TableEncoding::ShortOffsets))), tableOf(holes));
}

void TestTableRewriter::unknownFlagsStay()
{
    QByteArray chunk = TypeBuilder(1).encoding(TableEncoding::Sparse).value(2, Decimal, 1).build();
    poke8(chunk, TypeBuilder::FlagsAt, 0xf7);
    poke16(chunk, TypeBuilder::FlagsAt + 1, 0x5566);
    QByteArray twin = TypeBuilder(1).value(2, Decimal, 1).build();
    poke8(twin, TypeBuilder::FlagsAt, 0xf4);
    poke16(twin, TypeBuilder::FlagsAt + 1, 0x5566);
    QCOMPARE(rewritten(tableOf(chunk)), tableOf(twin));
}

void TestTableRewriter::headersStayToTheLastByte()
{
    // A configuration of a later platform, followed by other header bytes.
    const auto type = [](TableEncoding encoding) {
        QByteArray config = ConfigBuilder(64).locale("de").build() + QByteArray(20, '\x77');
        poke32(config, 0, 80);
        QByteArray bytes = TypeBuilder(1, config).encoding(encoding).value(1, Decimal, 5).build();
        return bytes;
    };
    const QByteArray result = rewritten(tableOf(type(TableEncoding::ShortOffsets)));
    QCOMPARE(result, tableOf(type(TableEncoding::Dense)));
    QVERIFY(result.contains(QByteArray(20, '\x77')));
    QVERIFY(loads(result));
}

void TestTableRewriter::poolsMayFollowTypes()
{
    const auto table = [](TableEncoding encoding) {
        const QByteArray types = PoolBuilder().strings({"string"}).build();
        const QByteArray keys = PoolBuilder().strings({"a", "b", "c"}).build();
        const QByteArray type = TypeBuilder(1).encoding(encoding).value(2, Decimal, 1).value(90, Decimal, 2).build();
        QByteArray package =
            PackageBuilder().withoutPools().withoutSpecs().chunk(types).chunk(type).chunk(keys).chunk(type).build();
        poke32(package, PackageBuilder::TypePoolOffsetAt, PackageBuilder::TypePoolAt);
        poke32(package, PackageBuilder::KeyPoolOffsetAt, PackageBuilder::TypePoolAt + types.size() + type.size());
        return TableBuilder().chunk(package).build();
    };
    const QByteArray twin = table(TableEncoding::Dense);
    QVERIFY(TableRewriter::isClassic(twin));
    QCOMPARE(rewritten(table(TableEncoding::Sparse)), twin);
    QVERIFY(loads(twin));
    // The pool at the header's offset has to name the type, or there would be no text.
    QCOMPARE(lookups(rewritten(table(TableEncoding::Sparse))).filter("@string/2:"), QStringList{"@string/2: 1|1"});
}

void TestTableRewriter::packagesMayHaveNoPools()
{
    const auto table = [](TableEncoding encoding) {
        return TableBuilder()
            .package(PackageBuilder().withoutPools().type(TypeBuilder(1).encoding(encoding).value(2, Decimal, 1)))
            .build();
    };
    QCOMPARE(rewritten(table(TableEncoding::Sparse)), table(TableEncoding::Dense));
}

void TestTableRewriter::everyPackageIsRewritten()
{
    const auto table = [](TableEncoding encoding) {
        const auto package = [encoding](int id, int extraHeader) {
            return PackageBuilder(id, "p" + QString::number(id))
                .types({"string"})
                .extraHeader(extraHeader)
                .type(TypeBuilder(1).encoding(encoding).value(2, Decimal, id));
        };
        return TableBuilder().strings({}).package(package(0x7f, 4)).package(package(0x02, 0)).build();
    };
    QCOMPARE(rewritten(table(TableEncoding::ShortOffsets)), table(TableEncoding::Dense));
    QVERIFY(loads(table(TableEncoding::Dense)));
}

void TestTableRewriter::bytesBehindTheTableStay()
{
    const QByteArray behind("and more, which no one reads");
    QVERIFY(TableRewriter::isClassic(someTable({}).build() + behind));
    QCOMPARE(rewritten(someTable({TableEncoding::Sparse, true}).build() + behind), someTable({}).build() + behind);
}

void TestTableRewriter::aLongerTableHeaderIsCut()
{
    const QByteArray twin = someTable({}).build();
    QByteArray longer = twin;
    longer.insert(TableHeaderSize, "head");
    poke16(longer, HeaderSizeAt, TableHeaderSize + 4);
    poke32(longer, SizeAt, longer.size());
    QVERIFY(!loads(longer));
    QVERIFY(!TableRewriter::isClassic(longer));
    QCOMPARE(rewritten(longer), twin);
}

void TestTableRewriter::notAResourceTable()
{
    const QString text = "not a resource table";
    QCOMPARE(faultOf({}), text);
    QCOMPARE(faultOf("PK"), text);
    QCOMPARE(faultOf(PoolBuilder().strings({"a"}).build()), text);
    QByteArray table = someTable({}).build();
    QCOMPARE(faultOf(table.left(table.size() - 1)), text);
}

void TestTableRewriter::damagedTableHeader()
{
    QByteArray table = someTable({}).build();
    poke16(table, HeaderSizeAt, TableHeaderSize - 4);
    QCOMPARE(faultOf(table), QString("damaged header in resource table"));
}

void TestTableRewriter::damagedPackageHeader()
{
    const QString text = "damaged header in resource table";
    QByteArray package = PackageBuilder().withoutPools().build();
    QCOMPARE(faultOf(TableBuilder().chunk(package).build()), QString());
    poke16(package, HeaderSizeAt, PackageBuilder::TypePoolAt - 4);
    QCOMPARE(faultOf(TableBuilder().chunk(package).build()), text);

    const auto withExtraHeader = [](int count) {
        return TableBuilder().package(PackageBuilder().withoutPools().extraHeader(count)).build();
    };
    const int most = TypeRewriter::MaxHeaderSize - PackageBuilder::TypePoolAt;
    QCOMPARE(faultOf(withExtraHeader(most)), QString());
    QVERIFY(loads(withExtraHeader(most)));
    QCOMPARE(faultOf(withExtraHeader(most + 4)), text);
    QVERIFY(!loads(withExtraHeader(most + 4)));
}

void TestTableRewriter::damagedChunkInTable()
{
    const QString text = "damaged chunk in resource table";
    QCOMPARE(faultOf(TableBuilder().chunk("junk").build()), text);
    QCOMPARE(faultOf(TableBuilder().chunk(Bytes().u16(1).u16(8).u32(9).data()).build()), text);
    QCOMPARE(faultOf(TableBuilder().chunk(Bytes().u16(1).u16(8).u32(0).data()).build()), text);
}

void TestTableRewriter::damagedChunkInPackage()
{
    const QString text = "damaged chunk in resource table";
    const auto table = [](const QByteArray &chunk) {
        return TableBuilder().package(PackageBuilder().chunk(chunk)).strings({}).build();
    };
    QCOMPARE(faultOf(table(Bytes().u16(1).u16(8).u32(4).data())), text);
    QCOMPARE(faultOf(table(Bytes().u16(1).u16(7).u32(8).data())), text);
}

void TestTableRewriter::tableWithinTable()
{
    QCOMPARE(faultOf(TableBuilder().chunk(TableBuilder().build()).build()), QString("table within resource table"));
}

void TestTableRewriter::stringPoolNotFound()
{
    const QString text = "string pool not found in resource table";
    for (const int at : {PackageBuilder::TypePoolOffsetAt, PackageBuilder::KeyPoolOffsetAt}) {
        QByteArray package = PackageBuilder().types({"string"}).keys({"key"}).type(TypeBuilder(1)).build();
        QCOMPARE(faultOf(TableBuilder().chunk(package).build()), QString());
        for (const qint64 offset :
             {qint64(4), qint64(peek32(package, at)) + 4, qint64(package.size()), qint64(0xffffffff)}) {
            QByteArray damaged = package;
            poke32(damaged, at, offset);
            QCOMPARE(faultOf(TableBuilder().chunk(damaged).build()), text);
        }
    }
}

void TestTableRewriter::damagedType_data()
{
    QTest::addColumn<QByteArray>("type");
    const QByteArray good = TypeBuilder(1).value(0, Decimal, 1).build();
    QByteArray type = good;
    poke8(type, TypeBuilder::TypeIdAt, 0);
    QTest::newRow("no id") << type;
    type = good;
    poke32(type, TypeBuilder::EntryCountAt, 0x10000);
    QTest::newRow("more offsets than bytes") << type;
    QTest::newRow("more offsets than indices") << TypeBuilder(1).value(0x10000, Decimal, 1).build();
    type = good;
    poke32(type, TypeBuilder::ConfigAt, 65);
    QTest::newRow("configuration behind the header") << type;
    poke32(type, TypeBuilder::ConfigAt, 3);
    QTest::newRow("configuration without its size") << type;
    type = good;
    poke16(type, HeaderSizeAt, TypeBuilder::ConfigAt);
    QTest::newRow("no configuration") << type;
    QTest::newRow("header larger than libsorrel takes")
        << TypeBuilder(1, ConfigBuilder(4).build() + QByteArray(TypeRewriter::MaxHeaderSize - 20, '\0')).build();
}

void TestTableRewriter::damagedType()
{
    QFETCH(QByteArray, type);
    QCOMPARE(faultOf(tableOf(type)), QString("damaged type in resource table"));
    QVERIFY(!loads(tableOf(type)) || peek32(type, TypeBuilder::EntryCountAt) > 0x10000);
    // The largest accepted header.
    const QByteArray most = ConfigBuilder(4).build() + QByteArray(TypeRewriter::MaxHeaderSize - 20 - 4, '\0');
    QCOMPARE(faultOf(tableOf(TypeBuilder(1, most))), QString());
}

void TestTableRewriter::damagedEntriesGo_data()
{
    QTest::addColumn<QByteArray>("type");
    const TypeBuilder good = TypeBuilder(1).value(0, Decimal, 1);
    QTest::newRow("behind the chunk") << TypeBuilder(good).offset(1, 16).build();
    QTest::newRow("far behind the chunk") << TypeBuilder(good).offset(1, 0xfffffffe).build();
    QTest::newRow("without its end") << TypeBuilder(good).offset(1, 4).build();
    QTest::newRow("short offset") << TypeBuilder(good).encoding(TableEncoding::ShortOffsets).offset(1, 16).build();
    QTest::newRow("sparse") << TypeBuilder(good).encoding(TableEncoding::Sparse).offset(9, 16).build();
    QByteArray entry = simpleEntry(Decimal, 1);
    poke16(entry, 0, 7);
    QTest::newRow("header too small") << TypeBuilder(good).entry(1, entry).build();
    QTest::newRow("map without its items") << TypeBuilder(good).entry(1, map(2).left(28)).build();
}

// Android has no value for them either.
void TestTableRewriter::damagedEntriesGo()
{
    QFETCH(QByteArray, type);
    const QByteArray table = tableOf(type);
    QVERIFY(!TableRewriter::isClassic(table));
    QCOMPARE(faultOf(table), QString());
    const ResourceTable result(rewritten(table));
    QCOMPARE(formatFaultText(result.fault()), QString());
    QCOMPARE(result.values(0x7f010000).size(), 1);
    QVERIFY(result.values(0x7f010001).isEmpty() && result.values(0x7f010009).isEmpty());
    QVERIFY(loads(rewritten(table)));
}

// Android checks the item count of any header of 16 bytes, and the size of any value, against the end of the chunk.
void TestTableRewriter::sizesThatReachIntoOtherEntries()
{
    const QByteArray items = Bytes().u16(16).u16(0).u32(0).u32(0).u32(2).data() + simpleEntry(Decimal, 5).mid(8);
    QByteArray longValue = simpleEntry(Decimal, 6);
    poke16(longValue, 8, 24);
    const QByteArray rest = simpleEntry(Decimal, 7);
    const TypeBuilder type = TypeBuilder(1).entry(0, rest).entry(1, items).entry(2, longValue).unlisted(rest);
    const QByteArray table = tableOf(TypeBuilder(type).encoding(TableEncoding::ShortOffsets));
    QVERIFY(!TableRewriter::isClassic(tableOf(type)));
    const ResourceTable result(rewritten(table));
    for (int index = 0; index < 3; ++index) {
        const quint32 id = 0x7f010000 + quint32(index);
        QCOMPARE(ResourceTable(table).values(id).size(), 1);
        QCOMPARE(result.values(id).size(), 1);
        QCOMPARE(result.values(id).first().value.data, ResourceTable(table).values(id).first().value.data);
    }
    QVERIFY(TableRewriter::isClassic(rewritten(table)));
}

void TestTableRewriter::errorDamagedEntry()
{
    // libsorrel reads the size of an entry's header as signed.
    QByteArray entry = QByteArray(TypeRewriter::MaxHeaderSize + 4, '\0') + simpleEntry(Decimal, 1).mid(8);
    poke16(entry, 0, TypeRewriter::MaxHeaderSize + 4);
    QCOMPARE(faultOf(tableOf(TypeBuilder(1).entry(0, entry))), QString("damaged entry in resource table"));
    // The largest accepted header. The value is behind it.
    entry = QByteArray(TypeRewriter::MaxHeaderSize, '\0') + simpleEntry(Decimal, 1).mid(8);
    poke16(entry, 0, TypeRewriter::MaxHeaderSize);
    QCOMPARE(faultOf(tableOf(TypeBuilder(1).entry(0, entry))), QString());
    QVERIFY(loads(tableOf(TypeBuilder(1).entry(0, entry))));
}

/// A table of @p count sparse types, each with one value for the last possible resource.
QByteArray lonelyValues(int count)
{
    PackageBuilder package;
    package.types({"string"});
    const QByteArray type =
        TypeBuilder(1).encoding(TableEncoding::Sparse).value(TypeChunk::MaxEntries - 1, Decimal, 1).build();
    package.chunk(type.repeated(count));
    return TableBuilder().package(package).build();
}

void TestTableRewriter::tooMuchMemory()
{
    const QByteArray table = lonelyValues(1000);
    QVERIFY(table.size() < 128 << 10);
    QCOMPARE(faultOf(table), QString("resource table takes too much memory"));
}

void TestTableRewriter::resultsUpToTheCeiling()
{
    const qint64 one = rewritten(lonelyValues(1)).size();
    const qint64 each = rewritten(lonelyValues(2)).size() - one;
    const int most = int((TableRewriter::MaxTableBytes - one) / each) + 1;
    QCOMPARE(faultOf(lonelyValues(most + 1)), QString("resource table takes too much memory"));
    const QByteArray table = lonelyValues(most);
    const int room = int(TableRewriter::MaxTableBytes - (one + (most - 1) * each));
    QCOMPARE(rewritten(table + QByteArray(room, '\0')).size(), int(TableRewriter::MaxTableBytes));
    QCOMPARE(faultOf(table + QByteArray(room + 1, '\0')), QString("resource table takes too much memory"));
}

void TestTableRewriter::theFaultNeedNotBeAskedFor()
{
    QVERIFY(TableRewriter::rewritten("no table").isNull());
    QVERIFY(!TableRewriter::rewritten(someTable({}).build()).isEmpty());
}

void TestTableRewriter::sharedMapsOfManyItemsTakeNoMemory()
{
    const auto table = [](TableEncoding encoding) {
        TypeBuilder type(1);
        type.encoding(encoding).entry(0, map(1000));
        for (int index = 1; index < TypeChunk::MaxSlots; ++index)
            type.offset(index, 0);
        return tableOf(type);
    };
    QCOMPARE(rewritten(table(TableEncoding::ShortOffsets)), table(TableEncoding::Dense));
    QCOMPARE(rewritten(table(TableEncoding::Sparse)), table(TableEncoding::Dense));
    QVERIFY(TableRewriter::isClassic(table(TableEncoding::Dense)));
    QVERIFY(loads(table(TableEncoding::Dense)));
}

void TestTableRewriter::takesTheTableAndTheResult()
{
    // The largest accepted number of offsets. The rewriter visits each of them.
    TypeBuilder type(1);
    type.encoding(TableEncoding::ShortOffsets).entry(TypeChunk::MaxSlots - 1, map(0));
    for (int index = 0; index < TypeChunk::MaxSlots; ++index)
        type.offset(index, 0);
    // Memory is not counted in an instrumented build, which takes ten times as long.
    const QByteArray table = tableOf(type.build().repeated(isInstrumented() ? 20 : 500));
    const Cost taken = cost([&table] { rewritten(table); });
    QVERIFY(taken.ended);
    if (isInstrumented())
        return;
    constexpr qint64 ForOneType = 8 << 20;
    QVERIFY2(taken.memory < TableRewriter::MaxTableBytes + ForOneType, qPrintable(QString::number(taken.memory)));
    QVERIFY2(taken.memory > TableRewriter::MaxTableBytes / 2, "the table was not rewritten");
}

void TestTableRewriter::everyPrefixIsRefused()
{
    QFETCH(TableEncoding, encoding);
    QFETCH(bool, isCompact);
    const QByteArray whole = someTable({encoding, isCompact}).build();
    QCOMPARE(rewrittenCopy(whole), someTable({}).build());
    for (int size = 0; size < whole.size(); ++size) {
        QByteArray prefix = whole.left(size);
        QVERIFY(rewrittenCopy(prefix).isEmpty());
        if (size < TableHeaderSize)
            continue;
        poke32(prefix, SizeAt, size);
        const QByteArray result = rewrittenCopy(prefix);
        QVERIFY(result.isEmpty() || values(result) == values(prefix));
    }
}

void TestTableRewriter::everyByteMayBeDamaged()
{
    QFETCH(TableEncoding, encoding);
    QFETCH(bool, isCompact);
    const QByteArray whole = someTable({encoding, isCompact}).build();
    int refused = 0;
    int taken = 0;
    for (int at = 0; at < whole.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x7f, 0x80, 0xff}) {
            QByteArray damaged = whole;
            poke8(damaged, at, value);
            const QByteArray result = rewrittenCopy(damaged);
            ++(result.isEmpty() ? refused : taken);
            if (result.isEmpty())
                continue;
            // A damaged 16-bit index may add this much to each of the five types.
            QVERIFY(result.size() < whole.size() + 5 * 4 * TypeChunk::MaxSlots);
            QVERIFY(TableRewriter::isClassic(result));
        }
    }
    QVERIFY(refused > 0);
    QVERIFY(taken > 0);
}

QTEST_GUILESS_MAIN(TestTableRewriter)
#include "tst_tablerewriter.moc"
