// SPDX-License-Identifier: LGPL-2.1-or-later
#include "WindowFixture.h"

#include "facts/SignatureState.h"

#include <QAction>
#include <QDialog>
#include <QJsonArray>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QTextDocument>
#include <QWindow>
#include <QtTest>

#include <algorithm>

using Viewer::PackageWindow;
using Viewer::SignatureState;

namespace {

/// Markup, an entity, a mark of a mnemonic, an override of the direction, a line end, and an isolate that is not
/// closed.
const QString hostile = QStringLiteral("<b>Bold</b> &amp; &X \u202Etxt.exe\n[*] \u2067end");

/// Whether the text has no character that steers others: no override, no line end, and each isolate is closed.
bool isTame(const QString &text)
{
    int depth = 0;
    for (const QChar character : text) {
        const ushort unit = character.unicode();
        if ((unit >= 0x202a && unit <= 0x202e) || unit == 0x2067 || unit == 0x2066 || unit < 0x20)
            return false;
        depth += unit == 0x2068 ? 1 : unit == 0x2069 ? -1 : 0;
        if (depth < 0)
            return false;
    }
    return depth == 0;
}

bool isTameLines(const QString &text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    return std::all_of(lines.cbegin(), lines.cend(), isTame);
}

FakePackage hostilePackage()
{
    FakePackage package;
    for (const char *const key : {"label", "packageName", "versionName"})
        package.set(QStringLiteral("head"), QLatin1String(key), hostile);
    const QJsonObject certificate{{"subject", "CN=" + hostile}, {"sha256", hostile}};
    package.set(QStringLiteral("signature"), QStringLiteral("signers"),
                QJsonArray{QJsonObject{{"scheme", "v2"}, {"certificate", certificate}}});
    package.set(QStringLiteral("permissions"), QStringLiteral("items"),
                QJsonArray{FakePackage::permission(hostile, true)});
    package.set(QStringLiteral("languages"), QStringLiteral("items"),
                QJsonArray{QJsonObject{{"tag", "de"}, {"name", hostile}, {"label", hostile}}});
    return package;
}

/// Checks all labels and tooltips below @p parent.
void checkTexts(const QWidget *parent)
{
    const QList<QLabel *> labels = parent->findChildren<QLabel *>();
    for (const QLabel *const label : labels) {
        QVERIFY2(label->textFormat() == Qt::PlainText || !label->text().contains(QLatin1Char('<')),
                 qPrintable(label->text()));
        QVERIFY2(isTameLines(label->text()), qPrintable(label->text()));
    }
    QList<QWidget *> widgets = parent->findChildren<QWidget *>();
    for (const QWidget *const widget : widgets) {
        QTextDocument shown;
        shown.setHtml(widget->toolTip());
        if (widget->toolTip().contains(QLatin1String("Bold")))
            QVERIFY2(shown.toPlainText().contains(QLatin1String("<b>Bold</b>")), qPrintable(widget->toolTip()));
    }
}

} // namespace

class TestStrangers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(WindowFixture::prepare()); }
    void textsStayPlain();
    void textsOfTheQuestionStayPlain();
    void namesOfFilesStayPlain();
    void brokenPackagesStayPlain();
    void longTextsDoNotWidenTheWindow();
    void namesOfSigners_data();
    void namesOfSigners();
};

void TestStrangers::textsStayPlain()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(hostilePackage());
    QVERIFY(window);
    QVERIFY(fixture.text(QStringLiteral("label")).contains(QStringLiteral("<b>Bold</b> &amp; &X")));
    checkTexts(window);
    const QAction *const language = window->findChild<QMenu *>(QStringLiteral("languages"))->actions().last();
    QVERIFY(language->text().contains(QStringLiteral("<b>Bold</b> &&amp; &&X")));
    QVERIFY(isTame(language->text()));
    fixture.action(QStringLiteral("signatureAction"))->trigger();
    const auto *const message = window->findChild<QMessageBox *>();
    QVERIFY(message);
    QCOMPARE(message->textFormat(), Qt::PlainText);
    QVERIFY(isTameLines(message->text()));
}

void TestStrangers::textsOfTheQuestionStayPlain()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(hostilePackage(), QStringLiteral("/bin/echo %f"));
    QVERIFY(window);
    fixture.action(QStringLiteral("installAction"))->trigger();
    const auto *const question = window->findChild<QDialog *>(QStringLiteral("installQuestion"));
    QVERIFY(question);
    checkTexts(question);
    QVERIFY(isTame(question->findChild<QListWidget *>(QStringLiteral("permissions"))->item(0)->text()));
}

void TestStrangers::namesOfFilesStayPlain()
{
    WindowFixture fixture;
    const QString name = QStringLiteral("<b>x<br> &amp; \u202Ekpa [*].apk");
    PackageWindow *const window = fixture.openFile(fixture.write(FakePackage(), name));
    QVERIFY(window);
    QTRY_COMPARE(fixture.text(QStringLiteral("label")), QStringLiteral("Notes"));
    QVERIFY(isTame(window->windowTitle()));
    QVERIFY(window->windowHandle()->title().contains(QStringLiteral("<b>x<br> &amp; \uFFFDkpa [*].apk")));
    checkTexts(window);
    fixture.drop(fixture.write(FakePackage(), QStringLiteral("<i>\u202Ey.apk")));
    QTRY_VERIFY(window->findChild<QMessageBox *>(QStringLiteral("dropQuestion")) != nullptr);
    const auto *const question = window->findChild<QMessageBox *>(QStringLiteral("dropQuestion"));
    QVERIFY(isTame(question->text()));
    QVERIFY(question->text().contains(QStringLiteral("<i>\uFFFDy.apk")));
}

void TestStrangers::brokenPackagesStayPlain()
{
    WindowFixture fixture;
    FakePackage package = hostilePackage();
    package.set(QStringLiteral("head"), QStringLiteral("error"), QJsonObject{{"code", 1}, {"message", hostile}});
    PackageWindow *const window = fixture.open(package);
    QVERIFY(window);
    QCOMPARE(fixture.currentPage(), QStringLiteral("Problem"));
    checkTexts(window);
}

void TestStrangers::longTextsDoNotWidenTheWindow()
{
    WindowFixture fixture;
    QVERIFY(fixture.open(FakePackage()));
    const int usual = fixture.window()->minimumSizeHint().width();
    FakePackage package;
    for (const char *const key : {"label", "packageName", "versionName"})
        package.set(QStringLiteral("head"), QLatin1String(key), QString(4000, QLatin1Char('W')));
    QVERIFY(fixture.open(package));
    QVERIFY(fixture.window()->minimumSizeHint().width() < usual + 200);
    QVERIFY(fixture.text(QStringLiteral("label")).size() < 1100);
}

void TestStrangers::namesOfSigners_data()
{
    QTest::addColumn<QString>("subject");
    QTest::addColumn<QString>("expected");
    QTest::newRow("common name") << "CN=Jane,O=Example"
                                 << "Jane";
    QTest::newRow("not the first") << "C=DE,O=Example,cn=Jane Doe"
                                   << "Jane Doe";
    QTest::newRow("none") << "O=Example,C=DE"
                          << "O=Example,C=DE";
    QTest::newRow("escaped comma") << R"(CN=Doe\, Jane,O=Example)"
                                   << "Doe, Jane";
    QTest::newRow("within another value") << R"(O=a\,CN=Google,CN=Jane)"
                                          << "Jane";
    QTest::newRow("of several values") << "O=Example+CN=Jane"
                                       << "Jane";
    QTest::newRow("equals sign") << "CN=a=b"
                                 << "a=b";
    QTest::newRow("backslash at the end") << "CN=a\\"
                                          << "a\\";
}

void TestStrangers::namesOfSigners()
{
    QFETCH(QString, subject);
    const QJsonObject signer{{"certificate", QJsonObject{{"subject", subject}}}};
    const SignatureState state =
        SignatureState::fromJson({{"verified", true}, {"signers", QJsonArray{signer, signer}}});
    QCOMPARE(state.signers().size(), 1);
    QTEST(QString(state.signers().first()).remove(QChar(u'\u2068')).remove(QChar(u'\u2069')), "expected");
}

QTEST_MAIN(TestStrangers)
#include "tst_strangers.moc"
