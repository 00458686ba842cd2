// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/LanguagesPage.h"
#include "pages/parts/FactTable.h"
#include "pages/parts/FactTableView.h"

#include <QClipboard>
#include <QtTest>

using namespace Viewer;

namespace {

const QString topic = QStringLiteral("languages");

QJsonObject language(const QString &tag, const QString &name, const QString &label)
{
    return {{QStringLiteral("tag"), tag}, {QStringLiteral("name"), name}, {QStringLiteral("label"), label}};
}

QJsonObject usualFacts()
{
    return PageFacts::listOf({language(QString(), QString(), QStringLiteral("Notes")),
                              language(QStringLiteral("de"), QStringLiteral("Deutsch"), QStringLiteral("Notizen")),
                              language(QStringLiteral("he"), QStringLiteral("\u05e2\u05d1\u05e8\u05d9\u05ea"),
                                       QStringLiteral("\u05e4\u05ea\u05e7\u05d9\u05dd"))});
}

QStringList column(const FactTable &model, int number)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.index(row, number).data().toString());
    return texts;
}

} // namespace

class TestLanguagesPage : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }
    void states();
    void namesInTheLanguageOfTheUser();
    void tagsAndLabels();
    void ceiling();
    void copies();
    void hostile();
    void wrongTypes();
};

void TestLanguagesPage::states()
{
    LanguagesPage page;
    PageFacts::checkStates(&page, topic, usualFacts());
    page.take(topic, PageFacts::listOf({}));
    QCOMPARE(page.message(), QStringLiteral("This package has texts for no particular language."));
}

void TestLanguagesPage::namesInTheLanguageOfTheUser()
{
    LanguagesPage page;
    QLocale::setDefault(QLocale(QLocale::English));
    page.take(topic, usualFacts());
    QCOMPARE(column(page.model(), 0).mid(0, 2),
             (QStringList{QStringLiteral("All other languages"), QStringLiteral("German (Deutsch)")}));
    // Qt has no names in other languages than English and their own.
    QLocale::setDefault(QLocale(QLocale::French));
    page.take(topic, usualFacts());
    QCOMPARE(column(page.model(), 0).at(1), QStringLiteral("Deutsch"));
}

void TestLanguagesPage::tagsAndLabels()
{
    LanguagesPage page;
    page.take(topic, usualFacts());
    QCOMPARE(column(page.model(), 1), (QStringList{QString(), QStringLiteral("de"), QStringLiteral("he")}));
    // A label from right to left is isolated.
    QCOMPARE(column(page.model(), 2), (QStringList{QStringLiteral("Notes"), QStringLiteral("Notizen"),
                                                   QStringLiteral("\u2068\u05e4\u05ea\u05e7\u05d9\u05dd\u2069")}));
}

void TestLanguagesPage::ceiling()
{
    LanguagesPage page;
    QJsonObject content = usualFacts();
    content.insert(QStringLiteral("more"), 12);
    page.take(topic, content);
    QCOMPARE(page.notice(), QStringLiteral("Languages that are not shown: 12"));
    page.take(topic, usualFacts());
    QCOMPARE(page.notice(), QString());
}

void TestLanguagesPage::copies()
{
    LanguagesPage page;
    const QString label = QStringLiteral("a\u202eb<i>\n");
    page.take(topic, PageFacts::listOf({language(QStringLiteral("de"), QStringLiteral("Deutsch"), label)}));
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    auto *const table = page.findChild<FactTableView *>();
    table->setFocus();
    table->setCurrentIndex(page.model().index(0, 2));
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), label);
}

void TestLanguagesPage::hostile()
{
    LanguagesPage page;
    page.resize(300, 300);
    page.show();
    for (const QString &text : PageFacts::hostileTexts()) {
        page.take(topic, PageFacts::listOf({language(text, text, text)}));
        for (const QString &shown : PageFacts::shownTexts(page.model()))
            QVERIFY2(PageFacts::isSafe(shown), qPrintable(shown.left(100)));
        for (const QString &toolTip : PageFacts::toolTips(page.model()))
            QVERIFY(!toolTip.contains(QLatin1String("<b>")) && !toolTip.contains(QLatin1String("<img")));
        QVERIFY(!page.grab().isNull());
    }
}

void TestLanguagesPage::wrongTypes()
{
    LanguagesPage page;
    const int ways = PageFacts::forEachWrongType(usualFacts(), [&page](const QJsonObject &content) {
        page.take(topic, content);
        QVERIFY(page.model().rowCount() <= 3);
    });
    QVERIFY(ways > 80);
}

QTEST_MAIN(TestLanguagesPage)
#include "tst_languagespage.moc"
