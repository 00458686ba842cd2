// SPDX-License-Identifier: LGPL-2.1-or-later
#include "GuardedBytes.h"
#include "SetFixture.h"
#include "toc/TocReader.h"

#include <QtTest>

#include <limits>

using namespace fixture;
using SorrelKit::TocReader;

namespace {

constexpr qint64 Much = 1 << 26;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

TocReader read(const QByteArray &toc, qint64 work = Much)
{
    Budget budget(work, 0);
    return TocReader(ByteView(toc), &budget);
}

/// A table with every field that is read.
QByteArray fullToc()
{
    const auto abis = ProtobufWriter().message(1, ProtobufWriter().message(1, ProtobufWriter().number(1, 3)));
    const auto conditions =
        ProtobufWriter()
            .message(1, sdkTargeting({24}))
            .message(2, ProtobufWriter().message(1, ProtobufWriter().text(1, "android.hardware.camera")));
    const auto apk = ProtobufWriter()
                         .message(1, ProtobufWriter()
                                         .message(1, abiTargeting({3}, {2, 5}))
                                         .message(3, languageTargeting({latin("de")}, {latin("fr")}))
                                         .message(4, densityTargeting({7}, {1}))
                                         .message(5, sdkTargeting({21}))
                                         .message(6, abiTargeting({9}, {10}))
                                         .message(7, abis))
                         .text(2, "splits/base.apk")
                         .message(3, ProtobufWriter().text(1, "config.de").number(2, 0));
    const auto targeting = ProtobufWriter()
                               .message(1, sdkTargeting({21}, {23}))
                               .message(2, abiTargeting({4}))
                               .message(3, ProtobufWriter().message(1, ProtobufWriter().number(2, 420)))
                               .message(4, abis)
                               .message(5, abiTargeting({1}));
    return tocOf({variantOf(targeting, {moduleOf("camera", {apk}, 2, conditions)}, 5)},
                 {apkOf("asset.apk", ProtobufWriter())});
}

} // namespace

class TestTocReader : public QObject
{
    Q_OBJECT

private slots:
    void everyField();
    void kinds();
    void timesOfDelivery_data();
    void timesOfDelivery();
    void everyAlias();
    void fieldsOfAnotherType();
    void ceilings_data();
    void ceilings();
    void bytesUpToTheCeiling();
    void nestedMessages();
    void workOfTheBudget();
    void damagedByteByByte();
};

void TestTocReader::everyField()
{
    const TocReader toc = read(fullToc());
    QVERIFY(toc.isWhole());
    QCOMPARE(toc.packageName(), latin("org.example.app"));
    QCOMPARE(toc.variants().size(), 1);
    const TocReader::Variant &variant = toc.variants().constFirst();
    QCOMPARE(variant.number, quint64(5));
    QCOMPARE(variant.targeting.sdkVersions.values, QVector<int>{21});
    QCOMPARE(variant.targeting.sdkVersions.alternatives, QVector<int>{23});
    QCOMPARE(variant.targeting.abis.values, QVector<QString>{latin("x86")});
    QCOMPARE(variant.targeting.densities.values, QVector<int>{420});
    QCOMPARE(variant.targeting.textures.values, QVector<int>{1});
    QCOMPARE(variant.targeting.abiSets.values, QVector<QStringList>{QStringList(latin("arm64-v8a"))});
    const TocReader::Module &module = variant.modules.constFirst();
    QCOMPARE(module.name, latin("camera"));
    QVERIFY(!module.isInstallTime);
    QCOMPARE(module.sdkVersions.values, QVector<int>{24});
    QCOMPARE(module.features, QStringList(latin("android.hardware.camera")));
    const TocReader::Apk &apk = module.apks.constFirst();
    QCOMPARE(apk.path, latin("splits/base.apk"));
    QCOMPARE(apk.splitName, latin("config.de"));
    QCOMPARE(apk.targeting.abis.values, QVector<QString>{latin("arm64-v8a")});
    QCOMPARE(apk.targeting.abis.alternatives, (QVector<QString>{latin("armeabi-v7a"), latin("x86_64")}));
    QCOMPARE(apk.targeting.languages.values, QVector<QString>{latin("de")});
    QCOMPARE(apk.targeting.languages.alternatives, QVector<QString>{latin("fr")});
    QCOMPARE(apk.targeting.densities.values, QVector<int>{480});
    QCOMPARE(apk.targeting.densities.alternatives, QVector<int>{65535});
    QCOMPARE(apk.targeting.sdkVersions.values, QVector<int>{21});
    QCOMPARE(apk.targeting.textures.values, QVector<int>{9});
    QCOMPARE(apk.targeting.textures.alternatives, QVector<int>{10});
    QCOMPARE(apk.targeting.abiSets.values.size(), 1);
    QCOMPARE(toc.assets().size(), 1);
    QCOMPARE(toc.assets().constFirst().path, latin("asset.apk"));
}

void TestTocReader::kinds()
{
    using Kind = TocReader::Apk::Kind;
    const auto kind = [](int field) {
        return read(tocOf({variantOf({}, {moduleOf("base", {apkOf("x.apk", {}, field)})})}))
            .variants()
            .constFirst()
            .modules.constFirst()
            .apks.constFirst()
            .kind;
    };
    QCOMPARE(kind(3), Kind::Split);
    QCOMPARE(kind(4), Kind::Standalone);
    QCOMPARE(kind(5), Kind::Other);
    QCOMPARE(kind(6), Kind::System);
    QCOMPARE(kind(9), Kind::Other);
}

void TestTocReader::timesOfDelivery_data()
{
    QTest::addColumn<QByteArray>("metadata");
    QTest::addColumn<bool>("isInstallTime");
    QTest::newRow("nothing") << QByteArray() << true;
    QTest::newRow("old: on demand") << ProtobufWriter().number(2, 1).data() << false;
    QTest::newRow("old: not on demand") << ProtobufWriter().number(2, 0).data() << true;
    QTest::newRow("install time") << ProtobufWriter().number(2, 1).number(6, 1).data() << true;
    QTest::newRow("on demand") << ProtobufWriter().number(6, 2).data() << false;
    QTest::newRow("fast follow") << ProtobufWriter().number(6, 3).data() << false;
    QTest::newRow("unknown") << ProtobufWriter().number(6, 9).data() << false;
}

void TestTocReader::timesOfDelivery()
{
    QFETCH(QByteArray, metadata);
    const auto module = ProtobufWriter().bytes(1, metadata);
    QTEST(read(tocOf({variantOf({}, {module})})).variants().constFirst().modules.constFirst().isInstallTime,
          "isInstallTime");
}

void TestTocReader::everyAlias()
{
    const auto targeting = [](const ProtobufWriter &apk) {
        return read(tocOf({variantOf({}, {moduleOf("base", {apkOf("x.apk", apk)})})}))
            .variants()
            .constFirst()
            .modules.constFirst()
            .apks.constFirst()
            .targeting;
    };
    const auto abis = targeting(ProtobufWriter().message(1, abiTargeting({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}))).abis.values;
    QCOMPARE(QStringList(abis.cbegin(), abis.cend()).join(QLatin1Char(' ')),
             latin(" armeabi armeabi-v7a arm64-v8a x86 x86_64 mips mips64 riscv64 "));
    QCOMPARE(targeting(ProtobufWriter().message(4, densityTargeting({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}))).densities.values,
             (QVector<int>{0, 65535, 120, 160, 213, 240, 320, 480, 640, 0}));
}

// A number where a message should be is an empty message, and the other way round 0.
void TestTocReader::fieldsOfAnotherType()
{
    const TocReader toc = read(ProtobufWriter().number(1, 7).number(3, 7).number(4, 7).data());
    QVERIFY(toc.isWhole());
    QCOMPARE(toc.variants().size(), 1);
    QVERIFY(toc.variants().constFirst().modules.isEmpty());
    const TocReader other =
        read(tocOf({ProtobufWriter().number(1, 1).number(2, 1).text(3, "text")}, {ProtobufWriter().number(1, 1)}));
    QVERIFY(other.isWhole());
    QCOMPARE(other.variants().constFirst().number, quint64(0));
    QCOMPARE(other.assets().size(), 1);
}

void TestTocReader::ceilings_data()
{
    QTest::addColumn<QByteArray>("most");
    QTest::addColumn<QByteArray>("more");
    const QByteArray variant = ProtobufWriter().bytes(1, {}).data();
    const auto variants = [&](int count) { return variant.repeated(count); };
    QTest::newRow("variants") << variants(TocReader::MaxVariants) << variants(TocReader::MaxVariants + 1);
    const auto within = [](int count, const QByteArray &part) {
        return ProtobufWriter().bytes(1, part.repeated(count)).data();
    };
    const QByteArray module = ProtobufWriter().bytes(2, {}).data();
    QTest::newRow("modules") << within(TocReader::MaxModules, module) << within(TocReader::MaxModules + 1, module);
    const auto packages = [](int count) {
        const QByteArray apks = ProtobufWriter().bytes(2, {}).data().repeated(count - 1);
        return ProtobufWriter()
            .message(1, ProtobufWriter().bytes(2, apks))
            .message(3, ProtobufWriter().bytes(2, {}))
            .data();
    };
    QTest::newRow("packages") << packages(TocReader::MaxPackages) << packages(TocReader::MaxPackages + 1);
    const auto values = [](int count) {
        const QByteArray abis = ProtobufWriter().bytes(1, {}).bytes(2, {}).data().repeated(count / 2);
        return ProtobufWriter()
            .message(1, ProtobufWriter().message(1, ProtobufWriter().bytes(2, abis).message(
                                                        1, count % 2 != 0 ? sdkTargeting({1}) : ProtobufWriter())))
            .data();
    };
    QTest::newRow("values") << values(TocReader::MaxValues) << values(TocReader::MaxValues + 1);
}

void TestTocReader::ceilings()
{
    QFETCH(QByteArray, most);
    QFETCH(QByteArray, more);
    QVERIFY(read(most).isWhole());
    QVERIFY(!read(more).isWhole());
}

void TestTocReader::bytesUpToTheCeiling()
{
    // The tag takes a byte, and the length four.
    const auto ofSize = [](qint64 size) { return ProtobufWriter().bytes(9, QByteArray(int(size - 5), 'x')).data(); };
    QCOMPARE(qint64(ofSize(TocReader::MaxBytes).size()), TocReader::MaxBytes);
    QVERIFY(read(ofSize(TocReader::MaxBytes)).isWhole());
    QVERIFY(!read(ofSize(TocReader::MaxBytes + 1)).isWhole());
}

// Only known fields are entered, so messages in messages cost nothing.
void TestTocReader::nestedMessages()
{
    for (const int field : {1, 2, 3}) {
        QByteArray nested;
        for (int depth = 0; depth < 5000; ++depth)
            nested = ProtobufWriter().bytes(field, nested).data();
        const TocReader toc = read(nested);
        QVERIFY(toc.variants().size() <= 1);
        QVERIFY(toc.assets().size() <= 1);
    }
}

void TestTocReader::workOfTheBudget()
{
    const QByteArray toc = fullToc();
    Budget budget(Much, 0);
    QVERIFY(TocReader(ByteView(toc), &budget).isWhole());
    const qint64 work = Much - budget.workLeft();
    QVERIFY(read(toc, work).isWhole());
    QVERIFY(!read(toc, work - 1).isWhole());
}

// Each damaged table is read within its bytes, and is refused or has no more than the whole one may have.
void TestTocReader::damagedByteByByte()
{
    const QByteArray whole = fullToc();
    int refused = 0;
    const auto check = [&refused](const QByteArray &bytes) {
        const GuardedBytes guarded(bytes);
        Budget budget(Much, 0);
        const TocReader toc(guarded.atPageEnd(), &budget);
        refused += toc.isWhole() ? 0 : 1;
        QVERIFY(toc.variants().size() <= bytes.size());
        QVERIFY(Much - budget.workLeft() <= Budget::ValueWork * (bytes.size() + 1) * 10);
    };
    for (int at = 0; at < whole.size(); ++at) {
        check(whole.left(at));
        for (int value = 0; value < 256; ++value) {
            QByteArray damaged = whole;
            damaged[at] = char(value);
            check(damaged);
        }
    }
    QVERIFY(refused > whole.size());
}

QTEST_GUILESS_MAIN(TestTocReader)
#include "tst_tocreader.moc"
