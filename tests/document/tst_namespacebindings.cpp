// SPDX-License-Identifier: LGPL-2.1-or-later
#include "document/NamespaceBindings.h"

#include <QRandomGenerator>
#include <QtTest>

class TestNamespaceBindings : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsBoundAtFirst();
    void latestBindingGivesThePrefix();
    void releaseBringsTheOuterBindingBack();
    void releaseEndsEveryBindingToThePrefix();
    void releaseOfAnOuterBindingLeavesTheInnerOne();
    void releaseOfWhatIsNotBoundChangesNothing();
    void prefixMayBeBoundAgain();
    void urisAreIndependent();
    void answersAreThoseOfAPlainList();
};

namespace {

const QString uri = QStringLiteral("urn:x");

QString prefix(int number)
{
    return QString::number(number);
}

} // namespace

void TestNamespaceBindings::nothingIsBoundAtFirst()
{
    const NamespaceBindings bindings;
    QVERIFY(!bindings.isBound(uri));
    QVERIFY(bindings.prefix(uri).isNull());
}

void TestNamespaceBindings::latestBindingGivesThePrefix()
{
    NamespaceBindings bindings;
    bindings.bind(uri, prefix(1));
    QCOMPARE(bindings.prefix(uri), prefix(1));
    bindings.bind(uri, prefix(2));
    QCOMPARE(bindings.prefix(uri), prefix(2));
    QVERIFY(bindings.isBound(uri));
}

void TestNamespaceBindings::releaseBringsTheOuterBindingBack()
{
    NamespaceBindings bindings;
    bindings.bind(uri, prefix(1));
    bindings.bind(uri, prefix(2));
    bindings.release(uri, prefix(2));
    QCOMPARE(bindings.prefix(uri), prefix(1));
    bindings.release(uri, prefix(1));
    QVERIFY(!bindings.isBound(uri));
}

void TestNamespaceBindings::releaseEndsEveryBindingToThePrefix()
{
    NamespaceBindings bindings;
    bindings.bind(uri, prefix(1));
    bindings.bind(uri, prefix(2));
    bindings.bind(uri, prefix(1));
    bindings.release(uri, prefix(1));
    QCOMPARE(bindings.prefix(uri), prefix(2));
    bindings.release(uri, prefix(2));
    QVERIFY(!bindings.isBound(uri));
}

void TestNamespaceBindings::releaseOfAnOuterBindingLeavesTheInnerOne()
{
    NamespaceBindings bindings;
    bindings.bind(uri, prefix(1));
    bindings.bind(uri, prefix(2));
    bindings.release(uri, prefix(1));
    QCOMPARE(bindings.prefix(uri), prefix(2));
    bindings.release(uri, prefix(2));
    QVERIFY(!bindings.isBound(uri));
}

void TestNamespaceBindings::releaseOfWhatIsNotBoundChangesNothing()
{
    NamespaceBindings bindings;
    bindings.release(uri, prefix(1));
    bindings.bind(uri, prefix(1));
    bindings.release(uri, prefix(2));
    bindings.release(QStringLiteral("urn:y"), prefix(1));
    QCOMPARE(bindings.prefix(uri), prefix(1));
}

void TestNamespaceBindings::prefixMayBeBoundAgain()
{
    NamespaceBindings bindings;
    bindings.bind(uri, prefix(1));
    bindings.bind(uri, prefix(2));
    bindings.release(uri, prefix(1));
    bindings.bind(uri, prefix(1));
    QCOMPARE(bindings.prefix(uri), prefix(1));
    bindings.release(uri, prefix(1));
    QCOMPARE(bindings.prefix(uri), prefix(2));
}

void TestNamespaceBindings::urisAreIndependent()
{
    const QString other = QStringLiteral("urn:y");
    NamespaceBindings bindings;
    bindings.bind(uri, prefix(1));
    bindings.bind(other, prefix(1));
    bindings.release(other, prefix(1));
    QVERIFY(!bindings.isBound(other));
    QCOMPARE(bindings.prefix(uri), prefix(1));
}

void TestNamespaceBindings::answersAreThoseOfAPlainList()
{
    QRandomGenerator random(5);
    for (int round = 0; round < 200; ++round) {
        NamespaceBindings bindings;
        QStringList model;
        for (int step = 0; step < 100; ++step) {
            const QString any = prefix(random.bounded(4));
            if (random.bounded(2) == 0) {
                bindings.bind(uri, any);
                model.append(any);
            } else {
                bindings.release(uri, any);
                model.removeAll(any);
            }
            QCOMPARE(bindings.isBound(uri), !model.isEmpty());
            QCOMPARE(bindings.prefix(uri), model.isEmpty() ? QString() : model.constLast());
        }
    }
}

QTEST_GUILESS_MAIN(TestNamespaceBindings)
#include "tst_namespacebindings.moc"
