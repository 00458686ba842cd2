// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "GuardedBytes.h"
#include "OpenedBlock.h"
#include "RawZip.h"
#include "SigningBlockBuilder.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

constexpr quint32 UnknownId = 0x11111111;
constexpr int HeadSize = 12; // of a pair
constexpr int IdAt = 8;

struct Range {
    int begin;
    int end;

    bool has(int at) const { return at >= begin && at < end; }
};

/// A package that is signed by v2 and v3, and has a value that nobody knows.
struct Package {
    Package()
    {
        SigningBlockBuilder builder(
            rawZip({{"AndroidManifest.xml", "manifest"}, {"classes.dex", "code"}, {"empty", QByteArray()}}));
        builder.v2({BlockSigner(TestKey::rsa()).attribute(SigningBlockBuilder::StrippingAttribute, 3U)})
            .pair(UnknownId, "unknown")
            .v3({BlockSigner(TestKey::ec(), {0x0201})})
            .pair(SigningBlockBuilder::PaddingId, QByteArray(20, '\0'));
        bytes = builder.build();
        int at = builder.blockAt() + 8;
        for (const quint32 id : {quint32(SigningBlockBuilder::V2), UnknownId, quint32(SigningBlockBuilder::V3),
                                 quint32(SigningBlockBuilder::PaddingId)}) {
            const int size = int(builder.value(id).size());
            ids.insert(id, {at + IdAt, at + HeadSize});
            values.insert(id, {at + HeadSize, at + HeadSize + size});
            at += HeadSize + size;
        }
    }

    /// Whether no signature covers the byte: it is in the value, or the id, of a pair that is skipped.
    bool isFree(int at) const
    {
        return std::any_of(skipped.begin(), skipped.end(),
                           [this, at](quint32 id) { return ids.value(id).has(at) || values.value(id).has(at); });
    }
    bool isIn(quint32 id, int at) const { return values.value(id).has(at); }

    QByteArray bytes;
    QMap<quint32, Range> ids;
    QMap<quint32, Range> values;
    QVector<quint32> skipped{UnknownId, SigningBlockBuilder::PaddingId};
};

struct Verdict {
    explicit Verdict(const QByteArray &package)
    {
        OpenedBlock opened(package);
        v2 = opened.verifier->verifyV2({});
        v3 = opened.verifier->verifyV3({});
    }

    bool isAny() const { return v2.isVerified() || v3.isVerified(); }

    SchemeResult v2;
    SchemeResult v3;
};

} // namespace

/// BlockVerifier on packages that were changed after they were signed.
class TestChangedBytes : public QObject
{
    Q_OBJECT

private slots:
    void refusesEveryOtherByte_data();
    void refusesEveryOtherByte();
    void refusesEveryOtherByteOfATree();
    void refusesEveryCut();
    void refusesEveryInsertedByte();
    void refusesEveryRemovedByte();
    void refusesMembersInTheBlock_data();
    void refusesMembersInTheBlock();
    void refusesAnotherContentForTheSameBlock();
};

void TestChangedBytes::refusesEveryOtherByte_data()
{
    QTest::addColumn<int>("mask");
    QTest::addRow("lowest bit") << 0x01;
    QTest::addRow("highest bit") << 0x80;
}

void TestChangedBytes::refusesEveryOtherByte()
{
    QFETCH(int, mask);
    const Package package;
    const Verdict good(package.bytes);
    QVERIFY2(good.v2.isVerified(), qPrintable(messageOf(good.v2)));
    QVERIFY2(good.v3.isVerified(), qPrintable(messageOf(good.v3)));
    int free = 0;
    for (int at = 0; at < package.bytes.size(); ++at) {
        QByteArray bytes = package.bytes;
        poke8(bytes, at, quint8(bytes.at(at)) ^ mask);
        const Verdict verdict(bytes);
        const bool isFree = package.isFree(at);
        // Schemes do not sign each other. v2 needs v3, which its attribute names.
        const bool v2 = isFree || package.isIn(SigningBlockBuilder::V3, at);
        const bool v3 =
            isFree || package.isIn(SigningBlockBuilder::V2, at) || package.ids.value(SigningBlockBuilder::V2).has(at);
        if (verdict.v2.isVerified() != v2 || verdict.v3.isVerified() != v3)
            QFAIL(qPrintable(
                QStringLiteral("byte %1: %2; %3").arg(at).arg(messageOf(verdict.v2), messageOf(verdict.v3))));
        free += isFree ? 1 : 0;
    }
    QCOMPARE(free, 4 + 7 + 4 + 20);
}

void TestChangedBytes::refusesEveryOtherByteOfATree()
{
    const SigningBlockBuilder builder =
        SigningBlockBuilder(rawZip({{"a", "content"}}), true).v3({BlockSigner(TestKey::rsa(), {0x0421})});
    const QByteArray package = builder.build();
    QVERIFY(Verdict(package).v3.isVerified());
    const Range block{builder.blockAt(), builder.blockAt() + int(builder.block().size())};
    for (int at = 0; at < package.size(); ++at) {
        if (block.has(at))
            continue;
        QByteArray bytes = package;
        poke8(bytes, at, quint8(bytes.at(at)) ^ 1);
        QVERIFY2(!Verdict(bytes).isAny(), qPrintable(QString::number(at)));
    }
}

void TestChangedBytes::refusesEveryCut()
{
    const Package package;
    for (int size = 0; size < package.bytes.size(); ++size) {
        // A read beyond the end of these bytes is a fault.
        const GuardedBytes guarded(package.bytes.left(size));
        for (const ByteView view : {guarded.inBlock(), guarded.atPageEnd()}) {
            OpenedBlock opened(std::make_unique<BytesInMemory>(SharedBytes(view, guarded.owner())));
            QVERIFY(!opened.verifier->verifyV2({}).isVerified());
            QVERIFY(!opened.verifier->verifyV3({}).isVerified());
        }
    }
}

void TestChangedBytes::refusesEveryInsertedByte()
{
    const Package package;
    for (int at = 0; at <= package.bytes.size(); ++at) {
        QByteArray bytes = package.bytes;
        bytes.insert(at, 'x');
        QVERIFY2(!Verdict(bytes).isAny(), qPrintable(QString::number(at)));
    }
}

void TestChangedBytes::refusesEveryRemovedByte()
{
    const Package package;
    for (int at = 0; at < package.bytes.size(); ++at) {
        QByteArray bytes = package.bytes;
        bytes.remove(at, 1);
        QVERIFY2(!Verdict(bytes).isAny(), qPrintable(QString::number(at)));
    }
}

void TestChangedBytes::refusesMembersInTheBlock_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<int>("distance");
    QTest::addColumn<bool>("isVerified");
    // Fields of a record of the directory, whose header is 31 bytes long and has 7 bytes behind it.
    constexpr int PackedSizeAt = 20;
    constexpr int HeaderAt = 42;
    QTest::addRow("true size") << PackedSizeAt << 0 << true;
    QTest::addRow("one byte of data") << PackedSizeAt << 1 << false;
    QTest::addRow("much data") << PackedSizeAt << (1 << 30) << false;
    QTest::addRow("no header at the last place for one") << HeaderAt << 1 << true;
    QTest::addRow("header across the border") << HeaderAt << 2 << false;
    QTest::addRow("header in the block") << HeaderAt << 80 << false;
    QTest::addRow("header far behind") << HeaderAt << 0x7fffff00 << false;
}

void TestChangedBytes::refusesMembersInTheBlock()
{
    QFETCH(int, field);
    QFETCH(int, distance);
    QByteArray zip = rawZip({{"b", QByteArray(200000, 'b')}, {"a", "content"}});
    const int recordAt = int(zip.lastIndexOf("PK\1\2"));
    poke32(zip, recordAt + field, qint64(peek32(zip, recordAt + field)) + distance);
    const QByteArray package =
        SigningBlockBuilder(zip).v2({BlockSigner(TestKey::rsa())}).v3({BlockSigner(TestKey::rsa())}).build();
    const Verdict verdict(package);
    QTEST(verdict.v2.isVerified(), "isVerified");
    QTEST(verdict.v3.isVerified(), "isVerified");
    if (!verdict.isAny())
        QCOMPARE(messageOf(verdict.v2), QStringLiteral("the signing block is damaged: a member is in it"));
}

void TestChangedBytes::refusesAnotherContentForTheSameBlock()
{
    const SigningBlockBuilder signedBuilder = SigningBlockBuilder(rawZip({{"a", "content"}}))
                                                  .v2({BlockSigner(TestKey::rsa())})
                                                  .v3({BlockSigner(TestKey::rsa())});
    QVERIFY(Verdict(signedBuilder.build()).isAny());
    const SigningBlockBuilder other(rawZip({{"a", "another"}}));
    QVERIFY(!Verdict(other.buildWith(signedBuilder.block())).isAny());
    const SigningBlockBuilder more(rawZip({{"a", "content"}, {"b", "more"}}));
    QVERIFY(!Verdict(more.buildWith(signedBuilder.block())).isAny());
}

QTEST_GUILESS_MAIN(TestChangedBytes)
#include "tst_changedbytes.moc"
