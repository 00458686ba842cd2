// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "Bytes.h"
#include "LogCapture.h"

#include <SorrelKit/Entry.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/PackageNormalizer.h>

#include <QTemporaryDir>
#include <QtTest>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>
#include <sys/stat.h>
#include <zlib.h>

using namespace fixture;

/*
 * Archives that no build tool makes. The tests damage the archive's own structures: a local header before each member
 * ("PK\3\4"), an entry of the central directory for each ("PK\1\2"), and an end record ("PK\5\6").
 */

namespace {

const QString tableName = QStringLiteral("resources.arsc");
const QString manifestName = QStringLiteral("AndroidManifest.xml");

const QByteArray localSignature("PK\3\4");
const QByteArray centralSignature("PK\1\2");

// Offsets in a local header and in an entry of the central directory.
constexpr int LocalFlagsAt = 6;
constexpr int LocalMethodAt = 8;
constexpr int LocalCrcAt = 14;
constexpr int LocalNameAt = 30;
constexpr int CentralFlagsAt = 8;
constexpr int CentralMethodAt = 10;
constexpr int CentralCrcAt = 16;
constexpr int CentralPackedSizeAt = 20;
constexpr int CentralSizeAt = 24;
constexpr int CentralLocalOffsetAt = 42;
constexpr int CentralNameAt = 46;

// The offset of the local header of the member @p name, or of its entry in the central directory.
int find(const QByteArray &archive, const QByteArray &signature, int nameAt, const QString &name)
{
    int at = int(archive.indexOf(signature));
    while (at >= 0 && archive.mid(at + nameAt, name.size()) != name.toLatin1())
        at = int(archive.indexOf(signature, at + 1));
    if (at < 0)
        qFatal("no member %s", qPrintable(name));
    return at;
}

int local(const QByteArray &archive, const QString &name)
{
    return find(archive, localSignature, LocalNameAt, name);
}

int central(const QByteArray &archive, const QString &name)
{
    return find(archive, centralSignature, CentralNameAt, name);
}

QByteArray good()
{
    return package(emptyTable(), smallManifest());
}

// The error code after reading the whole package, and the package name.
QPair<int, QString> answer(const QByteArray &archive)
{
    const LogCapture log;
    PackageDevice device(archive);
    ApkFile apk(&device);
    apk.getLauncherInfo(true);
    const QString name = apk.mainPackage();
    return {apk.getError(), name};
}

const QPair<int, QString> fine(0, QStringLiteral("org.example.app"));

QPair<int, QString> refused(int code)
{
    return {code, QString()};
}

// A manifest with one launcher. Its icon is the path of a member.
QByteArray manifestWithIcon(const QString &icon)
{
    return XmlBuilder::manifest()
        .start(QStringLiteral("manifest"))
        .start(QStringLiteral("application"))
        .start(QStringLiteral("activity"), {androidText(QStringLiteral("icon"), icon)})
        .launcherFilter()
        .end(QStringLiteral("activity"))
        .end(QStringLiteral("application"))
        .end(QStringLiteral("manifest"))
        .build();
}

/// A device that fails after a number of delivered bytes.
class FailingDevice : public PackageDevice
{
public:
    FailingDevice(const QByteArray &bytes, qint64 limit) : PackageDevice(bytes), m_left(limit) {}

protected:
    qint64 readData(char *data, qint64 size) override
    {
        if (size > m_left)
            return -1;
        m_left -= size;
        return PackageDevice::readData(data, size);
    }

private:
    qint64 m_left;
};

} // namespace

class TestOddArchives : public QObject
{
    Q_OBJECT

private slots:
    void undamagedArchiveIsFine();
    void lastOfTwoMembersOfOneNameCounts_data();
    void lastOfTwoMembersOfOneNameCounts();
    void lastOfTwoIconsOfOneNameCounts();
    void membersAreNeverFilesOutside();
    void directoryInPlaceOfTheTable();
    void encryptedMember();
    void encryptionFlagAloneIsNotLookedAt();
    void unknownCompressionMethod();
    void wrongChecksumIsNotLookedAt();
    void directoryAndLocalHeaderDisagree_data();
    void directoryAndLocalHeaderDisagree();
    void iconWhoseLocalHeaderIsDamagedIsLeftOut();
    void bytesAroundTheArchive();
    void storedMembers();
    void whatIsNoFileCannotBeOpened_data();
    void whatIsNoFileCannotBeOpened();
    void fileThatShrinksWhileItIsOpen();
    void deviceThatFailsInTheMiddle();
    void everyPrefixIsAnswered();
    void everyByteMayBeDamaged();
};

void TestOddArchives::undamagedArchiveIsFine()
{
    QCOMPARE(answer(good()), fine);
}

void TestOddArchives::lastOfTwoMembersOfOneNameCounts_data()
{
    const Member table{tableName, emptyTable()};
    const Member broken{tableName, "no table"};
    const Member first{manifestName, smallManifest(QStringLiteral("first"))};
    const Member second{manifestName, smallManifest(QStringLiteral("second"))};
    QTest::addColumn<QByteArray>("archive");
    QTest::newRow("manifests before the table") << zip({first, second, table});
    QTest::newRow("manifests behind the table") << zip({table, first, second});
    QTest::newRow("manifests around the table") << zip({first, table, second});
    QTest::newRow("tables before the manifest") << zip({broken, table, second});
    QTest::newRow("tables behind the manifest") << zip({second, broken, table});
    QTest::newRow("tables and manifests in turns") << zip({broken, first, table, second});
}

// The two readers look up the table and the manifest in different orders.
void TestOddArchives::lastOfTwoMembersOfOneNameCounts()
{
    QFETCH(QByteArray, archive);
    QCOMPARE(answer(archive), qMakePair(0, QStringLiteral("second")));
    PackageDevice device(archive);
    QCOMPARE(SorrelKit::Package(&device).packageName(), QStringLiteral("second"));
    PackageDevice other(archive);
    QCOMPARE(SorrelKit::PackageNormalizer(&other).apkFile()->mainPackage(), QStringLiteral("second"));
}

void TestOddArchives::lastOfTwoIconsOfOneNameCounts()
{
    const QString path = QStringLiteral("icon.png");
    const Member table{tableName, emptyTable()};
    const Member manifest{manifestName, manifestWithIcon(path)};
    const Member small{path, picture(3, 3, 0)};
    const Member large{path, picture(5, 5, 0)};
    for (const QVector<Member> &members :
         {QVector<Member>{small, large, table, manifest}, QVector<Member>{table, manifest, small, large},
          QVector<Member>{small, table, manifest, large}}) {
        PackageDevice device(zip(members));
        ApkFile apk(&device);
        for (int i = 0; i < 2; ++i)
            QCOMPARE(apk.getLauncherInfo(false).constFirst().icons().constFirst().width(), 5);
        PackageDevice other(zip(members));
        const SorrelKit::Entry launcher = SorrelKit::Package(&other).launchers().constFirst();
        QCOMPARE(launcher.iconFiles().constFirst().size(), QSize(5, 5));
    }
}

void TestOddArchives::membersAreNeverFilesOutside()
{
    // An icon that the manifest names by a path is a member of the archive, even when a file has that path.
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("icon.png"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(picture(3, 3, 0));
    file.close();
    const auto widthOfIcon = [](const QString &icon, const QVector<Member> &members) {
        PackageDevice device(emptyTable(), manifestWithIcon(icon), members);
        const QList<QImage> icons = ApkFile(&device).getLauncherInfo(false).constFirst().icons();
        return icons.isEmpty() ? 0 : icons.constFirst().width();
    };
    QCOMPARE(widthOfIcon(path, {}), 0);
    QCOMPARE(widthOfIcon(path, {{path, picture(5, 5, 0)}}), 5);
    const QString upwards = QStringLiteral("../../icon.png");
    QCOMPARE(widthOfIcon(upwards, {}), 0);
    QCOMPARE(widthOfIcon(upwards, {{upwards, picture(6, 6, 0)}}), 6);
}

void TestOddArchives::directoryInPlaceOfTheTable()
{
    QCOMPARE(answer(zip({{tableName + QLatin1Char('/'), QByteArray()}, {manifestName, smallManifest()}})), refused(2));
}

void TestOddArchives::encryptedMember()
{
    QBuffer buffer;
    QuaZip archive(&buffer);
    QVERIFY(archive.open(QuaZip::mdCreate));
    const QByteArray table = emptyTable();
    const auto crc = crc32(0, reinterpret_cast<const Bytef *>(table.constData()), uInt(table.size()));
    QuaZipFile file(&archive);
    QVERIFY(file.open(QIODevice::WriteOnly, QuaZipNewInfo(tableName), "secret", quint32(crc)));
    file.write(table);
    file.close();
    archive.close();
    QCOMPARE(answer(buffer.data()), refused(3));
}

// The member is marked as encrypted, but is not.
void TestOddArchives::encryptionFlagAloneIsNotLookedAt()
{
    QByteArray archive = good();
    poke16(archive, local(archive, tableName) + LocalFlagsAt, 1);
    poke16(archive, central(archive, tableName) + CentralFlagsAt, 1);
    QCOMPARE(answer(archive), fine);
}

void TestOddArchives::unknownCompressionMethod()
{
    constexpr int Unassigned = 77;
    const auto answerWithout = [](const QString &member) {
        QByteArray archive = good();
        poke16(archive, local(archive, member) + LocalMethodAt, Unassigned);
        poke16(archive, central(archive, member) + CentralMethodAt, Unassigned);
        return answer(archive);
    };
    QCOMPARE(answerWithout(tableName), refused(2));
    QCOMPARE(answerWithout(manifestName), refused(4));
}

void TestOddArchives::wrongChecksumIsNotLookedAt()
{
    QByteArray archive = good();
    poke32(archive, local(archive, tableName) + LocalCrcAt, 0x12345678);
    poke32(archive, central(archive, tableName) + CentralCrcAt, 0x12345678);
    QCOMPARE(answer(archive), fine);
}

void TestOddArchives::directoryAndLocalHeaderDisagree_data()
{
    QTest::addColumn<QByteArray>("archive");
    QTest::addColumn<int>("code");
    const auto row = [](const char *name, int code, const std::function<void(QByteArray &)> &damage) {
        QByteArray archive = good();
        damage(archive);
        QTest::newRow(name) << archive << code;
    };
    row("method", 2, [](QByteArray &archive) { poke16(archive, local(archive, tableName) + LocalMethodAt, 0); });
    row("offset beyond the end", 2,
        [](QByteArray &archive) { poke32(archive, central(archive, tableName) + CentralLocalOffsetAt, 0x7fffffff); });
    row("offset of nothing", 2,
        [](QByteArray &archive) { poke32(archive, central(archive, tableName) + CentralLocalOffsetAt, 1); });
    row("offset of another member", 2, [](QByteArray &archive) {
        poke32(archive, central(archive, tableName) + CentralLocalOffsetAt, local(archive, manifestName));
    });
    row("unpacked size", 3,
        [](QByteArray &archive) { poke32(archive, central(archive, tableName) + CentralSizeAt, 3); });
    row("packed size", 3,
        [](QByteArray &archive) { poke32(archive, central(archive, tableName) + CentralPackedSizeAt, 3); });
}

void TestOddArchives::directoryAndLocalHeaderDisagree()
{
    QFETCH(QByteArray, archive);
    QFETCH(int, code);
    QCOMPARE(answer(archive), refused(code));
}

void TestOddArchives::iconWhoseLocalHeaderIsDamagedIsLeftOut()
{
    const QString icon = QStringLiteral("res/icon.png");
    QByteArray archive = package(emptyTable(), manifestWithIcon(icon), {{icon, picture(16, 16, 0x336699)}});
    const auto icons = [&archive] {
        PackageDevice device(archive);
        ApkFile apk(&device);
        const QList<ApkLauncherInfo> launchers = apk.getLauncherInfo(false);
        return launchers.size() == 1 && apk.getError() == 0 ? launchers.constFirst().icons().size() : -1;
    };
    QCOMPARE(icons(), 1);
    archive[local(archive, icon)] = 'p';
    QCOMPARE(icons(), 0);
}

void TestOddArchives::bytesAroundTheArchive()
{
    QCOMPARE(answer(QByteArray(1000, 'x') + good()), fine);
    QCOMPARE(answer(good() + QByteArray(1000, 'x')), fine);
}

void TestOddArchives::storedMembers()
{
    QCOMPARE(answer(zip({{tableName, emptyTable()}, {manifestName, smallManifest()}}, Compression::Stored)), fine);
}

void TestOddArchives::whatIsNoFileCannotBeOpened_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"empty file", "directory", "FIFO", "/dev/null", "/dev/zero", "no name"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void TestOddArchives::whatIsNoFileCannotBeOpened()
{
    QFETCH(QString, kind);
    const QTemporaryDir directory;
    QString path = directory.filePath(QStringLiteral("some.apk"));
    QFile file(path);
    if (kind == QLatin1String("empty file"))
        QVERIFY(file.open(QIODevice::WriteOnly));
    else if (kind == QLatin1String("directory"))
        path = directory.path();
    else if (kind == QLatin1String("FIFO"))
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    else
        path = kind == QLatin1String("no name") ? QString() : kind;
    const LogCapture log;
    ApkFile apk(path);
    QVERIFY(!apk.open());
    QCOMPARE(apk.getError(), 1);
}

void TestOddArchives::fileThatShrinksWhileItIsOpen()
{
    const QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("shrinking.apk")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    // Larger than the part of the file that may be kept in memory.
    const QByteArray filler(1 << 20, 'x');
    file.write(zip({{manifestName, smallManifest()}, {QStringLiteral("filler"), filler}, {tableName, emptyTable()}},
                   Compression::Stored));
    file.close();
    const LogCapture log;
    ApkFile apk(file.fileName());
    QVERIFY(apk.resources().isValid());
    QVERIFY(file.resize(10));
    QCOMPARE(apk.mainPackage(), QString());
    QVERIFY(apk.getError() == 4 || apk.getError() == 5);
    QVERIFY(apk.resources().isValid());
}

void TestOddArchives::deviceThatFailsInTheMiddle()
{
    const QByteArray archive = good();
    const LogCapture log;
    bool everFailed = false;
    for (int limit = 0; limit < 4 * archive.size(); limit += 16) {
        FailingDevice device(archive, limit);
        ApkFile apk(&device);
        const QString name = apk.mainPackage();
        QCOMPARE(apk.getError() == 0, name == fine.second);
        everFailed = everFailed || apk.getError() != 0;
    }
    QVERIFY(everFailed);
}

void TestOddArchives::everyPrefixIsAnswered()
{
    const QByteArray archive = good();
    for (int size = 0; size < archive.size(); ++size) {
        // In a block of exactly that size.
        const QByteArray prefix(archive.constData(), size);
        const QPair<int, QString> given = answer(prefix);
        QVERIFY2(given.first != 0 || given == fine, qPrintable(QString::number(size)));
    }
}

void TestOddArchives::everyByteMayBeDamaged()
{
    const QByteArray archive = good();
    for (int at = 0; at < archive.size(); ++at) {
        for (const int value : {0x00, 0x7f, 0xff}) {
            QByteArray damaged = archive;
            poke8(damaged, at, value);
            const int code = answer(damaged).first;
            QVERIFY(code >= 0 && code <= 5);
        }
    }
}

QTEST_GUILESS_MAIN(TestOddArchives)
#include "tst_odd_archives.moc"
