// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Devices.h"
#include "XmlBuilder.h"
#include "document/XmlLoader.h"
#include "stream/ChunkWalker.h"
#include "stream/Extractor.h"
#include "stream/StringPool.h"

#include <QtTest>

#include <csignal>
#include <cstdio>
#include <functional>
#include <limits>
#include <sys/wait.h>
#include <unistd.h>

using namespace fixture;

namespace {

constexpr int StartNamespaceType = 0x0100;
constexpr int EndNamespaceType = 0x0101;
constexpr int StartElementType = 0x0102;
constexpr int EndElementType = 0x0103;
constexpr qint64 NoString = -1;

// Whether @p function aborts its process. It runs in a process of its own.
bool aborts(const std::function<void()> &function)
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        std::signal(SIGABRT, SIG_DFL);
        function();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT;
}

void withReader(const QByteArray &bytes, const std::function<void(Extractor &)> &use)
{
    SequentialDevice device(bytes);
    Extractor reader(&device);
    use(reader);
}

void decode(const QByteArray &document)
{
    withReader(document, [](Extractor &reader) {
        XmlLoader loader;
        loader.load(&reader, ApkResources());
    });
}

QByteArray documentWith(const QByteArray &nodes)
{
    return chunk(0x0003, QByteArray(), PoolBuilder().strings({QStringLiteral("e")}).build() + nodes);
}

QByteArray namespaceNode(int type, qint64 prefix, qint64 uri)
{
    return nodeChunk(type, Bytes().u32(prefix).u32(uri).data());
}

QByteArray startElement(const ElementFields &fields, const QByteArray &records = QByteArray())
{
    return nodeChunk(StartElementType, elementBody(fields, records));
}

QByteArray endElement(qint64 name)
{
    return nodeChunk(EndElementType, Bytes().u32(NoString).u32(name).data());
}

} // namespace

/// The option SORREL_ASSERTIONS, when it is on.
class TestAssertions : public QObject
{
    Q_OBJECT

private slots:
    void negativeIndexInAPool();
    void negativeIndexInADocument_data();
    void negativeIndexInADocument();
    void goodDocumentIsDecoded();
    void endOfARegionThatWasNotBegun();
    void entryIntoNoChunk();
    void secondEntryIntoAChunk();
};

void TestAssertions::negativeIndexInAPool()
{
    const StringPool pool{QString()};
    QVERIFY(aborts([&] { pool.get(-1); }));
    QVERIFY(aborts([&] { pool.get(std::numeric_limits<int>::min()); }));
    QVERIFY(!aborts([&] { pool.get(0); }));
}

void TestAssertions::negativeIndexInADocument_data()
{
    QTest::addColumn<QByteArray>("nodes");
    QTest::newRow("prefix") << namespaceNode(StartNamespaceType, NoString, 0);
    QTest::newRow("prefix at the end") << namespaceNode(EndNamespaceType, NoString, 0);
    QTest::newRow("URI") << namespaceNode(StartNamespaceType, 0, NoString);
    ElementFields element;
    element.name = int(NoString);
    QTest::newRow("element") << startElement(element);
    QTest::newRow("element at its end") << startElement({}) + endElement(NoString);
    element.name = 0;
    element.attributeCount = 1;
    QTest::newRow("attribute") << startElement(element, attributeRecord(NoString, NoString, 0, 3, 0));
}

void TestAssertions::negativeIndexInADocument()
{
    QFETCH(const QByteArray, nodes);
    QVERIFY(aborts([&] { decode(documentWith(nodes)); }));
}

void TestAssertions::goodDocumentIsDecoded()
{
    QVERIFY(!aborts(
        [] { decode(documentWith(namespaceNode(StartNamespaceType, 0, 0) + startElement({}) + endElement(0))); }));
}

void TestAssertions::endOfARegionThatWasNotBegun()
{
    QVERIFY(aborts([] { withReader({}, [](Extractor &reader) { reader.popBoundary(); }); }));
    QVERIFY(aborts([] {
        withReader({}, [](Extractor &reader) {
            reader.pushBoundary(0);
            reader.popBoundary();
            reader.popBoundary();
        });
    }));
    QVERIFY(!aborts([] {
        withReader({}, [](Extractor &reader) {
            reader.pushBoundary(0);
            reader.popBoundary();
        });
    }));
}

void TestAssertions::entryIntoNoChunk()
{
    QVERIFY(aborts([] {
        withReader(chunk(0x10), [](Extractor &reader) {
            ChunkWalker walker(&reader);
            walker.enter();
            _exit(0);
        });
    }));
}

void TestAssertions::secondEntryIntoAChunk()
{
    const auto enter = [](int times) {
        withReader(chunk(0x10), [times](Extractor &reader) {
            ChunkWalker walker(&reader);
            walker.next();
            for (int i = 0; i < times; ++i)
                walker.enter();
            _exit(0);
        });
    };
    QVERIFY(!aborts([&] { enter(1); }));
    QVERIFY(aborts([&] { enter(2); }));
}

QTEST_GUILESS_MAIN(TestAssertions)
#include "tst_assertions.moc"
