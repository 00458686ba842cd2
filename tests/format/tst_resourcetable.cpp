// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Bytes.h"
#include "OddTables.h"
#include "format/ResourceTable.h"

#include <QtTest>

#include <cstring>
#include <memory>

using namespace fixture;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

PackageBuilder packageOf(int id, qint64 value)
{
    PackageBuilder package(id);
    package.types({latin("id%1").arg(id)}).type(TypeBuilder(1).value(0, Integer, value));
    return package;
}

// Strings and numbers of two types, in two configurations.
QByteArray table(TableEncoding encoding = TableEncoding::Dense)
{
    TypeBuilder plain(1);
    plain.value(0, String, 0).map(2, 3).value(3, Reference, 0x7f020001).encoding(encoding);
    TypeBuilder german(1, ConfigBuilder().locale("de").build());
    german.value(0, String, 1).encoding(encoding);
    TypeBuilder numbers(2, ConfigBuilder().density(320).build());
    numbers.value(1, Integer, 42).entry(2, compactEntry(Integer, 43)).encoding(encoding);
    PackageBuilder package;
    package.types({latin("string"), latin("integer")}).type(plain).type(german).type(numbers);
    return TableBuilder().strings({latin("Plain"), latin("Deutsch")}).package(package).build();
}

// Calls the queries of @p table and returns the sum of their results.
int answers(const ResourceTable &table)
{
    int count = 0;
    for (const quint32 id : {0x7f010000u, 0x7f010002u, 0x7f010003u, 0x7f020001u, 0x7f020002u, 0x00010000u}) {
        for (const TableValue &value : table.values(id))
            count += 1 + int(table.string(value.value.data).size()) + value.configuration().density;
        count += int(table.typeName(id).size());
    }
    return count;
}

} // namespace

Q_DECLARE_METATYPE(fixture::OddFile)
Q_DECLARE_METATYPE(fixture::TableEncoding)

class TestResourceTable : public QObject
{
    Q_OBJECT

private slots:
    void valuesOfEveryEncoding_data();
    void valuesOfEveryEncoding();
    void resourcesThatAreNotThere();
    void namesOfTypes();
    void severalPackages();
    void packageInSeveralParts();
    void packageWithTheIdZero();
    void emptyTables();
    void copiesKeepTheBytes();

    void takesWhatAndroidTakes_data();
    void takesWhatAndroidTakes();
    void everyTableMayBeDamaged_data();
    void everyTableMayBeDamaged();
    void aliasesOfThePlatform();
    void aliasesOfOtherPackages();

    void errorNotAResourceTable();
    void errorDamagedChunk();
    void errorDamagedType();
    void errorTooManyPackages();
    void errorTooManyTypes();
    void errorDamagedAliases();
    void errorTooManyAliases();

    void everyPrefixIsAnswered();
    void everyByteMayBeDamaged();
};

void TestResourceTable::valuesOfEveryEncoding_data()
{
    QTest::addColumn<TableEncoding>("encoding");
    QTest::newRow("dense") << TableEncoding::Dense;
    QTest::newRow("short offsets") << TableEncoding::ShortOffsets;
    QTest::newRow("sparse") << TableEncoding::Sparse;
}

void TestResourceTable::valuesOfEveryEncoding()
{
    QFETCH(TableEncoding, encoding);
    const ResourceTable read(table(encoding));
    QCOMPARE(formatFaultText(read.fault()), QString());
    QCOMPARE(read.typeChunkCount(), 3);
    const QVector<TableValue> labels = read.values(0x7f010000);
    QCOMPARE(labels.size(), 2);
    QVERIFY(!labels.at(0).configuration().hasLocale());
    QCOMPARE(read.string(labels.at(0).value.data), latin("Plain"));
    QCOMPARE(labels.at(1).configuration().language.toString(), latin("de"));
    QCOMPARE(read.string(labels.at(1).value.data), latin("Deutsch"));
    QCOMPARE(read.typeChunkCount(0x7f010000), 2);
    QCOMPARE(read.typeChunkCount(0x7f020000), 1);

    const QVector<TableValue> maps = read.values(0x7f010002);
    QCOMPARE(maps.size(), 1);
    QVERIFY(maps.first().isMap);
    QVERIFY(maps.first().value.isNull());
    const QVector<TableValue> references = read.values(0x7f010003);
    QCOMPARE(references.size(), 1);
    QVERIFY(!references.first().isMap && references.first().value.isReference());
    QCOMPARE(references.first().value.data, quint32(0x7f020001));

    QCOMPARE(read.values(0x7f020001).size(), 1);
    QCOMPARE(read.values(0x7f020001).first().value.integer().value_or(0), 42);
    QCOMPARE(read.values(0x7f020001).first().configuration().density, 320);
    QCOMPARE(read.values(0x7f020002).size(), 1);
    QCOMPARE(read.values(0x7f020002).first().value.integer().value_or(0), 43);
}

void TestResourceTable::resourcesThatAreNotThere()
{
    const ResourceTable read(table());
    for (const quint32 id :
         {0u, 0x7f010001u, 0x7f010004u, 0x7f01ffffu, 0x7f000000u, 0x7f030000u, 0x7e010000u, 0xffffffffu, 0x01010000u})
        QVERIFY2(read.values(id).isEmpty(), qPrintable(QString::number(id, 16)));
    QCOMPARE(read.typeChunkCount(0x7e010000), 0);
}

void TestResourceTable::namesOfTypes()
{
    const ResourceTable read(table());
    QCOMPARE(read.typeName(0x7f010000), latin("string"));
    QCOMPARE(read.typeName(0x7f02ffff), latin("integer"));
    QCOMPARE(read.typeName(0x7f000000), QString());
    QCOMPARE(read.typeName(0x7f030000), QString());
    QCOMPARE(read.typeName(0x7e010000), QString());
}

void TestResourceTable::severalPackages()
{
    const ResourceTable read(TableBuilder().package(packageOf(0x7f, 1)).package(packageOf(0x02, 2)).build());
    QCOMPARE(read.packageId(), quint8(0x7f));
    QCOMPARE(read.values(0x7f010000).first().value.data, quint32(1));
    QCOMPARE(read.values(0x02010000).first().value.data, quint32(2));
    QCOMPARE(read.typeName(0x02010000), latin("id2"));
    // An id without a package belongs to the application.
    QCOMPARE(read.values(0x00010000).size(), 1);
    QCOMPARE(read.values(0x00010000).first().value.data, quint32(1));
    QCOMPARE(read.typeName(0x00010000), latin("id127"));
}

void TestResourceTable::packageInSeveralParts()
{
    PackageBuilder second;
    second.types({latin("same"), latin("more")})
        .type(TypeBuilder(1).value(0, Integer, 2).value(1, Integer, 3))
        .type(TypeBuilder(2).value(0, Integer, 4));
    const ResourceTable read(TableBuilder().package(packageOf(0x7f, 1)).package(second).build());
    QCOMPARE(read.typeChunkCount(0x7f010000), 2);
    QCOMPARE(read.values(0x7f010000).size(), 2);
    QCOMPARE(read.values(0x7f010000).first().value.data, quint32(1));
    QCOMPARE(read.values(0x7f010001).size(), 1);
    QCOMPARE(read.values(0x7f020000).first().value.data, quint32(4));
    QCOMPARE(read.typeName(0x7f010000), latin("id127"));
    QCOMPARE(read.typeName(0x7f020000), latin("more"));
}

void TestResourceTable::packageWithTheIdZero()
{
    const ResourceTable read(TableBuilder().package(packageOf(0, 5)).build());
    QCOMPARE(read.packageId(), quint8(0));
    QCOMPARE(read.values(0x00010000).size(), 1);
    QVERIFY(read.values(0x7f010000).isEmpty());
}

void TestResourceTable::emptyTables()
{
    QCOMPARE(formatFaultText(ResourceTable().fault()), QString());
    QCOMPARE(ResourceTable().packageId(), quint8(0x7f));
    QVERIFY(ResourceTable().values(0x7f010000).isEmpty());
    QCOMPARE(formatFaultText(ResourceTable(emptyTable()).fault()), QString());
    const ResourceTable bare(TableBuilder().package(PackageBuilder().withoutPools()).build());
    QCOMPARE(formatFaultText(bare.fault()), QString());
    QCOMPARE(bare.typeName(0x7f010000), QString());
}

void TestResourceTable::copiesKeepTheBytes()
{
    auto first = std::make_unique<ResourceTable>(table());
    const ResourceTable copy(*first);
    first.reset();
    QCOMPARE(copy.string(copy.values(0x7f010000).first().value.data), latin("Plain"));
}

void TestResourceTable::takesWhatAndroidTakes_data()
{
    QTest::addColumn<OddFile>("file");
    for (const OddFile &file : oddTables())
        QTest::newRow(qPrintable(file.name)) << file;
}

void TestResourceTable::takesWhatAndroidTakes()
{
    QFETCH(OddFile, file);
    const ResourceTable read(file.bytes);
    QCOMPARE(formatFaultText(read.fault()), formatFaultText(file.fault));
    if (file.fault != FormatFault::None)
        return;
    OddityList list = read.oddities();
    read.addTypeOddities(&list);
    QVector<Oddity> oddities;
    for (const OddityList::Item &item : list.items())
        oddities.append(item.oddity);
    QCOMPARE(oddities, file.oddities);
    QVERIFY(!read.values(0x7f010000).isEmpty());
    QCOMPARE(read.string(read.values(0x7f010000).first().value.data), latin("Plain"));
    QVERIFY(!read.values(0x7f020001).isEmpty());
    QCOMPARE(read.values(0x7f020001).first().value.data, quint32(42));
}

void TestResourceTable::everyTableMayBeDamaged_data()
{
    takesWhatAndroidTakes_data();
}

// Each copy is in a heap block of its exact size, so that sanitizers report a read beyond it.
void TestResourceTable::everyTableMayBeDamaged()
{
    QFETCH(OddFile, file);
    constexpr int MostBytes = 2000; // behind them, large tables repeat one number
    for (int at = 0; at < qMin(int(file.bytes.size()), MostBytes); ++at) {
        const auto block = std::make_unique<char[]>(size_t(file.bytes.size()));
        std::memcpy(block.get(), file.bytes.constData(), size_t(file.bytes.size()));
        block[size_t(at)] = char(block[size_t(at)] ^ 0xff);
        const QByteArray bytes = QByteArray::fromRawData(block.get(), int(file.bytes.size()));
        const ResourceTable read(ByteView(bytes), nullptr);
        OddityList list = read.oddities();
        read.addTypeOddities(&list);
        QVERIFY(answers(read) >= 0);
        QVERIFY(int(list.items().size()) <= int(Oddity::Count));
    }
}

namespace {

QByteArray tableWithAliases(int packageId, const QVector<quint32> &ids)
{
    return TableBuilder().package(packageOf(packageId, 5).chunk(aliasChunk(ids))).build();
}

} // namespace

void TestResourceTable::aliasesOfThePlatform()
{
    const ResourceTable read(tableWithAliases(1, {0x01ff0007, 0x01010000, 0x01fe0000, 0x01010009}));
    QCOMPARE(formatFaultText(read.fault()), QString());
    QVERIFY(read.oddities().contains(Oddity::StagedAlias));
    QCOMPARE(read.finalId(0x01ff0007), 0x01010000u);
    QCOMPARE(read.finalId(0x01ff0008), 0x01ff0008u);
    QCOMPARE(read.values(0x01ff0007).size(), 1);
    QCOMPARE(read.values(0x01ff0007).first().value.data, 5u);
    QCOMPARE(read.typeName(0x01ff0007), latin("id1"));
    QCOMPARE(read.typeChunkCount(0x01ff0007), 1);
    QVERIFY(read.values(0x01fe0000).isEmpty());
}

void TestResourceTable::aliasesOfOtherPackages()
{
    const ResourceTable read(tableWithAliases(0x7f, {0x7fff0007, 0x7f010000, 0x7fff0007, 0x7f010000}));
    QCOMPARE(formatFaultText(read.fault()), QString());
    QCOMPARE(read.finalId(0x7fff0007), 0x7fff0007u);
    QVERIFY(read.values(0x7fff0007).isEmpty());
}

void TestResourceTable::errorDamagedAliases()
{
    const QString fault = latin("damaged list of aliases in resource table");
    QCOMPARE(formatFaultText(ResourceTable(tableWithAliases(1, {1, 2, 1, 3})).fault()), fault);
    QCOMPARE(formatFaultText(ResourceTable(tableWithAliases(1, {1, 3, 2, 3})).fault()), fault);
    const QByteArray cut = chunk(ChunkType::StagedAlias, Bytes().u32(1).data(), Bytes().u32(1).data());
    const ResourceTable read(TableBuilder().package(packageOf(1, 5).chunk(cut)).build());
    QCOMPARE(formatFaultText(read.fault()), fault);
    QCOMPARE(read.values(0x01010000).size(), 1);
}

void TestResourceTable::errorTooManyAliases()
{
    const auto ofCount = [](int count) {
        QVector<quint32> ids;
        for (int i = 0; i < count; ++i)
            ids << quint32(0x02000000 + i) << quint32(0x01000000 + i);
        return tableWithAliases(1, ids);
    };
    QCOMPARE(formatFaultText(ResourceTable(ofCount(ResourceTable::MaxAliases)).fault()), QString());
    QCOMPARE(formatFaultText(ResourceTable(ofCount(ResourceTable::MaxAliases + 1)).fault()),
             latin("too many aliases in resource table"));
}

void TestResourceTable::errorNotAResourceTable()
{
    const QString fault = latin("not a resource table");
    QCOMPARE(formatFaultText(ResourceTable(QByteArray()).fault()), fault);
    QCOMPARE(formatFaultText(ResourceTable(QByteArray("PK\3\4 something else")).fault()), fault);
    QCOMPARE(formatFaultText(ResourceTable(smallManifest()).fault()), fault);
}

void TestResourceTable::errorDamagedChunk()
{
    const QString fault = latin("damaged chunk in resource table");
    const ResourceTable behind(
        TableBuilder().package(packageOf(0x7f, 1)).chunk(Bytes().u16(0x0200).u16(8).u32(4).data()).build());
    QCOMPARE(formatFaultText(behind.fault()), fault);
    // Everything before the fault is available.
    QCOMPARE(behind.values(0x7f010000).size(), 1);
    PackageBuilder package = packageOf(0x7f, 1);
    package.chunk(Bytes().u16(0x0201).u16(7).u32(8).data());
    const ResourceTable within(TableBuilder().package(package).build());
    QCOMPARE(formatFaultText(within.fault()), fault);
    QCOMPARE(within.values(0x7f010000).size(), 1);
}

void TestResourceTable::errorDamagedType()
{
    QByteArray type = TypeBuilder(1).value(0, Integer, 1).build();
    poke32(type, TypeBuilder::EntryCountAt, 1000);
    PackageBuilder package = packageOf(0x7f, 1);
    package.chunk(type);
    const ResourceTable read(TableBuilder().package(package).build());
    QCOMPARE(formatFaultText(read.fault()), latin("damaged type in resource table"));
    QCOMPARE(read.values(0x7f010000).size(), 1);
}

void TestResourceTable::errorTooManyPackages()
{
    const auto ofCount = [](int count) {
        TableBuilder builder;
        for (int i = 0; i < count; ++i)
            builder.package(PackageBuilder(i & 0xff).withoutPools());
        return builder.build();
    };
    QCOMPARE(formatFaultText(ResourceTable(ofCount(ResourceTable::MaxPackages)).fault()), QString());
    QCOMPARE(formatFaultText(ResourceTable(ofCount(ResourceTable::MaxPackages + 1)).fault()),
             latin("too many packages in resource table"));
}

void TestResourceTable::errorTooManyTypes()
{
    const auto ofCount = [](int count) {
        PackageBuilder package;
        return TableBuilder()
            .package(package.chunk(TypeBuilder(1).value(0, Integer, 1).build().repeated(count)))
            .build();
    };
    const QByteArray most = ofCount(ResourceTable::MaxTypeChunks);
    QCOMPARE(formatFaultText(ResourceTable(most).fault()), QString());
    QCOMPARE(ResourceTable(most).typeChunkCount(), int(ResourceTable::MaxTypeChunks));
    QCOMPARE(ResourceTable(most).values(0x7f010000).size(), int(ResourceTable::MaxTypeChunks));
    const ResourceTable more(ofCount(ResourceTable::MaxTypeChunks + 1));
    QCOMPARE(formatFaultText(more.fault()), latin("too many types in resource table"));
    QCOMPARE(more.typeChunkCount(), int(ResourceTable::MaxTypeChunks));
    // Several tables share one limit.
    QCOMPARE(formatFaultText(ResourceTable(ofCount(3), 3).fault()), QString());
    const ResourceTable cut(ofCount(3), 2);
    QCOMPARE(formatFaultText(cut.fault()), latin("too many types in resource table"));
    QCOMPARE(cut.typeChunkCount(), 2);
    QCOMPARE(cut.values(0x7f010000).size(), 2);
    QCOMPARE(ResourceTable(ofCount(1), 0).typeChunkCount(), 0);
}

// Each prefix is in a heap block of its exact size, so that sanitizers report a read beyond it.
void TestResourceTable::everyPrefixIsAnswered()
{
    const QByteArray whole = table();
    const int all = answers(ResourceTable(whole));
    int most = 0;
    for (int length = 0; length < whole.size(); ++length) {
        for (const bool isAdmitted : {false, true}) {
            const std::unique_ptr<char[]> block(new char[size_t(length)]);
            std::memcpy(block.get(), whole.constData(), size_t(length));
            QByteArray bytes = QByteArray::fromRawData(block.get(), length);
            // The table's size is set to the prefix, so that its chunks are read.
            if (isAdmitted && length >= ChunkView::HeaderSize)
                qToLittleEndian(quint32(length), block.get() + 4);
            const ResourceTable read(bytes);
            QVERIFY(answers(read) <= all);
            most = qMax(most, answers(read));
        }
    }
    // At the end of the string pool.
    QVERIFY(most < all);
    QCOMPARE(answers(ResourceTable(table())), all);
}

void TestResourceTable::everyByteMayBeDamaged()
{
    const QByteArray whole = table();
    const int all = answers(ResourceTable(whole));
    int same = 0;
    int different = 0;
    for (int at = 0; at < whole.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x7f, 0x80, 0xff}) {
            const std::unique_ptr<char[]> block(new char[size_t(whole.size())]);
            std::memcpy(block.get(), whole.constData(), size_t(whole.size()));
            block[size_t(at)] = char(value);
            const ResourceTable read(QByteArray::fromRawData(block.get(), whole.size()));
            (answers(read) == all ? same : different) += 1;
        }
    }
    QVERIFY(same > 0 && different > 0);
}

QTEST_GUILESS_MAIN(TestResourceTable)
#include "tst_resourcetable.moc"
