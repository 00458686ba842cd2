// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/ManifestPage.h"
#include "pages/text/SearchBar.h"
#include "pages/text/ShownXml.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolButton>
#include <QtTest>

using namespace Viewer;

namespace {

const QString topic = QStringLiteral("manifest");

QJsonObject facts(const QString &text)
{
    return {{QStringLiteral("text"), text}};
}

QJsonObject usualFacts()
{
    return facts(QStringLiteral("<manifest package=\"org.example\">\n  <application label=\"Example\"/>\n</manifest>"));
}

class ShownManifest : public ManifestPage
{
public:
    explicit ShownManifest(const QJsonObject &content)
        : editor(findChild<QPlainTextEdit *>()), field(findChild<QLineEdit *>())
    {
        resize(400, 300);
        take(topic, content);
        show();
        setFocus();
    }

    void search(const char *text)
    {
        QTest::keyClick(editor, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(field, QString::fromUtf8(text));
    }

    QString result() const { return searchBar().result(); }
    int selectionStart() const { return editor->textCursor().selectionStart(); }

    QPlainTextEdit *editor;
    QLineEdit *field;
};

} // namespace

class TestManifestPage : public QObject
{
    Q_OBJECT

private slots:
    void states();
    void keys();
    void buttons();
    void resultInWords();
    void textCannotBeChanged();
    void anotherTextIsSearched();
    void leftOutCharacters();
    void hostile();
    void wrongTypes();
};

void TestManifestPage::states()
{
    ManifestPage page;
    PageFacts::checkStates(&page, topic, usualFacts());
    page.take(topic, facts(QString()));
    QCOMPARE(page.message(), QStringLiteral("The manifest is empty."));
}

void TestManifestPage::keys()
{
    ShownManifest page(usualFacts());
    QVERIFY(QTest::qWaitForWindowActive(&page));
    const QString text = page.editor->toPlainText();
    page.search("EXAMPLE");
    QVERIFY(page.field->hasFocus());
    QCOMPARE(page.result(), QStringLiteral("1 of 2"));
    const int first = int(text.indexOf(QLatin1String("example")));
    const int second = int(text.indexOf(QLatin1String("Example")));
    QCOMPARE(page.selectionStart(), first);
    QTest::keyClick(page.field, Qt::Key_F3);
    QCOMPARE(page.selectionStart(), second);
    QCOMPARE(page.result(), QStringLiteral("2 of 2"));
    QTest::keyClick(page.field, Qt::Key_Return);
    QCOMPARE(page.selectionStart(), first);
    QTest::keyClick(page.field, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(page.selectionStart(), second);
    QTest::keyClick(page.field, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(page.selectionStart(), first);
    QTest::keyClick(page.field, Qt::Key_Escape);
    QVERIFY(page.editor->hasFocus());
    QTest::keyClick(page.editor, Qt::Key_F3);
    QCOMPARE(page.selectionStart(), second);
    // The next search begins with what is selected.
    QTest::keyClick(page.editor, Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(page.field->text(), QStringLiteral("Example"));
    QCOMPARE(page.selectionStart(), second);
}

void TestManifestPage::buttons()
{
    ShownManifest page(usualFacts());
    QVERIFY(QTest::qWaitForWindowActive(&page));
    page.search("example");
    const QList<QToolButton *> buttons =
        page.searchBar().findChildren<QToolButton *>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(buttons.size(), 2);
    const int first = page.selectionStart();
    QTest::mouseClick(buttons.at(1), Qt::LeftButton);
    QVERIFY(page.selectionStart() > first);
    QTest::mouseClick(buttons.at(0), Qt::LeftButton);
    QCOMPARE(page.selectionStart(), first);
    for (const QToolButton *const button : buttons)
        QVERIFY(!button->accessibleName().isEmpty());
}

void TestManifestPage::resultInWords()
{
    ShownManifest page(usualFacts());
    QVERIFY(QTest::qWaitForWindowActive(&page));
    page.search("nowhere");
    QCOMPARE(page.result(), QStringLiteral("Not found"));
    QTest::keyClick(page.field, Qt::Key_F3);
    QCOMPARE(page.result(), QStringLiteral("Not found"));
    page.field->clear();
    QCOMPARE(page.result(), QString());
}

void TestManifestPage::textCannotBeChanged()
{
    ShownManifest page(usualFacts());
    const QString text = page.editor->toPlainText();
    QTest::keyClicks(page.editor, QStringLiteral("abc"));
    QCOMPARE(page.editor->toPlainText(), text);
}

void TestManifestPage::anotherTextIsSearched()
{
    ShownManifest page(usualFacts());
    QVERIFY(QTest::qWaitForWindowActive(&page));
    page.search("other");
    QCOMPARE(page.result(), QStringLiteral("Not found"));
    page.take(topic, facts(QStringLiteral("<other/>")));
    QCOMPARE(page.result(), QStringLiteral("1 of 1"));
    page.clear();
    page.take(topic, usualFacts());
    QCOMPARE(page.result(), QStringLiteral("Not found"));
}

void TestManifestPage::leftOutCharacters()
{
    QLocale::setDefault(QLocale::c());
    ManifestPage page;
    QJsonObject content = facts(QString(ShownXml::MaxLineLength + 4, QLatin1Char('x')));
    page.take(topic, content);
    QCOMPARE(page.notice(), QStringLiteral("Characters that are not shown: 4"));
    content.insert(QStringLiteral("more"), 10);
    page.take(topic, content);
    QCOMPARE(page.notice(), QStringLiteral("Characters that are not shown: 14"));
    page.take(topic, usualFacts());
    QCOMPARE(page.notice(), QString());
}

void TestManifestPage::hostile()
{
    ShownManifest page(usualFacts());
    QString all;
    for (const QString &text : PageFacts::hostileTexts()) {
        all += text + QLatin1Char('\n');
        page.take(topic, facts(text));
        for (const QString &line : page.editor->toPlainText().split(QLatin1Char('\n')))
            QVERIFY(PageFacts::isSafe(line));
        QVERIFY(!page.grab().isNull());
    }
    page.take(topic, facts(QStringLiteral("<a b=\"").repeated(1 << 20)));
    QVERIFY(page.editor->toPlainText().size() <= ShownXml::MaxLineLength + 1);
    page.take(topic, facts(QStringLiteral("<\n").repeated(1 << 20)));
    QCOMPARE(page.editor->blockCount(), ShownXml::MaxLines);
}

void TestManifestPage::wrongTypes()
{
    ManifestPage page;
    QJsonObject content = usualFacts();
    content.insert(QStringLiteral("more"), 3);
    const int ways = PageFacts::forEachWrongType(content, [&page](const QJsonObject &spoilt) {
        page.take(topic, spoilt);
        QVERIFY(page.message() != QStringLiteral("Reading..."));
    });
    QVERIFY(ways > 15);
}

QTEST_MAIN(TestManifestPage)
#include "tst_manifestpage.moc"
