// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Devices.h"
#include "LogCapture.h"
#include "stream/Extractor.h"

#include <QBuffer>
#include <QRandomGenerator>
#include <QTranslator>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

using namespace fixture;

namespace {

constexpr int Unbounded = 0x7fffffff;
constexpr int Lowest = std::numeric_limits<int>::min();
constexpr qint64 OutOfRange = qint64(1) << 40;

const QString chunkTooShort = QStringLiteral("chunk too short");
const QString fileTooShort = QStringLiteral("file too short");
const QString badInput = QStringLiteral("bad input");
const QString boundaryOutOfBounds = QStringLiteral("boundary out of bounds");
const QString tooManyStepsBack = QStringLiteral("too many steps back");

// The recorded text, without the text of the device.
QString recorded(const Extractor &reader)
{
    return *reader.errorSink().toStrongRef();
}

// Bytes that differ from their neighbours.
QByteArray pattern(int size)
{
    Bytes bytes;
    for (int i = 0; i < size; ++i)
        bytes.u8(i * 37 + i / 256 + 11);
    return bytes.data();
}

// Remembers the requested size of each read. QIODevice requests zero bytes when its buffer was read to the end.
class RecordingDevice : public SequentialDevice
{
public:
    using SequentialDevice::SequentialDevice;

    QVector<qint64> asked() const { return m_asked; }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        if (size > 0)
            m_asked.append(size);
        return SequentialDevice::readData(data, size);
    }

private:
    QVector<qint64> m_asked;
};

// Never ends. It reports bytes as delivered but does not write them.
class EndlessDevice : public QIODevice
{
public:
    explicit EndlessDevice(qint64 left = std::numeric_limits<qint64>::max(), OpenMode mode = ReadOnly | Unbuffered)
        : m_left(left)
    {
        open(mode);
    }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *, qint64 size) override
    {
        size = qMin(size, m_left);
        m_left -= size;
        return size;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    qint64 m_left;
};

class RandomAccessDevice : public QBuffer
{
public:
    explicit RandomAccessDevice(const QByteArray &bytes)
    {
        setData(bytes);
        open(QIODevice::ReadOnly);
    }
};

// Translates the error text of a device without an error as an empty text.
class EmptyTexts : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *, const char *, int) const override { return QStringLiteral(""); }
};

enum Kind : int {
    Get8,
    Get16,
    Get32,
    GetU8Vector,
    GetU16Vector,
    GetU32Vector,
    Get32s,
    Skip,
    Push,
    Pop,
};

struct Operation {
    Kind kind;
    int argument = 0;
};

// The visible state of a reader after an operation.
struct Outcome {
    QVector<qint64> values;
    qint64 position = 0;
    qint64 boundary = 0;
    QString error;
};

bool operator==(const Outcome &left, const Outcome &right)
{
    return std::equal(left.values.cbegin(), left.values.cend(), right.values.cbegin(), right.values.cend())
           && left.position == right.position && left.boundary == right.boundary && left.error == right.error;
}

// A model of the reader in a few plain lines. It reads every field from the device.
class Model
{
public:
    explicit Model(QIODevice *device) : m_device(device) {}

    Outcome operator()(const Operation &operation)
    {
        m_outcome.values.clear();
        const int argument = operation.argument;
        switch (operation.kind) {
        case Get8:
        case Get16:
        case Get32:
            integer(operation.kind == Get8 ? 1 : operation.kind == Get16 ? 2 : 4);
            break;
        case GetU8Vector:
        case GetU16Vector:
        case GetU32Vector:
            array(operation.kind == GetU8Vector ? 1 : operation.kind == GetU16Vector ? 2 : 4, argument);
            break;
        case Get32s:
            for (int i = 0; i < argument; ++i) {
                if (!integer(4)) {
                    m_outcome.values.removeLast();
                    break;
                }
            }
            break;
        case Skip:
            skip(argument);
            break;
        case Push:
            if (m_outcome.position + argument > m_outcome.boundary)
                m_outcome.error = boundaryOutOfBounds;
            m_boundaries.append(m_outcome.boundary);
            m_outcome.boundary = m_outcome.position + argument;
            break;
        case Pop:
            skip(m_outcome.boundary - m_outcome.position);
            m_outcome.boundary = m_boundaries.takeLast();
            break;
        }
        return m_outcome;
    }

private:
    static qint64 value(const QByteArray &bytes, int at, int width)
    {
        qint64 value = 0;
        for (int i = 0; i < width; ++i)
            value |= qint64(quint8(bytes.at(at + i))) << (8 * i);
        return value;
    }

    bool integer(int width)
    {
        m_outcome.values.append(0);
        if (m_outcome.position + width - 1 >= m_outcome.boundary) {
            m_outcome.error = chunkTooShort;
            return false;
        }
        QByteArray bytes(width, '\0');
        if (m_device->read(bytes.data(), width) != width) {
            m_outcome.error = fileTooShort;
            return false;
        }
        m_outcome.position += width;
        const qint64 unsignedValue = value(bytes, 0, width);
        const qint64 range = qint64(1) << (8 * width);
        m_outcome.values.last() = unsignedValue < range / 2 ? unsignedValue : unsignedValue - range;
        return true;
    }

    void array(int width, int byteCount)
    {
        if (byteCount < 0 || byteCount % width != 0) {
            m_outcome.error = badInput;
            return;
        }
        if (m_outcome.position + byteCount > m_outcome.boundary) {
            m_outcome.error = chunkTooShort;
            return;
        }
        if (byteCount == 0)
            return;
        QByteArray bytes(byteCount, '\0');
        const qint64 taken = qMax(qint64(0), m_device->read(bytes.data(), byteCount));
        m_outcome.position += taken;
        if (taken != byteCount)
            m_outcome.error = fileTooShort;
        for (int at = 0; at < byteCount; at += width)
            m_outcome.values.append(value(bytes, at, width));
    }

    void skip(qint64 count)
    {
        if (count == 0)
            return;
        if (m_outcome.position + count > m_outcome.boundary) {
            m_outcome.error = chunkTooShort;
            return;
        }
        m_outcome.position += count;
        if (!m_device->isSequential()) {
            if (m_device->pos() + count > m_device->size() || !m_device->seek(m_outcome.position + count))
                m_outcome.error = fileTooShort;
            return;
        }
        QByteArray piece(4096, '\0');
        while (count > 0) {
            const qint64 taken = m_device->read(piece.data(), qMin(count, qint64(piece.size())));
            if (taken <= 0) {
                m_outcome.error = fileTooShort;
                return;
            }
            count -= taken;
        }
    }

    QIODevice *m_device;
    Outcome m_outcome{{}, 0, Unbounded, {}};
    QVector<qint64> m_boundaries;
};

template <typename T>
QVector<qint64> widened(const QVector<T> &values)
{
    QVector<qint64> widened;
    for (const T value : values)
        widened.append(value);
    return widened;
}

QVector<qint64> valuesOf(Extractor &reader, const Operation &operation)
{
    switch (operation.kind) {
    case Get8:
        return {reader.get8()};
    case Get16:
        return {reader.get16()};
    case Get32:
        return {reader.get32()};
    case GetU8Vector:
        return widened(reader.getu8_vector(operation.argument));
    case GetU16Vector:
        return widened(reader.getu16_vector(operation.argument));
    case GetU32Vector:
        return widened(reader.getu32_vector(operation.argument));
    case Get32s:
        return widened(reader.get32s(operation.argument));
    case Skip:
        reader.skip(operation.argument);
        break;
    case Push:
        reader.pushBoundary(operation.argument);
        break;
    case Pop:
        reader.popBoundary();
        break;
    }
    return {};
}

Outcome outcome(Extractor &reader, const Operation &operation)
{
    const QVector<qint64> values = valuesOf(reader, operation);
    return {values, reader.position, reader.boundary, recorded(reader)};
}

// Operations in random order. Each opened region is closed.
QVector<Operation> randomOperations(QRandomGenerator &random)
{
    QVector<Operation> operations;
    int depth = 0;
    for (int i = 0; i < 40; ++i) {
        const Kind kind = Kind(random.bounded(int(Pop) + 1));
        if (kind == Pop) {
            if (depth == 0)
                continue;
            --depth;
        } else if (kind == Push) {
            ++depth;
        }
        int argument = random.bounded(12);
        if (kind == Push)
            argument = random.bounded(-8, 100);
        else if (random.bounded(10) == 0)
            argument = random.bounded(-12, 100);
        operations.append({kind, argument});
    }
    operations.insert(operations.size(), depth, {Pop, 0});
    return operations;
}

QString described(const QVector<Operation> &operations)
{
    const char *const names[] = {"get8",          "get16",  "get32", "getu8_vector", "getu16_vector",
                                 "getu32_vector", "get32s", "skip",  "push",         "pop"};
    QStringList calls;
    for (const Operation &operation : operations)
        calls.append(QStringLiteral("%1 %2").arg(QLatin1String(names[operation.kind])).arg(operation.argument));
    return calls.join(QLatin1String(", "));
}

} // namespace

class TestExtractor : public QObject
{
    Q_OBJECT

private slots:
    void newReaderIsAtTheStartAndUnbounded();
    void setDeviceStartsAnew();
    void setDeviceForgetsStepsBackAndBytesAtHand();
    void setDeviceLeavesTheDeviceBefore();
    void aReaderMayOutliveItsDevice();
    void deviceStaysTheCallers();

    void integersAreLittleEndianAndSigned_data();
    void integersAreLittleEndianAndSigned();
    void integersAreReadUpToTheBoundary_data();
    void integersAreReadUpToTheBoundary();
    void integersPastTheBoundaryGiveZero_data();
    void integersPastTheBoundaryGiveZero();
    void integersThatAreCutOffGiveZero_data();
    void integersThatAreCutOffGiveZero();
    void readsGoOnAfterAFault();

    void lastErrorWins();
    void emptyErrorIsNone();
    void errorSinkGoesWithTheReader();
    void errorStringAddsTheTextOfTheDevice();
    void errorStringAddsAnEmptyTextOfTheDevice();

    void arraysTakeTheirSizeInBytes();
    void arraysAreReadUpToTheBoundary();
    void badSizesOfArrays_data();
    void badSizesOfArrays();
    void emptyArraysAreNoFault();
    void badSizeIsToldBeforeTheBoundary();
    void arraysThatAreCutOffHaveTheirFullSize_data();
    void arraysThatAreCutOffHaveTheirFullSize();
    void largeArraysAreComplete();
    void largeClaimsGrowWithTheDelivery_data();
    void largeClaimsGrowWithTheDelivery();
    void zerosForWhatIsMissingHaveACeiling();
    void arraysOfNoDelivery();

    void skipMovesForward_data();
    void skipMovesForward();
    void skipOfNothingDoesNothing_data();
    void skipOfNothingDoesNothing();
    void skipPastTheBoundaryMovesNothing_data();
    void skipPastTheBoundaryMovesNothing();
    void skipTakesPiecesOfLimitedSize();
    void skipGoesOnWhileTheDeviceDelivers();
    void skipEndsWhereTheDeviceDoes_data();
    void skipEndsWhereTheDeviceDoes();
    void skipBackGivesASequentialDeviceNothingBack();
    void keepsTheSeekToTwiceTheCount();
    void keepsTheSeekToTwiceTheCountBackwards();
    void skipPastTheEndOfARandomAccessDevice();
    void skipThatCannotSeek();
    void stepsBackAreCounted_data();
    void stepsBackAreCounted();

    void boundariesNest();
    void popConsumesWhatIsLeft_data();
    void popConsumesWhatIsLeft();
    void popOfANegativeRegionMovesBack();
    void popCountsAsAStepBack();
    void negativeRegionHoldsNothing();
    void regionPastItsParentIsOpenedAsWide();
    void regionUpToItsParentsEndIsNoFault();
    void emptyRegionIsNoFault();
    void popOfNoRegion();

    void positionsAtTheUpperLimit();
    void positionsAtTheLowerLimit();
    void remainingHas64Bits();
    void skip64OutOfRange_data();
    void skip64OutOfRange();
    void pushBoundary64OutOfRange_data();
    void pushBoundary64OutOfRange();
    void largestLengthsInRange();

    void get32sGivesWhatIsThere_data();
    void get32sGivesWhatIsThere();
    void get32sTakesFewReads();
    void get32sReadsAsManyReadsOfOne_data();
    void get32sReadsAsManyReadsOfOne();

    void nothingIsTakenUnasked();

    void everySequenceOfOperations_data();
    void everySequenceOfOperations();
    void bytesAtHandAreTakenWhenTheReaderGoesOn();
    void bytesAtHandBeyondTheRegionStayInTheDevice();
    void bytesAtHandAreNotLookedAtOutsideARegion();

    // every error text
    void errorChunkTooShort();
    void errorFileTooShort();
    void errorBadInput();
    void errorBoundaryOutOfBounds();
    void errorFileTooLong();
    void bytesAtHandStopAtTheCeiling();
    void diagnosticsAreOfOneDevice();
    void errorTooManyStepsBack();
    void errorTooManyChunks();
};

void TestExtractor::newReaderIsAtTheStartAndUnbounded()
{
    SequentialDevice device(pattern(4));
    const Extractor reader(&device);
    QVERIFY(!reader.failed());
    QVERIFY(recorded(reader).isNull());
    QCOMPARE(reader.position, 0);
    QCOMPARE(reader.boundary, 2147483647);
    QCOMPARE(device.delivered(), 0);
}

void TestExtractor::setDeviceStartsAnew()
{
    SequentialDevice first(pattern(20));
    SequentialDevice second(Bytes().u16(0x1234).data());
    Extractor reader(&first);
    reader.pushBoundary(10);
    reader.pushBoundary(5);
    reader.get32();
    reader.setError(QStringLiteral("text"));

    reader.setDevice(&second);
    QVERIFY(!reader.failed());
    QVERIFY(recorded(reader).isNull());
    QCOMPARE(reader.position, 0);
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(reader.get16(), qint16(0x1234));
    QCOMPARE(first.delivered(), 4);
    QCOMPARE(second.delivered(), 2);

    // The boundaries are gone as well: the new one is pushed on an unbounded reader.
    reader.pushBoundary(0);
    reader.popBoundary();
    QCOMPARE(reader.boundary, Unbounded);
    reader.popBoundary();
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(reader.position, 2);
}

void TestExtractor::setDeviceForgetsStepsBackAndBytesAtHand()
{
    SequentialDevice first(pattern(20), QIODevice::ReadOnly);
    SequentialDevice second(Bytes().u8(0x7e).zeros(20).data());
    Extractor reader(&first);
    for (int i = 0; i < Extractor::MaxStepsBack; ++i)
        reader.skip(-1);
    reader.pushBoundary(20);
    reader.get8();
    reader.get8();

    reader.setDevice(&second);
    QCOMPARE(reader.get8(), qint8(0x7e));
    QCOMPARE(second.delivered(), 1);
    reader.skip(-1);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, 0);
}

void TestExtractor::setDeviceLeavesTheDeviceBefore()
{
    SequentialDevice other(pattern(4));
    SequentialDevice device(pattern(100), QIODevice::ReadOnly);
    Extractor reader(&device);
    reader.pushBoundary(50);
    reader.get8();
    reader.get8();
    QCOMPARE(device.taken(), 1);
    reader.setDevice(&other);
    QCOMPARE(device.taken(), 1);

    auto gone = std::make_unique<SequentialDevice>(pattern(100), QIODevice::ReadOnly);
    reader.setDevice(gone.get());
    reader.pushBoundary(50);
    reader.get8();
    reader.get8();
    gone.reset();
    reader.setDevice(&other);
    QCOMPARE(reader.get8(), qint8(pattern(4).at(0)));
}

void TestExtractor::aReaderMayOutliveItsDevice()
{
    SequentialDevice device(pattern(100), QIODevice::ReadOnly);
    {
        Extractor reader(&device);
        reader.pushBoundary(50);
        reader.get8();
        reader.get8();
    }
    QCOMPARE(device.taken(), 1);

    auto gone = std::make_unique<SequentialDevice>(pattern(100), QIODevice::ReadOnly);
    Extractor reader(gone.get());
    reader.pushBoundary(50);
    reader.get8();
    reader.get8();
    gone.reset();
}

void TestExtractor::deviceStaysTheCallers()
{
    SequentialDevice device(pattern(4));
    {
        Extractor reader(&device);
        reader.get8();
    }
    QVERIFY(device.isOpen());
    QCOMPARE(device.read(1), pattern(4).mid(1, 1));
}

void TestExtractor::integersAreLittleEndianAndSigned_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<qint64>("stored");
    QTest::addColumn<int>("value");
    const auto row = [](int width, qint64 stored, int value) {
        QTest::addRow("%d bytes, %d", width, value) << width << stored << value;
    };
    row(1, 0x00, 0);
    row(1, 0x7f, 127);
    row(1, 0x80, -128);
    row(1, 0xff, -1);
    row(2, 0x0102, 258);
    row(2, 0x7fff, 32767);
    row(2, 0x8000, -32768);
    row(2, 0xffff, -1);
    row(4, 0x01020304, 16909060);
    row(4, 0x7fffffff, 2147483647);
    row(4, 0x80000000, Lowest);
    row(4, 0xffffffff, -1);
}

void TestExtractor::integersAreLittleEndianAndSigned()
{
    QFETCH(int, width);
    QFETCH(qint64, stored);
    SequentialDevice device(Bytes().u32(stored).u32(0x55555555).data().left(width) + pattern(3));
    Extractor reader(&device);
    const int value = width == 1 ? reader.get8() : width == 2 ? reader.get16() : reader.get32();
    QTEST(value, "value");
    QCOMPARE(reader.position, width);
    QCOMPARE(device.delivered(), width);
    QVERIFY(!reader.failed());
}

void TestExtractor::integersAreReadUpToTheBoundary_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {1, 2, 4})
        QTest::addRow("%d bytes", width) << width;
}

void TestExtractor::integersAreReadUpToTheBoundary()
{
    QFETCH(int, width);
    SequentialDevice device(Bytes().zeros(10).u32(0x01010101).data());
    Extractor reader(&device);
    reader.skip(10);
    reader.pushBoundary(width);
    const int value = width == 1 ? reader.get8() : width == 2 ? reader.get16() : reader.get32();
    QCOMPARE(value, width == 1 ? 1 : width == 2 ? 0x0101 : 0x01010101);
    QCOMPARE(reader.position, 10 + width);
    QVERIFY(!reader.failed());
}

void TestExtractor::integersPastTheBoundaryGiveZero_data()
{
    integersAreReadUpToTheBoundary_data();
}

void TestExtractor::integersPastTheBoundaryGiveZero()
{
    QFETCH(int, width);
    RecordingDevice device(pattern(20));
    Extractor reader(&device);
    reader.getu8_vector(10);
    reader.pushBoundary(width - 1);
    const int value = width == 1 ? reader.get8() : width == 2 ? reader.get16() : reader.get32();
    QCOMPARE(value, 0);
    QCOMPARE(recorded(reader), chunkTooShort);
    QCOMPARE(reader.position, 10);
    QCOMPARE(device.asked(), QVector<qint64>({10}));
}

void TestExtractor::integersThatAreCutOffGiveZero_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("answerAtEnd");
    for (const int width : {1, 2, 4}) {
        QTest::addRow("%d bytes, 0 at the end", width) << width << 0;
        QTest::addRow("%d bytes, -1 at the end", width) << width << -1;
    }
}

void TestExtractor::integersThatAreCutOffGiveZero()
{
    QFETCH(int, width);
    QFETCH(int, answerAtEnd);
    for (int present = 0; present < width; ++present) {
        SequentialDevice device(pattern(3 + present));
        device.setAnswerAtEnd(answerAtEnd);
        Extractor reader(&device);
        reader.skip(3);
        const int value = width == 1 ? reader.get8() : width == 2 ? reader.get16() : reader.get32();
        QCOMPARE(value, 0);
        QCOMPARE(recorded(reader), fileTooShort);
        QCOMPARE(reader.position, 3);
        // The delivered bytes are consumed all the same.
        QCOMPARE(device.delivered(), 3 + present);
    }
}

void TestExtractor::readsGoOnAfterAFault()
{
    SequentialDevice device(Bytes().u16(0x1234).u32(0x56789abc).u8(0x11).u8(0x22).data());
    Extractor reader(&device);
    reader.pushBoundary(3);
    QCOMPARE(reader.get32(), 0);
    QCOMPARE(recorded(reader), chunkTooShort);
    QCOMPARE(reader.get16(), qint16(0x1234));
    QVERIFY(reader.failed());
    reader.setError(QStringLiteral("text"));
    QCOMPARE(reader.get8(), qint8(0xbc));
    QCOMPARE(recorded(reader), QStringLiteral("text"));
    reader.popBoundary();
    reader.skip(3);
    QCOMPARE(reader.getu8_vector(1), QVector<quint8>({0x11}));
    QCOMPARE(reader.get32s(0), QVector<qint32>());
    QCOMPARE(reader.position, 7);
    QCOMPARE(reader.get32(), 0);
    QCOMPARE(recorded(reader), fileTooShort);
}

void TestExtractor::lastErrorWins()
{
    SequentialDevice device(pattern(2));
    Extractor reader(&device);
    QVERIFY(!reader.failed());
    reader.getu16_vector(1);
    QCOMPARE(recorded(reader), badInput);
    reader.setError(QStringLiteral("first"));
    QVERIFY(reader.failed());
    QCOMPARE(recorded(reader), QStringLiteral("first"));
    reader.setError(QStringLiteral("second"));
    QCOMPARE(recorded(reader), QStringLiteral("second"));
    reader.get32();
    QCOMPARE(recorded(reader), fileTooShort);
    reader.get8();
    QCOMPARE(recorded(reader), fileTooShort);
}

void TestExtractor::emptyErrorIsNone()
{
    SequentialDevice device(pattern(2));
    Extractor reader(&device);
    reader.setError(QStringLiteral("text"));
    reader.setError(QStringLiteral(""));
    QVERIFY(!reader.failed());
}

void TestExtractor::errorSinkGoesWithTheReader()
{
    SequentialDevice device(pattern(2));
    QWeakPointer<QString> sink;
    {
        Extractor reader(&device);
        sink = reader.errorSink();
        *sink.toStrongRef() = QStringLiteral("from elsewhere");
        QVERIFY(reader.failed());
        QCOMPARE(reader.errorString(), QStringLiteral("from elsewhere: Unknown error"));
        reader.setDevice(&device);
        QVERIFY(sink.toStrongRef()->isNull());
    }
    QVERIFY(sink.isNull());
}

void TestExtractor::errorStringAddsTheTextOfTheDevice()
{
    SequentialDevice device(pattern(2));
    Extractor reader(&device);
    QCOMPARE(reader.errorString(), QStringLiteral(": Unknown error"));
    reader.get32();
    QCOMPARE(reader.errorString(), QStringLiteral("file too short: Unknown error"));
    device.setErrorText(QStringLiteral("broken pipe"));
    QCOMPARE(reader.errorString(), QStringLiteral("file too short: broken pipe"));
}

void TestExtractor::errorStringAddsAnEmptyTextOfTheDevice()
{
    SequentialDevice device(pattern(2));
    Extractor reader(&device);
    reader.setError(QStringLiteral("text"));
    EmptyTexts translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QVERIFY(device.errorString().isEmpty() && !device.errorString().isNull());
    QCOMPARE(reader.errorString(), QStringLiteral("text: "));
}

void TestExtractor::arraysTakeTheirSizeInBytes()
{
    const QByteArray bytes =
        Bytes().u8(1).u8(0xff).u8(3).u16(0x0102).u16(0xfffe).u32(0x01020304).u32(0xfffefdfc).u8(9).data();
    SequentialDevice device(bytes);
    Extractor reader(&device);
    QCOMPARE(reader.getu8_vector(3), QVector<quint8>({1, 0xff, 3}));
    QCOMPARE(reader.position, 3);
    QCOMPARE(reader.getu16_vector(4), QVector<quint16>({0x0102, 0xfffe}));
    QCOMPARE(reader.position, 7);
    QCOMPARE(reader.getu32_vector(8), QVector<quint32>({0x01020304, 0xfffefdfc}));
    QCOMPARE(reader.position, 15);
    QCOMPARE(device.delivered(), 15);
    QVERIFY(!reader.failed());
}

void TestExtractor::arraysAreReadUpToTheBoundary()
{
    for (const Kind kind : {GetU8Vector, GetU16Vector, GetU32Vector}) {
        RecordingDevice device(pattern(100));
        Extractor reader(&device);
        reader.get32();
        reader.pushBoundary(8);
        QVERIFY(valuesOf(reader, {kind, 12}).isEmpty());
        QCOMPARE(recorded(reader), chunkTooShort);
        QCOMPARE(reader.position, 4);
        QCOMPARE(device.asked().size(), 1);

        reader.setError(QString());
        QVERIFY(!valuesOf(reader, {kind, 8}).isEmpty());
        QVERIFY(!reader.failed());
        QCOMPARE(reader.position, 12);
    }
    // The same with a read of one byte more than the device has.
    SequentialDevice device(pattern(100));
    Extractor reader(&device);
    reader.pushBoundary(8);
    QVERIFY(reader.getu8_vector(9).isEmpty());
    QCOMPARE(recorded(reader), chunkTooShort);
}

void TestExtractor::badSizesOfArrays_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("size");
    for (const int size : {-1, -2, -4, Lowest}) {
        for (const Kind kind : {GetU8Vector, GetU16Vector, GetU32Vector})
            QTest::addRow("kind %d, %d bytes", int(kind), size) << int(kind) << size;
    }
    for (const int size : {1, 3, 5, 7})
        QTest::addRow("16 bits, %d bytes", size) << int(GetU16Vector) << size;
    for (const int size : {1, 2, 3, 5, 6, 7, 10})
        QTest::addRow("32 bits, %d bytes", size) << int(GetU32Vector) << size;
}

void TestExtractor::badSizesOfArrays()
{
    QFETCH(int, kind);
    QFETCH(int, size);
    SequentialDevice device(pattern(100));
    Extractor reader(&device);
    QVERIFY(valuesOf(reader, {Kind(kind), size}).isEmpty());
    QCOMPARE(recorded(reader), badInput);
    QCOMPARE(reader.position, 0);
    QCOMPARE(device.delivered(), 0);
}

void TestExtractor::emptyArraysAreNoFault()
{
    SequentialDevice device(QByteArray{});
    device.setAnswerAtEnd(-1);
    Extractor reader(&device);
    reader.pushBoundary(0);
    QVERIFY(reader.getu8_vector(0).isEmpty());
    QVERIFY(reader.getu16_vector(0).isEmpty());
    QVERIFY(reader.getu32_vector(0).isEmpty());
    QVERIFY(!reader.failed());
}

void TestExtractor::badSizeIsToldBeforeTheBoundary()
{
    SequentialDevice device(pattern(100));
    Extractor reader(&device);
    reader.pushBoundary(4);
    reader.getu16_vector(9);
    QCOMPARE(recorded(reader), badInput);
    reader.setError(QString());
    reader.getu32_vector(10);
    QCOMPARE(recorded(reader), badInput);
}

void TestExtractor::arraysThatAreCutOffHaveTheirFullSize_data()
{
    QTest::addColumn<int>("answerAtEnd");
    QTest::newRow("0 at the end") << 0;
    QTest::newRow("-1 at the end") << -1;
}

void TestExtractor::arraysThatAreCutOffHaveTheirFullSize()
{
    QFETCH(int, answerAtEnd);
    const QByteArray bytes = Bytes().u32(0x04030201).u8(5).data();
    const auto cutOff = [&](Kind kind, int size) {
        SequentialDevice device(bytes);
        device.setAnswerAtEnd(answerAtEnd);
        Extractor reader(&device);
        Outcome result = outcome(reader, {kind, size});
        if (device.delivered() != bytes.size())
            result.error += QStringLiteral(" at %1").arg(device.delivered());
        return result;
    };
    const auto expected = [](const QVector<qint64> &values) { return Outcome{values, 5, Unbounded, fileTooShort}; };
    QVERIFY(cutOff(GetU8Vector, 7) == expected({1, 2, 3, 4, 5, 0, 0}));
    QVERIFY(cutOff(GetU8Vector, 6) == expected({1, 2, 3, 4, 5, 0}));
    QVERIFY(cutOff(GetU16Vector, 10) == expected({0x0201, 0x0403, 5, 0, 0}));
    QVERIFY(cutOff(GetU32Vector, 12) == expected({0x04030201, 5, 0}));
}

void TestExtractor::largeArraysAreComplete()
{
    constexpr int Size = 5 * (1 << 20) + 8;
    QByteArray bytes(Size, Qt::Uninitialized);
    for (int i = 0; i < Size; ++i)
        bytes[i] = char(i ^ (i >> 8) ^ (i >> 16));
    const auto same = [&bytes](const void *storage, int size) {
        return bytes == QByteArray::fromRawData(static_cast<const char *>(storage), size);
    };
    SequentialDevice device8(bytes);
    Extractor reader8(&device8);
    const QVector<quint8> array8 = reader8.getu8_vector(Size);
    QCOMPARE(array8.size(), Size);
    QVERIFY(same(array8.constData(), Size));
    QCOMPARE(reader8.position, Size);

    SequentialDevice device32(bytes);
    Extractor reader32(&device32);
    const QVector<quint32> array32 = reader32.getu32_vector(Size);
    QCOMPARE(array32.size(), Size / 4);
    for (int i = 0; i < Size / 4; i += 1021)
        QCOMPARE(array32.at(i), peek32(bytes, 4 * i));
    QCOMPARE(array32.constLast(), peek32(bytes, Size - 4));
    QVERIFY(!reader8.failed() && !reader32.failed());
    QCOMPARE(device32.delivered(), Size);
}

void TestExtractor::largeClaimsGrowWithTheDelivery_data()
{
    QTest::addColumn<int>("claimed");
    for (const int claimed : {1 << 21, Extractor::MaxZeroTail, Extractor::MaxZeroTail + 10})
        QTest::addRow("%d bytes", claimed) << claimed;
}

void TestExtractor::largeClaimsGrowWithTheDelivery()
{
    QFETCH(int, claimed);
    RecordingDevice device(pattern(10));
    Extractor reader(&device);
    const QVector<quint16> array = reader.getu16_vector(claimed);
    QCOMPARE(recorded(reader), fileTooShort);
    QCOMPARE(array.size(), claimed / 2);
    QCOMPARE(array.at(4), peek16(pattern(10), 8));
    QCOMPARE(array.count(0), claimed / 2 - 5);
    QCOMPARE(reader.position, 10);
    for (const qint64 asked : device.asked())
        QVERIFY(asked < claimed);

    // No memory is allocated for missing integers either.
    QVERIFY(reader.get32s(Unbounded).isEmpty());
}

void TestExtractor::zerosForWhatIsMissingHaveACeiling()
{
    constexpr int longest = Extractor::MaxZeroTail + 10;
    for (const int claimed : {longest + 2, Unbounded - 1}) {
        SequentialDevice device(pattern(10));
        Extractor reader(&device);
        const QVector<quint16> array = reader.getu16_vector(claimed);
        QCOMPARE(recorded(reader), fileTooShort);
        QCOMPARE(array.size(), longest / 2);
        QCOMPARE(reader.position, 10);
    }
}

void TestExtractor::arraysOfNoDelivery()
{
    for (const int answer : {0, -1}) {
        SequentialDevice device(QByteArray{});
        device.setAnswerAtEnd(answer);
        Extractor reader(&device);
        QCOMPARE(reader.getu8_vector(3), QVector<quint8>(3, 0));
        QCOMPARE(recorded(reader), fileTooShort);
        QCOMPARE(reader.position, 0);
    }
}

void TestExtractor::skipMovesForward_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {1, 2, 4095, 4096, 4097, 8192, 9999})
        QTest::addRow("%d", count) << count;
}

void TestExtractor::skipMovesForward()
{
    QFETCH(int, count);
    const QByteArray bytes = pattern(10000);
    SequentialDevice device(bytes);
    Extractor reader(&device);
    reader.pushBoundary(count);
    reader.skip(count);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, count);
    QCOMPARE(device.delivered(), count);
    reader.popBoundary();
    QCOMPARE(reader.getu8_vector(1).constFirst(), quint8(bytes.at(count)));
}

void TestExtractor::skipOfNothingDoesNothing_data()
{
    skipMovesForward_data();
}

void TestExtractor::skipOfNothingDoesNothing()
{
    QFETCH(int, count);
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    // The reader is past its boundary, where any other skip is a fault.
    reader.pushBoundary(-count);
    reader.skip(0);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, 0);

    RandomAccessDevice buffer(pattern(10));
    buffer.seek(5);
    Extractor random(&buffer);
    random.skip(0);
    QCOMPARE(buffer.pos(), 5);
    QVERIFY(!random.failed());
}

void TestExtractor::skipPastTheBoundaryMovesNothing_data()
{
    QTest::addColumn<bool>("sequential");
    QTest::newRow("sequential") << true;
    QTest::newRow("random access") << false;
}

void TestExtractor::skipPastTheBoundaryMovesNothing()
{
    QFETCH(bool, sequential);
    SequentialDevice device(pattern(100));
    RandomAccessDevice buffer(pattern(100));
    Extractor reader(sequential ? static_cast<QIODevice *>(&device) : &buffer);
    reader.get32();
    reader.pushBoundary(10);
    for (const int count : {11, 12, 90, Unbounded}) {
        reader.setError(QString());
        reader.skip(count);
        QCOMPARE(recorded(reader), chunkTooShort);
        QCOMPARE(reader.position, 4);
    }
    QCOMPARE(sequential ? qint64(device.delivered()) : buffer.pos(), 4);
}

void TestExtractor::skipTakesPiecesOfLimitedSize()
{
    RecordingDevice device(pattern(10000));
    Extractor reader(&device);
    reader.skip(10000);
    QCOMPARE(device.asked(), QVector<qint64>({4096, 4096, 1808}));
}

void TestExtractor::skipGoesOnWhileTheDeviceDelivers()
{
    for (const int largestRead : {1, 3, 4095}) {
        SequentialDevice device(pattern(10000));
        device.setLargestRead(largestRead);
        Extractor reader(&device);
        reader.skip(9000);
        QVERIFY(!reader.failed());
        QCOMPARE(device.delivered(), 9000);
    }
}

void TestExtractor::skipEndsWhereTheDeviceDoes_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("answerAtEnd");
    for (const int count : {11, 12, 5000, Unbounded}) {
        QTest::addRow("%d, 0 at the end", count) << count << 0;
        QTest::addRow("%d, -1 at the end", count) << count << -1;
    }
}

void TestExtractor::skipEndsWhereTheDeviceDoes()
{
    QFETCH(int, count);
    QFETCH(int, answerAtEnd);
    SequentialDevice device(pattern(10));
    device.setAnswerAtEnd(answerAtEnd);
    Extractor reader(&device);
    reader.skip(count);
    QCOMPARE(recorded(reader), fileTooShort);
    QCOMPARE(reader.position, count);
    QCOMPARE(device.delivered(), 10);
}

void TestExtractor::skipBackGivesASequentialDeviceNothingBack()
{
    const QByteArray bytes = pattern(20);
    SequentialDevice device(bytes);
    Extractor reader(&device);
    reader.get32();
    reader.skip(-3);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, 1);
    QCOMPARE(device.delivered(), 4);
    QCOMPARE(reader.get8(), qint8(bytes.at(4)));
    QCOMPARE(reader.position, 2);
    // A skip may also end before the start.
    reader.skip(-100);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, -98);
    QCOMPARE(device.delivered(), 5);
}

void TestExtractor::keepsTheSeekToTwiceTheCount()
{
    RandomAccessDevice device(pattern(100));
    Extractor reader(&device);
    reader.get32();
    reader.skip(10);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, 14);
    QCOMPARE(device.pos(), 24);
    QCOMPARE(reader.get8(), qint8(pattern(100).at(24)));
    QCOMPARE(reader.position, 15);
    // The target is computed from the reader's position, not from the device's.
    reader.skip(1);
    QCOMPARE(device.pos(), 17);
    QCOMPARE(reader.position, 16);

    // Closing a region that was read to its end does not move the device. Closing another region does.
    reader.pushBoundary(1);
    reader.get8();
    reader.popBoundary();
    QCOMPARE(device.pos(), 18);
    reader.pushBoundary(3);
    reader.popBoundary();
    QCOMPARE(reader.position, 20);
    QCOMPARE(device.pos(), 23);
    QVERIFY(!reader.failed());
}

void TestExtractor::keepsTheSeekToTwiceTheCountBackwards()
{
    RandomAccessDevice device(pattern(100));
    Extractor reader(&device);
    reader.getu8_vector(20);
    reader.skip(-4);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, 16);
    QCOMPARE(device.pos(), 12);
    // Back to the very start.
    reader.skip(-8);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, 8);
    QCOMPARE(device.pos(), 0);
}

void TestExtractor::skipPastTheEndOfARandomAccessDevice()
{
    // The check for enough bytes uses the device's own position.
    RandomAccessDevice device(pattern(100));
    Extractor reader(&device);
    device.seek(60);
    reader.skip(40);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, 40);
    QCOMPARE(device.pos(), 80);

    device.seek(60);
    reader.setDevice(&device);
    reader.skip(41);
    QCOMPARE(recorded(reader), fileTooShort);
    QCOMPARE(reader.position, 41);
    QCOMPARE(device.pos(), 60);
}

void TestExtractor::skipThatCannotSeek()
{
    const LogCapture log;
    RandomAccessDevice device(pattern(100));
    Extractor reader(&device);
    reader.get32();
    reader.skip(-3);
    QCOMPARE(recorded(reader), fileTooShort);
    QCOMPARE(reader.position, 1);
    QCOMPARE(device.pos(), 4);

    // The skipped bytes exist, but the target does not.
    reader.setDevice(&device);
    reader.skip(51);
    QCOMPARE(recorded(reader), fileTooShort);
    QCOMPARE(reader.position, 51);
    QCOMPARE(device.pos(), 4);
    reader.setDevice(&device);
    reader.skip(50);
    QVERIFY(!reader.failed());
    QCOMPARE(device.pos(), 100);
}

void TestExtractor::stepsBackAreCounted_data()
{
    skipPastTheBoundaryMovesNothing_data();
}

void TestExtractor::stepsBackAreCounted()
{
    QFETCH(bool, sequential);
    SequentialDevice device(pattern(1000));
    RandomAccessDevice buffer(pattern(1000));
    Extractor reader(sequential ? static_cast<QIODevice *>(&device) : &buffer);
    QCOMPARE(int(Extractor::MaxStepsBack), 256);
    reader.getu8_vector(600);
    for (int i = 0; i < 256; ++i) {
        reader.skip(-1);
        QVERIFY(!reader.failed());
        QCOMPARE(reader.position, 599 - i);
    }
    const qint64 place = buffer.pos();
    reader.skip(-1);
    QCOMPARE(recorded(reader), tooManyStepsBack);
    QCOMPARE(reader.position, 344);
    QCOMPARE(buffer.pos(), place);

    // The reader can still skip forward.
    reader.setError(QString());
    reader.skip(2);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, 346);
}

void TestExtractor::boundariesNest()
{
    SequentialDevice device(pattern(100));
    Extractor reader(&device);
    reader.get8();
    reader.pushBoundary(40);
    QCOMPARE(reader.boundary, 41);
    reader.get8();
    reader.pushBoundary(20);
    QCOMPARE(reader.boundary, 22);
    reader.pushBoundary(5);
    QCOMPARE(reader.boundary, 7);
    QCOMPARE(reader.remaining(), 5);
    reader.popBoundary();
    QCOMPARE(reader.boundary, 22);
    QCOMPARE(reader.position, 7);
    reader.popBoundary();
    QCOMPARE(reader.boundary, 41);
    QCOMPARE(reader.position, 22);
    reader.popBoundary();
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(reader.position, 41);
    QCOMPARE(device.delivered(), 41);
    QVERIFY(!reader.failed());
}

void TestExtractor::popConsumesWhatIsLeft_data()
{
    QTest::addColumn<int>("read");
    for (const int read : {0, 1, 9, 10})
        QTest::addRow("%d of 10", read) << read;
}

void TestExtractor::popConsumesWhatIsLeft()
{
    QFETCH(int, read);
    RecordingDevice device(pattern(100));
    Extractor reader(&device);
    reader.pushBoundary(10);
    reader.getu8_vector(read);
    const int reads = int(device.asked().size());
    reader.popBoundary();
    QCOMPARE(reader.position, 10);
    QCOMPARE(device.delivered(), 10);
    QCOMPARE(device.asked().size(), read == 10 ? reads : reads + 1);
    QVERIFY(!reader.failed());
}

void TestExtractor::popOfANegativeRegionMovesBack()
{
    SequentialDevice device(pattern(100));
    Extractor reader(&device);
    reader.getu8_vector(12);
    reader.pushBoundary(-8);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.boundary, 4);
    QCOMPARE(reader.remaining(), -8);
    reader.popBoundary();
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, 4);
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(device.delivered(), 12);
}

void TestExtractor::popCountsAsAStepBack()
{
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    for (int i = 0; i < Extractor::MaxStepsBack; ++i) {
        reader.pushBoundary(-1);
        reader.popBoundary();
    }
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, -Extractor::MaxStepsBack);
    reader.pushBoundary(-1);
    reader.popBoundary();
    QCOMPARE(recorded(reader), tooManyStepsBack);
    QCOMPARE(reader.position, -Extractor::MaxStepsBack);
    QCOMPARE(reader.boundary, Unbounded);
}

void TestExtractor::negativeRegionHoldsNothing()
{
    SequentialDevice device(pattern(100));
    Extractor reader(&device);
    reader.getu8_vector(12);
    const QVector<Operation> operations = {
        {Get8},      {Get16},   {Get32},    {GetU8Vector, 0}, {GetU16Vector, 0}, {GetU32Vector, 0},
        {Get32s, 1}, {Skip, 1}, {Skip, -1}, {Skip, -7},
    };
    for (const Operation &operation : operations) {
        reader.setError(QString());
        reader.pushBoundary(-8);
        QCOMPARE(valuesOf(reader, operation), QVector<qint64>(operation.kind < GetU8Vector ? 1 : 0, 0));
        QCOMPARE(recorded(reader), chunkTooShort);
        QCOMPARE(reader.position, 12);
        reader.popBoundary();
        reader.skip(8);
        QCOMPARE(reader.position, 12);
    }
    // A skip back to the boundary or before it is in bounds.
    for (const int count : {-8, -9}) {
        reader.setError(QString());
        reader.pushBoundary(-8);
        const int start = reader.position;
        reader.skip(count);
        QVERIFY(!reader.failed());
        QCOMPARE(reader.position, start + count);
        reader.popBoundary();
    }
}

void TestExtractor::regionPastItsParentIsOpenedAsWide()
{
    SequentialDevice device(pattern(100));
    Extractor reader(&device);
    reader.pushBoundary(10);
    reader.get32();
    reader.pushBoundary(7);
    QCOMPARE(recorded(reader), boundaryOutOfBounds);
    QCOMPARE(reader.boundary, 11);
    // It contains bytes of the parent and bytes after it.
    QCOMPARE(reader.getu8_vector(7).size(), 7);
    QCOMPARE(recorded(reader), boundaryOutOfBounds);
    QCOMPARE(reader.position, 11);
    reader.popBoundary();
    QCOMPARE(reader.boundary, 10);
    QCOMPARE(reader.position, 11);
    reader.popBoundary();
    QCOMPARE(reader.position, 10);
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(recorded(reader), boundaryOutOfBounds);
    QCOMPARE(device.delivered(), 11);
}

void TestExtractor::regionUpToItsParentsEndIsNoFault()
{
    SequentialDevice device(pattern(100));
    Extractor reader(&device);
    reader.pushBoundary(10);
    reader.get32();
    reader.pushBoundary(6);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.boundary, 10);
    reader.popBoundary();
    reader.popBoundary();
    QVERIFY(!reader.failed());
}

void TestExtractor::emptyRegionIsNoFault()
{
    SequentialDevice device(QByteArray{});
    Extractor reader(&device);
    reader.pushBoundary(0);
    QCOMPARE(reader.boundary, 0);
    QCOMPARE(reader.remaining(), 0);
    reader.popBoundary();
    QVERIFY(!reader.failed());
}

void TestExtractor::popOfNoRegion()
{
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    reader.get8();
    reader.popBoundary();
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, 1);
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(device.delivered(), 1);
}

void TestExtractor::positionsAtTheUpperLimit()
{
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    reader.skip(Unbounded - 3);
    QCOMPARE(reader.position, Unbounded - 3);
    const auto faultOf = [&reader](const Operation &operation) {
        reader.setError(QString());
        valuesOf(reader, operation);
        return recorded(reader);
    };
    QCOMPARE(faultOf({Get32}), chunkTooShort);
    QCOMPARE(faultOf({Get16}), fileTooShort);
    QCOMPARE(faultOf({GetU8Vector, 4}), chunkTooShort);
    QCOMPARE(faultOf({GetU8Vector, Unbounded}), chunkTooShort);
    QCOMPARE(faultOf({GetU32Vector, 0x7ffffffc}), chunkTooShort);
    QCOMPARE(faultOf({Get32s, Unbounded}), chunkTooShort);
    QCOMPARE(faultOf({Skip, 4}), chunkTooShort);
    QCOMPARE(faultOf({Skip, Unbounded}), chunkTooShort);
    QCOMPARE(faultOf({Push, 3}), QString());
    QCOMPARE(faultOf({Push, 4}), boundaryOutOfBounds);
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(faultOf({Push, Unbounded}), boundaryOutOfBounds);
    QCOMPARE(reader.boundary, Unbounded);
    QCOMPARE(reader.position, Unbounded - 3);
    QCOMPARE(faultOf({Skip, 3}), fileTooShort);
    QCOMPARE(reader.position, Unbounded);
    QCOMPARE(faultOf({Get8}), chunkTooShort);
    QCOMPARE(faultOf({Skip, 1}), chunkTooShort);
    QCOMPARE(reader.position, Unbounded);
}

void TestExtractor::positionsAtTheLowerLimit()
{
    const QByteArray bytes = pattern(10);
    SequentialDevice device(bytes);
    Extractor reader(&device);
    reader.skip(Lowest);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.position, Lowest);
    reader.skip(-1);
    QCOMPARE(recorded(reader), chunkTooShort);
    QCOMPARE(reader.position, Lowest);

    reader.setError(QString());
    reader.pushBoundary(-1);
    QCOMPARE(recorded(reader), boundaryOutOfBounds);
    QCOMPARE(reader.boundary, Lowest);
    reader.popBoundary();

    reader.setError(QString());
    reader.pushBoundary(2);
    QVERIFY(!reader.failed());
    QCOMPARE(reader.boundary, Lowest + 2);
    QCOMPARE(reader.get8(), qint8(bytes.at(0)));
    reader.popBoundary();
    QCOMPARE(reader.position, Lowest + 2);
    QCOMPARE(device.delivered(), 2);
    QCOMPARE(reader.get32s(1).size(), 1);
    QCOMPARE(reader.getu8_vector(1), QVector<quint8>({quint8(bytes.at(6))}));
    QVERIFY(!reader.failed());
}

void TestExtractor::remainingHas64Bits()
{
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    reader.skip(Lowest);
    QCOMPARE(reader.remaining(), qint64(0xffffffff));
    reader.setDevice(&device);
    reader.skip(Unbounded);
    reader.pushBoundary(Lowest);
    QCOMPARE(reader.boundary, -1);
    QCOMPARE(reader.remaining(), -qint64(0x80000000));
    reader.popBoundary();
    QCOMPARE(reader.position, -1);
}

void TestExtractor::skip64OutOfRange_data()
{
    QTest::addColumn<qint64>("count");
    for (const qint64 count : {qint64(Unbounded) + 1, qint64(0xffffffff), qint64(0x100000001), OutOfRange, -OutOfRange,
                               qint64(Lowest) - 5, qint64(Lowest) - 1, -qint64(0x100000001)})
        QTest::addRow("%lld", count) << count;
}

void TestExtractor::skip64OutOfRange()
{
    QFETCH(qint64, count);
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    reader.get8();
    reader.skip64(count);
    QCOMPARE(recorded(reader), chunkTooShort);
    QCOMPARE(reader.position, 1);
    QCOMPARE(device.delivered(), 1);

    // This holds even where the target fits in 32 bits.
    reader.setDevice(&device);
    reader.skip(Lowest);
    reader.skip64(qint64(0x80000000));
    QCOMPARE(recorded(reader), chunkTooShort);
    QCOMPARE(reader.position, Lowest);
}

void TestExtractor::pushBoundary64OutOfRange_data()
{
    QTest::addColumn<qint64>("length");
    QTest::addColumn<int>("boundary");
    const auto row = [](qint64 length, int boundary) { QTest::addRow("%lld", length) << length << boundary; };
    row(qint64(Unbounded) + 1, Unbounded);
    row(0xffffffff, Unbounded);
    row(OutOfRange, Unbounded);
    row(qint64(Lowest) - 8, Lowest);
    row(-OutOfRange, Lowest);
}

void TestExtractor::pushBoundary64OutOfRange()
{
    QFETCH(qint64, length);
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    reader.get8();
    reader.pushBoundary64(length);
    QCOMPARE(recorded(reader), boundaryOutOfBounds);
    QTEST(reader.boundary, "boundary");
    reader.popBoundary();
    QTEST(reader.position, "boundary");
    QCOMPARE(reader.boundary, Unbounded);
}

void TestExtractor::largestLengthsInRange()
{
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    for (const int length : {Unbounded, Lowest}) {
        reader.setDevice(&device);
        reader.pushBoundary64(length);
        QVERIFY(!reader.failed());
        QCOMPARE(reader.boundary, length);
        reader.pushBoundary64(length == Lowest ? Lowest : 0);
        QCOMPARE(reader.failed(), false);
    }
    // A length of more than 32 bits is out of bounds, even where the end fits.
    reader.setDevice(&device);
    reader.skip(Lowest);
    reader.pushBoundary64(qint64(0x80000000));
    QCOMPARE(recorded(reader), boundaryOutOfBounds);
    QCOMPARE(reader.boundary, 0);
}

void TestExtractor::get32sGivesWhatIsThere_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("region");
    QTest::addColumn<int>("read");
    QTest::addColumn<QString>("error");
    // The device has four integers and three bytes.
    const auto row = [](int count, int region, int read, const QString &error) {
        QTest::addRow("%d in %d", count, region) << count << region << read << error;
    };
    row(0, 12, 0, QString());
    row(-1, 12, 0, QString());
    row(Lowest, 12, 0, QString());
    row(1, 12, 1, QString());
    row(3, 12, 3, QString());
    row(4, 12, 3, chunkTooShort);
    row(4, 15, 3, chunkTooShort);
    row(Unbounded, 12, 3, chunkTooShort);
    row(4, 100, 4, QString());
    row(5, 100, 4, fileTooShort);
    row(5, 19, 4, chunkTooShort);
    row(5, 20, 4, fileTooShort);
    row(Unbounded, 100, 4, fileTooShort);
    row(1, 3, 0, chunkTooShort);
    row(1, 0, 0, chunkTooShort);
}

void TestExtractor::get32sGivesWhatIsThere()
{
    QFETCH(int, count);
    QFETCH(int, region);
    QFETCH(int, read);
    SequentialDevice device(Bytes().u32(1).u32(-2).u32(0x01020304).u32(0x80000000).u16(0xffff).u8(0xff).data());
    Extractor reader(&device);
    reader.pushBoundary(region);
    QCOMPARE(reader.get32s(count), QVector<qint32>({1, -2, 0x01020304, Lowest}).mid(0, read));
    QTEST(recorded(reader), "error");
    QCOMPARE(reader.position, 4 * read);
    QCOMPARE(device.delivered(), recorded(reader) == fileTooShort ? 19 : 4 * read);
}

void TestExtractor::get32sTakesFewReads()
{
    RecordingDevice device(pattern(4000), QIODevice::ReadOnly);
    Extractor reader(&device);
    reader.pushBoundary(4000);
    QCOMPARE(reader.get32s(1000).size(), 1000);
    QVERIFY(device.asked().size() < 5);
}

void TestExtractor::get32sReadsAsManyReadsOfOne_data()
{
    QTest::addColumn<int>("largestRead");
    for (const int largestRead : {1, 2, 3, 4, 5, 6, 7, 8, 9, 50})
        QTest::addRow("by %d", largestRead) << largestRead;
}

void TestExtractor::get32sReadsAsManyReadsOfOne()
{
    QFETCH(int, largestRead);
    const auto run = [largestRead](bool oneByOne) {
        SequentialDevice device(pattern(43));
        device.setLargestRead(largestRead);
        Extractor reader(&device);
        reader.pushBoundary(50);
        Outcome result;
        if (oneByOne) {
            for (int i = 0; i < 12 && !reader.failed(); ++i)
                result.values.append(reader.get32());
            if (reader.failed())
                result.values.removeLast();
        } else {
            result.values = widened(reader.get32s(12));
        }
        result.position = reader.position;
        result.error = recorded(reader);
        return result;
    };
    const Outcome many = run(false);
    const Outcome ones = run(true);
    QCOMPARE(many.values, ones.values);
    QCOMPARE(many.position, ones.position);
    QCOMPARE(many.error, ones.error);
}

void TestExtractor::nothingIsTakenUnasked()
{
    SequentialDevice device(pattern(20000));
    Extractor reader(&device);
    const QVector<Operation> operations = {
        {Push, 19000},     {Get8},      {Get16},      {Get32},     {GetU8Vector, 5}, {GetU16Vector, 6},
        {GetU32Vector, 8}, {Get32s, 3}, {Skip, 5000}, {Push, 100}, {Get8},           {Pop},
        {Skip, 1},         {Pop},
    };
    for (const Operation &operation : operations) {
        valuesOf(reader, operation);
        QCOMPARE(device.delivered(), reader.position);
    }
    QCOMPARE(reader.position, 19000);
    QVERIFY(!reader.failed());
}

void TestExtractor::everySequenceOfOperations_data()
{
    const QIODevice::OpenMode buffered = QIODevice::ReadOnly;
    const QIODevice::OpenMode unbuffered = buffered | QIODevice::Unbuffered;
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("sequential");
    QTest::addColumn<int>("largestRead");
    QTest::addColumn<int>("answerAtEnd");
    QTest::addColumn<int>("factor");
    const auto row = [](const QByteArray &name, QIODevice::OpenMode mode, int largestRead, int answerAtEnd,
                        int factor) {
        QTest::newRow(name) << int(mode) << true << largestRead << answerAtEnd << factor;
    };
    for (const QIODevice::OpenMode mode : {buffered, unbuffered}) {
        const QByteArray name(mode == buffered ? "buffered" : "unbuffered");
        row(name, mode, Unbounded, 0, 1);
        row(name + ", -1 at its end", mode, Unbounded, -1, 1);
        row(name + ", large", mode, Unbounded, 0, 400);
        for (const int largestRead : {1, 2, 3, 5, 7, 100})
            row(name + ", by " + QByteArray::number(largestRead), mode, largestRead, 0, 1);
        for (const int largestRead : {100, 5000, 16384})
            row(name + ", large, by " + QByteArray::number(largestRead), mode, largestRead, 0, 400);
    }
    QTest::newRow("random access") << int(buffered) << false << Unbounded << 0 << 1;
}

// The model and the reader request the same bytes, and the device ends at the same byte when no region is open.
void TestExtractor::everySequenceOfOperations()
{
    const LogCapture log; // of failed seeks
    QFETCH(const int, mode);
    QFETCH(const bool, sequential);
    QFETCH(const int, largestRead);
    QFETCH(const int, answerAtEnd);
    QFETCH(const int, factor);
    const QByteArray bytes = pattern(150 * factor);
    QRandomGenerator random(17);
    for (int sequence = 0; sequence < (factor == 1 ? 300 : 60); ++sequence) {
        RecordingDevice device(bytes, QIODevice::OpenMode(mode));
        RecordingDevice modelDevice(bytes, QIODevice::OpenMode(mode));
        for (RecordingDevice *each : {&device, &modelDevice}) {
            each->setLargestRead(largestRead);
            each->setAnswerAtEnd(answerAtEnd);
        }
        RandomAccessDevice buffer(bytes);
        RandomAccessDevice modelBuffer(bytes);
        Extractor reader(sequential ? static_cast<QIODevice *>(&device) : &buffer);
        Model model(sequential ? static_cast<QIODevice *>(&modelDevice) : &modelBuffer);
        QVector<Operation> done;
        for (Operation operation : randomOperations(random)) {
            operation.argument *= factor;
            done.append(operation);
            const Outcome expected = model(operation);
            bool same = outcome(reader, operation) == expected && device.asked() == modelDevice.asked()
                        && buffer.pos() == modelBuffer.pos();
            if (reader.boundary == Unbounded)
                same = same && device.taken() == modelDevice.taken();
            if (!same)
                QFAIL(qPrintable(described(done)));
        }
    }
}

void TestExtractor::bytesAtHandAreTakenWhenTheReaderGoesOn()
{
    SequentialDevice device(pattern(100), QIODevice::ReadOnly);
    Extractor reader(&device);
    reader.pushBoundary(50);
    reader.get32();
    reader.get8();
    QCOMPARE(device.taken(), 4);
    QCOMPARE(reader.getu8_vector(20).constFirst(), quint8(pattern(100).at(5)));
    QCOMPARE(device.taken(), 25);
    reader.get16();
    reader.popBoundary();
    QCOMPARE(device.taken(), 50);
    QCOMPARE(device.read(1), pattern(100).mid(50, 1));
}

void TestExtractor::bytesAtHandBeyondTheRegionStayInTheDevice()
{
    SequentialDevice device(pattern(100), QIODevice::ReadOnly);
    Extractor reader(&device);
    reader.pushBoundary(10);
    reader.get32();
    reader.get8();
    reader.skip(7);
    QCOMPARE(recorded(reader), chunkTooShort);
    reader.release();
    QCOMPARE(device.taken(), 5);
    QCOMPARE(device.readAll(), pattern(100).mid(5));
}

void TestExtractor::bytesAtHandAreNotLookedAtOutsideARegion()
{
    SequentialDevice device(pattern(100), QIODevice::ReadOnly);
    Extractor reader(&device);
    reader.get32();
    reader.get32();
    QCOMPARE(device.taken(), 8);
    reader.pushBoundary(4);
    reader.get16();
    QCOMPARE(device.taken(), 8);
}

// every error text

void TestExtractor::errorChunkTooShort()
{
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    reader.pushBoundary(3);
    reader.get32();
    QCOMPARE(reader.errorString(), QStringLiteral("chunk too short: Unknown error"));
}

void TestExtractor::errorFileTooShort()
{
    SequentialDevice device(pattern(3));
    Extractor reader(&device);
    reader.get32();
    QCOMPARE(reader.errorString(), QStringLiteral("file too short: Unknown error"));
}

void TestExtractor::errorBadInput()
{
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    reader.getu16_vector(3);
    QCOMPARE(reader.errorString(), QStringLiteral("bad input: Unknown error"));
}

void TestExtractor::errorBoundaryOutOfBounds()
{
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    reader.pushBoundary(3);
    reader.pushBoundary(4);
    QCOMPARE(reader.errorString(), QStringLiteral("boundary out of bounds: Unknown error"));
}

void TestExtractor::errorFileTooLong()
{
    const QString tooLong = QStringLiteral("file too long: Unknown error");
    constexpr int Half = Extractor::MaxBytes / 2;
    for (const auto &read : {std::function<void(Extractor &)>([](Extractor &reader) { reader.get8(); }),
                             std::function<void(Extractor &)>([](Extractor &reader) { reader.skip(1); }),
                             std::function<void(Extractor &)>([](Extractor &reader) { reader.getu8_vector(1); }),
                             std::function<void(Extractor &)>([](Extractor &reader) { reader.get32s(1); })}) {
        EndlessDevice device;
        Extractor reader(&device);
        QCOMPARE(reader.getu8_vector(Half).size(), Half);
        reader.skip(Half);
        QVERIFY(!reader.failed());
        read(reader);
        QCOMPARE(reader.errorString(), tooLong);
    }
    EndlessDevice device;
    Extractor reader(&device);
    QCOMPARE(reader.getu8_vector(Extractor::MaxBytes + 1).size(), Extractor::MaxBytes + 1);
    QCOMPARE(reader.errorString(), tooLong);
    QCOMPARE(reader.position, int(Extractor::MaxBytes));
    // The next device starts at zero again.
    reader.setDevice(&device);
    reader.skip(Extractor::MaxBytes);
    QVERIFY(!reader.failed());
    // A device that ends before the ceiling is too short, although the request was above the ceiling.
    EndlessDevice shorter(Extractor::MaxBytes - 1);
    reader.setDevice(&shorter);
    reader.getu8_vector(Extractor::MaxBytes + 1);
    QCOMPARE(reader.errorString(), QStringLiteral("file too short: Unknown error"));
}

void TestExtractor::bytesAtHandStopAtTheCeiling()
{
    EndlessDevice device(std::numeric_limits<qint64>::max(), QIODevice::ReadOnly);
    Extractor reader(&device);
    reader.skip(Extractor::MaxBytes - 6);
    reader.pushBoundary(100);
    reader.get32();
    reader.get16();
    QVERIFY(!reader.failed());
    reader.get8();
    QCOMPARE(reader.errorString(), QStringLiteral("file too long: Unknown error"));
}

void TestExtractor::diagnosticsAreOfOneDevice()
{
    SequentialDevice device({});
    Extractor reader(&device);
    reader.diagnostics().add(SORREL_LOGGER, {Diagnostics::Code::NoAndroidNamespace});
    QCOMPARE(reader.diagnostics().items().size(), 1);
    reader.setDevice(&device);
    QVERIFY(reader.diagnostics().items().isEmpty());
}

void TestExtractor::errorTooManyStepsBack()
{
    SequentialDevice device(pattern(10));
    Extractor reader(&device);
    for (int i = 0; i <= Extractor::MaxStepsBack; ++i)
        reader.skip(-1);
    QCOMPARE(reader.errorString(), QStringLiteral("too many steps back: Unknown error"));
}

void TestExtractor::errorTooManyChunks()
{
    SequentialDevice device({});
    Extractor reader(&device);
    for (int i = 0; i < Extractor::MaxRegions; ++i) {
        reader.pushBoundary(0);
        reader.popBoundary();
    }
    QVERIFY(!reader.failed());
    reader.pushBoundary(0);
    reader.popBoundary();
    QCOMPARE(reader.errorString(), QStringLiteral("too many chunks: Unknown error"));
    reader.setDevice(&device);
    reader.pushBoundary(0);
    QVERIFY(!reader.failed());
}

QTEST_GUILESS_MAIN(TestExtractor)
#include "tst_extractor.moc"
