// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/FindingsPage.h"
#include "pages/parts/CardModel.h"

#include <QtTest>

using namespace Viewer;

namespace {

const QString topic = QStringLiteral("lint");

QJsonObject finding(const char *severity, const QString &message, const QString &subject = QString())
{
    return {{QStringLiteral("check"), QStringLiteral("no-icon")},
            {QStringLiteral("severity"), QString::fromLatin1(severity)},
            {QStringLiteral("message"), message},
            {QStringLiteral("subject"), subject}};
}

QJsonObject usualFacts()
{
    return PageFacts::listOf({finding("note", QStringLiteral("a note")),
                              finding("error", QStringLiteral("an error"), QStringLiteral("org.x.Main")),
                              finding("warning", QStringLiteral("a warning")),
                              finding("from a later version", QStringLiteral("another"))});
}

} // namespace

class TestFindingsPage : public QObject
{
    Q_OBJECT

private slots:
    void states();
    void worstFirst();
    void iconsAndWords();
    void hostile();
    void wrongTypes();
};

void TestFindingsPage::states()
{
    FindingsPage page;
    PageFacts::checkStates(&page, topic, usualFacts());
    page.take(topic, PageFacts::listOf({}));
    QCOMPARE(page.message(), QStringLiteral("No findings"));
}

void TestFindingsPage::worstFirst()
{
    FindingsPage page;
    page.take(topic, usualFacts());
    QStringList texts;
    for (int row = 0; row < page.model().rowCount(); ++row) {
        const QModelIndex index = page.model().index(row, 0);
        texts.append(index.data().toString() + QLatin1Char('|') + index.data(CardModel::DescriptionRole).toString()
                     + QLatin1Char('|') + index.data(CardModel::NameRole).toString());
    }
    QCOMPARE(texts,
             (QStringList{QStringLiteral("Errors||"), QStringLiteral("org.x.Main|an error|no-icon"),
                          QStringLiteral("Warnings||"), QStringLiteral("no-icon|a warning|"), QStringLiteral("Notes||"),
                          QStringLiteral("no-icon|a note|"), QStringLiteral("no-icon|another|")}));
}

void TestFindingsPage::iconsAndWords()
{
    FindingsPage page;
    page.take(topic, usualFacts());
    const QList<QPair<int, QString>> expected{
        {1, QStringLiteral("Error")}, {3, QStringLiteral("Warning")}, {5, QStringLiteral("Note")}};
    for (const auto &each : expected) {
        const QModelIndex index = page.model().index(each.first, 0);
        QCOMPARE(index.data(CardModel::BadgeRole).toString(), each.second);
        QVERIFY(index.data(Qt::AccessibleTextRole).toString().startsWith(each.second));
        QVERIFY(!qvariant_cast<QIcon>(index.data(Qt::DecorationRole)).isNull());
    }
}

void TestFindingsPage::hostile()
{
    FindingsPage page;
    page.resize(300, 300);
    page.show();
    for (const QString &text : PageFacts::hostileTexts()) {
        QJsonObject odd = finding("error", text, text);
        odd.insert(QStringLiteral("check"), text);
        page.take(topic, PageFacts::listOf({odd, finding("note", text)}));
        for (const QString &shown : PageFacts::shownTexts(page.model()))
            QVERIFY2(PageFacts::isSafe(shown), qPrintable(shown.left(100)));
        for (const QString &toolTip : PageFacts::toolTips(page.model()))
            QVERIFY(!toolTip.contains(QLatin1String("<b>")) && !toolTip.contains(QLatin1String("<img")));
        QVERIFY(!page.grab().isNull());
    }
}

void TestFindingsPage::wrongTypes()
{
    FindingsPage page;
    const int ways = PageFacts::forEachWrongType(usualFacts(), [&page](const QJsonObject &content) {
        page.take(topic, content);
        QVERIFY(page.model().rowCount() <= 7);
    });
    QVERIFY(ways > 100);
}

QTEST_MAIN(TestFindingsPage)
#include "tst_findingspage.moc"
