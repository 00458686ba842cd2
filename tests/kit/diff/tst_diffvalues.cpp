// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/PackageDiff.h>

#include <QMetaEnum>
#include <QMetaProperty>
#include <QtTest>

#include <limits>
#include <type_traits>

using namespace SorrelKit;

/// The rules for the public classes of differences: copies, moves, properties, and sums of sizes.
class TestDiffValues : public QObject
{
    Q_OBJECT

private slots:
    void movesAreCheap();
    void propertiesReadTheirValues();
    void enumsHaveNames();
    void valuesKeepWhatTheyAreMadeOf();
    void sumsAreCut();
    void openedComponents_data();
    void openedComponents();
};

template <typename Type>
constexpr bool isValue()
{
    return std::is_nothrow_move_constructible_v<
               Type> && std::is_nothrow_move_assignable_v<Type> && std::is_nothrow_swappable_v<Type> && std::is_copy_constructible_v<Type> && std::is_copy_assignable_v<Type> && sizeof(Type) == sizeof(void *);
}

void TestDiffValues::movesAreCheap()
{
    static_assert(isValue<PackageDiff>() && isValue<TextChange>() && isValue<ComponentChange>());
    static_assert(isValue<SizeChange>() && isValue<MemberChange>());

    TextChange one(TextChange::Kind::Added, QStringLiteral("one"), QString(), QStringLiteral("1"));
    TextChange none;
    swap(one, none);
    QCOMPARE(none.name(), QStringLiteral("one"));
    QCOMPARE(one.name(), QString());
}

template <typename Type>
int readProperties(const Type &value)
{
    int count = 0;
    const QMetaObject &type = Type::staticMetaObject;
    for (int i = 0; i < type.propertyCount(); ++i)
        count += int(type.property(i).readOnGadget(&value).isValid());
    return count == type.propertyCount() ? count : -1;
}

void TestDiffValues::propertiesReadTheirValues()
{
    QCOMPARE(readProperties(PackageDiff()), 18);
    QCOMPARE(readProperties(TextChange()), 4);
    QCOMPARE(readProperties(ComponentChange()), 4);
    QCOMPARE(readProperties(SizeChange()), 5);
    QCOMPARE(readProperties(MemberChange()), 4);
}

void TestDiffValues::enumsHaveNames()
{
    QCOMPARE(QMetaEnum::fromType<TextChange::Kind>().valueToKey(int(TextChange::Kind::Removed)), "Removed");
    QCOMPARE(QMetaEnum::fromType<SizeChange::Category>().valueToKey(int(SizeChange::Category::Assets)), "Assets");
}

void TestDiffValues::valuesKeepWhatTheyAreMadeOf()
{
    SizeChange sizes(SizeChange::Category::Code);
    sizes.addBefore(10, 20);
    sizes.addAfter(7, 30);
    const MemberChange member(TextChange::Kind::Changed, QStringLiteral("config.de"), QStringLiteral("a"), sizes);
    QCOMPARE(member.kind(), TextChange::Kind::Changed);
    QCOMPARE(member.package(), QStringLiteral("config.de"));
    QCOMPARE(member.path(), QStringLiteral("a"));
    QCOMPARE(member.sizes().category(), SizeChange::Category::Code);
    QCOMPARE(member.sizes().packedGrowth(), qint64(-3));
    QCOMPARE(member.sizes().sizeGrowth(), qint64(10));
    const TextChange text(TextChange::Kind::Changed, QStringLiteral("n"), QStringLiteral("b"), QStringLiteral("a"));
    QCOMPARE(text.before() + text.after(), QStringLiteral("ba"));
    QVERIFY(PackageDiff().isEmpty());
    QVERIFY(PackageDiff().isComplete());
}

void TestDiffValues::sumsAreCut()
{
    constexpr qint64 Most = std::numeric_limits<qint64>::max();
    SizeChange sizes;
    sizes.addBefore(Most - 1, -1);
    sizes.addBefore(1, -1);
    QCOMPARE(sizes.packedBefore(), Most);
    QCOMPARE(sizes.sizeBefore(), qint64(0));
    sizes.addBefore(1, 1);
    QCOMPARE(sizes.packedBefore(), Most);
    QCOMPARE(sizes.packedGrowth(), -Most);
    QCOMPARE(sizes.sizeBefore(), qint64(1));
}

void TestDiffValues::openedComponents_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("added") << int(TextChange::Kind::Added);
    QTest::newRow("removed") << int(TextChange::Kind::Removed);
    QTest::newRow("changed") << int(TextChange::Kind::Changed);
}

void TestDiffValues::openedComponents()
{
    // A component that nobody else can use is never opened; tst_packagediff has those of packages.
    QFETCH(int, kind);
    QVERIFY(!ComponentChange(TextChange::Kind(kind), Component(), Component()).isOpened());
}

QTEST_GUILESS_MAIN(TestDiffValues)
#include "tst_diffvalues.moc"
