// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Cost.h"
#include "DiagnosticChecks.h"
#include "DrawnIconCheck.h"
#include "Files.h"
#include "LintCases.h"
#include "LintFixture.h"
#include "LogCapture.h"
#include "OddDocuments.h"
#include "OddTables.h"
#include "PackageLint.h"
#include "Pictures.h"

#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

using namespace fixture;

namespace {

constexpr qint64 FirstString = LabelResource;
constexpr int StringType = 1;
constexpr int DrawableType = 2;

// Launchers with @p attribute. The attribute of launcher n refers to entry n.
QByteArray launchersThatRefer(int count, const QString &attribute)
{
    const QString activity = QStringLiteral("activity");
    XmlBuilder builder = XmlBuilder::manifest(Encoding::Utf8);
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .start(QStringLiteral("application"));
    for (int i = 0; i < count; ++i)
        builder
            .start(activity, {androidText(QStringLiteral("name"), QStringLiteral(".A%1").arg(i)),
                              androidReference(attribute, FirstString + i)})
            .launcherFilter()
            .end(activity);
    return builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
}

// Entries that each refer to the next, among chunks without a value for them.
QByteArray chain(int length, int emptyChunks)
{
    TypeBuilder type(StringType);
    for (int i = 0; i < length; ++i)
        type.value(i, Reference, FirstString + i + 1);
    return lintTable(lintPackage().type(type).chunk(
        TypeBuilder(StringType, ConfigBuilder(4).build()).build().repeated(emptyChunks)));
}

QByteArray sparseTypes(int count)
{
    TypeBuilder type(StringType);
    type.encoding(TableEncoding::Sparse);
    for (int i = 0; i < 0xffff; ++i)
        type.offset(i, 0);
    type.unlisted(simpleEntry(String, 0));
    return lintTable(lintPackage().chunk(type.build().repeated(count)));
}

// Launchers with an icon file each. Every icon is drawn separately.
QByteArray launchersOfLargePictures()
{
    constexpr int Count = 60;
    TypeBuilder type(DrawableType);
    QStringList paths;
    QVector<Member> pictures;
    const QByteArray largePicture = blackPng(3000, 3000);
    for (int i = 0; i < Count; ++i) {
        paths.append(QStringLiteral("res/%1.png").arg(i));
        type.value(i, String, i);
        pictures.append({paths.last(), largePicture});
    }
    const QByteArray table = TableBuilder().strings(paths).package(lintPackage().type(type)).build();
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .start(QStringLiteral("application"));
    for (int i = 0; i < Count; ++i)
        builder
            .start(QStringLiteral("activity"), {androidText(QStringLiteral("name"), QStringLiteral(".A%1").arg(i)),
                                                androidReference(QStringLiteral("icon"), IconResource + i)})
            .launcherFilter()
            .end(QStringLiteral("activity"));
    return package(table, builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build(), pictures);
}

// An icon of layers that all refer to the icon itself.
QByteArray iconOfItself()
{
    const QString drawable = QStringLiteral("drawable");
    XmlBuilder builder;
    builder.attributeId(drawable, 0x01010199).startNamespace(QStringLiteral("android"), androidUri);
    builder.start(QStringLiteral("layer-list"));
    for (int i = 0; i < 1000; ++i)
        builder.empty(QStringLiteral("item"), {androidReference(drawable, IconResource)});
    builder.end(QStringLiteral("layer-list"));
    return lintPackageFile(lintTable(lintPackage().type(labelType()).type(xmlIconType())), lintManifest(),
                           {{QStringLiteral("res/icon.xml"), builder.build()}});
}

QByteArray manyMembers(const QByteArray &name, int count, int localSize)
{
    QVector<RawMember> members;
    for (int i = 0; i < count; ++i) {
        RawMember member{name + QByteArray::number(i), "a"};
        member.flags = 1;
        member.method = 12;
        member.localSize = localSize;
        members.append(member);
    }
    return rawZip(members);
}

// Many directory entries for one member. Its name has the maximum length.
QByteArray oneMemberManyTimes(int count)
{
    const QByteArray name(0xffff, 'a');
    QVector<RawMember> members{{name, "a"}};
    for (int i = 1; i < count; ++i) {
        RawMember member{name, QByteArray()};
        member.headerAt = 0;
        member.localName = "";
        members.append(member);
    }
    return rawZip(members);
}

// The checks of the diagnostics among the findings about @p file, each once.
QStringList diagnosticsIn(const QString &file)
{
    QStringList names;
    const std::vector<LintCheck> &checks = DiagnosticChecks::all();
    const PackageLint lint{FileName(file)};
    for (const Finding &finding : lint.findings()) {
        if (std::any_of(checks.cbegin(), checks.cend(),
                        [&finding](const LintCheck &check) { return finding.check == QLatin1String(check.name); }))
            names.append(finding.check);
    }
    return names;
}

// The checks of @p oddities, in the order of the output.
QStringList checksOf(QVector<Oddity> oddities)
{
    std::sort(oddities.begin(), oddities.end());
    QStringList names;
    for (const Oddity oddity : oddities)
        names.append(QString::fromLatin1(DiagnosticChecks::of(SorrelKit::Diagnostic::Code(int(oddity) + 1)).name));
    return names;
}

} // namespace

class TestPackageLint : public QObject
{
    Q_OBJECT

private slots:
    void everyOddityIsNamed();
    void boundsHold_data();
    void boundsHold();
    void everyPrefixIsAnswered();
    void everyDamagedFieldIsAnswered_data();
    void everyDamagedFieldIsAnswered();
    void threadsFindTheSame();
    void theLogIsLeftAsItWas();
    void filesAreClosed();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }
    bool endsForAll(const std::function<QByteArray(int)> &bytesOf, int count) const;

    QTemporaryDir m_directory;
};

void TestPackageLint::everyOddityIsNamed()
{
    int odd = 0;
    const auto compare = [&](const OddFile &file, const QByteArray &bytes) {
        if (file.fault != FormatFault::None)
            return;
        const QStringList found = diagnosticsIn(write(QStringLiteral("odd.apk"), bytes));
        QVERIFY2(found == checksOf(file.oddities), qPrintable(file.name + found.join(QLatin1Char(' '))));
        odd += file.oddities.isEmpty() ? 0 : 1;
    };
    for (const OddFile &file : oddDocuments())
        compare(file, lintPackageFile(lintTable(), file.bytes));
    for (const OddFile &file : oddTables())
        compare(file, lintPackageFile(file.bytes));
    QVERIFY(odd > 50);
}

void TestPackageLint::boundsHold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isDrawn");
    constexpr int Launchers = 5000;
    constexpr int Chunks = 65000;
    const QByteArray sparse = sparseTypes(50);
    for (const QString &attribute : {QStringLiteral("label"), QStringLiteral("icon")}) {
        const auto name = [&](const char *text) { return QByteArray(text) + ": " + qPrintable(attribute); };
        QTest::newRow(name("chain that every launcher starts elsewhere in"))
            << package(chain(Launchers, 0), launchersThatRefer(Launchers, attribute)) << false;
        QTest::newRow(name("the same, among chunks of no values"))
            << package(chain(Launchers, Chunks), launchersThatRefer(Launchers, attribute)) << false;
        QTest::newRow(name("sparse types that are full"))
            << package(sparse, launchersThatRefer(Launchers, attribute)) << false;
    }
    for (const bool isDrawn : {false, true}) {
        const QByteArray how = isDrawn ? ", drawn" : "";
        QTest::newRow("icons of large pictures" + how) << launchersOfLargePictures() << isDrawn;
        QTest::newRow("icon of itself" + how) << iconOfItself() << isDrawn;
    }
    QTest::newRow("manifest of nothing, inflated") << package(lintTable(), QByteArray(32 << 20, '\0')) << false;
    QTest::newRow("table of nothing, inflated") << package(QByteArray((128 << 20) + 1, '\0'), lintManifest()) << false;
    QTest::newRow("members that are all odd") << manyMembers("/../\\\033", 60000, 7) << false;
    QTest::newRow("one member many times") << oneMemberManyTimes(1000) << false;
    QTest::newRow("ends of archives") << rawZip(lintMembers()).repeated(20) + QByteArray("PK\5\6").repeated(16000)
                                      << false;
    QTest::newRow("unknown chunks") << lintPackageWithChunk(chunk(0x0190).repeated(500000)) << false;
}

void TestPackageLint::boundsHold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isDrawn);
    constexpr qint64 MaxMemory = qint64(256) << 20;
    const QString file = write(QStringLiteral("hostile.apk"), bytes);
    const IconCheckFactory icons = isDrawn ? DrawnIconCheck::make : IconCheckFactory();
    const Cost taken = cost([&] { PackageLint(FileName(file), icons).toJson(); });
    QVERIFY(taken.ended);
    QVERIFY2(taken.memory < MaxMemory, qPrintable(QString::number(taken.memory)));
}

bool TestPackageLint::endsForAll(const std::function<QByteArray(int)> &bytesOf, int count) const
{
    return cost([&] {
               for (int i = 0; i < count; ++i)
                   PackageLint(FileName(write(QStringLiteral("damaged.apk"), bytesOf(i))), DrawnIconCheck::make)
                       .toJson();
           })
        .ended;
}

void TestPackageLint::everyPrefixIsAnswered()
{
    constexpr int Step = 64;
    for (const QByteArray &bytes : {lintPackageFile(), rawZip(lintMembers())}) {
        QVERIFY(endsForAll([&](int i) { return bytes.left(Step * i); }, int(bytes.size()) / Step + 1));
        // The same with the end of the archive, which leads to the directory.
        QVERIFY(endsForAll([&](int i) { return bytes.left(Step * i) + bytes.right(ZipEndSize); },
                           int(bytes.size()) / Step + 1));
    }
}

void TestPackageLint::everyDamagedFieldIsAnswered_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<qint64>("value");
    QTest::newRow("bytes of 0xff") << 1 << qint64(0xff);
    QTest::newRow("16 bits that are negative") << 2 << qint64(0x8000);
    QTest::newRow("32 bits, -1") << 4 << qint64(0xffffffff);
    QTest::newRow("32 bits, the lowest") << 4 << qint64(0x80000000);
    QTest::newRow("32 bits, a header's size") << 4 << qint64(8);
}

// The manifest and the table are stored uncompressed, so the damage also reaches their fields.
void TestPackageLint::everyDamagedFieldIsAnswered()
{
    QFETCH(int, width);
    QFETCH(qint64, value);
    const QByteArray good = rawZip(lintMembers());
    const auto damaged = [&](int i) {
        QByteArray bytes = good;
        if (width == 1)
            poke8(bytes, i, value);
        else if (width == 2)
            poke16(bytes, i, value);
        else
            poke32(bytes, i, value);
        return bytes;
    };
    QVERIFY(endsForAll(damaged, int(good.size()) - width));
}

void TestPackageLint::threadsFindTheSame()
{
    constexpr int Threads = 4;
    constexpr int Rounds = 5;
    QStringList files;
    QVector<QJsonArray> expected;
    for (const LintCase &row : lintCases()) {
        files.append(write(QStringLiteral("case-%1.apk").arg(files.size()), row.bytes));
        expected.append(row.findings);
    }
    std::atomic<int> different{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < Threads; ++thread)
        threads.emplace_back([&, thread] {
            for (int i = 0; i < Rounds * files.size(); ++i) {
                const int index = (i + thread * int(files.size()) / Threads) % int(files.size());
                if (PackageLint(FileName(files.at(index)), DrawnIconCheck::make).toJson() != expected.at(index))
                    ++different;
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(different.load(), 0);
}

void TestPackageLint::theLogIsLeftAsItWas()
{
    const QString file = write(QStringLiteral("odd.apk"), lintPackageWithChunk(nodeChunk(0x0190, QByteArray())));
    const LogCapture log;
    QCOMPARE(PackageLint(FileName(file)).findings().size(), 1);
    qDebug("after");
    QCOMPARE(log.texts(), QStringList{QStringLiteral("after")});
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, false);
    QCOMPARE(PackageLint(FileName(file)).findings().size(), 1);
    qDebug("off");
    QCOMPARE(log.texts(), QStringList{QStringLiteral("after")});
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, true);
}

void TestPackageLint::filesAreClosed()
{
    const auto openFiles = [] {
        return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::System | QDir::Files).size();
    };
    const QString file = write(QStringLiteral("good.apk"), lintPackageFile());
    const auto before = openFiles();
    QVERIFY(before > 0);
    for (int i = 0; i < 100; ++i)
        PackageLint{FileName(file)};
    QCOMPARE(openFiles(), before);
}

QTEST_GUILESS_MAIN(TestPackageLint)
#include "tst_package_lint.moc"
