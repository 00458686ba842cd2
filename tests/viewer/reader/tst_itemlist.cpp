// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Protocol.h"
#include "Subject.h"

#include <QtTest>

using namespace Viewer;

namespace {

QJsonObject itemOf(int length)
{
    return {{QStringLiteral("name"), QString(length, QLatin1Char('a'))}, {QStringLiteral("size"), 1}};
}

int countIn(const QJsonObject &json)
{
    return int(json.value(QLatin1String("items")).toArray().size());
}

} // namespace

class TestItemList : public QObject
{
    Q_OBJECT

private slots:
    void items();
    void count();
    void length();
    void skipped();
    void texts();
};

void TestItemList::items()
{
    ItemList list(2);
    QCOMPARE(list.toJson(), (QJsonObject{{QStringLiteral("items"), QJsonArray()}}));
    list.add(itemOf(1));
    QCOMPARE(list.toJson(), (QJsonObject{{QStringLiteral("items"), QJsonArray{itemOf(1)}}}));
}

void TestItemList::count()
{
    ItemList list(2);
    list.add(itemOf(1));
    list.add(itemOf(2));
    QVERIFY(!list.isFull());
    QVERIFY(!list.toJson().contains(QStringLiteral("more")));
    list.add(itemOf(3));
    list.add(itemOf(4));
    QVERIFY(list.isFull());
    QCOMPARE(countIn(list.toJson()), 2);
    QCOMPARE(list.toJson().value(QLatin1String("more")).toInt(), 2);
}

void TestItemList::length()
{
    ItemList list(Protocol::MaxItems);
    list.add(itemOf(Protocol::MaxListLength - 1));
    list.add(itemOf(1));
    QVERIFY(!list.isFull());
    QCOMPARE(countIn(list.toJson()), 2);
    // The list ends with the first item that does not fit.
    list.add(itemOf(1));
    list.add(itemOf(0));
    QVERIFY(list.isFull());
    QCOMPARE(countIn(list.toJson()), 2);
    QCOMPARE(list.toJson().value(QLatin1String("more")).toInt(), 2);
}

void TestItemList::skipped()
{
    ItemList list(1);
    list.skip(5);
    QCOMPARE(list.toJson().value(QLatin1String("more")).toInt(), 5);
}

void TestItemList::texts()
{
    const QString most(Protocol::MaxTextLength, QLatin1Char('a'));
    QCOMPARE(cutText(most), most);
    QCOMPARE(cutText(most + QLatin1Char('b')).size(), Protocol::MaxTextLength);
    QVERIFY(cutText(most + QLatin1Char('b')).endsWith(QChar(0x2026)));
    QCOMPARE(cutText(QStringLiteral("abc"), 2), QStringLiteral("a") + QChar(0x2026));
    QCOMPARE(cutText(QStringLiteral("ab"), 2), QStringLiteral("ab"));
}

QTEST_GUILESS_MAIN(TestItemList)
#include "tst_itemlist.moc"
