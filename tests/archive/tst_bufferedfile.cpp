// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/BufferedFile.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

class TestBufferedFile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void readsTheWholeFile();
    void readsWhatAFileReads_data();
    void readsWhatAFileReads();
    void goesBackAFewBytesAfterEveryRead();
    void isARandomAccessDeviceOfTheFilesSize();
    void endsEarlyWhenTheFileShrinks();
    void opensAgainWhatHasChanged();
    void refusesAMissingFile();
    void refusesToWrite();

private:
    QString writtenFile(const QString &name, const QByteArray &content) const;

    QTemporaryDir m_directory;
    QByteArray m_content;
};

void TestBufferedFile::initTestCase()
{
    QVERIFY(m_directory.isValid());
    QRandomGenerator random(1);
    m_content.resize(5 * BufferedFile::WindowSize + 1234);
    for (char &byte : m_content)
        byte = char(random.bounded(256));
}

QString TestBufferedFile::writtenFile(const QString &name, const QByteArray &content) const
{
    QFile file(m_directory.filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName() : QString();
}

void TestBufferedFile::readsTheWholeFile()
{
    BufferedFile file(writtenFile(QStringLiteral("whole"), m_content));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), m_content);
    QVERIFY(file.atEnd());
    QCOMPARE(file.read(1), QByteArray());
}

void TestBufferedFile::readsWhatAFileReads_data()
{
    QTest::addColumn<int>("longest");
    for (const int longest : {1, 46, 5000, BufferedFile::WindowSize / 2, 2 * BufferedFile::WindowSize})
        QTest::newRow(QByteArray::number(longest).constData()) << longest;
}

void TestBufferedFile::readsWhatAFileReads()
{
    QFETCH(const int, longest);
    const QString name = writtenFile(QStringLiteral("random"), m_content);
    QFile expected(name);
    BufferedFile file(name);
    QVERIFY(expected.open(QIODevice::ReadOnly));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QRandomGenerator random(2);
    for (int step = 0; step < 5000; ++step) {
        if (random.bounded(3) == 0) {
            const qint64 position = random.bounded(int(m_content.size()) + 1);
            QVERIFY(file.seek(position));
            QVERIFY(expected.seek(position));
        }
        const qint64 size = 1 + random.bounded(longest);
        QCOMPARE(file.read(size), expected.read(size));
        QCOMPARE(file.pos(), expected.pos());
    }
}

void TestBufferedFile::goesBackAFewBytesAfterEveryRead()
{
    BufferedFile file(writtenFile(QStringLiteral("steps"), m_content));
    QVERIFY(file.open(QIODevice::ReadOnly));
    constexpr int RecordSize = 85;
    constexpr int HeaderSize = 46;
    for (int at = 0; at + RecordSize <= m_content.size(); at += RecordSize) {
        QVERIFY(file.seek(at));
        QCOMPARE(file.read(HeaderSize), m_content.mid(at, HeaderSize));
        QVERIFY(file.seek(at));
        QCOMPARE(file.read(RecordSize), m_content.mid(at, RecordSize));
    }
}

void TestBufferedFile::isARandomAccessDeviceOfTheFilesSize()
{
    BufferedFile file(writtenFile(QStringLiteral("device"), m_content));
    QVERIFY(!file.isOpen());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(!file.isSequential());
    QCOMPARE(file.size(), qint64(m_content.size()));
    QVERIFY(file.seek(m_content.size() - 4));
    QCOMPARE(file.read(100), m_content.right(4));
    file.close();
    QVERIFY(!file.isOpen());
}

void TestBufferedFile::endsEarlyWhenTheFileShrinks()
{
    const QString name = writtenFile(QStringLiteral("shrinks"), m_content);
    BufferedFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(4), m_content.left(4));
    QVERIFY(QFile::resize(name, 3 * BufferedFile::WindowSize));
    const QByteArray rest = file.readAll();
    QCOMPARE(rest, m_content.mid(4, rest.size()));
    QVERIFY(rest.size() <= 3 * BufferedFile::WindowSize);
    QVERIFY(file.seek(4 * BufferedFile::WindowSize));
    QCOMPARE(file.read(10), QByteArray());
    QCOMPARE(file.read(4 * BufferedFile::WindowSize), QByteArray());
}

void TestBufferedFile::opensAgainWhatHasChanged()
{
    const QString name = writtenFile(QStringLiteral("again"), "first");
    BufferedFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("first"));
    file.close();
    QVERIFY(!writtenFile(QStringLiteral("again"), "second").isEmpty());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("second"));
}

void TestBufferedFile::refusesAMissingFile()
{
    BufferedFile file(m_directory.filePath(QStringLiteral("missing")));
    QVERIFY(!file.open(QIODevice::ReadOnly));
    QVERIFY(!file.isOpen());
}

void TestBufferedFile::refusesToWrite()
{
    BufferedFile file(writtenFile(QStringLiteral("written"), "kept"));
    QVERIFY(!file.open(QIODevice::ReadWrite));
    QVERIFY(!file.isOpen());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("kept"));
}

QTEST_GUILESS_MAIN(TestBufferedFile)
#include "tst_bufferedfile.moc"
