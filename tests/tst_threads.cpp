// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "Walker.h"

#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

using namespace fixture;

/// What may be done in several threads at once: an ApkFile for each, and copies of one table. For ThreadSanitizer.
class TestThreads : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void packageIsReadByAnObjectForEachThread();
    void copiesOfATableAreReadInEachThread();

private:
    QTemporaryDir m_directory;
    QString m_path;
};

namespace {

constexpr int Threads = 8;
constexpr int Rounds = 20;

void inThreads(const std::function<void()> &function)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < Threads; ++i)
        threads.emplace_back(function);
    for (std::thread &thread : threads)
        thread.join();
}

} // namespace

void TestThreads::initTestCase()
{
    const QByteArray table =
        TableBuilder()
            .strings({QStringLiteral("Notes"), QStringLiteral("Notizen")})
            .package(PackageBuilder()
                         .types({QStringLiteral("string")})
                         .type(TypeBuilder(1).value(0, String, 0).value(1, Reference, 0x7f010000))
                         .type(TypeBuilder(1, ConfigBuilder().locale("de").build()).value(0, String, 1)))
            .build();
    m_path = m_directory.filePath(QStringLiteral("app.apk"));
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(package(table, smallManifest()));
}

void TestThreads::packageIsReadByAnObjectForEachThread()
{
    std::atomic<int> good(0);
    inThreads([&] {
        for (int round = 0; round < Rounds; ++round) {
            ApkFile apk(m_path);
            visit(apk, 4);
            good += apk.mainPackage() == QLatin1String("org.example.app") ? 1 : 0;
        }
    });
    QCOMPARE(good.load(), Threads * Rounds);
}

void TestThreads::copiesOfATableAreReadInEachThread()
{
    const ApkResources resources = ApkFile(m_path).resources();
    QVERIFY(resources.isValid());
    std::atomic<int> good(0);
    inThreads([&] {
        const ApkResources copy(resources);
        for (int round = 0; round < Rounds; ++round) {
            visit(copy, 4);
            good += copy.lookupByLocale(QStringLiteral("@string/1"), 5).size();
        }
    });
    QCOMPARE(good.load(), Threads * Rounds * 2);
}

QTEST_GUILESS_MAIN(TestThreads)
#include "tst_threads.moc"
