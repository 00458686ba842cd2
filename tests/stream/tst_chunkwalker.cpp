// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Devices.h"
#include "stream/ChunkWalker.h"
#include "stream/Extractor.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace fixture;

namespace {

constexpr int Unbounded = 0x7fffffff;
constexpr int HeaderSize = 8;
constexpr int SizeAt = 4;

const QString chunkTooShort = QStringLiteral("chunk too short");
const QString fileTooShort = QStringLiteral("file too short");
const QString boundaryOutOfBounds = QStringLiteral("boundary out of bounds");
const QString tooManyStepsBack = QStringLiteral("too many steps back");
const QString fault = QStringLiteral("fault");

// The types of the chunks in these tests, and what the readers do with them.
enum TestChunk : int {
    Unread = 0x0010,
    Number,           ///< 4 bytes are read
    Rest,             ///< everything is read
    Faulty,           ///< a fault is recorded
    Container,        ///< chunks follow the header
    CountedContainer, ///< chunks follow a number
};
constexpr int TypeCount = CountedContainer - Unread + 1;

// The type as a signed number, as the log lines for unexpected chunks show it.
int typeOf(const ChunkWalker &walker)
{
    return qint16(walker.type());
}

// Reads from the chunk's body. Returns whether chunks follow.
bool readBody(Extractor &reader, int type)
{
    switch (type) {
    case Number:
        reader.get32();
        break;
    case Rest:
        reader.getu8_vector(int(qBound(qint64(0), reader.remaining(), qint64(1000))));
        break;
    case Faulty:
        reader.setError(fault);
        break;
    case CountedContainer:
        reader.get32();
        break;
    default:
        break;
    }
    return type == Container || type == CountedContainer;
}

// A visited chunk: the fields of its header, and the bounds of its body.
struct Met {
    int type;
    int headerSize;
    int start;
    int end;
};

bool operator==(const Met &left, const Met &right)
{
    return left.type == right.type && left.headerSize == right.headerSize && left.start == right.start
           && left.end == right.end;
}

// Visits the chunks of a walk, up to a limit.
struct Visitor {
    QVector<Met> met;
    int limit = Unbounded;

    bool isDone() const { return met.size() >= limit; }
    bool visit(Extractor &reader, int type, int headerSize)
    {
        met.append({type, headerSize, reader.position, reader.boundary});
        return readBody(reader, type);
    }
};

// The same walk as a recursion.
void walkRecursively(Extractor &reader, Visitor &visitor)
{
    const int type = reader.get16();
    const int headerSize = reader.get16();
    const int size = reader.get32();
    reader.pushBoundary64(qint64(size) - HeaderSize);
    if (reader.failed())
        return;
    if (visitor.visit(reader, type, headerSize)) {
        while (!visitor.isDone() && reader.remaining() >= 1 && !reader.failed())
            walkRecursively(reader, visitor);
    }
    reader.popBoundary();
}

void walk(Extractor &reader, Visitor &visitor)
{
    ChunkWalker chunk(&reader);
    while (!visitor.isDone() && chunk.next()) {
        if (visitor.visit(reader, typeOf(chunk), chunk.headerSize()))
            chunk.enter();
    }
}

QVector<Met> walked(Extractor &reader)
{
    Visitor visitor;
    walk(reader, visitor);
    return visitor.met;
}

QVector<int> types(const QVector<Met> &met)
{
    QVector<int> types;
    for (const Met &chunk : met)
        types.append(chunk.type);
    return types;
}

// The recorded text, without the text of the device.
QString recorded(const Extractor &reader)
{
    return *reader.errorSink().toStrongRef();
}

QByteArray container(const QByteArray &children)
{
    return chunk(Container, QByteArray(), children);
}

QByteArray leaf(int type = Unread, int size = 4)
{
    return chunk(type, QByteArray(), Bytes().zeros(size).data());
}

// A chunk that claims to be of @p size bytes.
QByteArray claiming(qint64 size, QByteArray chunk)
{
    poke32(chunk, SizeAt, size);
    return chunk;
}

// Nested containers.
QByteArray nested(int depth, const QByteArray &innermost = QByteArray())
{
    Bytes bytes;
    for (int left = depth; left > 0; --left)
        bytes.u16(Container).u16(HeaderSize).u32(left * HeaderSize + innermost.size());
    return bytes.raw(innermost).data();
}

QByteArray randomTree(QRandomGenerator &random, int depth)
{
    const int type = depth > 4 ? Unread + random.bounded(2) : Unread + random.bounded(TypeCount);
    if (type == Faulty && random.bounded(4) != 0)
        return randomTree(random, depth);
    Bytes body;
    if (type == Container || type == CountedContainer) {
        if (type == CountedContainer)
            body.u32(random.bounded(9));
        for (int i = random.bounded(depth == 0 ? 3 : 0, 5); i > 0; --i)
            body.raw(randomTree(random, depth + 1));
    } else {
        body.zeros(4 * random.bounded(5));
    }
    return chunk(type, QByteArray(), body.data());
}

void damage(QByteArray &bytes, QRandomGenerator &random)
{
    const int at = SizeAt * random.bounded(int(bytes.size()) / SizeAt);
    switch (random.bounded(6)) {
    case 0:
        poke32(bytes, at, random.bounded(-12, 60));
        break;
    case 1:
        poke32(bytes, at, qint64(peek32(bytes, at)) + random.bounded(-8, 9));
        break;
    case 2:
        poke32(bytes, at, qint64(peek32(bytes, at)) + random.bounded(200));
        break;
    case 3:
        poke32(bytes, at, random.generate());
        break;
    case 4:
        poke32(bytes, at, qint64(0x80000000) + random.bounded(-4, 12));
        break;
    case 5:
        bytes.truncate(at);
        break;
    }
}

// The result of a walk.
struct Result {
    QVector<Met> met;
    int position;
    int delivered;
    QString error;
    QVector<int> open; ///< the boundaries that are still pushed, innermost first
};

Result resultOf(const QByteArray &bytes, bool recursive, const QVector<int> &regions, int limit)
{
    SequentialDevice device(bytes);
    Extractor reader(&device);
    for (const int region : regions)
        reader.pushBoundary(region);
    Visitor visitor;
    visitor.limit = limit;
    if (recursive)
        walkRecursively(reader, visitor);
    else
        walk(reader, visitor);
    Result result{visitor.met, reader.position, device.delivered(), recorded(reader), {}};
    while (reader.boundary != Unbounded) {
        result.open.append(reader.boundary);
        reader.popBoundary();
    }
    return result;
}

} // namespace

class TestChunkWalker : public QObject
{
    Q_OBJECT

private slots:
    void chunkIsFramed();
    void headerFieldsAreSigned();
    void sizeIsSigned();
    void onlyOneChunkIsWalked();
    void nothingIsReadBeforeTheFirstStep();
    void endStaysTheEnd();

    void whatIsUnreadIsSkipped_data();
    void whatIsUnreadIsSkipped();
    void containerThatIsNotEnteredIsSkipped();
    void childrenStandWhereTheReaderIs();
    void chunksComeInTheOrderOfTheFile();
    void emptyContainersHaveNoChildren();
    void childOfOneByteIsTried();
    void deepNestingIsWalked();
    void deepNestingIsClosedAfterAFault();
    void deepNestingIsClosedByTheDestructor();

    void destructorClosesWhatIsOpen_data();
    void destructorClosesWhatIsOpen();
    void destructorOfAWalkThatDidNotStart();
    void enterNeedsAChunk();
    void enterHappensOncePerChunk();

    void firstChunkThatFailsLeavesItsBoundary();
    void earlierFaultEndsTheWalk();
    void faultInABodyClosesEverything();
    void faultInAContainerHidesItsChildren();
    void childPastItsParent();
    void childPastTheDevice();
    void childPastItsParentInTwoContainers();
    void childPastTheDeviceInTwoContainers();
    void childThatIsCutOffByItsParent_data();
    void childThatIsCutOffByItsParent();
    void childThatIsCutOffByTheDevice_data();
    void childThatIsCutOffByTheDevice();
    void bodyThatIsCutOffByTheDevice();
    void sizesThatPass32Bits_data();
    void sizesThatPass32Bits();
    void chunkSmallerThanItsHeaderMovesBack();
    void chunksWithoutSizeEnd();

    void walkIsThatOfTheRecursion_data();
    void walkIsThatOfTheRecursion();
};

void TestChunkWalker::chunkIsFramed()
{
    const QByteArray bytes = chunk(Unread, Bytes().u32(5).data(), Bytes().u32(6).u8(7).data());
    SequentialDevice device(bytes + leaf());
    Extractor reader(&device);
    ChunkWalker walker(&reader);
    QVERIFY(walker.next());
    QCOMPARE(typeOf(walker), int(Unread));
    QCOMPARE(walker.headerSize(), 12);
    QCOMPARE(reader.position, 8);
    QCOMPARE(reader.boundary, 17);
    QCOMPARE(device.delivered(), 8);
    QCOMPARE(reader.get32(), 5);
    QVERIFY(!walker.next());
    QCOMPARE(reader.position, 17);
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(device.delivered(), 17);
    QVERIFY(!reader.failed());
}

void TestChunkWalker::headerFieldsAreSigned()
{
    const auto header = [](int type, int headerSize) {
        SequentialDevice device(Bytes().u16(type).u16(headerSize).u32(HeaderSize).data());
        Extractor reader(&device);
        return walked(reader).value(0, {});
    };
    QVERIFY((header(0x0102, 0x0304) == Met{0x0102, 0x0304, 8, 8}));
    QVERIFY((header(0x7fff, 0x7fff) == Met{0x7fff, 0x7fff, 8, 8}));
    QVERIFY((header(0x8000, 0x8001) == Met{-0x8000, -0x7fff, 8, 8}));
    QVERIFY((header(0xffff, 0xfffe) == Met{-1, -2, 8, 8}));
}

void TestChunkWalker::sizeIsSigned()
{
    SequentialDevice device(Bytes().zeros(20).raw(claiming(0xffffffff, leaf())).data());
    Extractor reader(&device);
    reader.skip(20);
    ChunkWalker walker(&reader);
    QVERIFY(walker.next());
    QVERIFY(!reader.failed());
    QCOMPARE(reader.boundary, 28 - 9);
}

void TestChunkWalker::onlyOneChunkIsWalked()
{
    SequentialDevice device(leaf() + leaf() + leaf());
    Extractor reader(&device);
    reader.pushBoundary(24);
    QCOMPARE(walked(reader).size(), 1);
    QCOMPARE(reader.position, 12);
    QCOMPARE(walked(reader).size(), 1);
    QCOMPARE(reader.position, 24);
    QCOMPARE(reader.boundary, 24);
    QVERIFY(!reader.failed());
}

void TestChunkWalker::nothingIsReadBeforeTheFirstStep()
{
    SequentialDevice device(leaf());
    Extractor reader(&device);
    const ChunkWalker walker(&reader);
    QCOMPARE(typeOf(walker), 0);
    QCOMPARE(walker.headerSize(), 0);
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(device.delivered(), 0);
}

void TestChunkWalker::endStaysTheEnd()
{
    SequentialDevice device(container(leaf()) + leaf() + leaf());
    Extractor reader(&device);
    ChunkWalker walker(&reader);
    QVERIFY(walker.next());
    walker.enter();
    QVERIFY(walker.next());
    for (int i = 0; i < 3; ++i) {
        QVERIFY(!walker.next());
        QCOMPARE(reader.position, 20);
        QCOMPARE(reader.boundary, Unbounded);
    }

    // This also holds after a fault.
    SequentialDevice shortDevice(container(leaf()).left(12));
    reader.setDevice(&shortDevice);
    ChunkWalker failing(&reader);
    QVERIFY(failing.next());
    failing.enter();
    QVERIFY(!failing.next());
    const int position = reader.position;
    const int boundary = reader.boundary;
    QVERIFY(!failing.next());
    QCOMPARE(reader.position, position);
    QCOMPARE(reader.boundary, boundary);
}

void TestChunkWalker::whatIsUnreadIsSkipped_data()
{
    QTest::addColumn<int>("read");
    for (const int read : {0, 1, 9, 10})
        QTest::addRow("%d of 10", read) << read;
}

void TestChunkWalker::whatIsUnreadIsSkipped()
{
    QFETCH(int, read);
    SequentialDevice device(container(leaf(Unread, 10) + leaf(Number)));
    Extractor reader(&device);
    ChunkWalker walker(&reader);
    QVERIFY(walker.next());
    walker.enter();
    QVERIFY(walker.next());
    reader.getu8_vector(read);
    QVERIFY(walker.next());
    QCOMPARE(typeOf(walker), int(Number));
    QCOMPARE(reader.position, 34);
    QCOMPARE(reader.boundary, 38);
    QCOMPARE(device.delivered(), 34);
    QVERIFY(!reader.failed());
}

void TestChunkWalker::containerThatIsNotEnteredIsSkipped()
{
    SequentialDevice device(container(container(leaf() + leaf()) + leaf(Number)));
    Extractor reader(&device);
    ChunkWalker walker(&reader);
    QVERIFY(walker.next());
    walker.enter();
    QVERIFY(walker.next());
    QCOMPARE(typeOf(walker), int(Container));
    QVERIFY(walker.next());
    QCOMPARE(typeOf(walker), int(Number));
    QVERIFY(!walker.next());
}

void TestChunkWalker::childrenStandWhereTheReaderIs()
{
    const QByteArray children = leaf(Number) + leaf(Unread);
    SequentialDevice device(chunk(CountedContainer, Bytes().u32(0x7f7f7f7f).data(), children));
    Extractor reader(&device);
    QCOMPARE(types(walked(reader)), QVector<int>({CountedContainer, Number, Unread}));
    QVERIFY(!reader.failed());

    // The header size has no effect on the start of the children.
    QByteArray bytes = container(children);
    poke16(bytes, 2, 12);
    SequentialDevice other(bytes);
    reader.setDevice(&other);
    QCOMPARE(types(walked(reader)), QVector<int>({Container, Number, Unread}));
    QVERIFY(!reader.failed());
}

void TestChunkWalker::chunksComeInTheOrderOfTheFile()
{
    SequentialDevice device(container(leaf(0x21)
                                      + container(container(leaf(0x22)) + leaf(0x23) + container(QByteArray()))
                                      + container(container(leaf(0x24))) + leaf(0x25))
                            + leaf(0x26));
    Extractor reader(&device);
    QCOMPARE(types(walked(reader)), QVector<int>({Container, 0x21, Container, Container, 0x22, 0x23, Container,
                                                  Container, Container, 0x24, 0x25}));
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(device.delivered(), reader.position);
    QVERIFY(!reader.failed());
}

void TestChunkWalker::emptyContainersHaveNoChildren()
{
    SequentialDevice device(container(container(QByteArray())) + leaf());
    Extractor reader(&device);
    QCOMPARE(walked(reader).size(), 2);
    QCOMPARE(reader.position, 16);
    QCOMPARE(device.delivered(), 16);
    QVERIFY(!reader.failed());
}

void TestChunkWalker::childOfOneByteIsTried()
{
    SequentialDevice device(container(leaf() + Bytes().u8(0).data()) + leaf());
    Extractor reader(&device);
    QCOMPARE(walked(reader).size(), 2);
    QCOMPARE(recorded(reader), chunkTooShort);
}

void TestChunkWalker::deepNestingIsWalked()
{
    constexpr int Depth = 200000;
    SequentialDevice device(nested(Depth, leaf(Number)) + leaf());
    Extractor reader(&device);
    const QVector<Met> met = walked(reader);
    QCOMPARE(met.size(), Depth + 1);
    QCOMPARE(met.constLast().type, int(Number));
    QCOMPARE(reader.position, Depth * HeaderSize + 12);
    QCOMPARE(reader.boundary, Unbounded);
    QVERIFY(!reader.failed());
}

void TestChunkWalker::deepNestingIsClosedAfterAFault()
{
    constexpr int Depth = 200000;
    SequentialDevice device(nested(Depth, leaf(Faulty) + leaf()) + leaf());
    Extractor reader(&device);
    QCOMPARE(walked(reader).size(), Depth + 1);
    QCOMPARE(recorded(reader), fault);
    QCOMPARE(reader.position, Depth * HeaderSize + 24);
    QCOMPARE(reader.boundary, Unbounded);
}

void TestChunkWalker::deepNestingIsClosedByTheDestructor()
{
    constexpr int Depth = 200000;
    SequentialDevice device(nested(Depth, leaf() + leaf()) + leaf());
    Extractor reader(&device);
    Visitor visitor;
    visitor.limit = Depth + 1;
    walk(reader, visitor);
    QCOMPARE(reader.position, Depth * HeaderSize + 24);
    QCOMPARE(reader.boundary, Unbounded);
    QVERIFY(!reader.failed());
}

void TestChunkWalker::destructorClosesWhatIsOpen_data()
{
    QTest::addColumn<int>("steps");
    QTest::addColumn<bool>("entered");
    for (int steps = 1; steps <= 5; ++steps) {
        QTest::addRow("at chunk %d", steps) << steps << false;
        QTest::addRow("in chunk %d", steps) << steps << true;
    }
}

void TestChunkWalker::destructorClosesWhatIsOpen()
{
    QFETCH(int, steps);
    QFETCH(bool, entered);
    const QByteArray bytes = container(container(container(leaf(Number) + leaf(Rest)) + leaf()) + leaf());
    SequentialDevice device(bytes + leaf());
    Extractor reader(&device);
    reader.pushBoundary(int(bytes.size()) + 4);
    {
        ChunkWalker walker(&reader);
        for (int i = 1; i <= steps; ++i) {
            QVERIFY(walker.next());
            if (i < steps && typeOf(walker) == Container)
                walker.enter();
        }
        if (entered)
            walker.enter();
    }
    QCOMPARE(reader.position, bytes.size());
    QCOMPARE(reader.boundary, bytes.size() + 4);
    QCOMPARE(device.delivered(), bytes.size());
    QVERIFY(!reader.failed());
}

void TestChunkWalker::destructorOfAWalkThatDidNotStart()
{
    SequentialDevice device(leaf());
    Extractor reader(&device);
    reader.pushBoundary(10);
    {
        const ChunkWalker walker(&reader);
    }
    QCOMPARE(reader.boundary, 10);
    QCOMPARE(reader.position, 0);
}

void TestChunkWalker::enterNeedsAChunk()
{
    // The walker has opened no chunk, so it closes no chunk.
    SequentialDevice device(leaf());
    Extractor reader(&device);
    {
        ChunkWalker walker(&reader);
        walker.enter();
    }
    QCOMPARE(reader.position, 0);
    QCOMPARE(reader.boundary, Unbounded);
}

void TestChunkWalker::enterHappensOncePerChunk()
{
    SequentialDevice device(container(leaf()));
    Extractor reader(&device);
    {
        ChunkWalker walker(&reader);
        QVERIFY(walker.next());
        walker.enter();
        walker.enter();
    }
    QCOMPARE(reader.position, 20);
    QCOMPARE(reader.boundary, Unbounded);
}

void TestChunkWalker::firstChunkThatFailsLeavesItsBoundary()
{
    SequentialDevice device(claiming(40, leaf()) + leaf(Unread, 100));
    Extractor reader(&device);
    reader.pushBoundary(20);
    QVERIFY(walked(reader).isEmpty());
    QCOMPARE(recorded(reader), boundaryOutOfBounds);
    QCOMPARE(reader.position, 8);
    QCOMPARE(reader.boundary, 40);
    reader.popBoundary();
    QCOMPARE(reader.position, 40);
    QCOMPARE(reader.boundary, 20);
}

void TestChunkWalker::earlierFaultEndsTheWalk()
{
    SequentialDevice device(container(leaf()));
    Extractor reader(&device);
    reader.setError(fault);
    QVERIFY(walked(reader).isEmpty());
    QCOMPARE(recorded(reader), fault);
    QCOMPARE(reader.position, 8);
    QCOMPARE(reader.boundary, 20);
    reader.popBoundary();
    QCOMPARE(reader.boundary, Unbounded);
}

void TestChunkWalker::faultInABodyClosesEverything()
{
    const QByteArray bytes = container(container(leaf() + leaf(Faulty) + leaf()) + leaf());
    SequentialDevice device(bytes + leaf());
    Extractor reader(&device);
    reader.pushBoundary(int(bytes.size()) + 12);
    QCOMPARE(types(walked(reader)), QVector<int>({Container, Container, Unread, Faulty}));
    QCOMPARE(recorded(reader), fault);
    QCOMPARE(reader.position, bytes.size());
    QCOMPARE(reader.boundary, bytes.size() + 12);
}

void TestChunkWalker::faultInAContainerHidesItsChildren()
{
    SequentialDevice device(container(leaf()));
    Extractor reader(&device);
    ChunkWalker walker(&reader);
    QVERIFY(walker.next());
    reader.setError(fault);
    walker.enter();
    QVERIFY(!walker.next());
    QCOMPARE(recorded(reader), fault);
    QCOMPARE(reader.position, 20);
    QCOMPARE(reader.boundary, Unbounded);
}

void TestChunkWalker::childPastItsParent()
{
    SequentialDevice device(container(claiming(20, leaf())) + leaf(Unread, 100));
    Extractor reader(&device);
    QCOMPARE(walked(reader).size(), 1);
    QCOMPARE(recorded(reader), boundaryOutOfBounds);
    // The container ends at the end of its child, and the reader is there. The container stays open.
    QCOMPARE(reader.position, 28);
    QCOMPARE(reader.boundary, 20);
    QCOMPARE(device.delivered(), 28);
    reader.popBoundary();
    QCOMPARE(reader.position, 20);
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(recorded(reader), boundaryOutOfBounds);
}

void TestChunkWalker::childPastTheDevice()
{
    for (const int size : {13, 1000, Unbounded - 8}) {
        SequentialDevice device(container(claiming(size, leaf())));
        Extractor reader(&device);
        QCOMPARE(walked(reader).size(), 1);
        QCOMPARE(recorded(reader), fileTooShort);
        QCOMPARE(reader.position, 8 + size);
        QCOMPARE(reader.boundary, 20);
        QCOMPARE(device.delivered(), 20);
    }
}

void TestChunkWalker::childPastItsParentInTwoContainers()
{
    SequentialDevice device(container(container(claiming(50, leaf())) + leaf()) + leaf(Unread, 100));
    Extractor reader(&device);
    QCOMPARE(walked(reader).size(), 2);
    QCOMPARE(recorded(reader), boundaryOutOfBounds);
    // Each container ends at the end of its child, and the outer one stays open.
    QCOMPARE(reader.position, 28);
    QCOMPARE(reader.boundary, 40);
    QCOMPARE(device.delivered(), 16 + 50);
}

void TestChunkWalker::childPastTheDeviceInTwoContainers()
{
    SequentialDevice device(container(container(claiming(50, leaf())) + leaf()));
    Extractor reader(&device);
    QCOMPARE(walked(reader).size(), 2);
    QCOMPARE(recorded(reader), fileTooShort);
    QCOMPARE(reader.position, 28);
    QCOMPARE(reader.boundary, 40);
    QCOMPARE(device.delivered(), 40);
}

void TestChunkWalker::childThatIsCutOffByItsParent_data()
{
    QTest::addColumn<int>("present");
    for (int present = 1; present < HeaderSize; ++present)
        QTest::addRow("%d bytes of a header", present) << present;
}

void TestChunkWalker::childThatIsCutOffByItsParent()
{
    QFETCH(int, present);
    const QByteArray cutOff = container(leaf() + leaf().left(present));
    SequentialDevice device(cutOff);
    Extractor reader(&device);
    QCOMPARE(walked(reader).size(), 2);
    QCOMPARE(recorded(reader), chunkTooShort);
    QCOMPARE(reader.boundary, cutOff.size());

    // Missing fields count as 0, so the reader steps back over the child. The outer container then lacks those bytes at
    // its end.
    SequentialDevice twice(container(cutOff));
    reader.setDevice(&twice);
    QCOMPARE(walked(reader).size(), 3);
    QCOMPARE(recorded(reader), fileTooShort);
    QCOMPARE(reader.position, 8 + cutOff.size());
    QCOMPARE(reader.boundary, 8 + cutOff.size());
}

void TestChunkWalker::childThatIsCutOffByTheDevice_data()
{
    QTest::addColumn<int>("present");
    for (int present = 0; present < HeaderSize; ++present)
        QTest::addRow("%d bytes of a header", present) << present;
}

void TestChunkWalker::childThatIsCutOffByTheDevice()
{
    QFETCH(int, present);
    SequentialDevice device(container(leaf() + leaf()).left(20 + present));
    Extractor reader(&device);
    QCOMPARE(types(walked(reader)), QVector<int>({Container, Unread}));
    QCOMPARE(recorded(reader), fileTooShort);
    QCOMPARE(reader.boundary, 32);

    SequentialDevice alone(leaf().left(present));
    reader.setDevice(&alone);
    QVERIFY(walked(reader).isEmpty());
    QCOMPARE(recorded(reader), fileTooShort);
}

void TestChunkWalker::bodyThatIsCutOffByTheDevice()
{
    SequentialDevice device(container(leaf() + leaf(Unread, 50) + leaf()).left(60));
    Extractor reader(&device);
    QCOMPARE(types(walked(reader)), QVector<int>({Container, Unread, Unread}));
    QCOMPARE(recorded(reader), fileTooShort);
    QCOMPARE(reader.position, 90);
    QCOMPARE(reader.boundary, Unbounded);
}

void TestChunkWalker::sizesThatPass32Bits_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("opens");
    const auto row = [](qint64 size, bool opens) { QTest::addRow("0x%08llx", size) << size << opens; };
    row(0x7ffffff7, true);
    row(0x7fffffff, true);
    row(0x80000000, false);
    row(0x80000007, false);
    row(0x80000008, true);
    row(0xffffffff, true);
}

void TestChunkWalker::sizesThatPass32Bits()
{
    QFETCH(qint64, size);
    QFETCH(bool, opens);
    SequentialDevice device(claiming(size, leaf()));
    Extractor reader(&device);
    ChunkWalker walker(&reader);
    QCOMPARE(walker.next(), opens);
    QCOMPARE(recorded(reader), opens ? QString() : boundaryOutOfBounds);
    if (opens)
        QCOMPARE(reader.boundary, qint32(quint32(size)));
}

void TestChunkWalker::chunkSmallerThanItsHeaderMovesBack()
{
    // Each of the two children counts as 4 bytes, so the container ends 8 bytes later in the device.
    SequentialDevice device(container(claiming(4, leaf(Unread, 0)) + claiming(4, leaf(Unread, 0))) + leaf(0x21, 0)
                            + leaf());
    Extractor reader(&device);
    const QVector<Met> met = walked(reader);
    QCOMPARE(types(met), QVector<int>({Container, Unread, Unread, 0x21}));
    QVERIFY((met.at(1) == Met{Unread, 8, 16, 12}));
    QVERIFY((met.at(2) == Met{Unread, 8, 20, 16}));
    QVERIFY((met.at(3) == Met{0x21, 8, 24, 24}));
    QCOMPARE(device.delivered(), 32);
    QVERIFY(!reader.failed());
}

void TestChunkWalker::chunksWithoutSizeEnd()
{
    const auto endOf = [](int count, int following) {
        Bytes children;
        for (int i = 0; i < count; ++i)
            children.raw(claiming(0, leaf(Unread, 0)));
        SequentialDevice device(container(children.data()) + QByteArray(following, '\0'));
        Extractor reader(&device);
        const int met = int(walked(reader).size());
        return QStringLiteral("%1: %2").arg(met).arg(recorded(reader));
    };
    QCOMPARE(endOf(100, 0), QStringLiteral("101: ") + fileTooShort);
    QCOMPARE(endOf(10000, 4000), QStringLiteral("258: ") + tooManyStepsBack);
}

void TestChunkWalker::walkIsThatOfTheRecursion_data()
{
    QTest::addColumn<int>("damages");
    QTest::addColumn<bool>("stopsEarly");
    for (int damages = 0; damages <= 3; ++damages) {
        QTest::addRow("%d damages", damages) << damages << false;
        QTest::addRow("%d damages, stopped", damages) << damages << true;
    }
}

void TestChunkWalker::walkIsThatOfTheRecursion()
{
    QFETCH(int, damages);
    QFETCH(bool, stopsEarly);
    QRandomGenerator random(quint32(100 + damages));
    QMap<QString, int> errors;
    for (int i = 0; i < 1500; ++i) {
        QByteArray bytes = randomTree(random, 0);
        for (int k = 0; k < damages && bytes.size() >= SizeAt; ++k)
            damage(bytes, random);
        // Half of the walks are inside other regions, and half have bytes after the chunk.
        QVector<int> regions;
        if (random.bounded(2) == 0)
            regions = {int(bytes.size()) + random.bounded(100), int(bytes.size()) + random.bounded(-8, 30)};
        bytes.append(random.bounded(2) * random.bounded(80), '\x01');
        const int limit = stopsEarly ? random.bounded(1, 12) : Unbounded;

        const Result expected = resultOf(bytes, true, regions, limit);
        const Result actual = resultOf(bytes, false, regions, limit);
        QCOMPARE(types(actual.met), types(expected.met));
        QVERIFY(actual.met == expected.met);
        QCOMPARE(actual.position, expected.position);
        QCOMPARE(actual.delivered, expected.delivered);
        QCOMPARE(actual.error, expected.error);
        QCOMPARE(actual.open, expected.open);
        ++errors[actual.error];
    }
    // The damage caused each kind of end.
    QVERIFY(errors.value(QString()) > 0);
    if (damages > 0 && !stopsEarly) {
        for (const QString &error : {chunkTooShort, fileTooShort, boundaryOutOfBounds, fault})
            QVERIFY2(errors.value(error) > 0, qPrintable(error));
    }
}

QTEST_GUILESS_MAIN(TestChunkWalker)
#include "tst_chunkwalker.moc"
