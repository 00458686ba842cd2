// SPDX-License-Identifier: LGPL-2.1-or-later
#include "RawZip.h"
#include "ZipBuilder.h"
#include "diff/ByteComparison.h"
#include "diff/MemberCategory.h"
#include "diff/MemberDiff.h"

#include <QtTest>

#include <limits>
#include <memory>

using namespace fixture;
using namespace SorrelKit;

namespace {

constexpr qint64 PlentyOfWork = std::numeric_limits<qint64>::max();

/// Two archives and their differences.
struct Compared {
    Compared(const QByteArray &beforeBytes, const QByteArray &afterBytes, qint64 work = PlentyOfWork)
        : before(beforeBytes), after(afterBytes), budget(work, 0), diff(&budget, false)
    {
        before.open();
        after.open();
        diff.compare(QString(), &before, &after);
        members = diff.members();
    }

    QStringList texts() const
    {
        QStringList texts;
        for (const MemberChange &member : members) {
            const char marks[] = {'+', '-', '~'};
            texts.append(QLatin1Char(marks[int(member.kind())]) + member.path());
        }
        return texts;
    }

    ZipArchive before;
    ZipArchive after;
    Budget budget;
    MemberDiff diff;
    QList<MemberChange> members;
};

QString numbered(int number)
{
    return QStringLiteral("m%1").arg(number);
}

QByteArray archiveOf(int members, int nameSize = 0)
{
    QVector<RawMember> list;
    for (int i = 0; i < members; ++i) {
        RawMember member;
        member.name = QByteArray::number(i).rightJustified(nameSize, '0');
        list.append(member);
    }
    return rawZip(list);
}

} // namespace

class TestMemberDiff : public QObject
{
    Q_OBJECT

private slots:
    void cameWentAndChanged();
    void largestChangesAreFirst();
    void equalChecksumsOfOtherBytes();
    void checksumsOfOtherCompression();
    void membersThatCannotBeRead();
    void lastMemberOfANameCounts();
    void sizesOfCategories();
    void impossibleSizesCountAsNone();
    void namesThatAreNoUtf8();
    void oneArchiveOnly();
    void categories_data();
    void categories();
    void listedUpToTheCeiling();
    void namesUpToTheCeiling();
    void membersUpToTheBudget();
    void bytesUpToTheBudget();
    void bytesThatAreMissing();
};

void TestMemberDiff::cameWentAndChanged()
{
    const Compared compared(
        zip({{QStringLiteral("same"), "same"}, {QStringLiteral("old"), "o"}, {QStringLiteral("c"), "1"}}),
        zip({{QStringLiteral("c"), "2"}, {QStringLiteral("new"), "nn"}, {QStringLiteral("same"), "same"}}));
    QStringList texts = compared.texts();
    texts.sort();
    QCOMPARE(texts, QStringList({QStringLiteral("+new"), QStringLiteral("-old"), QStringLiteral("~c")}));
    for (const TextChange::Kind kind : {TextChange::Kind::Added, TextChange::Kind::Removed, TextChange::Kind::Changed})
        QCOMPARE(compared.diff.count(kind), 1);
    QVERIFY(compared.diff.isComplete());
    QCOMPARE(compared.diff.total().sizeBefore(), qint64(6));
    QCOMPARE(compared.diff.total().sizeAfter(), qint64(7));
}

void TestMemberDiff::largestChangesAreFirst()
{
    const auto stored = [](const QVector<Member> &members) { return zip(members, Compression::Stored); };
    const Compared compared(stored({{QStringLiteral("grew"), "1"},
                                    {QStringLiteral("shrank"), QByteArray(50, 'x')},
                                    {QStringLiteral("a"), "1"},
                                    {QStringLiteral("b"), "1"}}),
                            stored({{QStringLiteral("grew"), QByteArray(100, 'x')},
                                    {QStringLiteral("shrank"), "1"},
                                    {QStringLiteral("a"), "2"},
                                    {QStringLiteral("b"), "2"},
                                    {QStringLiteral("new"), QByteArray(70, 'x')}}));
    QCOMPARE(compared.texts(), QStringList({QStringLiteral("~grew"), QStringLiteral("+new"), QStringLiteral("~shrank"),
                                            QStringLiteral("~a"), QStringLiteral("~b")}));
    QCOMPARE(compared.members.constFirst().sizes().packedGrowth(), qint64(99));
}

void TestMemberDiff::equalChecksumsOfOtherBytes()
{
    RawMember member;
    member.name = "a";
    member.crc = 1234;
    member.content = "one";
    const QByteArray before = rawZip({member});
    member.content = "two";
    const Compared compared(before, rawZip({member}));
    QCOMPARE(compared.texts(), QStringList({QStringLiteral("~a")}));
    QVERIFY(compared.diff.isComplete());
}

void TestMemberDiff::checksumsOfOtherCompression()
{
    const QVector<Member> members{{QStringLiteral("a"), QByteArray(100, 'x')}};
    const Compared compared(zip(members, Compression::Deflated), zip(members, Compression::Stored));
    QVERIFY(compared.members.isEmpty());
    QVERIFY(compared.diff.sizes().isEmpty());
    QVERIFY(compared.diff.total().packedGrowth() > 0);
}

void TestMemberDiff::membersThatCannotBeRead()
{
    RawMember member;
    member.name = "a";
    member.content = "one";
    const QByteArray sound = rawZip({member});
    member.headerAt = 1 << 20;
    const QByteArray damaged = rawZip({member});
    QCOMPARE(Compared(sound, damaged).texts(), QStringList({QStringLiteral("~a")}));
    QVERIFY(Compared(damaged, damaged).members.isEmpty());
}

void TestMemberDiff::lastMemberOfANameCounts()
{
    const QByteArray one = rawZip({{"a", "1"}, {"a", "2"}});
    QVERIFY(Compared(one, rawZip({{"a", "2"}})).members.isEmpty());
    QCOMPARE(Compared(one, rawZip({{"a", "1"}})).texts(), QStringList({QStringLiteral("~a")}));
}

void TestMemberDiff::sizesOfCategories()
{
    const auto stored = [](const QVector<Member> &members) { return zip(members, Compression::Stored); };
    const Compared compared(stored({{QStringLiteral("classes.dex"), QByteArray(10, 'x')},
                                    {QStringLiteral("assets/a"), "a"},
                                    {QStringLiteral("lib/x86/a.so"), "a"}}),
                            stored({{QStringLiteral("classes.dex"), QByteArray(10, 'x')},
                                    {QStringLiteral("classes2.dex"), QByteArray(5, 'x')},
                                    {QStringLiteral("assets/a"), "a"}}));
    const QList<SizeChange> sizes = compared.diff.sizes();
    QCOMPARE(sizes.size(), 2);
    QCOMPARE(sizes.at(0).category(), SizeChange::Category::Code);
    QCOMPARE(sizes.at(0).packedBefore(), qint64(10));
    QCOMPARE(sizes.at(0).sizeAfter(), qint64(15));
    QCOMPARE(sizes.at(1).category(), SizeChange::Category::Libraries);
    QCOMPARE(sizes.at(1).packedGrowth(), qint64(-1));
}

void TestMemberDiff::impossibleSizesCountAsNone()
{
    RawMember member;
    member.name = "a";
    member.content = "one";
    const Compared compared(rawZip64({member}), rawZip({}));
    QCOMPARE(compared.texts(), QStringList({QStringLiteral("-a")}));
    QCOMPARE(compared.members.constFirst().sizes().sizeBefore(), qint64(3));
}

void TestMemberDiff::namesThatAreNoUtf8()
{
    const Compared compared(rawZip({}), rawZip({{"a\xff", "1"}}));
    QCOMPARE(compared.texts(), QStringList({QStringLiteral("+a\u00ff")}));
}

void TestMemberDiff::oneArchiveOnly()
{
    ZipArchive archive(rawZip({{"a", "1"}}));
    QVERIFY(archive.open());
    Budget budget(PlentyOfWork, 0);
    MemberDiff diff(&budget, false);
    diff.compare(QStringLiteral("config.de"), nullptr, &archive);
    diff.compare(QStringLiteral("config.fr"), &archive, nullptr);
    const QList<MemberChange> members = diff.members();
    QCOMPARE(members.size(), 2);
    QCOMPARE(members.at(0).kind(), TextChange::Kind::Added);
    QCOMPARE(members.at(0).package(), QStringLiteral("config.de"));
    QCOMPARE(members.at(1).kind(), TextChange::Kind::Removed);
}

void TestMemberDiff::categories_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("category");
    const auto row = [](const char *name, SizeChange::Category category) {
        QTest::newRow(name) << QByteArray(name) << int(category);
    };
    row("classes.dex", SizeChange::Category::Code);
    row("classes12.dex", SizeChange::Category::Code);
    row("classes.dex.bak", SizeChange::Category::Other);
    row("classesA.dex", SizeChange::Category::Other);
    row("classes.de", SizeChange::Category::Other);
    row("resources.arsc", SizeChange::Category::Resources);
    row("resources.arsc2", SizeChange::Category::Other);
    row("res/a.png", SizeChange::Category::Resources);
    row("lib/x86/a.so", SizeChange::Category::Libraries);
    row("assets/classes.dex", SizeChange::Category::Assets);
    row("META-INF/CERT.RSA", SizeChange::Category::Signatures);
    row("META-INF/cert.ec", SizeChange::Category::Signatures);
    row("META-INF/CERT.SF", SizeChange::Category::Signatures);
    row("META-INF/MANIFEST.MF", SizeChange::Category::Signatures);
    row("META-INF/a/CERT.RSA", SizeChange::Category::Other);
    row("META-INF/services/a", SizeChange::Category::Other);
    row("", SizeChange::Category::Other);
}

void TestMemberDiff::categories()
{
    QFETCH(QByteArray, name);
    QFETCH(int, category);
    QCOMPARE(int(MemberCategory::of(ByteView(name))), category);
}

void TestMemberDiff::listedUpToTheCeiling()
{
    for (const int excess : {0, 1, MemberDiff::MaxListed + 1}) {
        const Compared compared(archiveOf(0), archiveOf(MemberDiff::MaxListed + excess));
        QCOMPARE(int(compared.members.size()), MemberDiff::MaxListed);
        QCOMPARE(compared.diff.count(TextChange::Kind::Added), MemberDiff::MaxListed + excess);
        QCOMPARE(compared.members.constFirst().path(), QStringLiteral("0"));
    }
}

void TestMemberDiff::namesUpToTheCeiling()
{
    constexpr int NameSize = 1 << 15;
    constexpr int Most = int(MemberDiff::MaxListedBytes / NameSize);
    QCOMPARE(int(Compared(archiveOf(0), archiveOf(Most, NameSize)).members.size()), Most);
    const Compared compared(archiveOf(0), archiveOf(Most + 1, NameSize));
    QCOMPARE(int(compared.members.size()), Most);
    QCOMPARE(compared.diff.count(TextChange::Kind::Added), Most + 1);
}

void TestMemberDiff::membersUpToTheBudget()
{
    const QByteArray archive = zip({{numbered(1), "1"}, {numbered(2), "2"}});
    constexpr qint64 Work = 2 * (MemberDiff::MemberWork + 2);
    const Compared enough(archiveOf(0), archive, Work);
    QCOMPARE(enough.members.size(), 2);
    QVERIFY(enough.diff.isComplete());
    const Compared tooLittle(archiveOf(0), archive, Work - 1);
    QCOMPARE(tooLittle.members.size(), 1);
    QVERIFY(!tooLittle.diff.isComplete());
}

void TestMemberDiff::bytesUpToTheBudget()
{
    RawMember member;
    member.name = "a";
    member.crc = 1234;
    member.content = QByteArray(400, 'x');
    const QByteArray before = rawZip({member});
    member.content = QByteArray(400, 'y');
    const QByteArray after = rawZip({member});
    constexpr qint64 Work = MemberDiff::MemberWork + 1 + 400 / ByteComparison::BytesPerWork + 1;
    QCOMPARE(Compared(before, after, Work).texts(), QStringList({QStringLiteral("~a")}));
    // Without the bytes, the checksum counts.
    const Compared tooLittle(before, after, Work - 1);
    QVERIFY(tooLittle.members.isEmpty());
    QVERIFY(!tooLittle.diff.isComplete());
}

void TestMemberDiff::bytesThatAreMissing()
{
    BytesInMemory shorter{SharedBytes(QByteArray(300 << 10, 'x'))};
    BytesInMemory longer{SharedBytes(QByteArray(301 << 10, 'x'))};
    Budget budget(PlentyOfWork, 0);
    ByteComparison comparison(&budget);
    QCOMPARE(comparison.isSame(shorter, longer), std::make_optional(false));
    QCOMPARE(comparison.isSame(shorter, 0, longer, 0, 300 << 10), std::make_optional(true));
    QCOMPARE(comparison.isSame(shorter, 0, longer, 0, 301 << 10), std::make_optional(false));
    QCOMPARE(comparison.isSame(shorter, 0, shorter, 0, qint64(1) << 40), std::make_optional(true));
    QCOMPARE(comparison.isSame(shorter, 1, longer, 0, 300 << 10), std::make_optional(false));
}

QTEST_GUILESS_MAIN(TestMemberDiff)
#include "tst_memberdiff.moc"
