// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "ApkResources.h"

#include <SorrelKit/Resources.h>

#include <QRegularExpression>
#include <QtTest>

using namespace fixture;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray builtTable()
{
    const auto value = [](const char *language, int string) {
        return TypeBuilder(1, ConfigBuilder(28).locale(language).build()).value(0, DataType::String, string);
    };
    const PackageBuilder package = PackageBuilder(0x7f, latin("a.b"))
                                       .types({latin("string")})
                                       .keys({latin("app_name")})
                                       .type(value("", 0))
                                       .type(value("fr", 1));
    return TableBuilder().strings({latin("Hi"), latin("Salut")}).package(package).build();
}

QByteArray builtManifest()
{
    const Attribute label = {QString(), latin("label"), QString(), DataType::Reference, 0x7f010000};
    return XmlBuilder(Encoding::Utf8)
        .attributeId(latin("label"), 0x01010001)
        .start(latin("manifest"), {plainText(latin("package"), latin("a.b")), label})
        .end(latin("manifest"))
        .build();
}

} // namespace

/// The examples of docs/formats.md have the bytes of the fixtures, and the readers find in them what the page
/// describes.
class TestFormats : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void bytesAreThoseOfTheFixtures();
    void libsorrelReadsThem();
    void kitReadsThem();

private:
    QByteArray example(const QString &title) const;

    QString m_page;
    QByteArray m_table;
    QByteArray m_manifest;
};

// Returns the bytes of the example under the heading. Each line has an offset, and bytes with a description or a count
// of zeros.
QByteArray TestFormats::example(const QString &title) const
{
    const auto heading = m_page.indexOf(QLatin1String("\n### ") + title + QLatin1Char('\n'));
    const auto start = m_page.indexOf(QLatin1String("```text\n"), heading);
    const QString block = m_page.mid(start, m_page.indexOf(QLatin1String("\n```\n"), start) - start);
    const QRegularExpression line(latin("^([0-9a-f]{4})  (?:00 x ([0-9]+)|([0-9a-f]{2}(?: [0-9a-f]{2})*))(?:  |$)"));
    QByteArray bytes;
    for (const QString &text : block.split(QLatin1Char('\n')).mid(1)) {
        const auto match = line.match(text);
        if (heading < 0 || !match.hasMatch() || match.captured(1).toInt(nullptr, 16) != bytes.size())
            qFatal("%s: %s", qPrintable(title), qPrintable(text));
        bytes += match.captured(2).isEmpty() ? QByteArray::fromHex(match.captured(3).toLatin1())
                                             : QByteArray(match.captured(2).toInt(), '\0');
    }
    return bytes;
}

void TestFormats::initTestCase()
{
    QFile page(QStringLiteral(SORREL_DOCS_DIR "/formats.md"));
    QVERIFY2(page.open(QIODevice::ReadOnly), qPrintable(page.errorString()));
    m_page = QString::fromUtf8(page.readAll());
    m_table = example(latin("A table"));
    m_manifest = example(latin("A document"));
}

void TestFormats::bytesAreThoseOfTheFixtures()
{
    QCOMPARE(m_table.toHex(' '), builtTable().toHex(' '));
    QCOMPARE(m_manifest.toHex(' '), builtManifest().toHex(' '));
}

void TestFormats::libsorrelReadsThem()
{
    PackageDevice device(m_table, m_manifest);
    ApkFile package(&device);
    const QDomElement manifest = package.getManifest().documentElement();
    QCOMPARE(package.getErrorString(), latin("no error"));
    QCOMPARE(manifest.tagName(), latin("manifest"));
    QCOMPARE(manifest.attributes().size(), 2);
    QCOMPARE(manifest.attribute(latin("package")), latin("a.b"));
    QCOMPARE(manifest.attributeNS(androidUri, latin("label")), latin("@string/0"));
    const QMap<QString, QString> labels{{QString(), latin("Hi")}, {latin("fr"), latin("Salut")}};
    QCOMPARE(package.resources().lookupByLocale(latin("@string/0"), 1), labels);
}

void TestFormats::kitReadsThem()
{
    PackageDevice device(m_table, m_manifest);
    const SorrelKit::Package package(&device);
    QCOMPARE(package.error().message(), latin("no error"));
    QCOMPARE(package.packageName(), latin("a.b"));
    const SorrelKit::Resources resources(package);
    QCOMPARE(resources.ids(), QList<quint32>{0x7f010000});
    QCOMPARE(resources.name(0x7f010000), latin("string/app_name"));
    QCOMPARE(resources.values(0x7f010000).size(), 2);
    QCOMPARE(resources.values(0x7f010000).at(1).configuration(), latin("fr"));
    QCOMPARE(resources.values(0x7f010000).at(1).text(), latin("Salut"));
}

QTEST_GUILESS_MAIN(TestFormats)
#include "tst_formats.moc"
