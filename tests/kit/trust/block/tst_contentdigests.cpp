// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "OpenedBlock.h"
#include "RawZip.h"
#include "SigningBlockBuilder.h"
#include "archive/BytesOfFile.h"

#include <QBuffer>
#include <QTemporaryFile>
#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

using Kind = ContentDigest::Kind;

namespace {

constexpr int MiB = 1 << 20;
constexpr int HeaderSize = 30 + 1; // of a member with a name of one byte

/// An archive whose members have this many bytes with their headers.
QByteArray zipOf(int size)
{
    QByteArray content(size - HeaderSize, 'x');
    for (int at = 0; at < content.size(); at += 4096)
        poke8(content, at, at / 4096);
    return rawZip({{"a", content}});
}

quint32 algorithmOf(Kind kind)
{
    return kind == Kind::ChunkedSha256 ? 0x0103 : kind == Kind::ChunkedSha512 ? 0x0104 : 0x0421;
}

/// A source that delivers the first bytes of what it claims to have, and counts what is read at once.
class ShortSource : public ByteSource
{
public:
    ShortSource(const QByteArray &bytes, qint64 existing) : ByteSource(bytes.size()), m_bytes(bytes), m_left(existing)
    {
    }

    SharedBytes view(qint64 at, qint64 count) override
    {
        largest = qMax(largest, count);
        return ByteSource::view(at, count);
    }

    qint64 largest = 0;

private:
    qint64 copy(qint64 at, qint64 count, char *data) override
    {
        const qint64 existing = qBound(qint64(0), m_left - at, count);
        std::memcpy(data, m_bytes.constData() + at, size_t(existing));
        return existing;
    }

    QByteArray m_bytes;
    qint64 m_left;
};

/// A file that is cut when a part of it was mapped, before anybody reads it.
class CutFile : public ByteSource
{
public:
    explicit CutFile(const QString &name) : ByteSource(0), m_name(name), m_bytes(BytesOfFile::open(name))
    {
        setSize(m_bytes->size());
    }

    SharedBytes view(qint64 at, qint64 count) override
    {
        SharedBytes result = m_bytes->view(at, count);
        isCut = isCut || (count == ContentDigests::PieceSize && QFile::resize(m_name, 0));
        return result;
    }

    bool isCut = false;

private:
    qint64 copy(qint64 at, qint64 count, char *data) override
    {
        const QByteArray bytes = m_bytes->read(at, count);
        std::memcpy(data, bytes.constData(), size_t(bytes.size()));
        return bytes.size();
    }

    QString m_name;
    std::unique_ptr<ByteSource> m_bytes;
};

} // namespace

/// ContentDigests and SignedContent.
class TestContentDigests : public QObject
{
    Q_OBJECT

private slots:
    void computesEveryKind_data();
    void computesEveryKind();
    void dividesALongDirectory();
    void readsFilesAndDevices();
    void readsContentAsOnePiece();
    void refusesContentThatIsMissing();
    void survivesAFileThatIsCut();
    void holdsPieces();
    void needsRoomForAPiece();
    void knowsSizes();
};

void TestContentDigests::computesEveryKind_data()
{
    QTest::addColumn<int>("size");
    QTest::addRow("small") << 100;
    QTest::addRow("chunk less one") << MiB - 1;
    QTest::addRow("chunk") << MiB;
    QTest::addRow("chunk and one") << MiB + 1;
    QTest::addRow("piece less one") << int(ContentDigests::PieceSize) - 1;
    QTest::addRow("piece") << int(ContentDigests::PieceSize);
    QTest::addRow("piece and one") << int(ContentDigests::PieceSize) + 1;
    QTest::addRow("many pieces") << 9 * int(ContentDigests::PieceSize) + 4097;
}

void TestContentDigests::computesEveryKind()
{
    QFETCH(int, size);
    const SigningBlockBuilder builder(zipOf(size));
    const QByteArray package = builder.build();
    OpenedBlock opened(package);
    for (const Kind kind : {Kind::ChunkedSha256, Kind::VeritySha256, Kind::ChunkedSha512}) {
        const QByteArray expected = builder.contentDigest(algorithmOf(kind));
        QCOMPARE(opened.verifier->contentDigest(kind), expected);
        QCOMPARE(expected.size(), ContentDigests::size(kind));
    }
    QCOMPARE(opened.budget.bytesLeft(), OpenedBlock::HeldBytes);
    // All at once.
    BytesInMemory source((SharedBytes(package)));
    SignedContent content(source, opened.verifier->block());
    ContentDigests digests(content);
    Budget budget(0, OpenedBlock::HeldBytes);
    digests.compute({Kind::ChunkedSha512, Kind::ChunkedSha256, Kind::VeritySha256, Kind::ChunkedSha256}, &budget);
    Budget nothing(0, 0);
    for (const Kind kind : {Kind::ChunkedSha256, Kind::VeritySha256, Kind::ChunkedSha512})
        QCOMPARE(digests.digest(kind, &nothing), builder.contentDigest(algorithmOf(kind)));
}

void TestContentDigests::dividesALongDirectory()
{
    QVector<RawMember> members;
    for (int i = 0; i < 80; ++i)
        members.append({QByteArray::number(i) + QByteArray(60000, 'n'), "content"});
    const SigningBlockBuilder builder(rawZip(members));
    OpenedBlock opened(builder.build());
    for (const Kind kind : {Kind::ChunkedSha256, Kind::VeritySha256, Kind::ChunkedSha512})
        QCOMPARE(opened.verifier->contentDigest(kind), builder.contentDigest(algorithmOf(kind)));
}

void TestContentDigests::readsFilesAndDevices()
{
    const SigningBlockBuilder builder(zipOf(3 * int(ContentDigests::PieceSize) + 5));
    QTemporaryFile file;
    QVERIFY(file.open());
    QCOMPARE(file.write(builder.build()), qint64(builder.build().size()));
    file.close();
    OpenedBlock mapped(BytesOfFile::open(file.fileName()));
    QByteArray bytes = builder.build();
    OpenedBlock device(BytesOfDevice::open(std::make_unique<QBuffer>(&bytes)));
    for (const Kind kind : {Kind::ChunkedSha256, Kind::VeritySha256, Kind::ChunkedSha512}) {
        QCOMPARE(mapped.verifier->contentDigest(kind), builder.contentDigest(algorithmOf(kind)));
        QCOMPARE(device.verifier->contentDigest(kind), builder.contentDigest(algorithmOf(kind)));
    }
}

void TestContentDigests::readsContentAsOnePiece()
{
    // Every range of a small content, over the borders of its sections.
    const SigningBlockBuilder builder(rawZip({{"a", "b"}}));
    const QByteArray package = builder.build();
    OpenedBlock opened(package);
    BytesInMemory source((SharedBytes(package)));
    SignedContent content(source, opened.verifier->block());
    const QByteArray zip = rawZip({{"a", "b"}});
    QCOMPARE(content.size(), qint64(zip.size()));
    for (int at = 0; at <= zip.size(); ++at) {
        for (int count = 0; count <= zip.size() - at + 1; ++count) {
            QCOMPARE(content.read(at, count), zip.mid(at, count));
            QCOMPARE(content.view(at, count).toByteArray(), zip.mid(at, count));
        }
    }
    QCOMPARE(content.view(-1, 5).size(), 0);
    QCOMPARE(content.view(zip.size() + 1, 5).size(), 0);
}

void TestContentDigests::refusesContentThatIsMissing()
{
    const SigningBlockBuilder builder(zipOf(2 * int(ContentDigests::PieceSize)));
    const QByteArray package = builder.build();
    OpenedBlock opened(package);
    for (const qint64 existing : {qint64(package.size()) - 1, ContentDigests::PieceSize + 1, qint64(0)}) {
        ShortSource source(package, existing);
        SignedContent content(source, opened.verifier->block());
        ContentDigests digests(content);
        Budget budget(0, OpenedBlock::HeldBytes);
        for (const Kind kind : {Kind::ChunkedSha256, Kind::VeritySha256, Kind::ChunkedSha512}) {
            const QByteArray digest = digests.digest(kind, &budget);
            QVERIFY(digest.isEmpty() || (existing > 0 && digest != builder.contentDigest(algorithmOf(kind))));
        }
    }
}

void TestContentDigests::survivesAFileThatIsCut()
{
    // The members are one piece, which a thread reads after the cut.
    const SigningBlockBuilder builder =
        SigningBlockBuilder(zipOf(int(ContentDigests::PieceSize))).v2({BlockSigner(TestKey::rsa())});
    QTemporaryFile file;
    QVERIFY(file.open());
    QCOMPARE(file.write(builder.build()), qint64(builder.build().size()));
    file.close();
    auto cut = std::make_unique<CutFile>(file.fileName());
    const CutFile &source = *cut;
    OpenedBlock opened(std::move(cut));
    QVERIFY(opened.verifier->hasBlock());
    const SchemeResult result = opened.verifier->verifyV2({});
    QVERIFY(source.isCut);
    QVERIFY(!result.isVerified());
    QCOMPARE(messageOf(result), QStringLiteral("signer 1: the content was changed: SHA-256"));
}

void TestContentDigests::holdsPieces()
{
    const QByteArray package = SigningBlockBuilder(zipOf(8 * int(ContentDigests::PieceSize))).build();
    OpenedBlock opened(package);
    ShortSource source(package, package.size());
    SignedContent content(source, opened.verifier->block());
    ContentDigests digests(content);
    Budget budget(0, OpenedBlock::HeldBytes);
    QVERIFY(!digests.digest(Kind::ChunkedSha256, &budget).isEmpty());
    QVERIFY(!digests.digest(Kind::VeritySha256, &budget).isEmpty());
    QVERIFY(source.largest <= ContentDigests::PieceSize);
    QCOMPARE(budget.bytesLeft(), OpenedBlock::HeldBytes);
}

void TestContentDigests::needsRoomForAPiece()
{
    const SigningBlockBuilder builder(zipOf(3 * int(ContentDigests::PieceSize)));
    OpenedBlock enough(builder.build(), OpenedBlock::Work, ContentDigests::PieceSize);
    QCOMPARE(enough.verifier->contentDigest(Kind::ChunkedSha256), builder.contentDigest(0x0103));
    OpenedBlock less(builder.build(), OpenedBlock::Work, ContentDigests::PieceSize - 1);
    QCOMPARE(less.verifier->contentDigest(Kind::ChunkedSha256), QByteArray());
    QCOMPARE(less.verifier->contentDigest(Kind::VeritySha256), QByteArray());
    QCOMPARE(less.budget.bytesLeft(), ContentDigests::PieceSize - 1);
}

void TestContentDigests::knowsSizes()
{
    QCOMPARE(ContentDigests::size(Kind::ChunkedSha256), 32);
    QCOMPARE(ContentDigests::size(Kind::ChunkedSha512), 64);
    QCOMPARE(ContentDigests::size(Kind::VeritySha256), 40);
}

QTEST_GUILESS_MAIN(TestContentDigests)
#include "tst_contentdigests.moc"
