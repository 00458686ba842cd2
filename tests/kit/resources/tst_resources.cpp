// SPDX-License-Identifier: LGPL-2.1-or-later
#include "EncodedTable.h"
#include "ResourcesFixture.h"
#include "format/ChunkView.h"

#include <QtTest>

using namespace fixture;
using namespace SorrelKit;

namespace {

// Strings in two languages, colours, and gaps between them, as a classic table.
QByteArray smallTable()
{
    TypeBuilder plain(1);
    plain.entry(0, simpleEntry(String, 0, 0, 0)).entry(2, simpleEntry(String, 1, 0, 1));
    TypeBuilder german(1, ConfigBuilder().locale("de").build());
    german.entry(0, simpleEntry(String, 2, 0, 0)).entry(3, simpleEntry(String, 2, 0, 2));
    TypeBuilder colors(2);
    colors.entry(1, simpleEntry(0x1c, 0xff204080, 0, 3)).entry(5, simpleEntry(Reference, 0x7f010002, 0, 4));
    return TableBuilder()
        .strings(names({"Notes", "All of them", "Notizen"}))
        .package(PackageBuilder()
                     .types(names({"string", "color"}))
                     .keys(names({"app_name", "all", "ganz", "paper", "ink"}))
                     .type(plain)
                     .type(german)
                     .type(colors))
        .build();
}

QByteArray splitManifest(const QString &split)
{
    return XmlBuilder()
        .empty(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.example.app")),
                                            plainText(QStringLiteral("split"), split)})
        .build();
}

} // namespace

Q_DECLARE_METATYPE(fixture::TableEncoding)

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void resourcesAreListed();
    void resourcesAreFound_data();
    void resourcesAreFound();
    void defaultValueIsChosen();
    void everyEncodingAnswersTheSame_data();
    void everyEncodingAnswersTheSame();

    void packagesOfOtherNames();
    void entriesWithoutNames();
    void typesWithoutNames();
    void referencesToTheOwnPackageByZero();
    void splits();
    void packagesWithoutResources();
    void copiesShareWhatWasRead();
    void constructingReadsNothing();
    void damagedTablesAnswerAsFarAsTheyGo();
};

void TestResources::resourcesAreListed()
{
    const ResourcesFixture fixture(smallTable());
    const QList<quint32> ids{0x7f010000, 0x7f010002, 0x7f010003, 0x7f020001, 0x7f020005};
    QCOMPARE(fixture.resources.ids(), ids);
    const QStringList expected{
        latin("7f010000 string/app_name"), latin("|string|Notes"),         latin("de|string|Notizen"),
        latin("7f010002 string/all"),      latin("|string|All of them"),   latin("7f010003 string/ganz"),
        latin("de|string|Notizen"),        latin("7f020001 color/paper"),  latin("|color|#ff204080"),
        latin("7f020005 color/ink"),       latin("|reference|@string/all")};
    QCOMPARE(answers(fixture.resources), expected);
    QVERIFY(fixture.resources.isComplete());
    for (const quint32 none : {0u, 0x7f010001u, 0x7f030000u, 0x7e010000u, 0xffffffffu}) {
        QCOMPARE(fixture.resources.name(none), QString());
        QVERIFY(fixture.resources.values(none).isEmpty());
        QCOMPARE(fixture.resources.defaultValue(none).typeName(), QString());
    }
}

void TestResources::resourcesAreFound_data()
{
    QTest::addColumn<QString>("reference");
    QTest::addColumn<quint32>("id");
    const auto row = [](const char *reference, quint32 id) {
        QTest::newRow(reference) << QString::fromLatin1(reference) << id;
    };
    row("@string/app_name", 0x7f010000);
    row("string/app_name", 0x7f010000);
    row("org.example.app:string/app_name", 0x7f010000);
    row("@org.example.app:string/app_name", 0x7f010000);
    row("@string/2", 0x7f010002);
    row("string/0002", 0x7f010002);
    row("color/ink", 0x7f020005);
    row("0x7f020005", 0x7f020005);
    row("@0x7F020005", 0x7f020005);
    row("0x00020005", 0x7f020005);
    row("@string/1", 0);
    row("@string/65535", 0);
    row("@string/65536", 0);
    row("@string/4294967298", 0);
    row("@string/99999999999999999999", 0);
    row("string/none", 0);
    row("color/app_name", 0);
    row("none/app_name", 0);
    row("android:string/app_name", 0);
    row(":string/app_name", 0);
    row("0x7f020006", 0);
    row("0x17f020005", 0);
    row("0x", 0);
    row("@0xyz", 0);
    row("", 0);
    row("@", 0);
    row("/", 0);
    row("string/", 0);
    row("/app_name", 0);
    row("app_name", 0);
    row("?string/app_name", 0);
}

void TestResources::resourcesAreFound()
{
    QFETCH(QString, reference);
    QFETCH(quint32, id);
    const ResourcesFixture fixture(smallTable());
    QCOMPARE(fixture.resources.find(reference), id);
}

void TestResources::defaultValueIsChosen()
{
    TypeBuilder land(1, ConfigBuilder().orientation(2).build());
    land.value(0, Integer, 1).value(1, Integer, 2);
    TypeBuilder plain(1);
    plain.value(0, Integer, 3);
    TypeBuilder port(1, ConfigBuilder().orientation(1).build());
    port.value(1, Integer, 4);
    const ResourcesFixture fixture(
        TableBuilder()
            .strings({})
            .package(PackageBuilder().types(names({"integer"})).type(land).type(plain).type(port))
            .build());
    QCOMPARE(fixture.resources.defaultValue(0x7f010000).text(), latin("3"));
    QCOMPARE(fixture.resources.defaultValue(0x7f010000).configuration(), QString());
    QCOMPARE(fixture.resources.defaultValue(0x7f010001).text(), latin("2"));
    QCOMPARE(fixture.resources.defaultValue(0x7f010001).configuration(), latin("land"));
}

void TestResources::everyEncodingAnswersTheSame_data()
{
    QTest::addColumn<TableEncoding>("encoding");
    QTest::addColumn<bool>("isCompact");
    for (const bool isCompact : {false, true}) {
        const auto name = [&](const char *text) { return QByteArray(text) + (isCompact ? ", compact" : ""); };
        QTest::newRow(name("dense")) << TableEncoding::Dense << isCompact;
        QTest::newRow(name("offsets of 16 bits")) << TableEncoding::ShortOffsets << isCompact;
        QTest::newRow(name("sparse")) << TableEncoding::Sparse << isCompact;
    }
}

void TestResources::everyEncodingAnswersTheSame()
{
    QFETCH(TableEncoding, encoding);
    QFETCH(bool, isCompact);
    const QByteArray table = smallTable();
    const ResourcesFixture classic(table);
    const ResourcesFixture other(encodedTable(table, encoding, isCompact));
    QCOMPARE(other.package.error().message(), latin("no error"));
    QCOMPARE(answers(other.resources), answers(classic.resources));
    QCOMPARE(answers(other.resources).size(), 11);
}

void TestResources::packagesOfOtherNames()
{
    const auto strings = [](int id, const char *name, const char *key) {
        return PackageBuilder(id, latin(name))
            .types(names({"string"}))
            .keys(names({key}))
            .type(TypeBuilder(1).value(0, Reference, 0x02010000));
    };
    const ResourcesFixture fixture(TableBuilder()
                                       .strings({})
                                       .package(strings(0x7f, "org.example.app", "ok"))
                                       .package(strings(0x01, "android", "ok"))
                                       .package(strings(0x02, "org.example.library", "yes"))
                                       .build());
    const Resources &resources = fixture.resources;
    QCOMPARE(resources.ids(), (QList<quint32>{0x01010000, 0x02010000, 0x7f010000}));
    QCOMPARE(resources.name(0x01010000), latin("android:string/ok"));
    QCOMPARE(resources.name(0x02010000), latin("org.example.library:string/yes"));
    QCOMPARE(resources.name(0x7f010000), latin("string/ok"));
    QCOMPARE(resources.defaultValue(0x7f010000).text(), latin("@org.example.library:string/yes"));
    QCOMPARE(resources.find(latin("@android:string/ok")), 0x01010000u);
    QCOMPARE(resources.find(latin("android:string/0")), 0x01010000u);
    QCOMPARE(resources.find(latin("string/ok")), 0x7f010000u);
    QCOMPARE(resources.find(latin("string/yes")), 0u);
    QCOMPARE(resources.find(latin("0x02010000")), 0x02010000u);
}

void TestResources::entriesWithoutNames()
{
    const QString longest(256, QLatin1Char('n'));
    const QStringList keys{latin("0_resource_name_obfuscated"),
                           latin("(name removed)"),
                           latin("0"),
                           QString(),
                           longest + QLatin1Char('n'),
                           longest,
                           latin("12a")};
    TypeBuilder type(1);
    for (int i = 0; i < 9; ++i)
        type.entry(i, simpleEntry(Integer, i, 0, i < 8 ? i : -1));
    const ResourcesFixture fixture(
        TableBuilder().strings({}).package(PackageBuilder().types(names({"integer"})).keys(keys).type(type)).build());
    const Resources &resources = fixture.resources;
    for (const quint32 entry : {0u, 1u, 2u, 3u, 4u, 7u, 8u}) {
        const QString name = QStringLiteral("integer/%1").arg(entry);
        QCOMPARE(resources.name(0x7f010000 + entry), name);
        QCOMPARE(resources.find(name), 0x7f010000 + entry);
    }
    QCOMPARE(resources.name(0x7f010005), latin("integer/") + longest);
    QCOMPARE(resources.find(latin("integer/") + longest), 0x7f010005u);
    QCOMPARE(resources.find(latin("integer/") + keys.at(4)), 0u);
    QCOMPARE(resources.find(latin("integer/(name removed)")), 0u);
    QCOMPARE(resources.find(latin("integer/12a")), 0x7f010006u);
}

void TestResources::typesWithoutNames()
{
    const ResourcesFixture fixture(TableBuilder()
                                       .strings({})
                                       .package(PackageBuilder()
                                                    .types(names({"string"}))
                                                    .keys(names({"a"}))
                                                    .type(TypeBuilder(8).value(0, Integer, 1))
                                                    .type(TypeBuilder(9).value(3, Reference, 0x7f080000)))
                                       .build());
    QCOMPARE(answers(fixture.resources),
             names({"7f080000 0x7f080000", "|integer|1", "7f090003 0x7f090003", "|reference|@0x7f080000"}));
    QCOMPARE(fixture.resources.find(latin("0x7f090003")), 0x7f090003u);
    QCOMPARE(fixture.resources.find(latin("/a")), 0u);
}

void TestResources::referencesToTheOwnPackageByZero()
{
    const ResourcesFixture fixture(TableBuilder()
                                       .strings({})
                                       .package(PackageBuilder(0x7e)
                                                    .types(names({"string"}))
                                                    .keys(names({"a"}))
                                                    .type(TypeBuilder(1).value(0, 0x07, 0x00010000)))
                                       .build());
    QCOMPARE(answers(fixture.resources), names({"7e010000 string/a", "|reference|@string/a"}));
    QCOMPARE(fixture.resources.name(0x00010000), latin("string/a"));
    QCOMPARE(fixture.resources.find(latin("0x00010000")), 0x7e010000u);
}

void TestResources::splits()
{
    const auto table = [](const char *language, const char *text, int entry, const QStringList &keys) {
        return TableBuilder()
            .strings(names({text}))
            .package(PackageBuilder()
                         .types(names({"string"}))
                         .keys(keys)
                         .type(TypeBuilder(1, ConfigBuilder().locale(language).build())
                                   .entry(entry, simpleEntry(String, 0, 0, int(keys.size()) - 1))))
            .build();
    };
    PackageDevice device(
        zip({{latin("config.de.apk"),
              package(table("de", "Notizen", 0, names({"x", "app_name"})), splitManifest(latin("de")))},
             {latin("config.fr.apk"), package(table("fr", "Tout", 1, names({"all"})), splitManifest(latin("fr")))},
             {latin("base.apk"), package(table("", "Notes", 0, names({"app_name"})), smallManifest())}}));
    const Package set(&device);
    QCOMPARE(set.splits().size(), 2);
    QCOMPARE(answers(Resources(set)), names({"7f010000 string/app_name", "|string|Notes", "de|string|Notizen",
                                             "7f010001 string/all", "fr|string|Tout"}));
    QCOMPARE(Resources(set).find(latin("string/all")), 0x7f010001u);
}

void TestResources::packagesWithoutResources()
{
    PackageDevice noTable(zip({{latin("AndroidManifest.xml"), smallManifest()}}));
    PackageDevice noPackage("no archive");
    for (PackageDevice *device : {&noTable, &noPackage}) {
        const Resources resources{Package(device)};
        QVERIFY(resources.ids().isEmpty());
        QCOMPARE(resources.name(0x7f010000), QString());
        QCOMPARE(resources.find(latin("string/app_name")), 0u);
        QCOMPARE(resources.find(latin("0x7f010000")), 0u);
        QVERIFY(resources.values(0x7f010000).isEmpty());
        QVERIFY(resources.isComplete());
    }
}

void TestResources::copiesShareWhatWasRead()
{
    PackageDevice device(smallTable(), smallManifest());
    const Resources resources{Package(&device)};
    Resources copy(resources);
    QCOMPARE(copy.ids().size(), 5);
    const int opened = device.timesOpened();
    QCOMPARE(answers(resources), answers(copy));
    copy = Resources(Package(QStringLiteral("/nonexistent")));
    QVERIFY(copy.ids().isEmpty());
    QCOMPARE(resources.ids().size(), 5);
    QCOMPARE(device.timesOpened(), opened);
}

void TestResources::constructingReadsNothing()
{
    PackageDevice device(smallTable(), smallManifest());
    const Resources resources{Package(&device)};
    QCOMPARE(device.timesOpened(), 0);
    QCOMPARE(resources.name(0x7f010000), latin("string/app_name"));
    QVERIFY(device.timesOpened() > 0);
}

void TestResources::damagedTablesAnswerAsFarAsTheyGo()
{
    constexpr int SizeAt = 4;
    const QByteArray table = smallTable();
    const QStringList whole = answers(ResourcesFixture(table).resources);
    const int packageAt = 12 + int(ChunkView::at(ByteView(table), 12).size());
    QCOMPARE(ChunkView::at(ByteView(table), packageAt).type(), ChunkType::Package);
    int longest = 0;
    for (int size = 0; size < table.size(); ++size) {
        // A cut table, a cut table with a corrected size, and one with a corrected package size as well.
        QByteArray cut = table.left(size);
        for (const int toldAt : {-1, 0, packageAt}) {
            if (toldAt >= 0 && size >= toldAt + SizeAt + 4)
                poke32(cut, toldAt + SizeAt, size - toldAt);
            const QStringList lines = answers(ResourcesFixture(cut).resources);
            longest = qMax(longest, int(lines.size()));
            for (const QString &line : lines)
                QVERIFY2(whole.contains(line), qPrintable(line));
        }
    }
    // All values of the last type, which holds colours, are missing.
    QCOMPARE(longest, 7);
    // The last chunk is damaged. The chunks before it are read.
    QByteArray damaged = table;
    damaged += chunk(0x0333);
    poke32(damaged, int(damaged.size()) - 4, 4);
    poke32(damaged, 4, damaged.size());
    const ResourcesFixture fixture(damaged);
    QCOMPARE(fixture.package.error().code(), SorrelKit::Error::Code::BadTable);
    QCOMPARE(answers(fixture.resources), whole);
}

QTEST_GUILESS_MAIN(TestResources)
#include "tst_resources.moc"
