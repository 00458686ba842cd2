// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SafeFileName.h"

#include <QDir>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// One name of each dangerous kind, and many similar names.
QStringList names()
{
    QStringList names{QStringLiteral(""),
                      QStringLiteral("."),
                      QStringLiteral(".."),
                      QStringLiteral("../../etc/passwd"),
                      QStringLiteral("/etc/passwd"),
                      QStringLiteral(".hidden"),
                      QStringLiteral("-rf"),
                      QStringLiteral("a/b"),
                      QStringLiteral("a b"),
                      QStringLiteral("a\\b"),
                      QStringLiteral("a\nb"),
                      QStringLiteral("a_b"),
                      QString(QLatin1String("a\0b", 3)),
                      QStringLiteral("a\u001bb"),
                      QStringLiteral("a\u202eb"),
                      QStringLiteral("a\u2028b"),
                      QString(QChar(0xd800)),
                      QString(QChar(0xdc00)),
                      QStringLiteral("\ufffd"),
                      QStringLiteral("?"),
                      QStringLiteral("_"),
                      QStringLiteral("~"),
                      QStringLiteral("😀"),
                      QStringLiteral("$(reboot)"),
                      QStringLiteral("org.x.Main"),
                      QStringLiteral("org.x.main"),
                      QStringLiteral("org.x.Café"),
                      QStringLiteral("a%2fb"),
                      QStringLiteral("nul\"'`*?<>|&;")};
    for (int length = 195; length <= 205; ++length) {
        names.append(QString(length, QLatin1Char('a')));
        names.append(QString(length / 2, QChar(0xe4)) + QString(length % 2, QLatin1Char('a')));
        names.append(QString(length, QChar(0x4e00)));
    }
    for (const QString &end : {QStringLiteral("a"), QStringLiteral("b")})
        names.append(QString(300, QLatin1Char('a')) + end);
    // A name that looks like a changed name is changed itself.
    for (const QString &name : QStringList(names))
        names.append(safeFileName(name) + QLatin1String(safeFileName(name) == name ? "~" : ""));
    return names;
}

} // namespace

class TestSafeFileName : public QObject
{
    Q_OBJECT

private slots:
    void plainNamesStay_data();
    void plainNamesStay();
    void othersAreChanged_data();
    void othersAreChanged();
    void aLongNameIsCutBetweenCharacters();
    void noNameIsAPath();
    void noTwoNamesAreTheSame();
    void filesOfTheseNamesCanBeMade();
};

void TestSafeFileName::plainNamesStay_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"org.example.notes.ListActivity", "a", "A_1", "_a", "1", "a..b", "a-b", "a.", "org.x.Café",
                             "मराठी", "日本語"})
        QTest::newRow(name) << QString::fromUtf8(name);
    QTest::newRow("as long as may be") << QString(MaxFileNameBytes, QLatin1Char('x'));
}

void TestSafeFileName::plainNamesStay()
{
    QFETCH(QString, name);
    QCOMPARE(safeFileName(name), name);
}

void TestSafeFileName::othersAreChanged_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("stem");
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("parent") << ".."
                            << "_.";
    QTest::newRow("way out") << "../x"
                             << "_._x";
    QTest::newRow("absolute") << "/etc/passwd"
                              << "_etc_passwd";
    QTest::newRow("option") << "-rf"
                            << "_rf";
    QTest::newRow("inner class") << "org.x.Main$Inner"
                                 << "org.x.Main_Inner";
    QTest::newRow("control character") << "a\033[2J\n"
                                       << "a__2J_";
    QTest::newRow("beyond the first plane") << "a😀b"
                                            << "a_b";
    QTest::newRow("what marks others") << "a~b"
                                       << "a_b";
}

void TestSafeFileName::othersAreChanged()
{
    QFETCH(QString, name);
    QFETCH(QString, stem);
    const QString changed = safeFileName(name);
    QVERIFY2(QRegularExpression(QStringLiteral("^%1~[0-9a-f]{32}$").arg(QRegularExpression::escape(stem)))
                 .match(changed)
                 .hasMatch(),
             qPrintable(changed));
    QCOMPARE(safeFileName(name), changed);
}

void TestSafeFileName::aLongNameIsCutBetweenCharacters()
{
    const QString name(150, QChar(0xe4));
    QCOMPARE(safeFileName(name).section(QLatin1Char('~'), 0, 0), QString(83, QChar(0xe4)));
    QCOMPARE(safeFileName(name).toUtf8().size(), 166 + 33);
    QCOMPARE(safeFileName(name, 64).section(QLatin1Char('~'), 0, 0), QString(15, QChar(0xe4)));
    QCOMPARE(safeFileName(name, 300), name);
    QCOMPARE(safeFileName(QString(300, QLatin1Char('x'))).size(), MaxFileNameBytes);
}

void TestSafeFileName::noNameIsAPath()
{
    for (const QString &name : names()) {
        for (const int maxBytes : {64, MaxFileNameBytes}) {
            const QString safe = safeFileName(name, maxBytes);
            QVERIFY(!safe.isEmpty());
            QVERIFY(safe.toUtf8().size() <= maxBytes);
            QVERIFY(safe.isValidUtf16());
            QVERIFY(!safe.startsWith(QLatin1Char('.')) && !safe.startsWith(QLatin1Char('-')));
            for (const QChar character : safe)
                QVERIFY(character.isLetterOrNumber() || character.isMark()
                        || QStringLiteral("._-~").contains(character));
        }
    }
}

void TestSafeFileName::noTwoNamesAreTheSame()
{
    const QStringList all = names();
    QSet<QString> safe;
    for (const QString &name : all)
        safe.insert(safeFileName(name));
    QCOMPARE(safe.size(), QSet<QString>(all.cbegin(), all.cend()).size());
}

void TestSafeFileName::filesOfTheseNamesCanBeMade()
{
    const QTemporaryDir directory;
    QSet<QString> made;
    for (const QString &name : names()) {
        made.insert(safeFileName(name));
        QFile file(directory.filePath(safeFileName(name)));
        QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(file.fileName()));
    }
    const QStringList found = QDir(directory.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    QCOMPARE(QSet<QString>(found.cbegin(), found.cend()), made);
}

QTEST_GUILESS_MAIN(TestSafeFileName)
#include "tst_safefilename.moc"
