// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Bounds.h"
#include "Bytes.h"
#include "Cost.h"
#include "PackageWalker.h"
#include "RawZip.h"
#include "ZipBuilder.h"

#include <SorrelKit/Diagnostic.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/Resources.h>

#include <QBuffer>
#include <QMetaEnum>
#include <QtTest>

using namespace fixture;
using namespace SorrelKit;
using Code = Diagnostic::Code;

namespace {

constexpr int DiskAt = 4; ///< in the end record
constexpr int DiskCountAt = 8;
constexpr int CountAt = 10;
constexpr int CommentSizeAt = 20;
constexpr int RecordFlagsAt = 8; ///< in a record of the directory
constexpr int RecordMethodAt = 10;
constexpr int RecordPackedSizeAt = 20;
constexpr int RecordSizeAt = 24;
constexpr int HeaderOffsetAt = 42;
constexpr int LocalFlagsAt = 6; ///< in a member's own header
constexpr int LocalMethodAt = 8;
constexpr int LocalCrcAt = 14;
constexpr int LocalPackedSizeAt = 18;
constexpr int LocalSizeAt = 22;
constexpr int EncryptedFlag = 1;
constexpr int SizesFollowFlag = 8;
constexpr int UnknownMethod = 1234;

constexpr int Manifest = 1; ///< numbers of members
constexpr int Table = 2;

const QString manifestName = QStringLiteral("AndroidManifest.xml");
const QString tableName = QStringLiteral("resources.arsc");

QVector<RawMember> members()
{
    return {{"assets/first", "first"},
            {"AndroidManifest.xml", smallManifest()},
            {"resources.arsc", emptyTable()},
            {"assets/last", QByteArray(64, 'x')}};
}

QByteArray with(const RawMember &member)
{
    return rawZip(members() + QVector<RawMember>{member});
}

int endAt(const QByteArray &archive)
{
    return int(archive.lastIndexOf("PK\5\6"));
}

int recordAt(const QByteArray &archive, int number)
{
    auto at = archive.indexOf("PK\1\2");
    for (int i = 0; i < number; ++i)
        at = archive.indexOf("PK\1\2", at + 1);
    return int(at);
}

int localAt(const QByteArray &archive, int number)
{
    return int(peek32(archive, recordAt(archive, number) + HeaderOffsetAt));
}

QByteArray withEnd(int field, qint64 value)
{
    QByteArray archive = rawZip(members());
    poke16(archive, endAt(archive) + field, value);
    return archive;
}

QByteArray withComment(int size, int claimed)
{
    QByteArray archive = rawZip(members());
    poke16(archive, endAt(archive) + CommentSizeAt, claimed);
    return archive + QByteArray(size, 'c');
}

/// The archive with a field of 16 or 32 bits in the own header and in the record of a member; those below 0 stay.
QByteArray with16(int number, int local, qint64 localValue, int record, qint64 recordValue)
{
    QByteArray archive = rawZip(members());
    if (localValue >= 0)
        poke16(archive, localAt(archive, number) + local, localValue);
    if (recordValue >= 0)
        poke16(archive, recordAt(archive, number) + record, recordValue);
    return archive;
}

QByteArray with32(int number, int local, qint64 localValue, int record, qint64 recordValue)
{
    QByteArray archive = rawZip(members());
    if (localValue >= 0)
        poke32(archive, localAt(archive, number) + local, localValue);
    if (recordValue >= 0)
        poke32(archive, recordAt(archive, number) + record, recordValue);
    return archive;
}

QByteArray withName(int number, const QByteArray &name)
{
    QByteArray archive = rawZip(members());
    const int nameAt = localAt(archive, number) + 30;
    return archive.replace(nameAt, name.size(), name);
}

QByteArray withGap(int size)
{
    QByteArray archive = rawZip(members());
    return archive.insert(endAt(archive), QByteArray(size, 'g'));
}

QByteArray withHeaderAt(int number, qint64 at)
{
    QByteArray archive = rawZip(members());
    poke32(archive, recordAt(archive, number) + HeaderOffsetAt, at);
    return archive;
}

QByteArray withoutSizes(int number, int localFlags, int recordFlags)
{
    QByteArray archive = with16(number, LocalFlagsAt, localFlags, RecordFlagsAt, recordFlags);
    for (const int field : {LocalCrcAt, LocalPackedSizeAt, LocalSizeAt})
        poke32(archive, localAt(archive, number) + field, 0);
    return archive;
}

/// The manifest claims @p packed bytes in the archive and delivers its own.
QByteArray withPackedSize(int packed)
{
    return with32(Manifest, LocalPackedSizeAt, packed, RecordPackedSizeAt, packed);
}

/// The manifest is the last member and claims to end @p bytes behind the start of the directory.
QByteArray endingBehindMembers(int bytes)
{
    QVector<RawMember> sorted = members();
    sorted.append(sorted.takeAt(Manifest));
    QByteArray archive = rawZip(sorted);
    const int last = int(sorted.size()) - 1;
    for (const int field : {LocalPackedSizeAt, LocalSizeAt})
        poke32(archive, localAt(archive, last) + field, int(smallManifest().size()) + bytes);
    for (const int field : {RecordPackedSizeAt, RecordSizeAt})
        poke32(archive, recordAt(archive, last) + field, int(smallManifest().size()) + bytes);
    return archive;
}

/// Deflated members, of which one claims @p more bytes than it has.
QByteArray withInflatedSize(int number, int more)
{
    QVector<RawMember> deflatedMembers = members();
    for (const int deflated : {Manifest, Table}) {
        RawMember &member = deflatedMembers[deflated];
        member.crc = 0; // which Android does not check
        member.content = deflatedBehindEmptyBlocks(0, member.content);
        member.method = 8;
    }
    QByteArray archive = rawZip(deflatedMembers);
    const QVector<RawMember> plain = members();
    for (const int deflated : {Manifest, Table}) {
        const int size = int(plain.at(deflated).content.size()) + (deflated == number ? more : 0);
        poke32(archive, localAt(archive, deflated) + LocalSizeAt, size);
        poke32(archive, recordAt(archive, deflated) + RecordSizeAt, size);
    }
    return archive;
}

/// The package on a device, with what it is asked for.
struct Opened {
    explicit Opened(const QByteArray &bytes) : device(bytes), package(&device) {}

    PackageDevice device;
    Package package;
};

QByteArray setOf(const QByteArray &base)
{
    return zip({{QStringLiteral("splits/base-master.apk"), base}}, Compression::Stored);
}

Diagnostic only(const Package &package)
{
    const QList<Diagnostic> all = package.diagnostics();
    return all.size() == 1 ? all.first() : Diagnostic();
}

} // namespace

/// The archive of a package: what Android takes, what it refuses, and the name of each.
class TestArchiveDiagnostics : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsOdd_data();
    void nothingIsOdd();
    void oddAndTaken_data();
    void oddAndTaken();
    void refused_data();
    void refused();
    void refusedForAManifestInTheDirectory();
    void unreadable_data();
    void unreadable();
    void namesByTheirStructure_data();
    void namesByTheirStructure();
    void everyByteOfANameCounts();
    void offsetsBehindOtherData();
    void directoriesInTheFormOfZip64();

    void otherMembersMayBeOdd();
    void tablesThatDoNotExist_data();
    void tablesThatDoNotExist();
    void damagedDataOfAMember();
    void severalAtOnce();
    void packagesOfASet();
    void damageOfTheTableIsTheError();
    void aListOfAllCodes();
    void documentHasTheCodes();
    void damagedByteByByte();
};

void TestArchiveDiagnostics::nothingIsOdd_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("plain") << rawZip(members());
    QTest::newRow("deflated") << package(emptyTable(), smallManifest());
    QTest::newRow("comment") << withComment(300, 300);
    QByteArray header("PK\3\4");
    QTest::newRow("other data that begins as a member") << rawZip(members(), header + "and more");
    QTest::newRow("sizes that follow") << withoutSizes(Manifest, SizesFollowFlag, SizesFollowFlag);
    QTest::newRow("a name that is empty") << with({"", "content"});
    QTest::newRow("a wrong checksum") << with32(Manifest, LocalCrcAt, 1, 16, 1);
}

void TestArchiveDiagnostics::nothingIsOdd()
{
    QFETCH(QByteArray, bytes);
    Opened opened(bytes);
    QCOMPARE(opened.package.diagnostics().size(), 0);
    QCOMPARE(opened.package.error(), Error());
    QCOMPARE(opened.package.packageName(), QStringLiteral("org.example.app"));
}

void TestArchiveDiagnostics::oddAndTaken_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Code>("code");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("detail");
    const QString archive;
    QTest::newRow("gap") << withGap(10) << Code::DirectoryGap << archive << "10";
    QTest::newRow("numbers of disks") << withEnd(DiskAt, 7) << Code::DiskNumbers << archive << "";
    QTest::newRow("members of this disk") << withEnd(DiskCountAt, 0) << Code::DiskNumbers << archive << "";
    QTest::newRow("longest comment") << withComment(65535, 65535) << Code::LongComment << archive << "65557";
    QByteArray fewer = rawZip(members());
    poke16(fewer, endAt(fewer) + CountAt, 3);
    poke16(fewer, endAt(fewer) + DiskCountAt, 3);
    QTest::newRow("a hidden record") << fewer << Code::HiddenRecords << archive << "";

    QTest::newRow("another method in the header")
        << with16(Manifest, LocalMethodAt, UnknownMethod, 0, -1) << Code::MemberMethod << manifestName << "1234";
    QTest::newRow("another method in the header of the table")
        << with16(Table, LocalMethodAt, UnknownMethod, 0, -1) << Code::MemberMethod << tableName << "1234";
    QTest::newRow("encrypted in the directory")
        << with16(Manifest, 0, -1, RecordFlagsAt, EncryptedFlag) << Code::MemberEncrypted << manifestName << "";
    QTest::newRow("encrypted in the header")
        << with16(Manifest, LocalFlagsAt, EncryptedFlag, 0, -1) << Code::MemberEncrypted << manifestName << "";
    QTest::newRow("an unknown method") << with16(Manifest, LocalMethodAt, UnknownMethod, RecordMethodAt, UnknownMethod)
                                       << Code::MemberNotDeflated << manifestName << "1234";
    QTest::newRow("an unknown method of the table")
        << with16(Table, LocalMethodAt, UnknownMethod, RecordMethodAt, UnknownMethod) << Code::MemberNotDeflated
        << tableName << "1234";
    const auto size = smallManifest().size();
    QTest::newRow("more bytes than the stored member has")
        << withPackedSize(int(size) + 1) << Code::MemberStoredSizes << manifestName << QString::number(size + 1);
    QTest::newRow("fewer bytes than the stored member has")
        << withPackedSize(3) << Code::MemberStoredSizes << manifestName << "3";
    QTest::newRow("sizes that follow by the header alone")
        << withoutSizes(Manifest, SizesFollowFlag, 0) << Code::MemberMarksDiffer << manifestName << "";
    QTest::newRow("sizes that follow by the directory alone")
        << with16(Manifest, 0, -1, RecordFlagsAt, SizesFollowFlag) << Code::MemberMarksDiffer << manifestName << "";
    // The table does not exist for Android.
    QTest::newRow("another name of the table")
        << withName(Table, "Resources.arsc") << Code::MemberName << tableName << "Resources.arsc";
}

void TestArchiveDiagnostics::oddAndTaken()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Code, code);
    Opened opened(bytes);
    const Diagnostic diagnostic = only(opened.package);
    QCOMPARE(diagnostic.code(), code);
    QTEST(diagnostic.path(), "path");
    QTEST(diagnostic.detail(), "detail");
    QCOMPARE(diagnostic.count(), 1);
    QVERIFY(!diagnostic.isRefused());
    QCOMPARE(opened.package.error(), Error());
    QCOMPARE(opened.package.packageName(), QStringLiteral("org.example.app"));
}

void TestArchiveDiagnostics::refused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Code>("code");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("detail");
    const QString archive;
    QTest::newRow("bytes behind") << rawZip(members()) + "xy" << Code::BytesBehind << archive << "2";
    QTest::newRow("cut comment") << withComment(3, 5) << Code::CutComment << archive << "2";
    QTest::newRow("bytes ahead, offsets from the archive")
        << "junk" + rawZip(members()) << Code::BytesAhead << archive << "4";
    QTest::newRow("bytes ahead, offsets from the file")
        << rawZip(members(), "junk") << Code::BytesAhead << archive << "";
    QByteArray more = rawZip(members());
    poke16(more, endAt(more) + CountAt, 6);
    poke16(more, endAt(more) + DiskCountAt, 6);
    QTest::newRow("missing records") << more << Code::MissingRecords << archive << "2";
    QByteArray damaged = rawZip(members());
    poke32(damaged, recordAt(damaged, 3), 0);
    QTest::newRow("a damaged record") << damaged << Code::MissingRecords << archive << "1";
    const int directoryAt = recordAt(rawZip(members()), 0);
    QTest::newRow("a header at the directory")
        << withHeaderAt(3, directoryAt) << Code::OffsetBehindMembers << archive << "assets/last";
    QTest::newRow("a header behind the file")
        << withHeaderAt(3, 0x7fffffff) << Code::OffsetBehindMembers << archive << "assets/last";
    QTest::newRow("two of one name") << with({"assets/last", "y"}) << Code::DuplicateName << archive << "assets/last";
    QTest::newRow("two manifests") << with({"AndroidManifest.xml", smallManifest()}) << Code::DuplicateName << archive
                                   << manifestName;
    QTest::newRow("another name of the manifest")
        << withName(Manifest, "BndroidManifest.xml") << Code::MemberName << manifestName << "BndroidManifest.xml";
    QTest::newRow("another size") << with32(Manifest, LocalSizeAt, 1, 0, -1) << Code::MemberSizes << manifestName << "";
    QTest::newRow("another checksum") << with32(Manifest, LocalCrcAt, 1, 0, -1) << Code::MemberSizes << manifestName
                                      << "";
    QTest::newRow("another packed size") << with32(Manifest, LocalPackedSizeAt, 1, 0, -1) << Code::MemberSizes
                                         << manifestName << "";
    QTest::newRow("no sizes, and no mark") << withoutSizes(Manifest, 0, 0) << Code::MemberSizes << manifestName << "";
    QTest::newRow("inflates to fewer bytes")
        << withInflatedSize(Manifest, 10) << Code::MemberInflatedSize << manifestName << "";
    QTest::newRow("the table inflates to fewer bytes")
        << withInflatedSize(Table, 10) << Code::MemberInflatedSize << tableName << "";
}

void TestArchiveDiagnostics::refused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Code, code);
    Opened opened(bytes);
    const Diagnostic diagnostic = only(opened.package);
    QCOMPARE(diagnostic.code(), code);
    QTEST(diagnostic.path(), "path");
    QTEST(diagnostic.detail(), "detail");
    QVERIFY(diagnostic.isRefused());
    QCOMPARE(opened.package.error(), Error(Error::Code::RefusedByAndroid, diagnostic.text()));
    QVERIFY(opened.package.error().message().startsWith(QLatin1String("Android refuses the package: ")));
    // Everything can be read all the same.
    QVERIFY(opened.package.isValid());
    QCOMPARE(opened.package.packageName(), QStringLiteral("org.example.app"));
}

void TestArchiveDiagnostics::refusedForAManifestInTheDirectory()
{
    Opened opened(endingBehindMembers(1));
    // The first byte of the directory is behind the document.
    const QList<Diagnostic> diagnostics = opened.package.diagnostics();
    QCOMPARE(diagnostics.size(), 2);
    QCOMPARE(diagnostics.at(0).code(), Code::MemberPastDirectory);
    QCOMPARE(diagnostics.at(0).path(), manifestName);
    QVERIFY(diagnostics.at(0).isRefused());
    QCOMPARE(diagnostics.at(1).code(), Code::DocumentBytesBehind);
    QVERIFY(!diagnostics.at(1).isRefused());
    QCOMPARE(opened.package.error(), Error(Error::Code::RefusedByAndroid, diagnostics.at(0).text()));
    QCOMPARE(opened.package.packageName(), QStringLiteral("org.example.app"));
}

void TestArchiveDiagnostics::unreadable_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Code>("code");
    QTest::addColumn<QString>("path");
    QByteArray empty = withEnd(CountAt, 0);
    poke16(empty, endAt(empty) + DiskCountAt, 0);
    QTest::newRow("no member") << empty << Code::EmptyArchive << QString();
    QTest::newRow("no header") << withHeaderAt(Manifest, 1) << Code::NoMemberHeader << manifestName;
}

void TestArchiveDiagnostics::unreadable()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Code, code);
    Opened opened(bytes);
    QCOMPARE(opened.package.error(), Error(Error::Code::NoManifest));
    const Diagnostic diagnostic = only(opened.package);
    QCOMPARE(diagnostic.code(), code);
    QTEST(diagnostic.path(), "path");
    QVERIFY(diagnostic.isRefused());
}

void TestArchiveDiagnostics::namesByTheirStructure_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("ASCII") << QByteArray("a") << true;
    QTest::newRow("two bytes") << QByteArray("\xc3\xa4") << true;
    QTest::newRow("four bytes") << QByteArray("\xf0\x9f\x98\x80") << true;
    // The code points do not count.
    QTest::newRow("overlong") << QByteArray("\xc0\x80") << true;
    QTest::newRow("surrogate") << QByteArray("\xed\xa0\x80") << true;
    QTest::newRow("behind the last code point") << QByteArray("\xf5\x80\x80\x80") << true;
    QTest::newRow("five bytes") << QByteArray("\xf8\x80\x80\x80\x80") << true;
    QTest::newRow("six bytes") << QByteArray("\xfc\x80\x80\x80\x80\x80") << true;
    QTest::newRow("seven bytes") << QByteArray("\xfe\x80\x80\x80\x80\x80\x80") << false;
    QTest::newRow("0xff") << QByteArray("a\xff") << false;
    QTest::newRow("cut") << QByteArray("a\xc3") << false;
    QTest::newRow("cut in the middle") << QByteArray("\xe2\x82") << false;
    QTest::newRow("goes on without a start") << QByteArray("\x80z") << false;
    QTest::newRow("does not go on") << QByteArray("\xe2\x82z") << false;
    QTest::newRow("zero") << QByteArray("a\0b", 3) << false;
    QTest::newRow("zero behind other bytes") << QByteArray("\xc3\xa4\0b", 4) << false;
}

void TestArchiveDiagnostics::namesByTheirStructure()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, isTaken);
    Opened opened(with({name, "content"}));
    QCOMPARE(opened.package.diagnostics().isEmpty(), isTaken);
    QCOMPARE(only(opened.package).code(), isTaken ? Code::None : Code::InvalidName);
    QCOMPARE(opened.package.error().code(), isTaken ? Error::Code::None : Error::Code::RefusedByAndroid);
    QCOMPARE(opened.package.packageName(), QStringLiteral("org.example.app"));
}

// Names are looked at in words of eight bytes.
void TestArchiveDiagnostics::everyByteOfANameCounts()
{
    constexpr int Longest = 25;
    for (int size = 1; size <= Longest; ++size) {
        Opened plain(with({QByteArray(size, '\x7f'), "content"}));
        QCOMPARE(plain.package.diagnostics().size(), 0);
        for (int at = 0; at < size; ++at) {
            for (const char odd : {'\0', '\x80', '\xff'}) {
                QByteArray name(size, '\1');
                name[at] = odd;
                Opened opened(with({name, "content"}));
                QCOMPARE(only(opened.package).code(), Code::InvalidName);
            }
        }
    }
}

void TestArchiveDiagnostics::offsetsBehindOtherData()
{
    const QByteArray junk("junk");
    const int directoryAt = recordAt(rawZip(members()), 0);
    // Offsets count from the archive.
    Opened last(junk + withHeaderAt(3, directoryAt - 1));
    QCOMPARE(last.package.diagnostics().size(), 1);
    Opened behind(junk + withHeaderAt(3, directoryAt));
    QCOMPARE(behind.package.diagnostics().size(), 2);
    QCOMPARE(behind.package.diagnostics().at(1).code(), Code::OffsetBehindMembers);
    Opened largest(withHeaderAt(3, qint64(0xffffffff)));
    QCOMPARE(only(largest.package).code(), Code::OffsetBehindMembers);
}

void TestArchiveDiagnostics::directoriesInTheFormOfZip64()
{
    Opened opened(rawZip64(members()));
    const Diagnostic diagnostic = only(opened.package);
    QCOMPARE(diagnostic.code(), Code::Zip64Directory);
    QVERIFY(diagnostic.isRefused());
    QCOMPARE(diagnostic.lastSdkVersion(), 30);
    // Android 14 reads it.
    QCOMPARE(opened.package.error(), Error());
}

void TestArchiveDiagnostics::otherMembersMayBeOdd()
{
    RawMember member{"assets/odd", "content"};
    member.localName = "assets/other";
    member.localMethod = UnknownMethod;
    Opened opened(with(member));
    QCOMPARE(opened.package.diagnostics().size(), 0);
    QCOMPARE(opened.package.error(), Error());
}

// Android takes a package whose table it does not open, as if it had none.
void TestArchiveDiagnostics::tablesThatDoNotExist_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Code>("code");
    QTest::newRow("no header") << withHeaderAt(Table, 1) << Code::NoMemberHeader;
    QTest::newRow("another size") << with32(Table, LocalSizeAt, 1, 0, -1) << Code::MemberSizes;
    QTest::newRow("another name") << withName(Table, "Resources.arsc") << Code::MemberName;
}

void TestArchiveDiagnostics::tablesThatDoNotExist()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Code, code);
    Opened opened(bytes);
    QCOMPARE(only(opened.package).code(), code);
    QCOMPARE(opened.package.error(), Error());
    QVERIFY(SorrelKit::Resources(opened.package).ids().isEmpty());
}

void TestArchiveDiagnostics::damagedDataOfAMember()
{
    QVector<RawMember> cut = members();
    cut[Manifest].content = deflatedBehindEmptyBlocks(0, smallManifest()).chopped(8);
    cut[Manifest].method = 8;
    QByteArray archive = rawZip(cut);
    poke32(archive, localAt(archive, Manifest) + LocalSizeAt, smallManifest().size());
    poke32(archive, recordAt(archive, Manifest) + RecordSizeAt, smallManifest().size());
    Opened opened(archive);
    const QList<Diagnostic> diagnostics = opened.package.diagnostics();
    QVERIFY(!diagnostics.isEmpty());
    QCOMPARE(diagnostics.first().code(), Code::MemberInflatedSize);
    // The part that cannot be read is the error.
    QCOMPARE(opened.package.error().code(), Error::Code::BadManifest);
}

void TestArchiveDiagnostics::severalAtOnce()
{
    QVector<RawMember> three = members();
    for (int i = 0; i < 3; ++i)
        three.append(RawMember{"assets/last", "y"});
    Opened opened(rawZip(three, "junk") + "behind");
    const QList<Diagnostic> all = opened.package.diagnostics();
    QCOMPARE(all.size(), 3);
    QCOMPARE(all.at(0).code(), Code::BytesBehind);
    QCOMPARE(all.at(1).code(), Code::BytesAhead);
    QCOMPARE(all.at(2).code(), Code::DuplicateName);
    QCOMPARE(all.at(2).count(), 3);
    QCOMPARE(opened.package.error().detail(), all.at(0).text());
}

void TestArchiveDiagnostics::packagesOfASet()
{
    // No Android reads the archive around the packages.
    Opened plain("junk" + setOf(rawZip(members())) + "junk");
    QCOMPARE(plain.package.diagnostics().size(), 0);
    QCOMPARE(plain.package.error(), Error());

    Opened odd(setOf(rawZip(members(), "junk")));
    const Diagnostic diagnostic = only(odd.package);
    QCOMPARE(diagnostic.code(), Code::BytesAhead);
    QCOMPARE(diagnostic.package(), QStringLiteral("splits/base-master.apk"));
    QCOMPARE(odd.package.error().code(), Error::Code::RefusedByAndroid);
    QCOMPARE(odd.package.packageName(), QStringLiteral("org.example.app"));
}

void TestArchiveDiagnostics::damageOfTheTableIsTheError()
{
    QVector<RawMember> damaged = members();
    damaged[Table].content = "no table";
    Opened opened(rawZip(damaged, "junk"));
    QCOMPARE(opened.package.error().code(), Error::Code::BadTable);
    QCOMPARE(only(opened.package).code(), Code::BytesAhead);
}

void TestArchiveDiagnostics::aListOfAllCodes()
{
    const auto codes = QMetaEnum::fromType<Code>();
    QVERIFY(codes.keyCount() > 1);
    for (int i = 0; i < codes.keyCount(); ++i) {
        const auto code = Code(codes.value(i));
        const Diagnostic diagnostic(code);
        QCOMPARE(diagnostic.code(), code);
        QCOMPARE(diagnostic.text().isEmpty(), code == Code::None);
        QVERIFY2(code == Code::None || diagnostic.text().endsWith(QLatin1Char('.')), codes.key(i));
        QVERIFY(diagnostic.detail().isEmpty());
        QCOMPARE(diagnostic.count(), 0);
        QVERIFY(diagnostic.lastSdkVersion() == 0 || diagnostic.firstSdkVersion() <= diagnostic.lastSdkVersion());
    }
    QCOMPARE(Diagnostic().code(), Code::None);
}

void TestArchiveDiagnostics::documentHasTheCodes()
{
    QFile file(QStringLiteral(SORREL_DOCS_DIR "/diagnostics.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList rows;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("| `"))
            rows.append(QString::fromUtf8(line));
    }
    const auto codes = QMetaEnum::fromType<Code>();
    QCOMPARE(rows.size(), codes.keyCount() - 1);
    for (int i = 1; i < codes.keyCount(); ++i) {
        const Diagnostic diagnostic{Code(codes.value(i))};
        QString levels = QStringLiteral("all");
        if (diagnostic.firstSdkVersion() > 0)
            levels = QStringLiteral("%1 and later").arg(diagnostic.firstSdkVersion());
        else if (diagnostic.lastSdkVersion() > 0)
            levels = QStringLiteral("up to %1").arg(diagnostic.lastSdkVersion());
        const QStringList cells = rows.at(i - 1).split(QStringLiteral(" | "));
        QCOMPARE(cells.size(), 4);
        QCOMPARE(cells.at(0), QStringLiteral("| `%1`").arg(QLatin1String(codes.key(i))));
        QCOMPARE(cells.at(1).startsWith(QLatin1String("refuses")), diagnostic.isRefused());
        QCOMPARE(cells.at(2), levels);
        QCOMPARE(cells.at(3), diagnostic.text() + QStringLiteral(" |"));
    }
}

void TestArchiveDiagnostics::damagedByteByByte()
{
    const QByteArray good = rawZip(members());
    const auto visitAll = [&good] {
        for (int at = 0; at < good.size(); ++at) {
            for (const char value : {'\0', '\1', '\x7f', '\xff'}) {
                QByteArray bytes = good;
                bytes[at] = value;
                QBuffer device(&bytes);
                const Package package(&device);
                const QList<Diagnostic> diagnostics = package.diagnostics();
                // An error that is a refusal has its reason among them.
                if (package.error().code() == Error::Code::RefusedByAndroid && diagnostics.isEmpty())
                    qFatal("no reason");
                visit(package, 1, 8);
            }
        }
    };
    const Cost taken = cost(visitAll);
    QVERIFY(taken.ended);
    QVERIFY(taken.memory <= Bounds::FixedMemory);
}

QTEST_GUILESS_MAIN(TestArchiveDiagnostics)

#include "tst_archive_diagnostics.moc"
