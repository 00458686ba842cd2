// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Bytes.h"
#include "archive/ArchiveMembers.h"

#include <QRandomGenerator>
#include <QtTest>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

using namespace fixture;

namespace {

constexpr qint64 Plenty = 1 << 30;
constexpr qint64 PackedByteWork = Budget::PackedByteWork;

// Offsets in an entry of the central directory.
constexpr int CentralPackedSizeAt = 20;
constexpr int CentralNameSizeAt = 28;

const QString name = QStringLiteral("a");

QByteArray noise(int size)
{
    QRandomGenerator random(1);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

/// An archive in memory, open.
struct OpenZip {
    explicit OpenZip(const QByteArray &bytes) : device(bytes), zip(&device)
    {
        if (!zip.open(QuaZip::mdUnzip))
            qFatal("no archive");
    }

    QStringList names(int most = 100)
    {
        QStringList names;
        ArchiveMembers::visitNames(&zip, [&](const QString &each) {
            names.append(each);
            return names.size() < most;
        });
        return names;
    }
    QByteArray content(Budget *budget, qint64 maxBytes = Plenty)
    {
        zip.setCurrentFile(name, QuaZip::csDefault);
        return ArchiveMembers::content(&zip, maxBytes, budget);
    }
    qint64 packedSize()
    {
        zip.setCurrentFile(name, QuaZip::csDefault);
        QuaZipFileInfo64 info;
        return zip.getCurrentFileInfo(&info) ? qint64(info.compressedSize) : -1;
    }

    PackageDevice device;
    QuaZip zip;
};

int entryAt(const QByteArray &archive)
{
    return int(archive.indexOf("PK\1\2"));
}

} // namespace

class TestArchiveMembers : public QObject
{
    Q_OBJECT

private slots:
    void namesInTheOrderOfTheDirectory();
    void namesEndWhereThereIsNone();
    void lastOfSeveralIsFoundFromThenOn();

    void storedBytesCostOneEach();
    void deliveredBytesCostOneEach();
    void packedBytesCostMore();
    void packedBytesThatDeliverNothingCostAsMuch();
    void sizesThatAreClaimedCostNothing();
    void costsUpToWhatIsLeft_data();
    void costsUpToWhatIsLeft();
    void filesUpToTheCeiling();
    void nothingIsReadWhenNothingIsLeft();
};

void TestArchiveMembers::namesInTheOrderOfTheDirectory()
{
    const QStringList names{QStringLiteral("b"), QStringLiteral("a/c"), QStringLiteral("b"), QStringLiteral("d")};
    QVector<Member> members;
    for (const QString &each : names)
        members.append({each, "x"});
    OpenZip archive(zip(members));
    QCOMPARE(archive.names(), names);
    QCOMPARE(archive.names(4), names);
    QCOMPARE(archive.names(3), names.mid(0, 3));
}

void TestArchiveMembers::namesEndWhereThereIsNone()
{
    QByteArray bytes = zip({{name, "1"}, {QStringLiteral("x"), "2"}, {QStringLiteral("z"), "3"}});
    const int second = int(bytes.indexOf("PK\1\2", entryAt(bytes) + 1));
    // The name becomes the entry's extra field.
    poke16(bytes, second + CentralNameSizeAt, 0);
    poke16(bytes, second + CentralNameSizeAt + 2, 1);
    OpenZip archive(bytes);
    QCOMPARE(archive.names(), QStringList{name});
    QVERIFY(!archive.zip.setCurrentFile(QStringLiteral("z"), QuaZip::csDefault));
}

void TestArchiveMembers::lastOfSeveralIsFoundFromThenOn()
{
    OpenZip archive(zip({{name, "1"}, {name, "2"}, {QStringLiteral("z"), "z"}, {name, "3"}}));
    archive.names();
    Budget cost(Plenty, 0);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(archive.content(&cost), QByteArray("3"));
        QVERIFY(archive.zip.setCurrentFile(QStringLiteral("z"), QuaZip::csDefault));
        QVERIFY(!archive.zip.setCurrentFile(QStringLiteral("nothing"), QuaZip::csDefault));
    }
}

void TestArchiveMembers::storedBytesCostOneEach()
{
    const QByteArray bytes = noise(100000);
    OpenZip archive(zip({{name, bytes}}, Compression::Stored));
    Budget cost(Plenty, 0);
    QCOMPARE(archive.content(&cost), bytes);
    QCOMPARE(cost.workLeft(), Plenty - bytes.size());
}

void TestArchiveMembers::deliveredBytesCostOneEach()
{
    const QByteArray bytes(100000, 'x');
    OpenZip archive(zip({{name, bytes}}));
    QVERIFY(archive.packedSize() < bytes.size() / PackedByteWork);
    Budget cost(Plenty, 0);
    QCOMPARE(archive.content(&cost), bytes);
    QCOMPARE(cost.workLeft(), Plenty - bytes.size());
}

void TestArchiveMembers::packedBytesCostMore()
{
    const QByteArray bytes = noise(100000);
    OpenZip archive(zip({{name, bytes}}));
    Budget cost(Plenty, 0);
    QCOMPARE(archive.content(&cost), bytes);
    QCOMPARE(cost.workLeft(), Plenty - PackedByteWork * archive.packedSize());
}

void TestArchiveMembers::packedBytesThatDeliverNothingCostAsMuch()
{
    constexpr int Size = 100000;
    OpenZip archive(zipOfDeflated({{name, deflatedBehindEmptyBlocks(Size)}}, 1000));
    Budget cost(Plenty, 0);
    QCOMPARE(archive.content(&cost), QByteArray());
    QVERIFY(archive.packedSize() >= Size);
    QCOMPARE(cost.workLeft(), Plenty - PackedByteWork * archive.packedSize());
}

// Sizes that a header claims cost nothing. No more than the existing bytes can be read.
void TestArchiveMembers::sizesThatAreClaimedCostNothing()
{
    const QByteArray content(1000, 'x');
    QByteArray bytes = zip({{name, content}, {QStringLiteral("behind it"), noise(40000)}});
    poke32(bytes, entryAt(bytes) + CentralPackedSizeAt, 0x7fffffff);
    // The member's local header has to claim the same size.
    constexpr int LocalPackedSizeAt = 18;
    poke32(bytes, LocalPackedSizeAt, 0x7fffffff);
    OpenZip archive(bytes);
    Budget cost(PackedByteWork * qint64(bytes.size()), 0);
    QCOMPARE(archive.content(&cost), content);
    QVERIFY(cost.workLeft() > 0);
}

void TestArchiveMembers::costsUpToWhatIsLeft_data()
{
    QTest::addColumn<QByteArray>("archive");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<qint64>("cost");
    const QByteArray even(5000, 'x');
    const QByteArray odd = noise(5000);
    const QByteArray packed = zip({{name, odd}});
    QTest::newRow("stored") << zip({{name, even}}, Compression::Stored) << even << qint64(5000);
    QTest::newRow("delivered") << zip({{name, even}}) << even << qint64(5000);
    QTest::newRow("packed") << packed << odd << PackedByteWork * OpenZip(packed).packedSize();
}

void TestArchiveMembers::costsUpToWhatIsLeft()
{
    QFETCH(QByteArray, archive);
    QFETCH(QByteArray, content);
    QFETCH(qint64, cost);
    OpenZip opened(archive);
    Budget enough(cost, 0);
    QCOMPARE(opened.content(&enough), content);
    QCOMPARE(enough.workLeft(), qint64(0));
    Budget tooLittle(cost - 1, 0);
    QCOMPARE(opened.content(&tooLittle), QByteArray());
}

void TestArchiveMembers::filesUpToTheCeiling()
{
    const QByteArray bytes(70000, 'x');
    OpenZip archive(zip({{name, bytes}}));
    Budget cost(Plenty, 0);
    QCOMPARE(archive.content(&cost, bytes.size()), bytes);
    QCOMPARE(archive.content(&cost, bytes.size() - 1), QByteArray());
    // It has been read in any case.
    QCOMPARE(cost.workLeft(), Plenty - 2 * bytes.size());
}

void TestArchiveMembers::nothingIsReadWhenNothingIsLeft()
{
    constexpr int Size = 100000;
    OpenZip archive(zipOfDeflated({{name, deflatedBehindEmptyBlocks(Size)}}, 1000));
    archive.zip.setCurrentFile(name, QuaZip::csDefault);
    const qint64 before = archive.device.bytesRead();
    Budget cost(PackedByteWork * Size - 1, 0);
    QCOMPARE(ArchiveMembers::content(&archive.zip, Plenty, &cost), QByteArray());
    QVERIFY(archive.device.bytesRead() - before < 1000);
    // A smaller member after it may still fit.
    QCOMPARE(cost.workLeft(), qint64(PackedByteWork * Size - 1));
}

QTEST_GUILESS_MAIN(TestArchiveMembers)
#include "tst_archivemembers.moc"
