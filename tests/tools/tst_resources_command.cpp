// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Bytes.h"
#include "Files.h"
#include "Tool.h"
#include "format/ResourceTypes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

// ESC, a newline, and a character that reverses the direction of the text after it.
const char hostile[] = "a\033[31m\nb\u202ec";

QString utf8(const char *text)
{
    return QString::fromUtf8(text);
}

QStringList names(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(utf8(text));
    return list;
}

QByteArray style()
{
    const auto item = [](qint64 name, int type, qint64 data) {
        return Bytes().u32(name).u16(8).u8(0).u8(type).u32(data).data();
    };
    return Bytes()
        .u16(16)
        .u16(1)
        .u32(3)
        .u32(0x01030005)
        .u32(2)
        .raw(item(0x010100d4, 0x1c, 0xff204080))
        .raw(item(0x7f010000, Reference, 0x7f010001))
        .data();
}

// Texts in two languages, a style, and names and values that would control a terminal.
QByteArray table()
{
    TypeBuilder plain(1);
    plain.entry(0, simpleEntry(String, 0, 0, 0))
        .entry(1, simpleEntry(String, 2, 0, 1))
        .entry(2, simpleEntry(String, 3, 0, 2));
    TypeBuilder german(1, ConfigBuilder().locale("de", "AT").build());
    german.entry(0, simpleEntry(String, 1, 0, 0)).entry(5, simpleEntry(Integer, 7, 0, -1));
    return TableBuilder()
        .strings({utf8("Notes"), utf8("Notizen"), utf8(hostile), QString(300, QChar(0x6f22))})
        .package(PackageBuilder()
                     .types(names({"string", "style"}))
                     .keys(names({"app_name", hostile, "long", "Theme"}))
                     .type(plain)
                     .type(german)
                     .type(TypeBuilder(2).entry(0, style())))
        .build();
}

QList<QJsonObject> objects(const QByteArray &lines)
{
    QList<QJsonObject> list;
    for (const QByteArray &line : lines.split('\n')) {
        if (!line.isEmpty())
            list.append(QJsonDocument::fromJson(line).object());
    }
    return list;
}

} // namespace

class TestResourcesCommand : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void listForAPerson();
    void listIsCutOnATerminal();
    void oneForAPerson();
    void forAProgram();
    void oneForAProgram();
    void referencesOfManyForms();
    void resourceThatIsNotThere();
    void packagesThatCannotBeRead();
    void damagedTableIsToldAsFarAsItGoes();
    void tooManyResources();
    void wrongUsage();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }

    QTemporaryDir m_directory;
    QString m_file;
};

void TestResourcesCommand::initTestCase()
{
    m_file = write(QStringLiteral("notes.apk"), package(table(), smallManifest()));
}

void TestResourcesCommand::listForAPerson()
{
    const ToolRun run = runSorrel({QStringLiteral("resources"), m_file});
    QCOMPARE(run.status, 0);
    QCOMPARE(run.errors, QByteArray());
    const QString expected = utf8("0x7f010000  string/app_name    Notes\n"
                                  "0x7f010001  string/a\uFFFD[31m\uFFFDb\uFFFDc  a\uFFFD[31m\uFFFDb\uFFFDc\n"
                                  "0x7f010002  string/long        ")
                             + QString(300, QChar(0x6f22))
                             + utf8("\n0x7f010005  string/5           7 (de-rAT)\n"
                                    "0x7f020000  style/Theme        @0x01030005, 2 items\n");
    QCOMPARE(QString::fromUtf8(run.output), expected);
}

void TestResourcesCommand::listIsCutOnATerminal()
{
    const ToolRun run = runSorrelOnTerminal({QStringLiteral("resources"), m_file},
                                            {{{QStringLiteral("NO_COLOR"), QStringLiteral("1")}}, {}, {}, {}});
    QCOMPARE(run.status, 0);
    const QStringList lines = QString::fromUtf8(run.output).split(QStringLiteral("\r\n"));
    QCOMPARE(lines.size(), 6);
    QCOMPARE(lines.at(0), QStringLiteral("0x7f010000  string/app_name    Notes"));
    // The first 31 of the 80 columns have other texts. The mark takes one of the other 49 columns, each character two.
    QCOMPARE(lines.at(2),
             QStringLiteral("0x7f010002  string/long        ") + QString(24, QChar(0x6f22)) + QChar(0x2026));
    QVERIFY(!run.output.contains('\033'));
}

void TestResourcesCommand::oneForAPerson()
{
    const ToolRun text = runSorrel({QStringLiteral("resources"), m_file, QStringLiteral("@string/app_name")});
    QCOMPARE(text.status, 0);
    QCOMPARE(QString::fromUtf8(text.output), utf8("0x7f010000  string/app_name\n"
                                                  "  (default)  string  Notes\n"
                                                  "  de-rAT     string  Notizen\n"));
    const ToolRun map = runSorrel({QStringLiteral("resources"), m_file, QStringLiteral("style/Theme")});
    QCOMPARE(map.status, 0);
    QCOMPARE(QString::fromUtf8(map.output), utf8("0x7f020000  style/Theme\n"
                                                 "  (default)  map  @0x01030005, 2 items\n"
                                                 "    0x010100d4       #ff204080\n"
                                                 "    string/app_name  @string/a\uFFFD[31m\uFFFDb\uFFFDc\n"));
    const ToolRun odd = runSorrel({QStringLiteral("resources"), m_file, QStringLiteral("0x7f010001")});
    QCOMPARE(QString::fromUtf8(odd.output), utf8("0x7f010001  string/a\uFFFD[31m\uFFFDb\uFFFDc\n"
                                                 "  (default)  string  a\uFFFD[31m\uFFFDb\uFFFDc\n"));
}

void TestResourcesCommand::forAProgram()
{
    const ToolRun run = runSorrel({QStringLiteral("resources"), QStringLiteral("--json"), m_file});
    QCOMPARE(run.status, 0);
    QVERIFY(!run.output.contains('\033'));
    const QList<QJsonObject> resources = objects(run.output);
    QCOMPARE(resources.size(), 5);
    for (const QJsonObject &resource : resources) {
        QCOMPARE(resource.keys(), names({"file", "id", "name", "values"}));
        QCOMPARE(resource.value(QStringLiteral("file")).toString(), m_file);
    }
    QCOMPARE(resources.at(1).value(QStringLiteral("name")).toString(), utf8("string/") + utf8(hostile));
    const QJsonArray values = resources.at(0).value(QStringLiteral("values")).toArray();
    const QJsonArray expected{QJsonObject{{QStringLiteral("configuration"), QString()},
                                          {QStringLiteral("type"), QStringLiteral("string")},
                                          {QStringLiteral("text"), QStringLiteral("Notes")}},
                              QJsonObject{{QStringLiteral("configuration"), QStringLiteral("de-rAT")},
                                          {QStringLiteral("type"), QStringLiteral("string")},
                                          {QStringLiteral("text"), QStringLiteral("Notizen")}}};
    QCOMPARE(values, expected);
}

void TestResourcesCommand::oneForAProgram()
{
    const ToolRun run =
        runSorrel({QStringLiteral("resources"), QStringLiteral("--json"), m_file, QStringLiteral("style/Theme")});
    QCOMPARE(run.status, 0);
    const QList<QJsonObject> resources = objects(run.output);
    QCOMPARE(resources.size(), 1);
    QCOMPARE(resources.first().value(QStringLiteral("id")).toString(), QStringLiteral("0x7f020000"));
    const QJsonObject value = resources.first().value(QStringLiteral("values")).toArray().at(0).toObject();
    QCOMPARE(value.value(QStringLiteral("type")).toString(), QStringLiteral("map"));
    QCOMPARE(value.value(QStringLiteral("text")).toString(), QStringLiteral("@0x01030005"));
    const QJsonArray items{QJsonObject{{QStringLiteral("name"), QStringLiteral("0x010100d4")},
                                       {QStringLiteral("type"), QStringLiteral("color")},
                                       {QStringLiteral("text"), QStringLiteral("#ff204080")}},
                           QJsonObject{{QStringLiteral("name"), QStringLiteral("string/app_name")},
                                       {QStringLiteral("type"), QStringLiteral("reference")},
                                       {QStringLiteral("text"), QStringLiteral("@string/") + utf8(hostile)}}};
    QCOMPARE(value.value(QStringLiteral("items")).toArray(), items);
}

void TestResourcesCommand::referencesOfManyForms()
{
    const QByteArray expected =
        runSorrel({QStringLiteral("resources"), m_file, QStringLiteral("string/app_name")}).output;
    QVERIFY(!expected.isEmpty());
    for (const char *reference : {"@string/app_name", "string/0", "@string/0", "0x7f010000", "@0x7f010000",
                                  "org.example.app:string/app_name"}) {
        const ToolRun run = runSorrel({QStringLiteral("resources"), m_file, QString::fromLatin1(reference)});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output, expected);
    }
}

void TestResourcesCommand::resourceThatIsNotThere()
{
    for (const char *reference : {"string/none", "0x7f010004", "", "string/\033[31m"}) {
        const ToolRun run = runSorrel({QStringLiteral("resources"), m_file, QString::fromLatin1(reference)});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.output, QByteArray());
        QString told = QString::fromLatin1(reference);
        told.replace(QLatin1Char('\033'), QChar(0xfffd));
        QCOMPARE(QString::fromUtf8(run.errors), QStringLiteral("sorrel: %1: no resource %2\n").arg(m_file, told));
    }
}

void TestResourcesCommand::packagesThatCannotBeRead()
{
    const QString missing = m_directory.filePath(QStringLiteral("missing.apk"));
    const ToolRun run = runSorrel({QStringLiteral("resources"), missing});
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(QString::fromUtf8(run.errors), QStringLiteral("sorrel: %1: could not open APK file\n").arg(missing));
    // A package without resources is read without an error.
    const QString empty =
        write(QStringLiteral("empty.apk"), zip({{QStringLiteral("AndroidManifest.xml"), smallManifest()}}));
    const ToolRun none = runSorrel({QStringLiteral("resources"), empty});
    QCOMPARE(none.status, 0);
    QCOMPARE(none.output + none.errors, QByteArray());
}

void TestResourcesCommand::damagedTableIsToldAsFarAsItGoes()
{
    // The header of the last chunk is shorter than any can be.
    QByteArray damaged = table() + Bytes().u16(int(ChunkType::Package)).u16(4).u32(8).data();
    poke32(damaged, 4, damaged.size());
    const QString file = write(QStringLiteral("damaged.apk"), package(damaged, smallManifest()));
    const ToolRun run = runSorrel({QStringLiteral("resources"), file});
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output, runSorrel({QStringLiteral("resources"), m_file}).output);
    QCOMPARE(QString::fromUtf8(run.errors),
             QStringLiteral("sorrel: %1: could not parse resources.arsc: damaged chunk in resource table\n").arg(file));
}

void TestResourcesCommand::tooManyResources()
{
    // All resources share one text. Together they exceed the limit for printed texts.
    constexpr int Count = 5000;
    TypeBuilder type(1);
    for (int i = 0; i < Count; ++i)
        type.value(i, String, 0);
    const QString file =
        write(QStringLiteral("much.apk"), package(TableBuilder()
                                                      .strings({QString(32000, QLatin1Char('x'))})
                                                      .package(PackageBuilder().types(names({"string"})).type(type))
                                                      .build(),
                                                  smallManifest()));
    const ToolRun run = runSorrel({QStringLiteral("resources"), QStringLiteral("--json"), file});
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output.count('\n'), Count);
    QCOMPARE(
        QString::fromUtf8(run.errors),
        QStringLiteral("sorrel: %1: there are too many resources, or too long ones; some are left out\n").arg(file));
}

void TestResourcesCommand::wrongUsage()
{
    QCOMPARE(runSorrel({QStringLiteral("resources")}).status, 2);
    QCOMPARE(runSorrel({QStringLiteral("resources"), m_file, QStringLiteral("a"), QStringLiteral("b")}).status, 2);
    QCOMPARE(runSorrel({QStringLiteral("resources"), QStringLiteral("--none"), m_file}).status, 2);
    const ToolRun help = runSorrel({QStringLiteral("resources"), QStringLiteral("--help")});
    QCOMPARE(help.status, 0);
    QVERIFY(help.output.contains("[REF]"));
}

QTEST_GUILESS_MAIN(TestResourcesCommand)
#include "tst_resources_command.moc"
