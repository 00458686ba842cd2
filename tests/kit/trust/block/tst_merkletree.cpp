// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/ByteSource.h"
#include "trust/block/MerkleTree.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QtTest>

using namespace SorrelKit;

namespace {

constexpr int Page = 4096;

QByteArray padded(QByteArray bytes)
{
    return bytes + QByteArray((Page - bytes.size() % Page) % Page, '\0');
}

QByteArray hashOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

/// The tree by its definition, one level after the other.
HashTree expectedTree(const QByteArray &content, const QByteArray &salt)
{
    QByteArray tree;
    QByteArray level = padded(content);
    do {
        QByteArray hashes;
        for (int at = 0; at < level.size(); at += Page)
            hashes += hashOf(salt + level.mid(at, Page));
        level = padded(hashes);
        tree.prepend(level);
    } while (level.size() > Page);
    return {hashOf(salt + level), tree};
}

QByteArray contentOf(int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    quint32 state = 1;
    for (char &byte : bytes) {
        state = quint32((quint64(state) * 48271) % 0x7fffffff);
        byte = char(state >> 8 & 0xff);
    }
    return bytes;
}

HashTree make(const QByteArray &content, const QByteArray &salt, bool keepsTree = true)
{
    BytesInMemory source{SharedBytes(content)};
    return MerkleTree::make(source, salt, keepsTree);
}

/// A device that ends after @p existing bytes of those that it counts.
class ShortDevice : public QBuffer
{
public:
    ShortDevice(const QByteArray &bytes, qint64 existing) : m_existing(existing) { setData(bytes); }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const qint64 left = m_existing - pos();
        return left <= 0 ? -1 : QBuffer::readData(data, qMin(size, left));
    }

private:
    qint64 m_existing;
};

} // namespace

/// MerkleTree.
class TestMerkleTree : public QObject
{
    Q_OBJECT

private slots:
    void hasKnownHashes();
    void hasTheHashesOfItsDefinition_data();
    void hasTheHashesOfItsDefinition();
    void changesWithEveryPage();
    void knowsItsSize_data();
    void knowsItsSize();
    void isNothingWithoutContent();
    void isNothingWhenBytesAreMissing();
};

void TestMerkleTree::hasKnownHashes()
{
    // printf a | dd conv=sync bs=4096 | sha256sum, that hash as a page again: computed by coreutils.
    const HashTree tree = make("a", QByteArray());
    const QByteArray leaf = hashOf("a" + QByteArray(Page - 1, '\0'));
    QCOMPARE(leaf.toHex(), QByteArray("344bcc8eac81250e918967cb0ba2d1cd1ea9d548141cf318f2025c2ba93b6ed2"));
    QCOMPARE(tree.tree, padded(leaf));
    QCOMPARE(tree.root.toHex(), QByteArray("86a5bd551deedc3c7155bbb9987b03f75c78d8c1f590ccf7b179845229f55eea"));
}

void TestMerkleTree::hasTheHashesOfItsDefinition_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QByteArray>("salt");
    const int level = 128 * Page;
    const int piece = 4 << 20;
    for (const int size : {1, Page - 1, Page, Page + 1, level - 1, level, level + 1, 2 * level, piece - 1, piece,
                           piece + 1, 2 * piece + level + 1}) {
        QTest::addRow("%d", size) << size << QByteArray();
        QTest::addRow("%d salted", size) << size << QByteArray(8, '\0');
    }
    QTest::addRow("three levels") << 128 * level + 1 << QByteArray();
    QTest::addRow("long salt") << level + 1 << QByteArray(Page, 's');
}

void TestMerkleTree::hasTheHashesOfItsDefinition()
{
    QFETCH(int, size);
    QFETCH(QByteArray, salt);
    const QByteArray content = contentOf(size);
    const HashTree expected = expectedTree(content, salt);
    const HashTree tree = make(content, salt);
    QCOMPARE(tree.root.toHex(), expected.root.toHex());
    QVERIFY(tree.tree == expected.tree);
    QCOMPARE(MerkleTree::treeSize(size), qint64(expected.tree.size()));

    const HashTree root = make(content, salt, false);
    QCOMPARE(root.root, expected.root);
    QVERIFY(root.tree.isEmpty());
}

void TestMerkleTree::changesWithEveryPage()
{
    const QByteArray content = contentOf(300 * Page + 7);
    const QByteArray root = make(content, QByteArray(), false).root;
    for (int at = 0; at < content.size(); at += Page) {
        QByteArray other = content;
        other[at] = char(other.at(at) ^ 1);
        QVERIFY(make(other, QByteArray(), false).root != root);
    }
}

void TestMerkleTree::knowsItsSize_data()
{
    QTest::addColumn<qint64>("content");
    QTest::addColumn<qint64>("pages");
    QTest::addRow("a byte") << qint64(1) << qint64(1);
    QTest::addRow("a level") << qint64(128 * Page) << qint64(1);
    QTest::addRow("two levels") << qint64(128 * Page + 1) << qint64(3);
    QTest::addRow("4 GiB") << (qint64(4) << 30) << qint64(8192 + 64 + 1);
    const qint64 most = std::numeric_limits<qint64>::max();
    QTest::addRow("the most") << most
                              << (qint64(1) << 44) + (qint64(1) << 37) + (qint64(1) << 30) + (1 << 23) + (1 << 16)
                                     + (1 << 9) + 4 + 1;
}

void TestMerkleTree::knowsItsSize()
{
    QFETCH(qint64, content);
    QFETCH(qint64, pages);
    QCOMPARE(MerkleTree::treeSize(content), pages * Page);
}

void TestMerkleTree::isNothingWithoutContent()
{
    const HashTree tree = make(QByteArray(), QByteArray());
    QVERIFY(tree.root.isEmpty());
    QVERIFY(tree.tree.isEmpty());
}

void TestMerkleTree::isNothingWhenBytesAreMissing()
{
    const QByteArray content = contentOf(5 << 20);
    for (const int existing : {0, 1, Page, 4 << 20, (5 << 20) - 1}) {
        ShortDevice device(content, existing);
        const auto source = BytesOfDevice::open(&device);
        QVERIFY(source != nullptr);
        QVERIFY(MerkleTree::make(*source, QByteArray(), true).root.isEmpty());
    }
    ShortDevice device(content, content.size());
    const auto source = BytesOfDevice::open(&device);
    QCOMPARE(MerkleTree::make(*source, QByteArray(), false).root, expectedTree(content, QByteArray()).root);
}

QTEST_GUILESS_MAIN(TestMerkleTree)
#include "tst_merkletree.moc"
