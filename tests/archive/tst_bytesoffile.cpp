// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Cost.h"
#include "Files.h"
#include "archive/BytesOfFile.h"
#include "archive/MappingGuard.h"

#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <vector>

#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace fixture;

namespace {

constexpr int Large = 1 << 20;

QByteArray pattern(int size)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = char(1 + i % 251);
    return bytes;
}

/// Whether @p address is in a file of the directory @p directory, mapped into this process.
bool isMapped(const uchar *address, const QString &directory)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        qFatal("the list of mappings cannot be read");
    for (const QByteArray &line : maps.readAll().split('\n')) {
        const QList<QByteArray> ends = line.left(line.indexOf(' ')).split('-');
        const auto number = reinterpret_cast<quintptr>(address);
        if (ends.size() == 2 && number >= ends.at(0).toULongLong(nullptr, 16)
            && number < ends.at(1).toULongLong(nullptr, 16))
            return line.contains(QFile::encodeName(directory));
    }
    return false;
}

volatile std::sig_atomic_t signalsSeen = 0;

// Ends the process: the fault would come again.
void endAfterSignal(int)
{
    _exit(42);
}

void countSignal(int)
{
    signalsSeen = signalsSeen + 1;
}

/// The exit status of @p function in a process of its own; minus the signal that ended it.
template <typename Function>
int statusOf(const Function &function)
{
    const pid_t child = fork();
    if (child == 0) {
        function();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// A file that is mapped by somebody else.
class UnguardedFile
{
public:
    explicit UnguardedFile(const QString &name) : m_file(name)
    {
        if (m_file.open(QIODevice::ReadOnly))
            m_begin = m_file.map(0, Large);
    }
    ByteView bytes() const { return {m_begin, m_begin != nullptr ? Large : 0}; }

private:
    QFile m_file;
    const uchar *m_begin = nullptr;
};

int sum(const ByteView &bytes)
{
    int sum = 0;
    for (qint64 at = 0; at < bytes.size(); ++at)
        sum += bytes.u8(at);
    return sum;
}

} // namespace

class TestBytesOfFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    // Processes that are forked here have no handler yet.
    void otherFaultsGoToTheHandlerBefore();
    void otherFaultsEndTheProcessWithoutAHandler();
    void onlyRegularFilesAreOpened();
    void filesMayHaveAnyName();
    void resourcesOfAProgramAreFiles();
    void shortRangesAreCopied();
    void longRangesAreMapped();
    void viewsOutliveTheirFile();
    void fileThatShrinksReadsAsZeros_data();
    void fileThatShrinksReadsAsZeros();
    void fileThatShrankIsReadToItsEnd();
    void manyMappingsAreCopiedInTheEnd();
    void nothingIsMappedWithoutTheHandler();

private:
    QString write(const QByteArray &bytes) const
    {
        return writeFile(m_directory->filePath(QStringLiteral("file")), bytes);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestBytesOfFile::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void TestBytesOfFile::onlyRegularFilesAreOpened()
{
    const QByteArray fifo = QFile::encodeName(m_directory->filePath(QStringLiteral("fifo")));
    QCOMPARE(mkfifo(fifo.constData(), 0600), 0);
    QVERIFY(BytesOfFile::openNativePath(fifo) == nullptr);
    QVERIFY(BytesOfFile::open(QFile::decodeName(fifo)) == nullptr);
    QVERIFY(BytesOfFile::open(m_directory->path()) == nullptr);
    QVERIFY(BytesOfFile::open(m_directory->filePath(QStringLiteral("nothing"))) == nullptr);
    QVERIFY(BytesOfFile::open(QString()) == nullptr);
    QVERIFY(BytesOfFile::openNativePath(QByteArray()) == nullptr);
    const QByteArray file = QFile::encodeName(write("abc"));
    QVERIFY(BytesOfFile::openNativePath(file) != nullptr);
    QVERIFY(BytesOfFile::openNativePath(file + '\0' + "x") == nullptr);
}

void TestBytesOfFile::filesMayHaveAnyName()
{
    const QByteArray path = QFile::encodeName(m_directory->path()) + "/\xff\xfe";
    QVERIFY(rename(QFile::encodeName(write("abc")).constData(), path.constData()) == 0);
    const auto bytes = BytesOfFile::openNativePath(path);
    QVERIFY(bytes != nullptr);
    QCOMPARE(bytes->read(0, 10), QByteArray("abc"));
    QVERIFY(unlink(path.constData()) == 0); // QTemporaryDir cannot
}

void TestBytesOfFile::resourcesOfAProgramAreFiles()
{
    // Qt has resources of its own.
    const auto bytes = BytesOfFile::open(QStringLiteral(":/nothing"));
    QVERIFY(bytes == nullptr);
    QVERIFY(!QFile(QStringLiteral(":/nothing")).exists());
}

void TestBytesOfFile::shortRangesAreCopied()
{
    const QByteArray content = pattern(Large);
    const auto bytes = BytesOfFile::open(write(content));
    QCOMPARE(bytes->size(), qint64(Large));
    const SharedBytes view = bytes->view(5, BytesOfFile::MinMappedBytes - 1);
    QVERIFY(!isMapped(view.view().data(), m_directory->path()));
    QCOMPARE(view.toByteArray(), content.mid(5, int(BytesOfFile::MinMappedBytes) - 1));
    QCOMPARE(bytes->read(Large - 3, 10), content.right(3));
}

void TestBytesOfFile::longRangesAreMapped()
{
    const QByteArray content = pattern(Large);
    const auto bytes = BytesOfFile::open(write(content));
    for (const int at : {0, 1, 4095, 4096, 10000}) {
        const SharedBytes view = bytes->view(at, BytesOfFile::MinMappedBytes);
        QVERIFY(isMapped(view.view().data(), m_directory->path()));
        QCOMPARE(view.toByteArray(), content.mid(at, int(BytesOfFile::MinMappedBytes)));
    }
    const SharedBytes rest = bytes->view(1000, Large);
    QCOMPARE(rest.toByteArray(), content.mid(1000));
}

void TestBytesOfFile::viewsOutliveTheirFile()
{
    const QByteArray content = pattern(Large);
    const QString name = write(content);
    auto bytes = BytesOfFile::open(name);
    const SharedBytes view = bytes->view(0, Large);
    bytes.reset();
    QVERIFY(QFile::remove(name));
    QCOMPARE(view.toByteArray(), content);
}

void TestBytesOfFile::fileThatShrinksReadsAsZeros_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("empty") << 0;
    QTest::newRow("a byte of a page") << 4096 + 1;
    QTest::newRow("half") << Large / 2;
}

void TestBytesOfFile::fileThatShrinksReadsAsZeros()
{
    QFETCH(int, size);
    const QByteArray content = pattern(Large);
    const QString name = write(content);
    const auto bytes = BytesOfFile::open(name);
    const SharedBytes whole = bytes->view(0, Large);
    const SharedBytes other = bytes->view(4096, Large - 4096);
    QVERIFY(isMapped(whole.view().data(), m_directory->path()));
    QVERIFY(QFile::resize(name, size));
    QCOMPARE(whole.toByteArray(), content.left(size) + QByteArray(Large - size, '\0'));
    QCOMPARE(other.toByteArray(), whole.toByteArray().mid(4096));
    // It may be read again and again, in any order.
    QCOMPARE(sum(whole.view().from(size)), 0);
    // The guard still works for another file.
    QVERIFY(QFile::resize(name, Large));
    const SharedBytes again = bytes->view(0, Large);
    QVERIFY(QFile::resize(name, 0));
    QCOMPARE(sum(again.view()), 0);
}

void TestBytesOfFile::fileThatShrankIsReadToItsEnd()
{
    const QByteArray content = pattern(Large);
    const QString name = write(content);
    const auto bytes = BytesOfFile::open(name);
    QVERIFY(QFile::resize(name, 1000));
    QCOMPARE(bytes->read(0, Large), content.left(1000));
    QCOMPARE(bytes->read(2000, 10), QByteArray());
    const SharedBytes view = bytes->view(0, Large);
    QVERIFY(!isMapped(view.view().data(), m_directory->path()));
    QCOMPARE(view.toByteArray(), content.left(1000));
}

void TestBytesOfFile::manyMappingsAreCopiedInTheEnd()
{
    const QByteArray content = pattern(int(BytesOfFile::MinMappedBytes));
    const auto bytes = BytesOfFile::open(write(content));
    std::vector<SharedBytes> views;
    for (int i = 0; i < MappingGuard::MaxMappings; ++i)
        views.push_back(bytes->view(0, content.size()));
    QVERIFY(isMapped(views.back().view().data(), m_directory->path()));
    const SharedBytes copied = bytes->view(0, content.size());
    QVERIFY(!isMapped(copied.view().data(), m_directory->path()));
    QCOMPARE(copied.toByteArray(), content);
    views.pop_back();
    const SharedBytes mapped = bytes->view(0, content.size());
    QVERIFY(isMapped(mapped.view().data(), m_directory->path()));
}

void TestBytesOfFile::otherFaultsGoToTheHandlerBefore()
{
    if (isInstrumented())
        QSKIP("a sanitizer handles the signal itself", "the macro wants a second argument");
    const QString directory = m_directory->path();
    const auto afterFault = [&](bool isOurs) {
        const QString name = write(pattern(Large));
        return statusOf([&]() {
            std::signal(SIGBUS, endAfterSignal);
            const UnguardedFile other(name);
            const SharedBytes guarded = BytesOfFile::open(name)->view(0, Large);
            if (!isMapped(guarded.view().data(), directory) || !QFile::resize(name, 0))
                _exit(1);
            sum(isOurs ? guarded.view() : other.bytes());
        });
    };
    QCOMPARE(afterFault(true), 0);
    QCOMPARE(afterFault(false), 42);
}

void TestBytesOfFile::otherFaultsEndTheProcessWithoutAHandler()
{
    if (isInstrumented())
        QSKIP("a sanitizer handles the signal itself", "the macro wants a second argument");
    const QString directory = m_directory->path();
    const QString name = write(pattern(Large));
    const int status = statusOf([&]() {
        std::signal(SIGBUS, SIG_DFL); // QtTest has set a handler
        const UnguardedFile other(name);
        const SharedBytes guarded = BytesOfFile::open(name)->view(0, Large);
        if (!isMapped(guarded.view().data(), directory) || !QFile::resize(name, 0))
            _exit(1);
        sum(other.bytes());
    });
    QCOMPARE(status, -SIGBUS);
}

void TestBytesOfFile::nothingIsMappedWithoutTheHandler()
{
    const QString directory = m_directory->path();
    const QString name = write(pattern(Large));
    const int status = statusOf([&]() {
        const auto bytes = BytesOfFile::open(name);
        const bool isFirstMapped = isMapped(bytes->view(0, Large).view().data(), directory);
        std::signal(SIGBUS, countSignal);
        const SharedBytes second = bytes->view(0, Large);
        const bool isSecondMapped = isMapped(second.view().data(), directory);
        _exit(isFirstMapped && !isSecondMapped && second.size() == Large && signalsSeen == 0 ? 7 : 1);
    });
    QCOMPARE(status, 7);
}

QTEST_GUILESS_MAIN(TestBytesOfFile)
#include "tst_bytesoffile.moc"
