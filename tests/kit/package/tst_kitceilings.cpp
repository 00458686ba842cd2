// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "DrawableFixture.h"
#include "Pictures.h"
#include "drawable/paint/Canvas.h"
#include "format/AndroidAttributes.h"
#include "language/LabelLookup.h"
#include "limits/Limits.h"
#include "package/IconFileLookup.h"
#include "package/Manifest.h"
#include "package/PackageData.h"
#include "package/SetReader.h"

#include <SorrelKit/Package.h>

#include <QtTest>

using namespace fixture;
using namespace SorrelKit;

/*
 * The ceilings of the kit: the last size that passes, and the result one above.
 */

namespace {

constexpr quint32 FirstString = 0x7f010000;
constexpr int StringType = 1;

QByteArray tableOf(const PackageBuilder &package, const QStringList &strings = {QStringLiteral("text")},
                   Encoding encoding = Encoding::Utf8)
{
    return TableBuilder().strings(strings, encoding).package(package).build();
}

PackageBuilder strings()
{
    return PackageBuilder().types({QStringLiteral("string")});
}

QByteArray emptyTypes(int count)
{
    return TypeBuilder(StringType, ConfigBuilder(4).build()).build().repeated(count);
}

ResourceResolver resolverOf(const QByteArray &table)
{
    QVector<QSharedPointer<const ResourceTable>> tables;
    tables.append(QSharedPointer<const ResourceTable>(new ResourceTable(table)));
    return ResourceResolver(tables, Configuration::phone(Configuration::MediumDensity));
}

// Uses languages that have no second code.
QByteArray localeOf(int number)
{
    const char language[] = {'q', char('a' + number % 26), 0};
    const char region[] = {char('a' + number / 26 % 26), char('a' + number / 676), 0};
    return ConfigBuilder(16).locale(language, region).build();
}

PackageBuilder labelInLocales(int count)
{
    PackageBuilder package = strings();
    for (int i = 0; i < count; ++i)
        package.type(TypeBuilder(StringType, localeOf(i)).value(0, String, 0));
    return package;
}

XmlAttribute reference(quint32 id, quint32 resource)
{
    XmlAttribute attribute;
    attribute.id = id;
    attribute.value = {ValueType::Reference, resource};
    return attribute;
}

// Entries that each refer to the next; the last is a text.
QByteArray chain(int references)
{
    TypeBuilder type(StringType);
    for (int i = 0; i < references; ++i)
        type.value(i, Reference, qint64(FirstString) + i + 1);
    return tableOf(strings().type(type.value(references, String, 0)));
}

// The files of an icon, in the order of their densities.
QVector<IconFileLookup::File> iconFiles(const PackageBuilder &package, const QVector<QByteArray> &files)
{
    QStringList paths;
    Files found;
    for (const QByteArray &bytes : files) {
        paths.append(QString::number(paths.size()));
        found.add(paths.last(), bytes);
    }
    const ResourceResolver resolver = resolverOf(tableOf(package, paths));
    ResolvedValue icon;
    icon.value = {ValueType::Reference, FirstString};
    icon.resource = FirstString;
    Budget budget(PackageData::MaxLookupWork, PackageData::MaxLookupBytes);
    return IconFileLookup(resolver, found, budget).files(icon);
}

int iconFileCount(const QVector<QByteArray> &files)
{
    PackageBuilder package = strings();
    for (int i = 0; i < files.size(); ++i)
        package.type(TypeBuilder(StringType, ConfigBuilder().density(i + 1).build()).value(0, String, i));
    return int(iconFiles(package, files).size());
}

QByteArray splitManifest()
{
    return XmlBuilder()
        .empty(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x")),
                                            plainText(QStringLiteral("split"), QStringLiteral("s"))})
        .build();
}

// The package of a split, of @p size bytes.
QByteArray splitOfSize(qint64 size)
{
    const auto build = [](qint64 padding) {
        return zip({{QStringLiteral("AndroidManifest.xml"), splitManifest()},
                    {QStringLiteral("padding"), QByteArray(int(padding), '\0')}},
                   Compression::Stored);
    };
    return build(size - build(0).size());
}

int packagesOfSet(int others, int splits)
{
    QVector<Member> members;
    for (int i = 0; i < others; ++i)
        members.append({QString::number(i), QByteArray()});
    members.append({QStringLiteral("base.apk"), package(emptyTable(), smallManifest(QStringLiteral("org.x")))});
    const QByteArray split = package(emptyTable(), splitManifest());
    for (int i = 0; i < splits; ++i)
        members.append({QStringLiteral("%1.apk").arg(i), split});
    PackageDevice device(zip(members, Compression::Stored));
    const Package package(&device);
    return package.isValid() ? 1 + int(package.splits().size()) : 0;
}

} // namespace

class TestKitCeilings : public QObject
{
    Q_OBJECT

private slots:
    void typeChunks();
    void packagesOfATable();
    void charactersOfAString();
    void charactersOfATablesString();
    void referencesInARow();
    void budgetOfAResolver();
    void answersAreKept();
    void candidates();
    void languages();
    void budgetOfLabels();
    void launchers();
    void charactersOfLaunchers();
    void packagesOfASet();
    void membersOfASet();
    void typeChunksOfASet();
    void bytesOfAManifest();
    void inflatedBytesOfASet();
    void filesOfAnIcon();
    void layers();
};

void TestKitCeilings::typeChunks()
{
    const auto fault = [](int count) {
        return formatFaultText(ResourceTable(tableOf(strings().chunk(emptyTypes(count)))).fault());
    };
    QCOMPARE(fault(ResourceTable::MaxTypeChunks), QString());
    QCOMPARE(fault(ResourceTable::MaxTypeChunks + 1), QStringLiteral("too many types in resource table"));
}

void TestKitCeilings::packagesOfATable()
{
    const auto fault = [](int count) {
        TableBuilder table;
        for (int i = 0; i < count; ++i)
            table.package(PackageBuilder(i));
        return formatFaultText(ResourceTable(table.build()).fault());
    };
    QCOMPARE(fault(ResourceTable::MaxPackages), QString());
    QCOMPARE(fault(ResourceTable::MaxPackages + 1), QStringLiteral("too many packages in resource table"));
}

void TestKitCeilings::charactersOfAString()
{
    const auto length = [](int characters) {
        const QByteArray pool = PoolBuilder(Encoding::Utf16).string(QString(characters, QLatin1Char('x'))).build();
        return StringPoolView(ChunkView::at(ByteView(pool), 0)).at(0).size();
    };
    QCOMPARE(length(StringPoolView::MaxLength), StringPoolView::MaxLength);
    QCOMPARE(length(StringPoolView::MaxLength + 1), StringPoolView::MaxLength);
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const QByteArray pool = PoolBuilder(encoding).string(QString(100, QChar(0x20ac))).build();
        const StringPoolView strings(ChunkView::at(ByteView(pool), 0));
        QCOMPARE(strings.at(0), QString(100, QChar(0x20ac)));
        QCOMPARE(strings.at(0, 7), QString(7, QChar(0x20ac)));
    }
}

void TestKitCeilings::charactersOfATablesString()
{
    const auto length = [](int characters) {
        const QByteArray bytes = tableOf(strings(), {QString(characters, QLatin1Char('x'))}, Encoding::Utf16);
        return ResourceTable(bytes).string(0).size();
    };
    QCOMPARE(length(ResourceTable::MaxStringLength), ResourceTable::MaxStringLength);
    QCOMPARE(length(ResourceTable::MaxStringLength + 1), ResourceTable::MaxStringLength);
}

void TestKitCeilings::referencesInARow()
{
    const auto text = [](int references) { return resolverOf(chain(references)).resource(FirstString).text; };
    // The first reference is the requested one.
    QCOMPARE(text(ResourceResolver::MaxDepth - 1), QStringLiteral("text"));
    QCOMPARE(text(ResourceResolver::MaxDepth), QString());
}

void TestKitCeilings::budgetOfAResolver()
{
    // Only the last resource has a value.
    constexpr int Chunks = 1024;
    constexpr int Lookups = 10;
    const QByteArray table =
        tableOf(strings().chunk(emptyTypes(Chunks - 1)).type(TypeBuilder(StringType).value(0, String, 0)));
    const auto textWithin = [&](Budget budget) {
        const ResourceResolver resolver = resolverOf(table).forDevice(Configuration::phone(160), &budget);
        for (int i = 1; i < Lookups; ++i)
            resolver.resource(FirstString + quint32(i));
        return resolver.resource(FirstString).text;
    };
    constexpr qint64 Work = Lookups * (Budget::LookupWork + Chunks * Budget::ValueWork);
    constexpr int Length = 4;
    QCOMPARE(textWithin(Budget(Work + Length, 0)), QStringLiteral("text"));
    QCOMPARE(textWithin(Budget(Work + Length - 1, 0)), QStringLiteral("tex"));
    QCOMPARE(textWithin(Budget(Work - 1, 0)), QString());
    // A result that exceeds the budget of bytes is not kept, and costs again.
    const auto isKept = [&](qint64 bytes) {
        Budget budget(Work, bytes);
        const ResourceResolver resolver = resolverOf(table).forDevice(Configuration::phone(160), &budget);
        resolver.resource(FirstString);
        const qint64 before = budget.workLeft();
        return resolver.resource(FirstString).text == QLatin1String("text") && budget.workLeft() == before;
    };
    QVERIFY(isKept(ResourceResolver::ResultBytes + 2 * Length));
    QVERIFY(!isKept(ResourceResolver::ResultBytes + 2 * Length - 1));
}

void TestKitCeilings::answersAreKept()
{
    const QByteArray table = tableOf(strings()
                                         .chunk(emptyTypes(ResourceTable::MaxTypeChunks - 1))
                                         .type(TypeBuilder(StringType).value(0, String, 0)));
    const ResourceResolver resolver = resolverOf(table);
    for (int i = 0; i < 1000; ++i)
        QCOMPARE(resolver.resource(FirstString).text, QStringLiteral("text"));
}

void TestKitCeilings::candidates()
{
    const auto count = [](int densities) {
        PackageBuilder package = strings();
        for (int i = 0; i < densities; ++i)
            package.type(TypeBuilder(StringType, ConfigBuilder(16).density(i + 1).build()).value(0, String, 0));
        return resolverOf(tableOf(package)).candidates(FirstString).size();
    };
    QCOMPARE(count(ResourceResolver::MaxCandidates), ResourceResolver::MaxCandidates);
    QCOMPARE(count(ResourceResolver::MaxCandidates + 1), ResourceResolver::MaxCandidates);
}

void TestKitCeilings::languages()
{
    const auto count = [](int locales) {
        const ResourceResolver resolver = resolverOf(tableOf(labelInLocales(locales)));
        const XmlAttribute attribute = reference(Attr::Label, FirstString);
        return LabelLookup(resolver).labels(&attribute).size();
    };
    QCOMPARE(count(LabelLookup::MaxLanguages), LabelLookup::MaxLanguages);
    QCOMPARE(count(LabelLookup::MaxLanguages + 1), LabelLookup::MaxLanguages);
}

void TestKitCeilings::budgetOfLabels()
{
    // One text among many chunks. Each chunk is searched once.
    constexpr int Chunks = 1024;
    const ResourceResolver resolver =
        resolverOf(tableOf(strings().chunk(emptyTypes(Chunks - 1)).type(TypeBuilder(StringType).value(0, String, 0))));
    const XmlAttribute attribute = reference(Attr::Label, FirstString);
    constexpr qint64 Work =
        Budget::LookupWork + Chunks * Budget::ValueWork + LabelLookup::TagWork + 2 * LabelLookup::ChoiceWork + 4;
    constexpr int Most = int(LabelLookup::MaxWork / Work);
    QVERIFY(LabelLookup::MaxWork / Most >= Work && LabelLookup::MaxWork / (Most + 1) < Work);
    LabelLookup enough(resolver, Most);
    QCOMPARE(enough.label(&attribute, LanguageTag()), QStringLiteral("text"));
    QVERIFY(!enough.isSpent());
    LabelLookup tooLittle(resolver, Most + 1);
    QCOMPARE(tooLittle.label(&attribute, LanguageTag()), QString());
    QVERIFY(tooLittle.isSpent());
}

void TestKitCeilings::launchers()
{
    const auto count = [](int activities) {
        const QString activity = QStringLiteral("activity");
        XmlBuilder builder = XmlBuilder::manifest();
        builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
            .start(QStringLiteral("application"));
        for (int i = 0; i < activities; ++i) {
            builder.start(activity, {androidText(QStringLiteral("name"), QStringLiteral(".A%1").arg(i))})
                .launcherFilter()
                .end(activity);
        }
        builder.end(QStringLiteral("application")).end(QStringLiteral("manifest"));
        PackageDevice device(emptyTable(), builder.build());
        return Package(&device).launchers().size();
    };
    QCOMPARE(count(Manifest::MaxEntries), Manifest::MaxEntries);
    QCOMPARE(count(Manifest::MaxEntries + 1), Manifest::MaxEntries);
}

void TestKitCeilings::charactersOfLaunchers()
{
    // Each launcher's name has the package, a dot and a digit; one character more is counted. An alias has two names.
    constexpr int Launchers = 8;
    const auto count = [](int length, bool areAliases) {
        const QString element = areAliases ? QStringLiteral("activity-alias") : QStringLiteral("activity");
        XmlBuilder builder = XmlBuilder::manifest();
        builder
            .start(QStringLiteral("manifest"),
                   {plainText(QStringLiteral("package"), QString(length - 3, QLatin1Char('p')))})
            .start(QStringLiteral("application"));
        for (int i = 0; i < Launchers; ++i) {
            QVector<fixture::Attribute> attributes{androidText(QStringLiteral("name"), QStringLiteral(".%1").arg(i))};
            if (areAliases)
                attributes.append(androidText(QStringLiteral("targetActivity"), QStringLiteral(".T")));
            builder.start(element, attributes).launcherFilter().end(element);
        }
        builder.end(QStringLiteral("application")).end(QStringLiteral("manifest"));
        PackageDevice device(emptyTable(), builder.build());
        return Package(&device).launchers().size();
    };
    constexpr int Most = Manifest::MaxNameCharacters / Launchers;
    QCOMPARE(count(Most, false), Launchers);
    QCOMPARE(count(Most + 1, false), Launchers - 1);
    QCOMPARE(count(Most / 2, true), Launchers);
    QCOMPARE(count(Most / 2 + 1, true), Launchers - 1);
}

void TestKitCeilings::packagesOfASet()
{
    QCOMPARE(packagesOfSet(0, SetReader::MaxPackages - 1), SetReader::MaxPackages);
    QCOMPARE(packagesOfSet(0, SetReader::MaxPackages), SetReader::MaxPackages);
}

void TestKitCeilings::membersOfASet()
{
    QCOMPARE(packagesOfSet(SetReader::MaxMembers - 2, 1), 2);
    QCOMPARE(packagesOfSet(SetReader::MaxMembers - 1, 1), 1);
    QCOMPARE(packagesOfSet(SetReader::MaxMembers, 1), 0);
}

void TestKitCeilings::typeChunksOfASet()
{
    const auto error = [](int chunks) {
        const QByteArray manifest = XmlBuilder()
                                        .empty(QStringLiteral("manifest"),
                                               {plainText(QStringLiteral("package"), QStringLiteral("org.example.app")),
                                                plainText(QStringLiteral("split"), QStringLiteral("s"))})
                                        .build();
        const QByteArray half = tableOf(strings().chunk(emptyTypes(ResourceTable::MaxTypeChunks / 2)));
        const QByteArray rest = tableOf(strings().chunk(emptyTypes(chunks - ResourceTable::MaxTypeChunks / 2)));
        PackageDevice device(zip({{QStringLiteral("base.apk"), package(half, smallManifest())},
                                  {QStringLiteral("split.apk"), package(rest, manifest)}}));
        return Package(&device).error().message();
    };
    QCOMPARE(error(ResourceTable::MaxTypeChunks), QStringLiteral("no error"));
    QCOMPARE(error(ResourceTable::MaxTypeChunks + 1),
             QStringLiteral("could not parse resources.arsc: too many types in resource table"));
}

void TestKitCeilings::bytesOfAManifest()
{
    // Bytes after the document do not count.
    const auto error = [](qint64 size) {
        const QByteArray manifest = smallManifest();
        PackageDevice device(emptyTable(), manifest + QByteArray(int(size - manifest.size()), '\0'));
        return Package(&device).error().message();
    };
    QCOMPARE(error(Limits::MaxManifestBytes), QStringLiteral("no error"));
    QCOMPARE(error(Limits::MaxManifestBytes + 1), QStringLiteral("could not find AndroidManifest.xml"));
}

void TestKitCeilings::inflatedBytesOfASet()
{
    const QByteArray base = package(emptyTable(), smallManifest(QStringLiteral("org.x")));
    const QByteArray half = splitOfSize(PackageData::MaxReadingBytes / 2);
    // Directories hold bytes as well. Each package has two members: a manifest, and a table or padding.
    constexpr qint64 Names = 3 * sizeof("AndroidManifest.xml") + sizeof("resources.arsc") + 2 * sizeof("padding") - 6;
    constexpr qint64 Directories = 3 * 2 * (ZipArchive::MemberBytes + 46) + Names;
    constexpr qint64 Most = PackageData::MaxReadingBytes - Directories;
    const auto splits = [&](qint64 excess) {
        const QByteArray rest = splitOfSize(Most - half.size() - base.size() + excess);
        PackageDevice device(zip({{QStringLiteral("base.apk"), base},
                                  {QStringLiteral("half.apk"), half},
                                  {QStringLiteral("rest.apk"), rest}}));
        return Package(&device).splits().size();
    };
    QCOMPARE(splits(0), 2);
    QCOMPARE(splits(1), 1);
}

void TestKitCeilings::filesOfAnIcon()
{
    const QByteArray png = picture(1, 1, 0);
    QCOMPARE(iconFileCount(QVector<QByteArray>(IconFileLookup::MaxFiles, png)), IconFileLookup::MaxFiles);
    QCOMPARE(iconFileCount(QVector<QByteArray>(IconFileLookup::MaxFiles + 1, png)), IconFileLookup::MaxFiles);
}

void TestKitCeilings::layers()
{
    const auto isPainted = [](int layers) {
        Budget budget = iconBudget();
        Canvas canvas(QSize(1, 1), budget);
        std::function<void(int)> paint = [&](int depth) {
            if (depth == 0)
                canvas.painter().fillRect(0, 0, 1, 1, Qt::red);
            else
                canvas.layer([&]() { paint(depth - 1); }, [](QImage &) {});
        };
        paint(layers);
        return canvas.image().pixel(0, 0) == Red;
    };
    QVERIFY(isPainted(Canvas::MaxLayers));
    QVERIFY(!isPainted(Canvas::MaxLayers + 1));
}

QTEST_GUILESS_MAIN(TestKitCeilings)
#include "tst_kitceilings.moc"
