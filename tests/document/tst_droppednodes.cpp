// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Devices.h"
#include "LogCapture.h"
#include "XmlBuilder.h"
#include "document/DroppedNodes.h"
#include "document/XmlDecoder.h"
#include "document/XmlLoader.h"
#include "table/ApkResourcesData.h"

#include <QtTest>

#include <functional>

using namespace fixture;

namespace {

/// The fault of a document and the lines on the debug log, without the line for the fault.
struct Outcome {
    QString fault;
    QStringList log;
};

Outcome outcome(const QByteArray &document, const std::function<void(Extractor &)> &decode)
{
    SequentialDevice device(document);
    Extractor reader(&device);
    LogCapture log;
    decode(reader);
    Outcome result{reader.fault(), log.texts()};
    if (!result.log.isEmpty() && result.log.constLast().startsWith(QLatin1String("XmlLoader error: ")))
        result.log.removeLast();
    return result;
}

Outcome withoutNodes(const QByteArray &document)
{
    return outcome(document, [](Extractor &reader) {
        DroppedNodes nodes;
        XmlDecoder(&nodes).decode(&reader, ApkResourcesData());
    });
}

Outcome withDom(const QByteArray &document)
{
    return outcome(document, [](Extractor &reader) { XmlLoader().load(&reader, ApkResources()); });
}

// A document with namespaces, references, an oddity and nested elements.
QByteArray goodDocument()
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.startNamespace(QStringLiteral("p"), QStringLiteral("urn:u"))
        .start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .start(QStringLiteral("e"), {androidReference(QStringLiteral("label"), 0x7f010000)}, QStringLiteral("urn:u"))
        .chunk(chunk(0x0777))
        .end(QStringLiteral("e"), QStringLiteral("urn:u"))
        .empty(QStringLiteral("x:y"))
        .end(QStringLiteral("manifest"))
        .endNamespace(QStringLiteral("p"), QStringLiteral("urn:u"));
    return builder.build();
}

} // namespace

class TestDroppedNodes : public QObject
{
    Q_OBJECT

private slots:
    void outcomeIsThatOfTheLoader_data();
    void outcomeIsThatOfTheLoader();
    void aColonInAPrefixBelongsToTheName();
    void damagedDocumentsHaveTheFaultsOfTheLoader();
};

void TestDroppedNodes::outcomeIsThatOfTheLoader_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QStringList>("log");
    const QString mismatch = QStringLiteral("closing tag does not match opening tag");
    const QString urn = QStringLiteral("urn:u");
    const QString e = QStringLiteral("e");
    QTest::newRow("good") << goodDocument() << QString() << QStringList{QStringLiteral("Unexpected chunk 0x0777")};
    QTest::newRow("element in an undeclared namespace")
        << XmlBuilder().start(e, {}, urn).end(e, urn).build() << QString()
        << QStringList{QStringLiteral("Unknown namespace urn:u for element e")};
    QTest::newRow("attribute in an undeclared namespace")
        << XmlBuilder().empty(e, {{urn, QStringLiteral("n"), QStringLiteral("v"), 3, 0}}).build() << QString()
        << QStringList{QStringLiteral("Unknown namespace urn:u")};
    QTest::newRow("wrong end") << XmlBuilder().start(e).end(QStringLiteral("f")).build() << mismatch << QStringList();
    QTest::newRow("end without a start") << XmlBuilder().end(e).build() << mismatch << QStringList();
    QTest::newRow("element without a name, and its end")
        << XmlBuilder().start(e).start(QStringLiteral("")).end(QStringLiteral("")).build() << mismatch << QStringList();
    QTest::newRow("element without a name, in a namespace") << XmlBuilder()
                                                                   .startNamespace(QStringLiteral("p"), urn)
                                                                   .start(QStringLiteral(""), {}, urn)
                                                                   .end(QStringLiteral(""), urn)
                                                                   .build()
                                                            << mismatch << QStringList();
}

void TestDroppedNodes::outcomeIsThatOfTheLoader()
{
    QFETCH(QByteArray, document);
    for (const Outcome &result : {withoutNodes(document), withDom(document)}) {
        QTEST(result.fault, "fault");
        QTEST(result.log, "log");
    }
}

void TestDroppedNodes::aColonInAPrefixBelongsToTheName()
{
    const QString urn = QStringLiteral("urn:u");
    const QString e = QStringLiteral("e");
    const auto document = [&](const QString &end) {
        return XmlBuilder().startNamespace(QStringLiteral("a:b"), urn).start(e, {}, urn).end(end, urn).build();
    };
    for (const auto &decode : {withoutNodes, withDom}) {
        QCOMPARE(decode(document(e)).fault, QStringLiteral("closing tag does not match opening tag"));
        QCOMPARE(decode(document(QStringLiteral("b:e"))).fault, QString());
    }
}

void TestDroppedNodes::damagedDocumentsHaveTheFaultsOfTheLoader()
{
    const QByteArray good = goodDocument();
    int faults = 0;
    for (int at = 0; at < good.size() - 1; at += 2) {
        for (const qint64 value : {0, 1, 7, 8, 0x7fff, 0x8000, 0xffff}) {
            QByteArray damaged = good;
            poke16(damaged, at, value);
            const Outcome expected = withDom(damaged);
            const Outcome result = withoutNodes(damaged);
            QCOMPARE(result.fault, expected.fault);
            QCOMPARE(result.log, expected.log);
            faults += result.fault.isEmpty() ? 0 : 1;
        }
    }
    QVERIFY(faults > 0);
}

QTEST_GUILESS_MAIN(TestDroppedNodes)
#include "tst_droppednodes.moc"
