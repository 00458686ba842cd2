// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "RawZip.h"
#include "ZipBuilder.h"

#include "archive/ZipArchive.h"
#include "trust/jar/MemberDigests.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace SorrelKit;
using namespace fixture;
using State = MemberDigests::State;

namespace {

std::vector<JarDigest> digestsOf(const QByteArray &content)
{
    return {{HashAlgorithm::Sha256, Digest::of(HashAlgorithm::Sha256, content)},
            {HashAlgorithm::Sha1, Digest::of(HashAlgorithm::Sha1, content)}};
}

/// The results for all members of an archive, which have to have these contents.
std::vector<MemberDigests::Result> check(const QByteArray &bytes, const QVector<QByteArray> &contents)
{
    ZipArchive archive(bytes);
    if (!archive.open())
        return {};
    MemberDigests digests(archive);
    for (int i = 0; i < contents.size(); ++i)
        digests.add(i, digestsOf(contents.at(i)));
    return digests.check();
}

State stateOf(const QByteArray &bytes, const QByteArray &content)
{
    const auto results = check(bytes, {content});
    return results.size() == 1 ? results.front().state : State::TooCostly;
}

QByteArray randomBytes(qint64 size)
{
    QRandomGenerator generator(1);
    QByteArray bytes(int(size), Qt::Uninitialized);
    for (char &each : bytes)
        each = char(generator.bounded(256));
    return bytes;
}

} // namespace

/// MemberDigests.
class TestMemberDigests : public QObject
{
    Q_OBJECT

private slots:
    void comparesMembers_data();
    void comparesMembers();
    void comparesManyMembers();
    void comparesAllDigests();
    void refusesMembersWithoutADigest();
    void refusesDamagedMembers();
    void refusesAnotherMethod();
    void refusesTwoSizesOfAStoredMember();
    void refusesMembersThatPassTheEnd();
    void boundsInflatedBytes();
    void boundsPackedBytes();
};

void TestMemberDigests::comparesMembers_data()
{
    QTest::addColumn<int>("compression");
    QTest::addColumn<int>("size");
    for (const Compression compression : {Compression::Stored, Compression::Deflated}) {
        const char *const name = compression == Compression::Stored ? "stored" : "deflated";
        for (const qint64 size : {qint64(0), qint64(1), MemberDigests::PieceBytes - 1, MemberDigests::PieceBytes,
                                  MemberDigests::PieceBytes + 1, MemberDigests::MaxMemberBytes + 1})
            QTest::addRow("%s %lld", name, size) << int(compression) << int(size);
    }
}

void TestMemberDigests::comparesMembers()
{
    QFETCH(int, compression);
    QFETCH(int, size);
    const QByteArray content = randomBytes(size);
    QByteArray other = content;
    if (size == 0)
        other = "x";
    else
        other[size - 1] = char(other.at(size - 1) ^ 1);
    const QByteArray bytes = zip({{QStringLiteral("a"), content}}, Compression(compression));
    QCOMPARE(stateOf(bytes, content), State::Right);
    QCOMPARE(stateOf(bytes, other), State::Wrong);
}

void TestMemberDigests::comparesManyMembers()
{
    QVector<Member> members;
    QVector<QByteArray> contents;
    for (int i = 0; i < 3 * MemberDigests::TaskMembers + 1; ++i) {
        members.append({QString::number(i), QByteArray::number(i).repeated(i)});
        contents.append(i % 7 == 0 ? QByteArray("another") : members.last().content);
    }
    const auto results = check(zip(members), contents);
    QCOMPARE(int(results.size()), int(members.size()));
    for (size_t i = 0; i < results.size(); ++i)
        QCOMPARE(results.at(i).state, i % 7 == 0 ? State::Wrong : State::Right);
}

void TestMemberDigests::comparesAllDigests()
{
    const QByteArray content = "content";
    for (const HashAlgorithm wrong : {HashAlgorithm::Sha256, HashAlgorithm::Sha1}) {
        std::vector<JarDigest> digests = digestsOf(content);
        for (JarDigest &each : digests) {
            if (each.algorithm == wrong)
                each.value[0] = char(each.value.at(0) ^ 1);
        }
        ZipArchive archive(zip({{QStringLiteral("a"), content}}));
        QVERIFY(archive.open());
        MemberDigests members(archive);
        members.add(0, digests);
        const auto results = members.check();
        QCOMPARE(int(results.size()), 1);
        QCOMPARE(results.front().state, State::Wrong);
        QCOMPARE(results.front().algorithm, wrong);
    }
}

void TestMemberDigests::refusesMembersWithoutADigest()
{
    ZipArchive archive(zip({{QStringLiteral("a"), QByteArray()}}, Compression::Stored));
    QVERIFY(archive.open());
    MemberDigests members(archive);
    members.add(0, {});
    members.add(0, {{HashAlgorithm::Sha256, QByteArray()}});
    const auto results = members.check();
    QCOMPARE(results.at(0).state, State::Unreadable);
    QCOMPARE(results.at(1).state, State::Wrong);
}

void TestMemberDigests::refusesDamagedMembers()
{
    const QByteArray content = "content";
    const QByteArray packed = deflatedBehindEmptyBlocks(0, content);
    const auto state = [&content](const QByteArray &data, qint64 size) {
        return stateOf(zipOfDeflated({{QStringLiteral("a"), data}}, size), content);
    };
    QCOMPARE(state(packed, content.size()), State::Right);
    QCOMPARE(state(packed, content.size() - 1), State::Unreadable);
    QCOMPARE(state(packed, content.size() + 1), State::Unreadable);
    QCOMPARE(state(QByteArray(), content.size()), State::Unreadable);
    for (int size = 0; size < packed.size(); ++size)
        QCOMPARE(state(packed.left(size), content.size()), State::Unreadable);
}

void TestMemberDigests::refusesAnotherMethod()
{
    RawMember member{"a", "content"};
    QCOMPARE(stateOf(rawZip({member}), "content"), State::Right);
    member.method = 12;
    QCOMPARE(stateOf(rawZip({member}), "content"), State::Unreadable);
}

void TestMemberDigests::refusesTwoSizesOfAStoredMember()
{
    QByteArray bytes = rawZip({{"a", "content"}});
    // In both headers, behind the size of the packed bytes.
    const int own = int(bytes.indexOf("PK\x03\x04")) + 22;
    const int listed = int(bytes.indexOf("PK\x01\x02")) + 24;
    QCOMPARE(peek32(bytes, own), 7U);
    QCOMPARE(peek32(bytes, listed), 7U);
    poke32(bytes, own, 8);
    poke32(bytes, listed, 8);
    QCOMPARE(stateOf(bytes, "content"), State::Unreadable);
}

void TestMemberDigests::refusesMembersThatPassTheEnd()
{
    const QByteArray content = "content";
    for (const int method : {0, 8}) {
        RawMember member{"a", content};
        member.method = method;
        QByteArray bytes = rawZip({member});
        const int own = int(bytes.indexOf("PK\x03\x04")) + 18;
        const int listed = int(bytes.indexOf("PK\x01\x02")) + 20;
        for (const int at : {own, own + 4, listed, listed + 4})
            poke32(bytes, at, 5000);
        QCOMPARE(stateOf(bytes, content), State::Unreadable);
    }
}

void TestMemberDigests::boundsInflatedBytes()
{
    // Members of a byte that claim much.
    const QByteArray packed = deflatedBehindEmptyBlocks(0, "x");
    const QByteArray archive = zipOfDeflated({{QStringLiteral("a"), packed}}, MemberDigests::MaxInflatedBytes + 4096);
    QCOMPARE(stateOf(archive, "x"), State::TooCostly);
    const QByteArray smaller = zipOfDeflated({{QStringLiteral("a"), packed}}, MemberDigests::MaxInflatedBytes);
    QCOMPARE(stateOf(smaller, "x"), State::Unreadable);
    const auto results =
        check(zipOfDeflated({{QStringLiteral("a"), packed}, {QStringLiteral("b"), packed}}, 200 << 20), {"x", "x"});
    QCOMPARE(results.at(0).state, State::Unreadable);
    QCOMPARE(results.at(1).state, State::TooCostly);
}

void TestMemberDigests::boundsPackedBytes()
{
    // All entries of the directory are the first member.
    const QByteArray content(1000, 'x');
    QVector<RawMember> members{{"a", content}};
    for (int i = 0; i < 2; ++i) {
        RawMember member{"a", content};
        member.headerAt = 0;
        members.append(member);
    }
    const QByteArray bytes = rawZip(members);
    ZipArchive archive(bytes);
    QVERIFY(archive.open());
    MemberDigests digests(archive);
    const int most = int(bytes.size()) / 1000;
    for (int i = 0; i < most + 1; ++i)
        digests.add(i % 3, digestsOf(content));
    const auto results = digests.check();
    for (int i = 0; i < most; ++i)
        QCOMPARE(results.at(size_t(i)).state, State::Right);
    QCOMPARE(results.at(size_t(most)).state, State::TooCostly);
}

QTEST_GUILESS_MAIN(TestMemberDigests)
#include "tst_memberdigests.moc"
