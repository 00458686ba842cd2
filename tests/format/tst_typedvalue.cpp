// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/TypedValue.h"

#include <QtTest>

class TestTypedValue : public QObject
{
    Q_OBJECT

private slots:
    void pixels_data();
    void pixels();
    void whatAValueIsNotIsNothing();
    void fractions();
    void colors();
};

void TestTypedValue::pixels_data()
{
    QTest::addColumn<quint32>("data");
    QTest::addColumn<qreal>("pixels");
    // Bits 0 to 3 are the unit, bits 4 and 5 the position of the point, and the upper 24 bits the signed number.
    QTest::newRow("px") << 0x00000c00u << 12.0;
    QTest::newRow("dp") << 0x00000c01u << 24.0;
    QTest::newRow("sp") << 0x00000c02u << 24.0;
    QTest::newRow("pt") << 0x00004803u << 320.0;
    QTest::newRow("in") << 0x00000104u << 320.0;
    QTest::newRow("mm") << 0x00000105u << 320 / 25.4;
    QTest::newRow("negative") << 0xfffff401u << -24.0;
    QTest::newRow("half") << 0x00004011u << 1.0;
    QTest::newRow("point in front of 15 bits") << 0x00400021u << 1.0;
    QTest::newRow("point in front of all bits") << 0x40000031u << 1.0;
}

void TestTypedValue::pixels()
{
    QFETCH(quint32, data);
    QFETCH(qreal, pixels);
    const TypedValue value{ValueType::Dimension, data};
    QVERIFY(value.pixels(2).has_value());
    QCOMPARE(*value.pixels(2), pixels);
}

void TestTypedValue::whatAValueIsNotIsNothing()
{
    QVERIFY(!(TypedValue{ValueType::Dimension, 0x0c06}.pixels(1)));
    QVERIFY(!(TypedValue{ValueType::Dimension, 0x0c01}.number()));
    QVERIFY(!(TypedValue{ValueType::String, 1}.integer()));
    QVERIFY(!(TypedValue{ValueType::Reference, 0x7f010000}.argb()));
    QVERIFY(!(TypedValue{ValueType::FirstInteger, 1}.argb()));
    QVERIFY(!(TypedValue{ValueType::FirstColor, 1}.number()));
    QVERIFY(!(TypedValue{ValueType::FirstInteger, 1}.fraction()));
    // NaN and infinity.
    QVERIFY(!(TypedValue{ValueType::Float, 0x7fc00000}.number()));
    QVERIFY(!(TypedValue{ValueType::Float, 0x7f800000}.number()));
}

void TestTypedValue::fractions()
{
    QCOMPARE((*TypedValue{ValueType::Fraction, 0x40000030}.fraction(100)), 50.0);
    QCOMPARE((*TypedValue{ValueType::Fraction, 0x40000031}.fraction(100)), 50.0);
}

void TestTypedValue::colors()
{
    for (int type = 0x1c; type <= 0x1f; ++type)
        QCOMPARE((*TypedValue{ValueType(type), 0x80112233}.argb()), 0x80112233U);
}

QTEST_GUILESS_MAIN(TestTypedValue)
#include "tst_typedvalue.moc"
