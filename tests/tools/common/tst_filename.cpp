// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FileName.h"

#include <QDir>
#include <QtTest>

class TestFileName : public QObject
{
    Q_OBJECT

private slots:
    void textOfBytes_data();
    void textOfBytes();
    void bytesComeBackFromArguments();
    void urisKeepEveryByte_data();
    void urisKeepEveryByte();
    void reportsHaveAUriOnlyWhenTheTextIsNotAll();
    void namesForQt();
};

void TestFileName::textOfBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *what, const QByteArray &bytes, const char *text) {
        QTest::newRow(what) << bytes << QString::fromUtf8(QByteArray("x") + text).mid(1);
    };
    const char one[] = "\ufffd";
    const char two[] = "\ufffd\ufffd";
    const char three[] = "\ufffd\ufffd\ufffd";
    const char four[] = "\ufffd\ufffd\ufffd\ufffd";
    row("ASCII", "a b", "a b");
    row("two bytes", "\xc3\xbc", "ü");
    row("three bytes", "\xe5\x9b\xbe", "\u56fe");
    row("four bytes", "\xf0\x9f\x98\x80", "😀");
    row("last character", "\xf4\x8f\xbf\xbf", "\U0010ffff");
    row("byte order mark", "\xef\xbb\xbf", "\ufeff");
    row("U+FFFD itself", "\xef\xbf\xbd", one);
    row("no lead", "\x80", one);
    row("no continuation", "\xc3(", "\ufffd(");
    row("ends early", "\xe5\x9b", two);
    row("too long for ASCII", "\xc0\x80", two);
    row("too long for two bytes", "\xe0\x80\x80", three);
    row("too long for three bytes", "\xf0\x80\x80\x80", four);
    row("half of a pair", "\xed\xa0\x80", three);
    row("beyond the last character", "\xf4\x90\x80\x80", four);
    row("never in UTF-8", "\xfe\xff", two);
    row("between others", "a\xff\xc3\xbc\xff", "a\ufffdü\ufffd");
    row("NUL", QByteArray("a\0b", 3), "a");
}

void TestFileName::textOfBytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    if (bytes.contains('\0'))
        text += QString(QChar(0)) + QLatin1Char('b');
    QCOMPARE(FileName(bytes).text(), text);
    QCOMPARE(argumentBytes(argumentText(bytes)), bytes);
}

void TestFileName::bytesComeBackFromArguments()
{
    for (int first = 1; first < 256; ++first) {
        for (int second = 1; second < 256; ++second) {
            const QByteArray bytes{QByteArray("\xf0\x9f") + char(first) + char(second) + "\xbf"};
            QCOMPARE(argumentBytes(argumentText(bytes)), bytes);
        }
    }
}

void TestFileName::urisKeepEveryByte_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("uri");
    const QByteArray here = "file://" + QFile::encodeName(QDir::currentPath()).toPercentEncoding("/") + '/';
    QTest::newRow("absolute") << QByteArray("/a/b.apk") << QByteArray("file:///a/b.apk");
    QTest::newRow("relative") << QByteArray("a.apk") << here + "a.apk";
    QTest::newRow("no UTF-8") << QByteArray("/\xff\xc3\xbc") << QByteArray("file:///%FF%C3%BC");
    QTest::newRow("reserved") << QByteArray("/a b%?#\n") << QByteArray("file:///a%20b%25%3F%23%0A");
}

void TestFileName::urisKeepEveryByte()
{
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, uri);
    QCOMPARE(FileName(path).uri(), uri);
    QVERIFY(FileName(uri).pathOfUri().endsWith(path));
}

void TestFileName::reportsHaveAUriOnlyWhenTheTextIsNotAll()
{
    const QString file = QStringLiteral("file");
    QCOMPARE(FileName(QByteArray("/\xc3\xbc")).toJson(), (QJsonObject{{file, QStringLiteral("/ü")}}));
    QCOMPARE(FileName(QByteArray("/\xff")).toJson(),
             (QJsonObject{{file, QStringLiteral("/\ufffd")}, {QStringLiteral("uri"), QStringLiteral("file:///%FF")}}));
}

void TestFileName::namesForQt()
{
    QCOMPARE(FileName(QByteArray("/a")).forQt(), QStringLiteral("/a"));
    QCOMPARE(FileName(QByteArray(":/catalog")).forQt(), QStringLiteral("./:/catalog"));
    QCOMPARE(FileName(QByteArray()).forQt(), QString(QLatin1String("")));
    QVERIFY(!FileName(QByteArray()).forQt().isNull());
    QVERIFY(FileName(QByteArray("\xff")).forQt().isNull());
}

QTEST_GUILESS_MAIN(TestFileName)
#include "tst_filename.moc"
