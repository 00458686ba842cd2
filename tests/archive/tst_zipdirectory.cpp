// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Cost.h"
#include "GuardedBytes.h"
#include "RawZip.h"
#include "ZipBuilder.h"
#include "archive/ByteSource.h"
#include "archive/ZipArchive.h"
#include "archive/ZipDirectory.h"

#include <QtTest>

#include <limits>

using namespace fixture;

namespace {

constexpr int CommentSizeAt = 20;
constexpr int DirectorySizeAt = 12;
constexpr int DirectoryOffsetAt = 16;

/// The directory of an archive in memory.
struct Opened {
    explicit Opened(const QByteArray &bytes) : source(SharedBytes(bytes)) { isRead = directory.read(source); }

    QList<QByteArray> names() const
    {
        QList<QByteArray> names;
        for (int number = 0; number < directory.count(); ++number)
            names.append(directory.name(number).toByteArray());
        return names;
    }
    int find(const QByteArray &name) { return directory.find(ByteView(name)); }
    /// The bytes of the member @p name, which is stored.
    QByteArray content(const QByteArray &name)
    {
        const ZipDirectory::Member member = directory.member(find(name));
        const ZipDirectory::LocalHeader own = ZipDirectory::localHeader(source, member);
        return own.isFound ? source.read(own.dataAt, member.packedSize) : QByteArray("no header");
    }

    BytesInMemory source;
    ZipDirectory directory;
    bool isRead;
};

QByteArray twoMembers()
{
    return rawZip({{"a", "first"}, {"b", "second"}});
}

int endAt(const QByteArray &archive)
{
    return int(archive.lastIndexOf("PK\5\6"));
}

int directoryAt(const QByteArray &archive)
{
    return int(archive.indexOf("PK\1\2"));
}

/// Asks everything of the archive in @p source.
void visit(const std::shared_ptr<ByteSource> &source)
{
    ZipDirectory directory;
    directory.read(*source);
    directory.hasOtherDirectory(*source);
    for (int number = 0; number < directory.count(); ++number) {
        const ZipDirectory::Member member = directory.member(number);
        ZipDirectory::nameText(member.name);
        const QByteArray name = member.name.toByteArray();
        QVERIFY(directory.find(ByteView(name)) >= number);
        ZipDirectory::localHeader(*source, member);
    }
    const QByteArray bytes = source->read(0, source->size());
    ZipArchive archive(bytes);
    if (!archive.open())
        return;
    Budget work(1 << 24, 1 << 24);
    for (const QString &path : archive.names()) {
        archive.file(path, 1 << 20, &work);
        archive.content(path, 1 << 20, &work);
        const auto inner = archive.archive(path, &work);
        if (inner != nullptr && inner->open(&work))
            inner->names();
    }
    for (int number = 0; number < archive.directory().count(); ++number)
        archive.hasRightChecksum(number, &work);
}

} // namespace

class TestZipDirectory : public QObject
{
    Q_OBJECT

private slots:
    void membersInTheirOrder();
    void fieldsOfAMember();
    void namesAreBytes();
    void namesAsText();
    void lastOfOneNameIsFound();
    void manyMembersAreFound();
    void membersWithoutANameAreKept();

    void commentsUpToTheLongest_data();
    void commentsUpToTheLongest();
    void lastEndCounts();
    void bytesBehindTheEnd();
    void bytesBeforeTheArchive_data();
    void bytesBeforeTheArchive();
    void bytesBetweenDirectoryAndEnd();
    void numbersOfDisksDoNotCount();
    void countsThatAreWrong();
    void archivesWithoutMembers();
    void directoriesElsewhere_data();
    void directoriesElsewhere();
    void damagedRecordsEndTheDirectory_data();
    void damagedRecordsEndTheDirectory();
    void otherDirectoryInAComment();

    void zip64Ends();
    void zip64EndsOfNoFile();
    void zip64Fields();
    void zip64ReferenceToNowhere();

    void ownHeaders();
    void ownHeadersThatAreMissing();

    void memoryOfADirectory();
    void everyPrefix();
    void everyField();
};

void TestZipDirectory::membersInTheirOrder()
{
    Opened archive(twoMembers());
    QVERIFY(archive.isRead);
    QCOMPARE(archive.names(), (QList<QByteArray>{"a", "b"}));
    QCOMPARE(archive.find("b"), 1);
    QCOMPARE(archive.find("a"), 0);
    QCOMPARE(archive.find("c"), -1);
    QCOMPARE(archive.content("b"), QByteArray("second"));
    QCOMPARE(archive.directory.claimedCount(), qint64(2));
    QVERIFY(!archive.directory.isMultiDisk() && !archive.directory.isZip64() && !archive.directory.isCut());
    QCOMPARE(archive.directory.leadingBytes(), qint64(0));
    QCOMPARE(archive.directory.gapBytes(), qint64(0));
    QCOMPARE(archive.directory.trailingBytes(), qint64(0));
    QVERIFY(!archive.directory.hasOtherDirectory(archive.source));
}

void TestZipDirectory::fieldsOfAMember()
{
    RawMember raw{"name", "content"};
    raw.flags = 0x0809;
    raw.method = 14;
    Opened archive(rawZip({{"x", "y"}, raw}));
    const ZipDirectory::Member member = archive.directory.member(1);
    QCOMPARE(member.name.toByteArray(), QByteArray("name"));
    QCOMPARE(member.flags, quint16(0x0809));
    QCOMPARE(member.method, quint16(14));
    QCOMPARE(member.crc, Inflater::checksum(ByteView(raw.content)));
    QCOMPARE(member.packedSize, qint64(7));
    QCOMPARE(member.size, qint64(7));
    QCOMPARE(member.headerAt, qint64(30 + 1 + 1));
}

void TestZipDirectory::namesAreBytes()
{
    const QByteArray name("\xff\0x", 3);
    Opened archive(rawZip({{name, "1"}, {"\xff", "2"}}));
    QCOMPARE(archive.content(name), QByteArray("1"));
    QCOMPARE(archive.content("\xff"), QByteArray("2"));
    QCOMPARE(archive.find("\xff\0y"), 1);
}

void TestZipDirectory::namesAsText()
{
    QCOMPARE(ZipDirectory::nameText(ByteView(QByteArray("\xc3\xa9"))), QString(QChar(0xe9)));
    QCOMPARE(ZipDirectory::nameText(ByteView(QByteArray("a\xe9"))), QStringLiteral("a") + QChar(0xe9));
    QCOMPARE(ZipDirectory::nameText(ByteView()), QString());
}

void TestZipDirectory::lastOfOneNameIsFound()
{
    Opened archive(rawZip({{"a", "1"}, {"b", "2"}, {"a", "3"}}));
    QCOMPARE(archive.content("a"), QByteArray("3"));
    QCOMPARE(archive.directory.count(), 3);
}

void TestZipDirectory::manyMembersAreFound()
{
    constexpr int Count = 3000;
    QVector<RawMember> members;
    for (int i = 0; i < Count; ++i)
        members.append({"res/" + QByteArray::number(i) + QByteArray(i % 20, 'x'), QByteArray::number(i)});
    Opened archive(rawZip(members));
    for (int i = 0; i < Count; ++i)
        QCOMPARE(archive.find(members.at(i).name), i);
    QCOMPARE(archive.find("res/3000"), -1);
}

void TestZipDirectory::membersWithoutANameAreKept()
{
    Opened archive(rawZip({{"a", "1"}, {"", "2"}, {"c", "3"}}));
    QCOMPARE(archive.directory.count(), 3);
    QCOMPARE(archive.content("c"), QByteArray("3"));
}

void TestZipDirectory::commentsUpToTheLongest_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {0, 1, 1001, 1002, 1003, 65534, 65535})
        QTest::newRow(QByteArray::number(size).constData()) << size;
}

void TestZipDirectory::commentsUpToTheLongest()
{
    QFETCH(int, size);
    QByteArray bytes = twoMembers();
    poke16(bytes, endAt(bytes) + CommentSizeAt, size);
    Opened archive(bytes + QByteArray(size, 'c'));
    QVERIFY(archive.isRead);
    QCOMPARE(archive.content("b"), QByteArray("second"));
    QCOMPARE(archive.directory.trailingBytes(), qint64(0));
}

void TestZipDirectory::lastEndCounts()
{
    const QByteArray other = rawZip({{"x", "other"}});
    const QByteArray last = twoMembers();
    Opened archive(other + last);
    QVERIFY(archive.isRead);
    QCOMPARE(archive.names(), (QList<QByteArray>{"a", "b"}));
    QCOMPARE(archive.content("a"), QByteArray("first"));
    QVERIFY(archive.directory.hasOtherDirectory(archive.source));
}

void TestZipDirectory::bytesBehindTheEnd()
{
    Opened archive(twoMembers() + QByteArray(5, 'x'));
    QVERIFY(archive.isRead);
    QCOMPARE(archive.directory.trailingBytes(), qint64(5));
    QCOMPARE(archive.content("b"), QByteArray("second"));
    // Farther from the end of the file than the longest comment, no end is found.
    QVERIFY(Opened(twoMembers() + QByteArray(65535, 'x')).isRead);
    QVERIFY(!Opened(twoMembers() + QByteArray(65536, 'x')).isRead);
}

void TestZipDirectory::bytesBeforeTheArchive_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("leading");
    const QVector<RawMember> members{{"a", "first"}, {"b", "second"}};
    const QByteArray before(100, 'x');
    QTest::newRow("in the offsets") << rawZip(members, before) << qint64(0);
    QTest::newRow("not in the offsets") << before + rawZip(members) << qint64(100);
}

void TestZipDirectory::bytesBeforeTheArchive()
{
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, leading);
    Opened archive(bytes);
    QVERIFY(archive.isRead);
    QCOMPARE(archive.directory.leadingBytes(), leading);
    QCOMPARE(archive.content("a"), QByteArray("first"));
    QCOMPARE(archive.content("b"), QByteArray("second"));
}

void TestZipDirectory::bytesBetweenDirectoryAndEnd()
{
    QByteArray bytes = twoMembers();
    bytes.insert(endAt(bytes), QByteArray(9, 'x'));
    Opened archive(bytes);
    QVERIFY(archive.isRead);
    QCOMPARE(archive.directory.leadingBytes(), qint64(0));
    QCOMPARE(archive.directory.gapBytes(), qint64(9));
    QCOMPARE(archive.directory.endAt(), qint64(endAt(bytes)));
    QCOMPARE(archive.content("b"), QByteArray("second"));
}

void TestZipDirectory::numbersOfDisksDoNotCount()
{
    for (const int at : {4, 6, 8}) {
        QByteArray bytes = twoMembers();
        poke16(bytes, endAt(bytes) + at, 1);
        Opened archive(bytes);
        QVERIFY(archive.isRead);
        QVERIFY(archive.directory.isMultiDisk());
        QCOMPARE(archive.content("b"), QByteArray("second"));
    }
}

void TestZipDirectory::countsThatAreWrong()
{
    const auto withCount = [](int count) {
        QByteArray bytes = twoMembers();
        poke16(bytes, endAt(bytes) + 10, count);
        return bytes;
    };
    Opened fewer(withCount(1));
    QCOMPARE(fewer.names(), QList<QByteArray>{"a"});
    QCOMPARE(fewer.directory.claimedCount(), qint64(1));
    Opened more(withCount(3));
    QCOMPARE(more.directory.count(), 2);
    QCOMPARE(more.directory.claimedCount(), qint64(3));
    QCOMPARE(more.content("b"), QByteArray("second"));
}

void TestZipDirectory::archivesWithoutMembers()
{
    Opened archive(rawZip({}));
    QVERIFY(archive.isRead);
    QCOMPARE(archive.directory.count(), 0);
    QCOMPARE(archive.find("a"), -1);
    QVERIFY(!Opened(QByteArray()).isRead);
    QVERIFY(!Opened("no archive").isRead);
}

void TestZipDirectory::directoriesElsewhere_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<qint64>("value");
    QTest::newRow("longer than the file") << DirectorySizeAt << qint64(0x7fffffff);
    QTest::newRow("longer than all before the end") << DirectorySizeAt << qint64(twoMembers().size());
    QTest::newRow("behind the end") << DirectoryOffsetAt << qint64(0x7fffffff);
}

void TestZipDirectory::directoriesElsewhere()
{
    QFETCH(int, at);
    QFETCH(qint64, value);
    QByteArray bytes = twoMembers();
    poke32(bytes, endAt(bytes) + at, value);
    Opened archive(bytes);
    QVERIFY(!archive.isRead);
    QCOMPARE(archive.directory.count(), 0);
    QCOMPARE(archive.find("a"), -1);
}

void TestZipDirectory::damagedRecordsEndTheDirectory_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<int>("value");
    QTest::newRow("signature") << 0 << 0;
    QTest::newRow("name too long") << 28 << 0xffff;
    QTest::newRow("extra field too long") << 30 << 0xffff;
    QTest::newRow("comment too long") << 32 << 0xffff;
}

void TestZipDirectory::damagedRecordsEndTheDirectory()
{
    QFETCH(int, at);
    QFETCH(int, value);
    QByteArray bytes = twoMembers();
    const int second = int(bytes.indexOf("PK\1\2", directoryAt(bytes) + 1));
    poke16(bytes, second + at, value);
    Opened archive(bytes);
    QVERIFY(archive.isRead);
    QCOMPARE(archive.names(), QList<QByteArray>{"a"});
    QCOMPARE(archive.directory.claimedCount(), qint64(2));
    QCOMPARE(archive.content("a"), QByteArray("first"));
}

void TestZipDirectory::otherDirectoryInAComment()
{
    // An end record in the comment is the last one, and Android refuses such an archive.
    QByteArray bytes = twoMembers();
    poke16(bytes, endAt(bytes) + CommentSizeAt, 22);
    const QByteArray end = bytes.right(22);
    Opened archive(bytes + end);
    QVERIFY(archive.isRead);
    QCOMPARE(archive.directory.trailingBytes(), qint64(0));
    QCOMPARE(archive.content("b"), QByteArray("second"));
}

void TestZipDirectory::zip64Ends()
{
    for (const QByteArray &before : {QByteArray(), QByteArray(50, 'x')}) {
        Opened archive(before + rawZip64({{"a", "first"}, {"b", "second"}}));
        QVERIFY(archive.isRead);
        QVERIFY(archive.directory.isZip64());
        QCOMPARE(archive.directory.leadingBytes(), qint64(before.size()));
        QCOMPARE(archive.content("b"), QByteArray("second"));
    }
}

// A number of 64 bits may be too large for any file.
void TestZipDirectory::zip64EndsOfNoFile()
{
    constexpr int CountAt = 32;
    constexpr int SizeAt = 40;
    constexpr int OffsetAt = 48;
    for (const int at : {CountAt, SizeAt, OffsetAt}) {
        QByteArray bytes = rawZip64({{"a", "first"}});
        const int end = int(bytes.indexOf("PK\6\6"));
        poke32(bytes, end + at + 4, 0xfa000000);
        Opened archive(bytes);
        QVERIFY(!archive.isRead);
        QCOMPARE(archive.directory.count(), 0);
        QCOMPARE(archive.directory.claimedCount(), qint64(at == CountAt ? 0 : 1));
    }
}

void TestZipDirectory::zip64Fields()
{
    // The record refers to its extra field for each value: the size, the compressed size and the offset, in this order.
    const QByteArray field =
        Bytes().u16(0x7777).u16(1).u8(0).u16(1).u16(24).u32(5).u32(0).u32(5).u32(0).u32(0).u32(0).data();
    QByteArray bytes = rawZip({{"a", "first"}});
    const int at = directoryAt(bytes);
    bytes.insert(at + 46 + 1, field);
    for (const int value : {20, 24, 42})
        poke32(bytes, at + value, 0xffffffff);
    poke16(bytes, at + 30, field.size());
    poke32(bytes, endAt(bytes) + DirectorySizeAt, 46 + 1 + field.size());
    Opened archive(bytes);
    const ZipDirectory::Member member = archive.directory.member(0);
    QCOMPARE(member.size, qint64(5));
    QCOMPARE(member.packedSize, qint64(5));
    QCOMPARE(member.headerAt, qint64(0));
    QCOMPARE(archive.content("a"), QByteArray("first"));
    // Values above 2^63 are none.
    poke32(bytes, at + 46 + 1 + 5 + 4 + 4, 0x80000000);
    QCOMPARE(Opened(bytes).directory.member(0).size, qint64(-1));
    poke32(bytes, at + 46 + 1 + 5 + 4 + 20, 0xffffffff);
    QCOMPARE(Opened(bytes).directory.member(0).headerAt, qint64(-1));
    // A field that is cut has no value.
    poke16(bytes, at + 46 + 1 + 5 + 2, 8);
    QCOMPARE(Opened(bytes).directory.member(0).packedSize, qint64(0xffffffff));
}

void TestZipDirectory::zip64ReferenceToNowhere()
{
    QByteArray bytes = twoMembers();
    poke16(bytes, endAt(bytes) + 10, 0xffff);
    Opened archive(bytes);
    QVERIFY(archive.isRead);
    QVERIFY(!archive.directory.isZip64());
    QCOMPARE(archive.directory.count(), 2);
}

void TestZipDirectory::ownHeaders()
{
    RawMember raw{"name", "content"};
    raw.localName = "other name";
    raw.localMethod = 8;
    raw.localSize = 3;
    raw.flags = 8;
    raw.extraSize = 5;
    Opened archive(rawZip({{"x", "y"}, raw}));
    const auto own = ZipDirectory::localHeader(archive.source, archive.directory.member(1));
    QVERIFY(own.isFound);
    QVERIFY(!own.hasSameName);
    QCOMPARE(own.name, QByteArray("other name"));
    QCOMPARE(own.flags, quint16(8));
    QCOMPARE(own.method, quint16(8));
    QCOMPARE(own.packedSize, qint64(3));
    QCOMPARE(own.size, qint64(3));
    QCOMPARE(own.crc, Inflater::checksum(ByteView(raw.content)));
    QCOMPARE(archive.source.read(own.dataAt, 7), QByteArray("content"));
    const auto same = ZipDirectory::localHeader(archive.source, archive.directory.member(0));
    QVERIFY(same.hasSameName);
    QCOMPARE(same.name, QByteArray());
}

void TestZipDirectory::ownHeadersThatAreMissing()
{
    for (const qint64 at : {qint64(1), qint64(0x7fffffff)}) {
        RawMember raw{"a", "first"};
        raw.headerAt = at;
        Opened archive(rawZip({raw}));
        QVERIFY(!ZipDirectory::localHeader(archive.source, archive.directory.member(0)).isFound);
    }
}

void TestZipDirectory::memoryOfADirectory()
{
    constexpr int Count = 20000;
    QVector<RawMember> members;
    for (int i = 0; i < Count; ++i)
        members.append({"res/drawable/" + QByteArray::number(i), QByteArray()});
    const QByteArray bytes = rawZip(members);
    const Cost taken = cost([&bytes]() {
        Opened archive(bytes);
        archive.find("res/drawable/7");
    });
    QVERIFY(taken.ended);
    const qint64 directorySize = bytes.size() - directoryAt(bytes);
    QVERIFY2(taken.memory < directorySize + 24 * Count, qPrintable(QString::number(taken.memory)));
    // None of them is for a member.
    QVERIFY2(taken.allocations < 100, qPrintable(QString::number(taken.allocations)));
}

void TestZipDirectory::everyPrefix()
{
    for (const QByteArray &whole : {zip({{QStringLiteral("a.apk"), twoMembers()}, {QStringLiteral("b"), "text"}}),
                                    rawZip64({{"a.apk", twoMembers()}})}) {
        for (int size = 0; size <= whole.size(); ++size) {
            const GuardedBytes bytes(whole.left(size));
            visit(std::make_shared<BytesInMemory>(SharedBytes(bytes.atPageEnd(), bytes.owner())));
            visit(std::make_shared<BytesInMemory>(SharedBytes(bytes.inBlock(), bytes.owner())));
        }
    }
}

void TestZipDirectory::everyField()
{
    const qint64 values[] = {0, 1, 0x7f, 0x80, 0xff, 0x7fff, 0x8000, 0xffff, 0x7fffffff, 0x80000000, 0xffffffff};
    for (const QByteArray &whole : {zip({{QStringLiteral("a.apk"), twoMembers()}, {QStringLiteral("b"), "text"}}),
                                    rawZip64({{"a.apk", twoMembers()}})}) {
        for (int at = 0; at < whole.size(); ++at) {
            for (const qint64 value : values) {
                QByteArray damaged = whole;
                if (value <= 0xff)
                    poke8(damaged, at, value);
                else if (value <= 0xffff && at + 2 <= damaged.size())
                    poke16(damaged, at, value);
                else if (at + 4 <= damaged.size())
                    poke32(damaged, at, value);
                const GuardedBytes bytes(damaged);
                visit(std::make_shared<BytesInMemory>(SharedBytes(bytes.atPageEnd(), bytes.owner())));
                visit(std::make_shared<BytesInMemory>(SharedBytes(bytes.inBlock(), bytes.owner())));
            }
        }
    }
}

QTEST_GUILESS_MAIN(TestZipDirectory)
#include "tst_zipdirectory.moc"
