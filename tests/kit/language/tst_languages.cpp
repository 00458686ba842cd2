// SPDX-License-Identifier: LGPL-2.1-or-later
#include "language/LanguageTag.h"
#include "language/LocaleChooser.h"

#include <QtTest>

using namespace SorrelKit;

class TestLanguages : public QObject
{
    Q_OBJECT

private slots:
    void tags_data();
    void tags();
    void localesAsTags_data();
    void localesAsTags();
    void configurationsAsTags_data();
    void configurationsAsTags();
    void parents_data();
    void parents();
    void scripts();
    void scriptsOfRegions();
    void best_data();
    void best();
    void localeWithoutALanguageGetsTheDefault();
    void tagsAreAddedOnce();
    void anyNumberOfTagsIsFound();
    void nothingIsChosenOfNothing();
};

void TestLanguages::tags_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("tag");
    QTest::newRow("language") << "de"
                              << "de";
    QTest::newRow("region") << "de-AT"
                            << "de-AT";
    QTest::newRow("cases") << "SR-latn-rs"
                           << "sr-Latn-RS";
    QTest::newRow("underlines") << "pt_BR"
                                << "pt-BR";
    QTest::newRow("three letters") << "fil"
                                   << "fil";
    QTest::newRow("region in digits") << "es-419"
                                      << "es-419";
    QTest::newRow("variant") << "ca-ES-valencia"
                             << "ca-ES-valencia";
    QTest::newRow("Hebrew as it was") << "iw-IL"
                                      << "he-IL";
    QTest::newRow("Indonesian as it was") << "in"
                                          << "id";
    QTest::newRow("Yiddish as it was") << "ji"
                                       << "yi";
    QTest::newRow("Filipino as it was") << "tl-PH"
                                        << "fil-PH";
    QTest::newRow("one letter") << "d-AT"
                                << "";
    QTest::newRow("digits") << "12"
                            << "";
    QTest::newRow("part without a form") << "de-A-AT"
                                         << "de-AT";
    QTest::newRow("nothing") << ""
                             << "";
}

void TestLanguages::tags()
{
    QFETCH(QString, written);
    QFETCH(QString, tag);
    QCOMPARE(LanguageTag(written).toString(), tag);
    QCOMPARE(LanguageTag(written).isEmpty(), tag.isEmpty());
}

void TestLanguages::localesAsTags_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("tag");
    QTest::newRow("region is told though it is the usual one") << QLocale("de") << "de-DE";
    QTest::newRow("region") << QLocale("de_AT") << "de-AT";
    QTest::newRow("script that is not the usual one") << QLocale("sr_Latn_RS") << "sr-Latn-RS";
    QTest::newRow("script that is") << QLocale("zh_TW") << "zh-TW";
    QTest::newRow("Latin America") << QLocale("es_419") << "es-419";
    QTest::newRow("C") << QLocale::c() << "en-US";
}

void TestLanguages::localesAsTags()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, tag);
    QCOMPARE(LanguageTag(locale).toString(), tag);
}

void TestLanguages::configurationsAsTags_data()
{
    QTest::addColumn<QString>("codes");
    QTest::addColumn<QString>("tag");
    // Language, script, region and variant; "-" for none.
    const auto row = [](const char *codes, const char *tag) {
        QTest::newRow(codes) << QString::fromLatin1(codes) << QString::fromLatin1(tag);
    };
    row("de - - -", "de");
    row("ca Latn ES valencia", "ca-Latn-ES-valencia");
    row("es - 419 -", "es-419");
    row("iw - IL -", "he-IL");
    row("- - US -", "");
    row("d - AT -", "");
    row("d1 - AT -", "");
    row("sr lat - -", "sr");
    row("sr 123 - -", "sr-123");
}

void TestLanguages::configurationsAsTags()
{
    QFETCH(QString, codes);
    QFETCH(QString, tag);
    const QStringList parts = codes.split(QLatin1Char(' '));
    const auto code = [&parts](int number) {
        return parts.at(number) == QLatin1String("-") ? ShortText() : ShortText(qPrintable(parts.at(number)));
    };
    QCOMPARE(LanguageTag(LocaleCodes{code(0), code(1), code(2), code(3)}).toString(), tag);
}

void TestLanguages::parents_data()
{
    QTest::addColumn<QStringList>("chain");
    const auto row = [](const char *chain) {
        QTest::newRow(chain) << QString::fromLatin1(chain).split(QLatin1Char(' '));
    };
    row("de-AT de");
    row("es-MX es-419 es");
    row("es-ES es");
    row("pt-AO pt-PT pt");
    row("pt-BR pt");
    row("en-AU en-001 en");
    row("en-CH en-150 en-001 en");
    row("en-US en");
    row("zh-MO zh-HK zh");
    row("ca-ES-valencia ca-ES ca");
    row("sr-Latn-ME sr-Latn");
}

void TestLanguages::parents()
{
    QFETCH(QStringList, chain);
    QStringList actual;
    for (LanguageTag tag(chain.first()); !tag.isEmpty(); tag = tag.parent())
        actual.append(tag.toString());
    QCOMPARE(actual, chain);
}

void TestLanguages::scripts()
{
    QCOMPARE(LanguageTag(QStringLiteral("zh-TW")).script(), QLocale::TraditionalChineseScript);
    QCOMPARE(LanguageTag(QStringLiteral("zh")).script(), QLocale::SimplifiedChineseScript);
    QVERIFY(LanguageTag(QStringLiteral("zh-Hant")) == LanguageTag(QStringLiteral("zh-TW")).parent());
    QVERIFY(!(LanguageTag(QStringLiteral("zh")) == LanguageTag(QStringLiteral("zh-TW")).parent()));
    QVERIFY(LanguageTag(QStringLiteral("sr-Cyrl")) == LanguageTag(QStringLiteral("sr")));
    QVERIFY(LanguageTag(QStringLiteral("zh-Hant-TW")) == LanguageTag(QStringLiteral("zh-TW")));
    QCOMPARE(LanguageTag(QStringLiteral("qqq")).script(), QLocale::AnyScript);
}

// Tags without a script are compared without Qt where its data has one script for all regions.
void TestLanguages::scriptsOfRegions()
{
    const QList<QLocale> locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    QSet<QString> languages;
    QSet<QString> regions;
    for (const QLocale &locale : locales) {
        const QStringList codes = locale.name().split(QLatin1Char('_'));
        if (codes.size() == 2) {
            languages.insert(codes.first());
            regions.insert(codes.last());
        }
    }
    QVERIFY(languages.size() > 100 && regions.size() > 100);
    int different = 0;
    for (const QString &language : languages) {
        const LanguageTag alone(language);
        for (const QString &region : regions) {
            const LanguageTag tag(language + QLatin1Char('-') + region);
            const bool isSame = alone.script() == tag.script();
            if (alone.hasScriptOf(tag) != isSame)
                QFAIL(qPrintable(tag.toString()));
            different += int(!isSame);
        }
    }
    QVERIFY(different > 0);
}

void TestLanguages::best_data()
{
    QTest::addColumn<QString>("there");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("best");
    // "-" means the label for all languages, "none" means no label.
    const auto row = [](const char *there, const char *wanted, const char *best) {
        QTest::addRow("%s among %s", wanted, there) << there << wanted << best;
    };
    row("- de de-AT", "de-AT", "de-AT");
    row("- de de-AT", "de-CH", "de");
    row("- de de-AT", "fr", "-");
    row("de", "fr", "none");
    row("- es es-419", "es-MX", "es-419");
    row("- es es-419", "es-ES", "es");
    row("- es-419", "es-ES", "es-419");
    row("- pt pt-PT", "pt-AO", "pt-PT");
    row("- fr-FR fr-CA", "fr-CH", "fr-FR");
    row("- fr-CA fr-BE", "fr-CH", "fr-BE");
    row("- zh zh-TW", "zh-HK", "zh-TW");
    row("- zh", "zh-TW", "-");
    row("- zh-HK zh-TW", "zh-MO", "zh-HK");
    row("- sr", "sr-Latn", "-");
    row("- sr sr-Latn", "sr-Latn-ME", "sr-Latn");
    row("- sr-Latn", "sr-RS", "-");
    row("- en-GB", "en-US", "-");
    row("- en-GB", "en-AU", "en-GB");
    row("- en-GB en-001", "en-AU", "en-001");
    row("- en-US en-GB", "en-PR", "en-US");
    row("en-GB", "en-US", "en-GB");
    row("- iw", "he", "iw");
    row("- fil", "tl-PH", "fil");
    row("- in", "id-ID", "in");
    row("- ca", "ca-ES-valencia", "ca");
    row("- qqq-AB", "qqq", "qqq-AB");
    row("de fr -", "-", "-");
}

void TestLanguages::best()
{
    QFETCH(QString, there);
    QFETCH(QString, wanted);
    QFETCH(QString, best);
    const auto tag = [](const QString &text) { return text == QLatin1String("-") ? LanguageTag() : LanguageTag(text); };
    LocaleChooser chooser;
    const QStringList languages = there.split(QLatin1Char(' '));
    for (const QString &language : languages)
        chooser.add(tag(language));
    const int number = chooser.best(tag(wanted));
    QCOMPARE(number < 0 ? QStringLiteral("none") : languages.at(number), best);
}

// The C locale has no script, so no text in a language is for it.
void TestLanguages::localeWithoutALanguageGetsTheDefault()
{
    LocaleChooser chooser;
    for (const char *tag : {"en", "en-US"})
        chooser.add(LanguageTag(QString::fromLatin1(tag)));
    QCOMPARE(chooser.best(LanguageTag(QLocale::c())), -1);
    chooser.add(LanguageTag());
    QCOMPARE(chooser.best(LanguageTag(QLocale::c())), 2);
    QCOMPARE(chooser.best(LanguageTag(QLocale(QStringLiteral("en_US")))), 1);
}

void TestLanguages::tagsAreAddedOnce()
{
    LocaleChooser chooser;
    for (const char *tag : {"sr", "sr-Latn", "sr-Cyrl"})
        QVERIFY(chooser.add(LanguageTag(QString::fromLatin1(tag))));
    QVERIFY(!chooser.add(LanguageTag(QStringLiteral("sr_latn"))));
    QCOMPARE(chooser.count(), 3);
    QCOMPARE(chooser.relatives(LanguageTag(QStringLiteral("sr-RS"))), 3);
    // The usual script of Serbian is Cyrillic, and the first tag counts.
    QCOMPARE(chooser.best(LanguageTag(QStringLiteral("sr-Cyrl"))), 0);
    QCOMPARE(chooser.best(LanguageTag(QStringLiteral("sr-Latn"))), 1);
}

void TestLanguages::anyNumberOfTagsIsFound()
{
    LocaleChooser chooser;
    QVector<LanguageTag> tags;
    for (char first = 'a'; first <= 'z'; ++first) {
        for (char second = 'a'; second <= 'z'; ++second) {
            for (const char *region : {"", "-AA", "-001"}) {
                const LanguageTag tag(QLatin1Char(first) + QString(QLatin1Char(second)) + QLatin1String(region));
                if (chooser.add(tag))
                    tags.append(tag);
            }
        }
    }
    // "he", "id" and "yi" were added under their old codes as well.
    QCOMPARE(tags.size(), 3 * (26 * 26 - 3));
    QCOMPARE(chooser.count(), int(tags.size()));
    for (int number = 0; number < tags.size(); ++number) {
        QCOMPARE(chooser.best(tags.at(number)), number);
        QCOMPARE(chooser.relatives(tags.at(number)), 3);
    }
    QCOMPARE(chooser.relatives(LanguageTag(QStringLiteral("abc"))), 0);
}

void TestLanguages::nothingIsChosenOfNothing()
{
    QCOMPARE(LocaleChooser().best(LanguageTag(QStringLiteral("de"))), -1);
    QCOMPARE(LocaleChooser().best(LanguageTag()), -1);
}

QTEST_GUILESS_MAIN(TestLanguages)
#include "tst_languages.moc"
