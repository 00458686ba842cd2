// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Devices.h"
#include "TableBuilder.h"
#include "stream/Extractor.h"
#include "table/ApkResourcesData.h"
#include "table/ResourceReference.h"
#include "table/ResourcesLoader.h"

#include <QRegularExpression>
#include <QtTest>

using namespace fixture;

namespace {

ApkResourcesData loaded(const TableBuilder &table)
{
    SequentialDevice device(table.build());
    Extractor reader(&device);
    ApkResourcesData data;
    ResourcesLoader().load(&data, &reader);
    return data;
}

} // namespace

class TestResourceReference : public QObject
{
    Q_OBJECT

private slots:
    void marks();
    void referencesAreResolvedToTheTablesPackage();
    void entriesAreNumbersInAsciiDigits();
    void everyShortTextIsParsedAsByThePattern();
};

void TestResourceReference::marks()
{
    QVERIFY(ResourceReference::isMarked(QStringLiteral("@")));
    QVERIFY(!ResourceReference::isMarked(QString()));
    QVERIFY(!ResourceReference::isMarked(QStringLiteral("a@")));
}

void TestResourceReference::referencesAreResolvedToTheTablesPackage()
{
    const ApkResourcesData data =
        loaded(TableBuilder().package(PackageBuilder(2, QStringLiteral("two"))).package(PackageBuilder()));
    const ResourceReference good(QStringLiteral("@string/12"), data);
    QCOMPARE(good.package(), &data.packages.last());
    QCOMPARE(good.type(), QStringLiteral("string"));
    QCOMPARE(good.entry(), 12);
    QVERIFY(ResourceReference(QStringLiteral("@string/x"), data).package() == nullptr);
    QVERIFY(ResourceReference(QStringLiteral("@two:string/1"), data).package() == nullptr);
}

void TestResourceReference::entriesAreNumbersInAsciiDigits()
{
    const ApkResourcesData data = loaded(TableBuilder().package(PackageBuilder()));
    const QString text = QStringLiteral("@string/%1");
    for (const char *entry : {"0", "9", "0123456789"})
        QVERIFY2(ResourceReference(text.arg(QLatin1String(entry)), data).package() != nullptr, entry);
    // Full-width, Arabic and superscript digits, the characters next to the ASCII digits, and a newline.
    for (const char *entry : {"\uff11\uff12", "1\uff12", "\u0663", "\u00b2", "1/", "1:", "-1", "+1", " 1", "1\n"})
        QVERIFY2(ResourceReference(text.arg(QString::fromUtf8(entry)), data).package() == nullptr, entry);
}

// Compares all texts of up to seven of these characters with the pattern of a reference. The table has a package for
// every prefix of one or two characters.
void TestResourceReference::everyShortTextIsParsedAsByThePattern()
{
    const QString alphabet = QStringLiteral("@:/a1");
    constexpr int LongestText = 7;
    TableBuilder builder;
    builder.package(PackageBuilder());
    QStringList prefixes{QString()};
    for (const char *name : {"@", "a", "1", "@@", "@a", "@1", "a@", "aa", "a1", "1@", "1a", "11"}) {
        prefixes.append(QString::fromLatin1(name) + QLatin1Char(':'));
        builder.package(PackageBuilder(2, prefixes.last()));
    }
    const ApkResourcesData data = loaded(builder);
    QCOMPARE(data.packages.size(), prefixes.size());

    const QRegularExpression pattern(QStringLiteral("^@([^:/]+:)?([^/]+)/([0-9]+)\\z"));
    int references = 0;
    QStringList texts{QString()};
    for (int i = 0; i < texts.size(); ++i) {
        const QString text = texts.at(i);
        if (text.size() < LongestText) {
            for (const QChar character : alphabet)
                texts.append(text + character);
        }
        const QRegularExpressionMatch match = pattern.match(text);
        const int package = match.hasMatch() ? int(prefixes.indexOf(match.captured(1))) : -1;
        const ResourceReference reference(text, data);
        QVERIFY2((reference.package() != nullptr) == (package >= 0), qPrintable(text));
        if (package < 0)
            continue;
        ++references;
        QCOMPARE(reference.package(), &data.packages.at(package));
        QCOMPARE(reference.type(), match.captured(2));
        QCOMPARE(reference.entry(), match.captured(3).toInt());
    }
    QVERIFY(references > 300);
}

QTEST_GUILESS_MAIN(TestResourceReference)
#include "tst_resourcereference.moc"
