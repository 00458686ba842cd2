// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AndroidFormats.h"
#include "Bytes.h"
#include "OddDocuments.h"
#include "OddTables.h"
#include "format/ResourceTable.h"
#include "format/XmlReader.h"

#include <QtTest>

using namespace fixture;

namespace {

QString hex(quint32 value)
{
    return QString::number(value, 16);
}

QString linesOf(const XmlElement &element)
{
    QString lines = QStringLiteral("start %1\n").arg(element.name);
    for (const XmlAttribute &attribute : element.attributes) {
        const QString name = attribute.name.isNull() ? QStringLiteral("-") : attribute.name;
        lines += QStringLiteral("  %1 type %2 data %3")
                     .arg(attribute.id != 0 ? hex(attribute.id) : name, hex(quint32(attribute.value.type)),
                          hex(attribute.value.data));
        if (attribute.value.type == ValueType::String)
            lines += QStringLiteral(" text ") + (attribute.text.isNull() ? QStringLiteral("-") : attribute.text);
        lines += QLatin1Char('\n');
    }
    for (const XmlElement &child : element.children)
        lines += linesOf(child);
    return lines + QStringLiteral("end\n");
}

QString documentOf(const QByteArray &bytes)
{
    const XmlReader reader(bytes);
    return reader.fault() == FormatFault::None ? linesOf(reader.root()) : QStringLiteral("refused");
}

QString androidDocumentOf(const QByteArray &bytes)
{
    return QString::fromStdString(android_formats::document(bytes.toStdString()));
}

constexpr quint32 Ids[] = {0x7f010000, 0x7f010001, 0x7f020000, 0x7f020001, 0x7f020002, 0x7f02fffe, 0x7f090000};

QString tableOf(const QByteArray &bytes)
{
    const ResourceTable table(bytes);
    // Android takes a file without a table for a table without resources.
    if (table.fault() == FormatFault::NoTable && ChunkView::at(ByteView(bytes), 0).isValid())
        return {};
    if (table.fault() != FormatFault::None)
        return QStringLiteral("refused");
    QString lines;
    for (const quint32 id : Ids) {
        for (const TableValue &value : table.values(id)) {
            const Configuration configuration = value.configuration();
            lines += QStringLiteral("%1 density %2 sdk %3")
                         .arg(hex(id), hex(quint32(configuration.density)), hex(quint32(configuration.sdkVersion)));
            if (value.isMap)
                lines += QStringLiteral(" map");
            else
                lines += QStringLiteral(" type %1 data %2").arg(hex(quint32(value.value.type)), hex(value.value.data));
            if (!value.isMap && value.value.type == ValueType::String) {
                const QString text = table.string(value.value.data);
                lines += QStringLiteral(" text ") + (text.isNull() ? QStringLiteral("-") : text);
            }
            lines += QLatin1Char('\n');
        }
    }
    return lines;
}

QString androidTableOf(const QByteArray &bytes)
{
    return QString::fromStdString(
        android_formats::table(bytes.toStdString(), std::vector<std::uint32_t>(std::begin(Ids), std::end(Ids))));
}

// Differences in tables that stay, each with its reason.
bool isKnownDifference(const QByteArray &table, const QString &android)
{
    const ResourceTable read(table);
    // Android takes memory for as many packages as the header counts, before it has seen one. A phone ends the program.
    if (android == QLatin1String("no memory"))
        return true;
    // Android takes a package with an id above 255, and then writes behind the end of its list of packages.
    if (read.fault() == FormatFault::DamagedTableHeader && android != QLatin1String("refused"))
        return true;
    // Android does not check the items of a map whose header is too short for their count. They are anywhere.
    // The library of Android 10 knows no compact entries, whose flag it ignores.
    return android.contains(QLatin1String(" map\n")) && read.fault() == FormatFault::None;
}

} // namespace

/**
 * Compares the readers of documents and tables with Android's own library, on each odd file of the fixtures and on copies
 * that are damaged byte by byte.
 */
class TestAndroidFormats : public QObject
{
    Q_OBJECT

private slots:
    void documents_data();
    void documents();
    void damagedDocuments();
    void tables_data();
    void tables();
    void damagedTables();
};

void TestAndroidFormats::documents_data()
{
    QTest::addColumn<QByteArray>("bytes");
    for (const OddFile &file : oddDocuments())
        QTest::newRow(qPrintable(file.name)) << file.bytes;
}

void TestAndroidFormats::documents()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(documentOf(bytes), androidDocumentOf(bytes));
}

void TestAndroidFormats::damagedDocuments()
{
    const QByteArray document = oddDocuments().first().bytes;
    int taken = 0;
    int refused = 0;
    for (int at = 0; at < document.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x04, 0x7f, 0x80, 0xff}) {
            QByteArray damaged = document;
            poke8(damaged, at, value);
            const QString android = androidDocumentOf(damaged);
            QVERIFY2(documentOf(damaged) == android, qPrintable(QStringLiteral("byte %1 is %2").arg(at).arg(value)));
            (android == QLatin1String("refused") ? refused : taken) += 1;
        }
    }
    QVERIFY(taken > 0 && refused > 0);
}

void TestAndroidFormats::tables_data()
{
    QTest::addColumn<QByteArray>("bytes");
    for (const OddFile &file : oddTables())
        QTest::newRow(qPrintable(file.name)) << file.bytes;
}

void TestAndroidFormats::tables()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(tableOf(bytes), androidTableOf(bytes));
}

void TestAndroidFormats::damagedTables()
{
    const QByteArray table = oddTables().first().bytes;
    int taken = 0;
    int refused = 0;
    for (int at = 0; at < table.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x04, 0x7f, 0x80, 0xff}) {
            QByteArray damaged = table;
            poke8(damaged, at, value);
            const QString android = androidTableOf(damaged);
            QVERIFY2(tableOf(damaged) == android || isKnownDifference(damaged, android),
                     qPrintable(QStringLiteral("byte %1 is %2").arg(at).arg(value)));
            (android == QLatin1String("refused") ? refused : taken) += 1;
        }
    }
    QVERIFY(taken > 0 && refused > 0);
}

QTEST_GUILESS_MAIN(TestAndroidFormats)
#include "tst_android_formats.moc"
