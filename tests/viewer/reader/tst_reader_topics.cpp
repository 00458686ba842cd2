// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"
#include "ReaderFixture.h"
#include "ReaderProcess.h"

#include <QImage>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

QImage pictureIn(const QJsonObject &object)
{
    return QImage::fromData(QByteArray::fromBase64(object.value(QLatin1String("png")).toString().toLatin1()), "PNG");
}

QJsonValue valueOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key));
}

} // namespace

class TestReaderTopics : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void order();
    void head();
    void headOfASet();
    void icon();
    void signature();
    void signatureThatVerifies();
    void permissions();
    void launchers();
    void contents();
    void contentsOfASet();
    void languages();
    void manifest();
    void resources();
    void lint();
    void comparison();
    void comparisonWithABrokenPackage();
    void locales_data();
    void locales();
    void brokenPackages_data();
    void brokenPackages();
    void platform();
    void wrongUsage();

private:
    QString write(const char *name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(QLatin1String(name)), bytes);
    }
    QJsonObject answer(const char *topic) const { return m_answers.value(QLatin1String(topic)); }

    QTemporaryDir m_directory;
    QString m_file;
    QStringList m_order;
    QHash<QString, QJsonObject> m_answers; ///< about m_file, in English
};

void TestReaderTopics::initTestCase()
{
    m_file = write("notes.apk", notesPackage());
    ReaderProcess reader({m_file, QStringLiteral("--locale"), QStringLiteral("en")});
    m_answers = reader.all(&m_order);
    QCOMPARE(reader.finish(), 0);
}

void TestReaderTopics::order()
{
    QCOMPARE(m_order.join(QLatin1Char(' ')), QStringLiteral("hello head icon signature permissions launchers contents "
                                                            "languages manifest resources lint end"));
}

void TestReaderTopics::head()
{
    const QJsonObject head = answer("head");
    QCOMPARE(valueOf(head, "packageName").toString(), QStringLiteral("org.example.notes"));
    QCOMPARE(valueOf(head, "versionName").toString(), QStringLiteral("1.5"));
    QCOMPARE(valueOf(head, "versionCode").toString(), QStringLiteral("7"));
    QCOMPARE(valueOf(head, "minSdk").toInt(), 24);
    QCOMPARE(valueOf(head, "targetSdk").toInt(), 30);
    QCOMPARE(valueOf(head, "label").toString(), QStringLiteral("Notes"));
    QCOMPARE(valueOf(head, "isSet"), QJsonValue(false));
    QCOMPARE(valueOf(head, "fileSize").toInt(), int(QFileInfo(m_file).size()));
    QVERIFY(valueOf(head, "error").isNull());
    QVERIFY(valueOf(head, "sandbox").isArray());
}

void TestReaderTopics::headOfASet()
{
    ReaderProcess reader({write("notes.apks", notesSet())});
    const QJsonObject head = reader.all().value(QStringLiteral("head"));
    QCOMPARE(valueOf(head, "isSet"), QJsonValue(true));
    QCOMPARE(valueOf(head, "packageName").toString(), QStringLiteral("org.example.notes"));
    QVERIFY(valueOf(head, "error").isNull());
}

void TestReaderTopics::icon()
{
    const QJsonObject icon = answer("icon");
    QCOMPARE(valueOf(icon, "size").toInt(), 256);
    QCOMPARE(valueOf(icon, "shape").toString(), QStringLiteral("none"));
    QCOMPARE(valueOf(icon, "error").toString(), QString());
    const QImage picture = pictureIn(icon);
    QCOMPARE(picture.size(), QSize(256, 256));
    QCOMPARE(picture.pixelColor(128, 128), QColor(Qt::red));
}

void TestReaderTopics::signature()
{
    const QJsonObject signature = answer("signature");
    QCOMPARE(valueOf(signature, "verified"), QJsonValue(false));
    const QJsonArray errors = valueOf(signature, "errors").toArray();
    QCOMPARE(valueOf(errors.at(0).toObject(), "code").toString(), QStringLiteral("not-signed"));
    QVERIFY(!signature.contains(QStringLiteral("file")));
}

void TestReaderTopics::signatureThatVerifies()
{
    ReaderProcess reader({write("signed.apk", signedPackage(notesPackage()))});
    const QJsonObject signature = reader.all().value(QStringLiteral("signature"));
    QCOMPARE(valueOf(signature, "verified"), QJsonValue(true));
    QCOMPARE(valueOf(signature, "schemes").toArray(), QJsonArray{QStringLiteral("v2")});
    QCOMPARE(valueOf(signature, "signers").toArray().size(), 1);
}

void TestReaderTopics::permissions()
{
    const QJsonObject permissions = answer("permissions");
    QCOMPARE(valuesOf(permissions, "name"),
             (QStringList{QStringLiteral("android.permission.CAMERA"), QStringLiteral("android.permission.INTERNET"),
                          QStringLiteral("org.example.notes.permission.SYNC")}));
    QCOMPARE(valuesOf(permissions, "isDangerous"),
             (QStringList{QStringLiteral("true"), QStringLiteral("false"), QStringLiteral("false")}));
    const QJsonObject camera = itemsOf(permissions).constFirst();
    QCOMPARE(valueOf(camera, "label").toString(), QStringLiteral("camera"));
    QCOMPARE(valueOf(camera, "description").toString(), QString());
    QVERIFY(!valueOf(camera, "group").toString().isEmpty());
    QVERIFY(!permissions.contains(QStringLiteral("more")));
}

void TestReaderTopics::launchers()
{
    const QJsonObject launchers = answer("launchers");
    QCOMPARE(valuesOf(launchers, "className"),
             (QStringList{QStringLiteral("org.example.notes.Main"), QStringLiteral("org.example.notes.Hidden")}));
    QCOMPARE(valuesOf(launchers, "label"), (QStringList{QStringLiteral("Notes"), QStringLiteral("<b>Hidden</b>")}));
    QCOMPARE(valuesOf(launchers, "isShown"), (QStringList{QStringLiteral("true"), QStringLiteral("false")}));
    QCOMPARE(valuesOf(launchers, "kind"), (QStringList{QStringLiteral("launcher"), QStringLiteral("launcher")}));
    for (const QJsonObject &item : itemsOf(launchers))
        QCOMPARE(pictureIn(item).size(), QSize(64, 64));
}

void TestReaderTopics::contents()
{
    const QJsonObject contents = answer("contents");
    QCOMPARE(valuesOf(contents, "name"),
             (QStringList{QStringLiteral("AndroidManifest.xml"), QStringLiteral("resources.arsc"),
                          QStringLiteral("res/icon.png")}));
    for (const QJsonObject &item : itemsOf(contents)) {
        QVERIFY(valueOf(item, "size").toInt() > 0);
        QVERIFY(valueOf(item, "packed").toInt() > 0);
        QVERIFY(valueOf(item, "crc").isDouble());
    }
}

void TestReaderTopics::contentsOfASet()
{
    ReaderProcess reader({write("notes.apks", notesSet())});
    const QJsonObject contents = reader.all().value(QStringLiteral("contents"));
    QCOMPARE(valuesOf(contents, "name"),
             (QStringList{QStringLiteral("base.apk/AndroidManifest.xml"), QStringLiteral("base.apk/resources.arsc"),
                          QStringLiteral("base.apk/res/icon.png"),
                          QStringLiteral("splits/config.de.apk/AndroidManifest.xml"),
                          QStringLiteral("splits/config.de.apk/assets/words"), QStringLiteral("readme.txt")}));
    QCOMPARE(valueOf(itemsOf(contents).at(4), "size").toInt(), 64);
}

void TestReaderTopics::languages()
{
    const QJsonObject languages = answer("languages");
    QCOMPARE(valuesOf(languages, "tag"), QStringList{QStringLiteral("de")});
    QCOMPARE(valuesOf(languages, "name"), QStringList{QStringLiteral("Deutsch")});
    QCOMPARE(valuesOf(languages, "label"), QStringList{QStringLiteral("Notizen")});
}

void TestReaderTopics::manifest()
{
    const QString text = valueOf(answer("manifest"), "text").toString();
    QVERIFY(text.startsWith(QLatin1String("<?xml")));
    QVERIFY(text.contains(QLatin1String("android:label=\"@string/app_name\"")));
    QVERIFY(text.contains(QLatin1String("&lt;b&gt;Hidden")) || text.contains(QLatin1String("&lt;b>Hidden")));
}

void TestReaderTopics::resources()
{
    const QJsonObject resources = answer("resources");
    QCOMPARE(valuesOf(resources, "name"),
             (QStringList{QStringLiteral("string/app_name"), QStringLiteral("drawable/icon"),
                          QStringLiteral("drawable/broken"), QStringLiteral("array/colors")}));
    QCOMPARE(valuesOf(resources, "type"), (QStringList{QStringLiteral("string"), QStringLiteral("drawable"),
                                                       QStringLiteral("drawable"), QStringLiteral("array")}));
    QCOMPARE(valuesOf(resources, "value"),
             (QStringList{QStringLiteral("Notes"), QStringLiteral("res/icon.png"), QStringLiteral("res/broken.png"),
                          QStringLiteral("red, blue")}));
    QCOMPARE(valuesOf(resources, "isDrawable"), (QStringList{QStringLiteral("false"), QStringLiteral("true"),
                                                             QStringLiteral("true"), QStringLiteral("false")}));
}

void TestReaderTopics::lint()
{
    const QJsonObject lint = answer("lint");
    const QStringList checks = valuesOf(lint, "check");
    QVERIFY2(checks.contains(QStringLiteral("unsigned")), qPrintable(checks.join(QLatin1Char(' '))));
    const QJsonObject finding = itemsOf(lint).at(int(checks.indexOf(QStringLiteral("unsigned"))));
    QCOMPARE(valueOf(finding, "severity").toString(), QStringLiteral("error"));
    QVERIFY(valueOf(finding, "message").toString().contains(QStringLiteral("signature")));
}

void TestReaderTopics::comparison()
{
    const QString newer = write("newer.apk", signedPackage(notesPackage()));
    ReaderProcess reader({m_file, QStringLiteral("--compare"), newer});
    QStringList order;
    const QHash<QString, QJsonObject> answers = reader.all(&order);
    QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("hello head otherHead diff end"));
    const QJsonObject otherHead = answers.value(QStringLiteral("otherHead"));
    QCOMPARE(valueOf(otherHead, "fileSize").toInt(), int(QFileInfo(newer).size()));
    const QJsonObject diff = answers.value(QStringLiteral("diff"));
    QCOMPARE(valueOf(diff, "sameApplication"), QJsonValue(true));
    QCOMPARE(valueOf(diff, "different"), QJsonValue(true));
}

void TestReaderTopics::comparisonWithABrokenPackage()
{
    ReaderProcess reader({m_file, QStringLiteral("--compare"), write("broken.apk", "no package")});
    const QHash<QString, QJsonObject> answers = reader.all();
    QVERIFY(valueOf(answers.value(QStringLiteral("otherHead")), "error").isObject());
    QCOMPARE(valueOf(answers.value(QStringLiteral("diff")), "error").toString(),
             QStringLiteral("could not open APK file"));
    QVERIFY(answers.contains(QStringLiteral("end")));
}

void TestReaderTopics::locales_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("label");
    QTest::newRow("German") << QStringLiteral("de") << QStringLiteral("Notizen");
    QTest::newRow("Austrian German") << QStringLiteral("de-AT") << QStringLiteral("Notizen");
    QTest::newRow("French") << QStringLiteral("fr") << QStringLiteral("Notes");
    QTest::newRow("no language") << QStringLiteral("?!") << QStringLiteral("Notes");
}

void TestReaderTopics::locales()
{
    QFETCH(QString, tag);
    QFETCH(QString, label);
    ReaderProcess reader({QStringLiteral("--locale"), tag, m_file});
    const QHash<QString, QJsonObject> answers = reader.all();
    QCOMPARE(valueOf(answers.value(QStringLiteral("head")), "label").toString(), label);
    QCOMPARE(valuesOf(answers.value(QStringLiteral("launchers")), "label").constFirst(), label);
}

void TestReaderTopics::brokenPackages_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
    QByteArray noManifest = notesPackage();
    noManifest.replace("AndroidManifest.xml", "AndroidManifest.xmm");
    QTest::newRow("no archive") << QByteArray("no package") << 1 << QStringLiteral("could not open APK file");
    QTest::newRow("empty") << QByteArray() << 1 << QStringLiteral("could not open APK file");
    QTest::newRow("no manifest") << noManifest << 4 << QStringLiteral("could not find AndroidManifest.xml");
}

void TestReaderTopics::brokenPackages()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, code);
    QFETCH(QString, message);
    ReaderProcess reader({write("broken.apk", bytes)});
    QStringList order;
    const QHash<QString, QJsonObject> answers = reader.all(&order);
    QCOMPARE(order, m_order);
    const QJsonObject error = valueOf(answers.value(QStringLiteral("head")), "error").toObject();
    QCOMPARE(valueOf(error, "code").toInt(), code);
    QCOMPARE(valueOf(error, "message").toString(), message);
    for (const char *const topic : {"permissions", "launchers", "languages", "manifest", "resources"})
        QCOMPARE(valueOf(answers.value(QLatin1String(topic)), "error").toString(), message);
    QCOMPARE(reader.finish(), 0);
}

void TestReaderTopics::platform()
{
    ReaderProcess reader({QStringLiteral("--platform"), m_directory.filePath(QStringLiteral("missing")), m_file});
    const QHash<QString, QJsonObject> answers = reader.all();
    QVERIFY(valueOf(answers.value(QStringLiteral("head")), "error").isNull());
}

void TestReaderTopics::wrongUsage()
{
    QCOMPARE(ReaderProcess({}).finish(), 2);
    QCOMPARE(ReaderProcess({QStringLiteral("--what"), m_file}).finish(), 2);
    QCOMPARE(ReaderProcess({m_file, m_file}).finish(), 2);
}

QTEST_GUILESS_MAIN(TestReaderTopics)
#include "tst_reader_topics.moc"
