// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "KitIcons.h"
#include "PlatformFixture.h"
#include "Walker.h"

#include <SorrelKit/Package.h>
#include <SorrelKit/Platform.h>

#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

using namespace fixture;

/// Calls that are allowed in several threads at once: each thread has its own ApkFile or Package, or its own copy of
/// one table. ThreadSanitizer runs this test.
class TestThreads : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void packageIsReadByAnObjectForEachThread();
    void packageOfTheKitIsReadByAnObjectForEachThread();
    void copiesOfATableAreReadInEachThread();
    void packagesOfAllThreadsShareAPlatform();

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
            .strings({QStringLiteral("Notes"), QStringLiteral("Notizen"), QStringLiteral("res/icon.png")})
            .package(PackageBuilder()
                         .types({QStringLiteral("string"), QStringLiteral("drawable")})
                         .type(TypeBuilder(2).value(0, String, 2))
                         .type(TypeBuilder(1).value(0, String, 0).value(1, Reference, 0x7f010000))
                         .type(TypeBuilder(1, ConfigBuilder().locale("de").build()).value(0, String, 1)))
            .build();
    m_path = m_directory.filePath(QStringLiteral("app.apk"));
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    XmlBuilder manifest = XmlBuilder::manifest();
    manifest
        .start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.example.app"))})
        .empty(QStringLiteral("application"), {androidReference(QStringLiteral("label"), 0x7f010001),
                                               androidReference(QStringLiteral("icon"), 0x7f020000)})
        .end(QStringLiteral("manifest"));
    file.write(package(table, manifest.build(), {{QStringLiteral("res/icon.png"), picture(48, 48, 0xff0000)}}));
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

void TestThreads::packageOfTheKitIsReadByAnObjectForEachThread()
{
    std::atomic<int> good(0);
    inThreads([&] {
        for (int round = 0; round < Rounds; ++round) {
            const SorrelKit::Package kitPackage(m_path);
            const bool isLabelled = kitPackage.label(QLocale("de")) == QLatin1String("Notizen");
            const bool isDrawn = iconOf(kitPackage, 32).pixel(16, 16) == 0xffff0000;
            good += isLabelled && isDrawn ? 1 : 0;
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
            good += int(copy.lookupByLocale(QStringLiteral("@string/1"), 5).size());
        }
    });
    QCOMPARE(good.load(), Threads * Rounds * 2);
}

void TestThreads::packagesOfAllThreadsShareAPlatform()
{
    const QString path = m_directory.filePath(QStringLiteral("framework.apk"));
    writeFile(path, package(platformTable(), platformManifest(),
                            {{QStringLiteral("res/icon.png"), picture(48, 48, 0xff0000)}}));
    const QByteArray application =
        package(emptyTable(),
                packageManifest()
                    .start(QStringLiteral("manifest"))
                    .empty(QStringLiteral("application"), {androidReference(QStringLiteral("label"), PlatformAlias),
                                                           androidReference(QStringLiteral("icon"), PlatformIcon)})
                    .end(QStringLiteral("manifest"))
                    .build());
    // The threads race to open it.
    const SorrelKit::Platform platform(path);
    std::atomic<int> good(0);
    inThreads([&] {
        const SorrelKit::Platform own = platform;
        for (int round = 0; round < Rounds; ++round) {
            PackageDevice device(application);
            SorrelKit::Package package(&device);
            package.setPlatform(own);
            if (package.label(QLocale(QLocale::German)) == QLatin1String("Gut") && !iconOf(package, 48).isNull()
                && own.apiLevel() == 29 && !own.error())
                ++good;
        }
    });
    QCOMPARE(good.load(), Threads * Rounds);
}

QTEST_GUILESS_MAIN(TestThreads)
#include "tst_threads.moc"
