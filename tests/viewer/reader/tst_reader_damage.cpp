// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AnswerCheck.h"
#include "Files.h"
#include "ReaderFixture.h"
#include "ReaderProcess.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;
using Viewer::AnswerCheck;

// Damaged packages: the reader answers each topic once, in the form that the window accepts.
class TestReaderDamage : public QObject
{
    Q_OBJECT

private slots:
    void cutPackages();
    void changedBytes_data();
    void changedBytes();

private:
    void read(const QByteArray &bytes);

    QTemporaryDir m_directory;
};

void TestReaderDamage::read(const QByteArray &bytes)
{
    ReaderProcess reader({writeFile(m_directory.filePath(QStringLiteral("damaged.apk")), bytes)});
    QStringList order;
    const QHash<QString, QJsonObject> answers = reader.all(&order);
    QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("hello head icon signature permissions launchers contents "
                                                          "languages manifest resources lint end"));
    for (const QString &topic : order)
        QCOMPARE(AnswerCheck(topic, answers.value(topic)).fault(), QString());
    QCOMPARE(reader.finish(), 0);
}

void TestReaderDamage::cutPackages()
{
    const QByteArray whole = notesPackage();
    constexpr int cuts = 16;
    for (int i = 0; i < cuts; ++i) {
        read(whole.left(int(whole.size()) * i / cuts));
        if (QTest::currentTestFailed())
            return;
    }
}

void TestReaderDamage::changedBytes_data()
{
    QTest::addColumn<QByteArray>("whole");
    QTest::newRow("package") << notesPackage();
    QTest::newRow("signed package") << signedPackage(notesPackage());
    QTest::newRow("set") << notesSet();
}

void TestReaderDamage::changedBytes()
{
    QFETCH(QByteArray, whole);
    constexpr int copies = 16;
    constexpr int changes = 4;
    QRandomGenerator random(1);
    for (int i = 0; i < copies; ++i) {
        QByteArray bytes = whole;
        for (int change = 0; change < changes; ++change)
            bytes[random.bounded(int(bytes.size()))] = char(random.bounded(256));
        read(bytes);
        if (QTest::currentTestFailed())
            return;
    }
}

QTEST_GUILESS_MAIN(TestReaderDamage)
#include "tst_reader_damage.moc"
