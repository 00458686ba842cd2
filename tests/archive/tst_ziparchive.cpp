// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Bytes.h"
#include "Cost.h"
#include "Devices.h"
#include "EncodedTable.h"
#include "Files.h"
#include "KitIcons.h"
#include "Pictures.h"
#include "RawZip.h"
#include "TableBuilder.h"
#include "archive/ZipArchive.h"
#include "package/PackageData.h"
#include "package/SetReader.h"

#include <SorrelKit/Package.h>
#include <SorrelKit/PackageNormalizer.h>

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

#include <limits>

using namespace SorrelKit;
using namespace fixture;

namespace {

constexpr qint64 Plenty = 1 << 30;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QVector<Member> members()
{
    return {{latin("a.txt"), "first"}, {latin("dir/b.txt"), QByteArray(1000, 'b')}, {latin("empty"), QByteArray()}};
}

QByteArray manifestOf(const char *package, const char *split = nullptr)
{
    QVector<Attribute> attributes{plainText(latin("package"), latin(package))};
    if (split != nullptr)
        attributes.append(plainText(latin("split"), latin(split)));
    return XmlBuilder::manifest().empty(latin("manifest"), attributes).build();
}

// A package of one launcher with the icon file @p icon, and of @p others.
QByteArray packageWithIcon(const char *icon, const QVector<Member> &others = {})
{
    const QByteArray manifest = XmlBuilder::manifest()
                                    .start(latin("manifest"), {plainText(latin("package"), latin("org.example"))})
                                    .start(latin("application"))
                                    .start(latin("activity"), {androidText(latin("name"), latin(".Main")),
                                                               androidText(latin("icon"), latin(icon))})
                                    .launcherFilter()
                                    .end(latin("activity"))
                                    .end(latin("application"))
                                    .end(latin("manifest"))
                                    .build();
    return package(emptyTable(), manifest, others);
}

// The offset of the directory in an archive without a comment.
int directoryAt(const QByteArray &archive)
{
    return int(peek32(archive, int(archive.size()) - 22 + 16));
}

} // namespace

Q_DECLARE_METATYPE(fixture::Compression)

class TestZipArchive : public QObject
{
    Q_OBJECT

private slots:
    void membersByTheirNames_data();
    void membersByTheirNames();
    void nothingIsThereBeforeItIsOpened();
    void filesThatAreTooLong();
    void filesThatAreTooLongAreNotInflated();
    void damagedFilesEndWhereTheFaultIs();
    void readingHasABudget();
    void lastOfSeveralMembersOfOneNameCounts();
    void whatIsMissingIsKnownWithoutReading();
    void membersUpToTheCeiling();
    void devicesThatAreOpenOrSequential();
    void fifosAndDirectoriesAreNotOpened();
    void storedMembersAreViews();
    void membersWithOtherSizesInTheirHeader_data();
    void membersWithOtherSizesInTheirHeader();
    void membersThatAreNotOpened();
    void membersThatInflateToOtherSizes();
    void membersBeyondTheFile();
    void checksumsOfMembers();
    void checksumsUpToTheCeiling();
    void filesThatShrinkWhileTheyAreOpen();
    void packagesThatShrinkWhileTheyAreOpen();
    void archivesInArchives_data();
    void archivesInArchives();
    void archivesMayBeReadInTurns();
    void inflatedArchivesTakeOffWhatTheyHave();
    void archivesThatOverlap_data();
    void archivesThatOverlap();

    void setsAreOneApplication();
    void manifestsOfASetAreLimitedTogether();
    void tablesOfASetAreLimitedTogether();
    void membersOfASetAreLimitedTogether();
    void packedBytesOfASetAreLimitedTogether();
    void missingFilesOfASetAreKnownWithoutReading();
    void firstPackageOfASetThatHasAFileCounts();
};

void TestZipArchive::membersByTheirNames_data()
{
    QTest::addColumn<Compression>("compression");
    QTest::newRow("deflated") << Compression::Deflated;
    QTest::newRow("stored") << Compression::Stored;
}

void TestZipArchive::membersByTheirNames()
{
    QFETCH(Compression, compression);
    ZipArchive archive(zip(members(), compression));
    QVERIFY(archive.open());
    QVERIFY(archive.open());
    QCOMPARE(archive.names(), QStringList({latin("a.txt"), latin("dir/b.txt"), latin("empty")}));
    QCOMPARE(archive.file(latin("dir/b.txt"), 5000), QByteArray(1000, 'b'));
    QCOMPARE(archive.file(latin("a.txt"), 5000), QByteArray("first"));
    QVERIFY(archive.contains(latin("empty")));
    QCOMPARE(archive.file(latin("empty"), 5000), QByteArray());
    for (const char *path : {"", "A.TXT", "b.txt", "dir", "dir/", "/a.txt", "./a.txt"}) {
        QVERIFY(!archive.contains(latin(path)));
        QCOMPARE(archive.file(latin(path), 5000), QByteArray());
    }
}

void TestZipArchive::nothingIsThereBeforeItIsOpened()
{
    ZipArchive archive(zip(members()));
    QVERIFY(!archive.contains(latin("a.txt")));
    QCOMPARE(archive.file(latin("a.txt"), 5000), QByteArray());
    QCOMPARE(archive.names(), QStringList());
    QVERIFY(!ZipArchive(QByteArray("no archive")).open());
    QVERIFY(!ZipArchive(QByteArray()).open());
}

void TestZipArchive::filesThatAreTooLong()
{
    ZipArchive archive(zip(members()));
    QVERIFY(archive.open());
    QCOMPARE(archive.file(latin("dir/b.txt"), 1000).size(), 1000);
    QCOMPARE(archive.file(latin("dir/b.txt"), 999), QByteArray());
    QCOMPARE(archive.file(latin("dir/b.txt"), 0), QByteArray());
}

// Thousands of resources may name the same oversized file.
void TestZipArchive::filesThatAreTooLongAreNotInflated()
{
    constexpr int Size = 64 << 20;
    ZipArchive archive(zip({{latin("long"), QByteArray(Size, '\0')}}));
    QVERIFY(archive.open());
    QCOMPARE(archive.file(latin("long"), Size - 1), QByteArray());
    const Cost taken = cost([&archive]() {
        for (int i = 0; i < 1000; ++i)
            archive.file(latin("long"), Size - 1);
    });
    QVERIFY(taken.ended);
    QVERIFY2(taken.allocated < Size, qPrintable(QString::number(taken.allocated)));
}

void TestZipArchive::damagedFilesEndWhereTheFaultIs()
{
    QByteArray bytes = zip({{latin("a"), QByteArray(100, 'a') + QByteArray(100, 'b')}});
    // The directory claims fewer bytes than the member has. No more than the claim is delivered.
    const int sizeAt = directoryAt(bytes) + 24;
    QCOMPARE(peek32(bytes, sizeAt), quint32(200));
    poke32(bytes, sizeAt, 100);
    ZipArchive archive(bytes);
    QVERIFY(archive.open());
    QVERIFY(archive.file(latin("a"), 1000).size() <= 100);
}

void TestZipArchive::readingHasABudget()
{
    const QByteArray nothing = deflatedBehindEmptyBlocks(1000);
    ZipArchive archive(zipOfDeflated({{latin("a"), nothing}}, 100));
    QVERIFY(archive.open());
    const qint64 each = Budget::PackedByteWork * qint64(nothing.size());
    Budget cost(2 * each + 1, 0);
    for (int left = 2; left > 0; --left) {
        QCOMPARE(cost.workLeft(), left * each + 1);
        archive.file(latin("a"), 1000, &cost);
    }
    archive.file(latin("a"), 1000, &cost);
    QCOMPARE(cost.workLeft(), qint64(1));
}

void TestZipArchive::lastOfSeveralMembersOfOneNameCounts()
{
    const Member other{latin("z"), "z"};
    for (const QVector<Member> &members : {QVector<Member>{{latin("a"), "1"}, {latin("a"), "2"}, other},
                                           QVector<Member>{other, {latin("a"), "1"}, {latin("a"), "2"}},
                                           QVector<Member>{{latin("a"), "1"}, other, {latin("a"), "2"}}}) {
        ZipArchive archive(zip(members));
        QVERIFY(archive.open());
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(archive.file(latin("a"), 10), QByteArray("2"));
            QCOMPARE(archive.file(latin("z"), 10), QByteArray("z"));
            QCOMPARE(archive.file(latin("nothing"), 10), QByteArray());
        }
    }
}

void TestZipArchive::whatIsMissingIsKnownWithoutReading()
{
    PackageDevice device(zip(members()));
    ZipArchive archive(&device);
    QVERIFY(archive.open());
    const qint64 before = device.bytesRead();
    QVERIFY(!archive.contains(latin("nothing")));
    QCOMPARE(archive.file(latin("nothing"), 10), QByteArray());
    QCOMPARE(device.bytesRead(), before);
}

void TestZipArchive::membersUpToTheCeiling()
{
    const QByteArray bytes = zip(members());
    const qint64 held = 3 * ZipArchive::MemberBytes + (bytes.size() - 22 - directoryAt(bytes));
    Budget enough(4 * ZipArchive::MemberWork, held + 1);
    ZipArchive archive(bytes);
    QVERIFY(archive.open(&enough));
    QCOMPARE(enough.workLeft(), ZipArchive::MemberWork);
    QCOMPARE(enough.bytesLeft(), qint64(1));
    for (Budget tooFew : {Budget(3 * ZipArchive::MemberWork - 1, Plenty), Budget(Plenty, held - 1)}) {
        const qint64 before = tooFew.bytesLeft();
        ZipArchive tooMany(bytes);
        QVERIFY(!tooMany.open(&tooFew));
        QCOMPARE(tooMany.names(), QStringList());
        QCOMPARE(tooMany.file(latin("a.txt"), 10), QByteArray());
        QCOMPARE(tooFew.bytesLeft(), before);
    }
}

void TestZipArchive::devicesThatAreOpenOrSequential()
{
    QByteArray bytes = zip(members());
    QBuffer device(&bytes);
    QVERIFY(device.open(QIODevice::ReadOnly));
    ZipArchive opened(&device);
    QVERIFY(!opened.open());
    device.close();
    QVERIFY(opened.open());
    SequentialDevice sequential(bytes);
    QVERIFY(!ZipArchive(&sequential).open());
    sequential.close();
    QVERIFY(!ZipArchive(&sequential).open());
}

void TestZipArchive::fifosAndDirectoriesAreNotOpened()
{
    const QTemporaryDir directory;
    QVERIFY(directory.isValid());
    const QString fifo = directory.filePath(latin("fifo"));
    QCOMPARE(mkfifo(qPrintable(fifo), 0600), 0);
    QVERIFY(!ZipArchive(fifo).open());
    QVERIFY(!ZipArchive(directory.path()).open());
    QVERIFY(!ZipArchive(directory.filePath(latin("nothing"))).open());
    const QString path = directory.filePath(latin("archive"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(zip(members()));
    file.close();
    ZipArchive archive(path);
    QVERIFY(archive.open());
    QCOMPARE(archive.file(latin("a.txt"), 10), QByteArray("first"));
}

void TestZipArchive::storedMembersAreViews()
{
    const QByteArray content(1 << 20, 'x');
    const QTemporaryDir directory;
    const QString path = directory.filePath(latin("archive"));
    const QVector<Member> members{{latin("large"), content}, {latin("small"), "small"}};
    writeFile(path, zip(members, Compression::Stored));
    SharedBytes view;
    const Cost taken = cost([&]() {
        ZipArchive archive(path);
        archive.open();
        view = archive.content(latin("large"), content.size());
        archive.content(latin("small"), 10);
    });
    QVERIFY(taken.ended);
    QVERIFY2(taken.allocated < content.size() / 4, qPrintable(QString::number(taken.allocated)));
    {
        ZipArchive archive(path);
        QVERIFY(archive.open());
        view = archive.content(latin("large"), content.size());
        QVERIFY(archive.content(latin("large"), content.size() - 1).isEmpty());
        QCOMPARE(archive.content(latin("small"), 10).toByteArray(), QByteArray("small"));
    }
    QCOMPARE(view.toByteArray(), content);
}

void TestZipArchive::membersWithOtherSizesInTheirHeader_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<int>("method");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("other size") << 0 << -1 << qint64(3) << QByteArray();
    QTest::newRow("sizes follow the data") << 8 << -1 << qint64(0) << QByteArray("content");
    QTest::newRow("other method") << 0 << 8 << qint64(-1) << QByteArray("content");
    QTest::newRow("encrypted") << 1 << -1 << qint64(-1) << QByteArray("content");
}

void TestZipArchive::membersWithOtherSizesInTheirHeader()
{
    QFETCH(int, flags);
    QFETCH(int, method);
    QFETCH(qint64, size);
    QFETCH(QByteArray, content);
    RawMember raw{"a", "content"};
    raw.flags = flags;
    raw.localMethod = method;
    raw.localSize = size;
    ZipArchive archive(rawZip({raw}));
    QVERIFY(archive.open());
    QCOMPARE(archive.file(latin("a"), 100), content);
}

// Android refuses these, and their bytes are known all the same.
void TestZipArchive::membersThatAreNotOpened()
{
    RawMember renamed{"a", "content"};
    renamed.localName = "b";
    RawMember resized{"a", "content"};
    resized.localSize = 3;
    for (const RawMember &raw : {renamed, resized}) {
        ZipArchive archive(rawZip({raw}));
        QVERIFY(archive.open());
        QVERIFY(!archive.isOpened(latin("a")));
        QCOMPARE(archive.file(latin("a"), 100), QByteArray());
        Budget any(std::numeric_limits<qint64>::max(), 0);
        QCOMPARE(archive.contentAnyway(latin("a"), 100, &any).toByteArray(), QByteArray("content"));
    }
    RawMember nowhere{"a", "content"};
    nowhere.headerAt = 1;
    ZipArchive archive(rawZip({nowhere}));
    QVERIFY(archive.open());
    Budget any(std::numeric_limits<qint64>::max(), 0);
    QVERIFY(archive.contentAnyway(latin("a"), 100, &any).isEmpty());
}

void TestZipArchive::membersThatInflateToOtherSizes()
{
    const QByteArray packed = deflatedBehindEmptyBlocks(0, "content");
    for (const int size : {6, 7, 8}) {
        ZipArchive archive(zipOfDeflated({{latin("a"), packed}}, size));
        QVERIFY(archive.open());
        QVERIFY(archive.isOpened(latin("a")));
        QCOMPARE(archive.file(latin("a"), 100), size == 7 ? QByteArray("content") : QByteArray());
        QCOMPARE(archive.oddities(latin("a")).contains(Oddity::MemberInflatedSize), size != 7);
        Budget any(std::numeric_limits<qint64>::max(), 0);
        QCOMPARE(archive.contentAnyway(latin("a"), 100, &any).toByteArray(), QByteArray("content").left(size));
    }
    // Bytes behind the end of the data do not count.
    ZipArchive longer(zipOfDeflated({{latin("a"), packed + "more"}}, 7));
    QVERIFY(longer.open());
    QCOMPARE(longer.file(latin("a"), 100), QByteArray("content"));
}

void TestZipArchive::membersBeyondTheFile()
{
    QByteArray bytes = rawZip({{"a", "content"}});
    // The member claims more bytes than the file has from there on.
    const auto left = int(bytes.size()) - 30 - 1;
    for (const int at : {18, 22, directoryAt(bytes) + 20, directoryAt(bytes) + 24})
        poke32(bytes, at, 1000);
    ZipArchive archive(bytes);
    QVERIFY(archive.open());
    QCOMPARE(archive.file(latin("a"), 1000), QByteArray());
    Budget any(std::numeric_limits<qint64>::max(), 0);
    const QByteArray content = archive.contentAnyway(latin("a"), 1000, &any).toByteArray();
    QCOMPARE(content.size(), left);
    QVERIFY(content.startsWith("content"));
}

void TestZipArchive::checksumsOfMembers()
{
    for (const Compression compression : {Compression::Deflated, Compression::Stored}) {
        QByteArray bytes = zip(members(), compression);
        const int second = int(bytes.indexOf("PK\1\2", directoryAt(bytes) + 1));
        const quint32 right = peek32(bytes, second + 16);
        const int own = int(peek32(bytes, second + 42));
        Budget plenty(Plenty, 0);
        for (const quint32 sum : {right, right + 1}) {
            poke32(bytes, second + 16, sum);
            poke32(bytes, own + 14, sum);
            ZipArchive archive(bytes);
            QVERIFY(archive.open());
            QCOMPARE(archive.hasRightChecksum(1, &plenty), std::optional<bool>(sum == right));
            QCOMPARE(archive.hasRightChecksum(0, &plenty), std::optional<bool>(true));
            QCOMPARE(archive.hasRightChecksum(2, &plenty), std::optional<bool>(true));
            // Android ignores checksums.
            QCOMPARE(archive.file(latin("dir/b.txt"), 5000), QByteArray(1000, 'b'));
            Budget nothing(0, 0);
            QCOMPARE(archive.hasRightChecksum(1, &nothing), std::optional<bool>());
        }
    }
}

void TestZipArchive::checksumsUpToTheCeiling()
{
    Budget plenty(Plenty, 0);
    for (const Compression compression : {Compression::Deflated, Compression::Stored}) {
        const QByteArray most(int(ZipArchive::MaxCheckedBytes), 'x');
        ZipArchive archive(zip({{latin("a"), most}, {latin("b"), most + 'x'}}, compression));
        QVERIFY(archive.open());
        QCOMPARE(archive.hasRightChecksum(0, &plenty), std::optional<bool>(true));
        const bool isChecked = compression == Compression::Stored;
        QCOMPARE(archive.hasRightChecksum(1, &plenty), isChecked ? std::make_optional(true) : std::nullopt);
    }
}

void TestZipArchive::filesThatShrinkWhileTheyAreOpen()
{
    const QByteArray content(1 << 20, 'x');
    const QTemporaryDir directory;
    const QString path = directory.filePath(latin("archive"));
    for (const Compression compression : {Compression::Deflated, Compression::Stored}) {
        const QByteArray bytes = zip({{latin("a"), content}, {latin("b"), content}}, compression);
        writeFile(path, bytes);
        ZipArchive archive(path);
        QVERIFY(archive.open());
        const SharedBytes before = archive.content(latin("a"), content.size());
        QVERIFY(QFile::resize(path, 1000));
        const SharedBytes after = archive.content(latin("a"), content.size());
        if (compression == Compression::Deflated)
            QCOMPARE(before.toByteArray(), content);
        else
            QVERIFY(content.startsWith(before.toByteArray().left(900)));
        QVERIFY(content.startsWith(after.toByteArray()));
        QVERIFY(after.size() < content.size());
        QVERIFY(archive.content(latin("b"), content.size()).isEmpty());
        QVERIFY(archive.file(latin("b"), content.size()).isEmpty());
    }
}

void TestZipArchive::packagesThatShrinkWhileTheyAreOpen()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(latin("a.apk"));
    // The table is large enough to be mapped, and its texts are at its end.
    QStringList texts;
    for (int i = 0; i < 20000; ++i)
        texts.append(QStringLiteral("label number %1").arg(i));
    PackageBuilder package;
    package.types({latin("string")}).keys({latin("name")}).type(TypeBuilder(1).value(0, String, 19999));
    const QByteArray table = TableBuilder().strings(texts).package(package).build();
    const QByteArray manifest = XmlBuilder::manifest()
                                    .start(latin("manifest"), {plainText(latin("package"), latin("org.example"))})
                                    .empty(latin("application"), {androidReference(latin("label"), 0x7f010000)})
                                    .end(latin("manifest"))
                                    .build();
    const QByteArray bytes =
        zip({{latin("AndroidManifest.xml"), manifest}, {latin("resources.arsc"), table}}, Compression::Stored);
    writeFile(path, bytes);
    const Package whole(path);
    QCOMPARE(whole.label(), latin("label number 19999"));
    for (int size = int(bytes.size()); size > 0; size -= 20000) {
        writeFile(path, bytes);
        const Package cut(path);
        QCOMPARE(cut.packageName(), latin("org.example"));
        QVERIFY(QFile::resize(path, size));
        cut.label();
        cut.labels();
        const Package readBefore(path);
        readBefore.label();
        QVERIFY(QFile::resize(path, size / 2));
        readBefore.labels();
    }
}

void TestZipArchive::archivesInArchives_data()
{
    membersByTheirNames_data();
}

void TestZipArchive::archivesInArchives()
{
    QFETCH(Compression, compression);
    ZipArchive outer(zip({{latin("in.apk"), zip(members())}, {latin("text"), "no archive"}}, compression));
    QVERIFY(outer.open());
    Budget inflated(0, 1 << 20);
    const auto inner = outer.archive(latin("in.apk"), &inflated);
    QVERIFY(inner != nullptr);
    QVERIFY(!inner->contains(latin("a.txt")));
    QVERIFY(inner->open());
    QCOMPARE(inner->file(latin("a.txt"), 10), QByteArray("first"));
    QCOMPARE(inner->names().size(), 3);
    QCOMPARE(inflated.bytesLeft() < 1 << 20, compression == Compression::Deflated);
    QVERIFY(outer.archive(latin("nowhere"), &inflated) == nullptr);
    const auto text = outer.archive(latin("text"), &inflated);
    QVERIFY(text != nullptr);
    QVERIFY(!text->open());
}

void TestZipArchive::archivesMayBeReadInTurns()
{
    const QVector<Member> one{{latin("x"), QByteArray(200000, '1')}};
    const QVector<Member> two{{latin("x"), QByteArray(200000, '2')}};
    ZipArchive outer(zip({{latin("1"), zip(one)}, {latin("2"), zip(two)}, {latin("3"), "three"}}, Compression::Stored));
    QVERIFY(outer.open());
    Budget inflated(0, 0);
    const auto first = outer.archive(latin("1"), &inflated);
    const auto second = outer.archive(latin("2"), &inflated);
    QVERIFY(first->open() && second->open());
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(second->file(latin("x"), 1 << 20), two.first().content);
        QCOMPARE(first->file(latin("x"), 1 << 20), one.first().content);
        QCOMPARE(outer.file(latin("3"), 100), QByteArray("three"));
    }
}

void TestZipArchive::inflatedArchivesTakeOffWhatTheyHave()
{
    const QByteArray inner = zip(members());
    QByteArray bytes = zip({{latin("1"), inner}, {latin("2"), inner}, {latin("3"), inner}});
    ZipArchive outer(bytes);
    QVERIFY(outer.open());
    Budget inflated(0, 2 * inner.size());
    QVERIFY(outer.archive(latin("1"), &inflated) != nullptr);
    QCOMPARE(inflated.bytesLeft(), qint64(inner.size()));
    QVERIFY(outer.archive(latin("2"), &inflated) != nullptr);
    QCOMPARE(inflated.bytesLeft(), qint64(0));
    QVERIFY(outer.archive(latin("3"), &inflated) == nullptr);
    // A damaged file counts with the size that the directory claims.
    const int sizeAt = directoryAt(bytes) + 24;
    poke32(bytes, sizeAt, 5000);
    ZipArchive liar(bytes);
    QVERIFY(liar.open());
    Budget other(0, 6000);
    liar.archive(latin("1"), &other);
    QCOMPARE(other.bytesLeft(), qint64(1000));
}

void TestZipArchive::archivesThatOverlap_data()
{
    membersByTheirNames_data();
}

// A directory may list one archive any number of times, so a small file can have thousands of archives.
void TestZipArchive::archivesThatOverlap()
{
    QFETCH(Compression, compression);
    QRandomGenerator random(1);
    QByteArray noise(3000, '\0');
    for (char &byte : noise)
        byte = char(random.bounded(256));
    const QByteArray inner = zip({{latin("x"), noise}}, Compression::Stored);
    const QStringList names{latin("b"), latin("c"), latin("d")};
    ZipArchive outer(withNames(zip({{latin("a"), inner}}, compression), names));
    QVERIFY(outer.open());
    QCOMPARE(outer.names().size(), 4);
    Budget inflated(0, 10 * inner.size());
    QVERIFY(outer.archive(latin("a"), &inflated) != nullptr);
    QVERIFY(outer.archive(latin("b"), &inflated) == nullptr);
}

void TestZipArchive::setsAreOneApplication()
{
    const auto package = [](const char *name, const char *split = nullptr) {
        return zip({{latin("AndroidManifest.xml"), manifestOf(name, split)}});
    };
    ZipArchive archive(zip({{latin("splits/x.apk"), package("org.other", "config.fr")},
                            {latin("splits/de.APK"), package("org.example", "config.de")},
                            {latin("standalones/old.apk"), package("org.other")},
                            {latin("toc.pb"), "not a package"},
                            {latin("bad.apk"), "not an archive"},
                            {latin("splits/base-master.apk"), package("org.example")}}));
    QVERIFY(archive.open());
    QVERIFY(SetReader::isSet(archive));
    Budget budget(PackageData::MaxReadingWork, PackageData::MaxReadingBytes);
    SetReader set(archive, budget);
    QVERIFY(set.base() != nullptr);
    QCOMPARE(set.base()->file(latin("AndroidManifest.xml"), 1 << 20), manifestOf("org.example"));
    QCOMPARE(set.splits().size(), size_t(1));
    QCOMPARE(set.splits().front().name, latin("config.de"));
    ZipArchive none(zip(members()));
    QVERIFY(none.open());
    QVERIFY(!SetReader::isSet(none));
}

// The manifest of each package takes tens of millions of characters.
void TestZipArchive::manifestsOfASetAreLimitedTogether()
{
    constexpr int Length = 1 << 16;
    XmlBuilder builder = XmlBuilder::manifest();
    const QString text(Length, QLatin1Char('x'));
    QVector<Attribute> attributes{plainText(latin("package"), latin("org.example")),
                                  plainText(latin("split"), latin("config.de"))};
    for (int i = 0; i < 240; ++i)
        attributes.append(plainText(latin("x"), text));
    const QByteArray package =
        zip({{latin("AndroidManifest.xml"), builder.empty(latin("manifest"), attributes).build()}});
    QVector<Member> packages{{latin("base.apk"), zip({{latin("AndroidManifest.xml"), manifestOf("org.example")}})}};
    for (int i = 0; i < 4; ++i)
        packages.append({latin("%1.apk").arg(i), package});
    ZipArchive archive(zip(packages));
    QVERIFY(archive.open());
    Budget budget(PackageData::MaxReadingWork, PackageData::MaxReadingBytes);
    SetReader set(archive, budget);
    QVERIFY(set.base() != nullptr);
    QCOMPARE(set.splits().size(), size_t(PackageData::MaxReadingWork / (Budget::DocumentByteWork * 240 * Length)));
}

void TestZipArchive::tablesOfASetAreLimitedTogether()
{
    const QByteArray type = TypeBuilder(1).value(0, Integer, 1).build();
    const auto table = [&type](int count) {
        PackageBuilder package;
        return TableBuilder().package(package.chunk(type.repeated(count))).build();
    };
    const auto set = [](const QByteArray &base, const QByteArray &split) {
        const auto member = [](const QByteArray &manifest, const QByteArray &bytes) {
            return zip({{latin("AndroidManifest.xml"), manifest}, {latin("resources.arsc"), bytes}});
        };
        return zip({{latin("base.apk"), member(manifestOf("org.example"), base)},
                    {latin("de.apk"), member(manifestOf("org.example", "config.de"), split)}});
    };
    constexpr int Most = ResourceTable::MaxTypeChunks;
    PackageDevice good(set(table(Most - 2), table(2)));
    const Package wholeSet(&good);
    QCOMPARE(wholeSet.error().message(), latin("no error"));
    PackageDevice many(set(table(Most - 2), table(3)));
    const Package tooManyTypes(&many);
    QCOMPARE(tooManyTypes.error().code(), SorrelKit::Error::Code::BadTable);
    QCOMPARE(tooManyTypes.error().message(), latin("could not parse resources.arsc: too many types in resource table"));
    // Bytes after the table are read with it.
    const QByteArray half = table(1) + QByteArray(int(Limits::MaxTableBytes / 2), '\0');
    PackageDevice large(set(half, half));
    const Package tooLarge(&large);
    QCOMPARE(tooLarge.error().code(), SorrelKit::Error::Code::BadTable);
    QCOMPARE(tooLarge.packageName(), latin("org.example"));
}

void TestZipArchive::membersOfASetAreLimitedTogether()
{
    constexpr int NameSize = 19;
    constexpr qint64 EachBytes = ZipArchive::MemberBytes + 46 + NameSize; ///< a record of the directory is 46 bytes
    const QByteArray base = zip({{latin("AndroidManifest.xml"), manifestOf("org.example")}});
    const auto split = [](int members) {
        QStringList names;
        for (int i = 1; i < members; ++i)
            names.append(QString::number(i).rightJustified(NameSize, QLatin1Char('0')));
        return withNames(zip({{latin("AndroidManifest.xml"), manifestOf("org.example", "config.de")}}), names);
    };
    struct Result {
        int splits = -1;
        qint64 bytesLeft = 0;
    };
    const auto read = [&base](const QVector<QByteArray> &packages) {
        QVector<Member> members{{latin("base.apk"), base}};
        for (const QByteArray &package : packages)
            members.append({QStringLiteral("%1.apk").arg(members.size()), package});
        ZipArchive archive(zip(members, Compression::Stored));
        Budget budget(PackageData::MaxReadingWork, 1 << 20);
        return archive.open() ? Result{int(SetReader(archive, budget).splits().size()), budget.bytesLeft()} : Result();
    };
    const QByteArray full = split(5000);
    const Result before = read({full, split(1)});
    QCOMPARE(before.splits, 2);
    const int rest = int(before.bytesLeft / EachBytes);
    QVERIFY(rest > 1000 && rest < 10000);
    QCOMPARE(read({full, split(rest + 1)}).splits, 2);
    QCOMPARE(read({full, split(rest + 2)}).splits, 1);
}

// A compressed package in a set may be a thousand times as large as the set.
void TestZipArchive::packedBytesOfASetAreLimitedTogether()
{
    constexpr int Size = 1 << 20; ///< the size that the members claim
    const auto packed = [](const QByteArray &bytes) { return deflatedBehindEmptyBlocks(0, bytes); };
    const QByteArray base = zipOfDeflated({{latin("AndroidManifest.xml"), packed(manifestOf("org.example"))}}, Size);
    const auto splits = [&](qint64 bytes) {
        const QByteArray manifest = deflatedBehindEmptyBlocks(int(bytes), manifestOf("org.example", "config.de"));
        const QByteArray split = zipOfDeflated({{latin("AndroidManifest.xml"), manifest}}, Size);
        ZipArchive archive(zip({{latin("base.apk"), base}, {latin("de.apk"), split}}));
        Budget budget(PackageData::MaxReadingWork, PackageData::MaxReadingBytes);
        return archive.open() ? int(SetReader(archive, budget).splits().size()) : -1;
    };
    // The rest of the work is spent on directories and on making the elements.
    constexpr qint64 Most = PackageData::MaxReadingWork / Budget::PackedByteWork;
    constexpr int Some = 100'000;
    QCOMPARE(splits(Most - Some), 1);
    QCOMPARE(splits(Most), 0);

    const auto withTable = [&](qint64 bytes) {
        return zipOfDeflated({{latin("AndroidManifest.xml"), packed(manifestOf("org.example"))},
                              {latin("resources.arsc"), deflatedBehindEmptyBlocks(int(bytes), emptyTable())}},
                             Size);
    };
    const auto error = [](const QByteArray &bytes) {
        PackageDevice device(bytes);
        return Package(&device).error().code();
    };
    const auto normalizerError = [](const QByteArray &bytes) {
        PackageDevice device(bytes);
        return PackageNormalizer(&device).error().code();
    };
    const QByteArray most = zip({{latin("base.apk"), withTable(Most - Some)}});
    // It was read, and its members do not inflate to the sizes that they claim.
    QCOMPARE(error(most), SorrelKit::Error::Code::RefusedByAndroid);
    QCOMPARE(normalizerError(most), SorrelKit::Error::Code::None);
    const QByteArray tooMuch = zip({{latin("base.apk"), withTable(Most)}});
    QCOMPARE(error(tooMuch), SorrelKit::Error::Code::BadTable);
    QCOMPARE(normalizerError(tooMuch), SorrelKit::Error::Code::BadTable);
    // A package outside a set is read once, so its own size is the limit.
    QCOMPARE(error(withTable(Most)), SorrelKit::Error::Code::RefusedByAndroid);
    QCOMPARE(normalizerError(withTable(Most)), SorrelKit::Error::Code::None);
}

// Otherwise each of hundreds of packages would be searched for each of thousands of paths.
void TestZipArchive::missingFilesOfASetAreKnownWithoutReading()
{
    const QByteArray split = zip({{latin("AndroidManifest.xml"), manifestOf("org.example", "config.de")}});
    for (const Compression compression : {Compression::Deflated, Compression::Stored}) {
        PackageDevice device(
            zip({{latin("base.apk"), packageWithIcon("res/nothing.png")}, {latin("de.apk"), split}}, compression));
        const Package package(&device);
        QCOMPARE(package.splits().size(), 1);
        const Entry launcher = package.launchers().constFirst();
        const qint64 before = device.bytesRead();
        QVERIFY(iconOf(launcher, 48).isNull());
        QVERIFY(launcher.iconFiles().isEmpty());
        QCOMPARE(device.bytesRead(), before);
    }
}

void TestZipArchive::firstPackageOfASetThatHasAFileCounts()
{
    const QString path = latin("res/icon.png");
    const Member splitManifest{latin("AndroidManifest.xml"), manifestOf("org.example", "config.de")};
    PackageDevice device(zip({{latin("de.apk"), zip({splitManifest, {path, picture(96, 96, 0)}})},
                              {latin("base.apk"), packageWithIcon("res/icon.png", {{path, picture(48, 48, 0)}})}}));
    const Package package(&device);
    QCOMPARE(package.splits().size(), 1);
    QCOMPARE(package.launchers().constFirst().iconFiles().constFirst().size(), QSize(48, 48));
}

QTEST_GUILESS_MAIN(TestZipArchive)
#include "tst_ziparchive.moc"
