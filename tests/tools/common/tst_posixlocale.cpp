// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PosixLocale.h"

#include <QtTest>

class TestPosixLocale : public QObject
{
    Q_OBJECT

private slots:
    void locales_data();
    void locales();
    void countriesOfARegion();
    void theMostExactTagHasALocale();
    void theDefaultIsNoLocale();
    void lostTagsAreTold();
};

void TestPosixLocale::locales_data()
{
    QTest::addColumn<QString>("locales");
    const auto row = [](const char *tag, const char *locales) { QTest::newRow(tag) << QString::fromLatin1(locales); };
    row("de", "de");
    row("fil", "fil");
    row("he", "he");
    row("id", "id");
    row("pt-BR", "pt_BR");
    row("PT-br", "pt_BR");
    row("sr", "sr");
    row("sr-Cyrl", "sr");
    row("sr-Cyrl-RS", "sr_RS");
    row("sr-Latn", "sr@latin");
    row("sr-Latn-RS", "sr_RS@latin");
    row("uz-Cyrl-UZ", "uz_UZ@cyrillic");
    row("ks-Deva-IN", "ks_IN@devanagari");
    row("de-Latn-AT", "de_AT");
    row("ja-Jpan", "ja");
    row("zh", "zh_CN zh_SG");
    row("zh-Hans", "zh_CN zh_SG");
    row("zh-Hant", "zh_HK zh_MO zh_TW");
    row("zh-CN", "zh_CN");
    row("zh-Hans-CN", "zh_CN");
    row("zh-Hans-MY", "zh_MY");
    row("zh-Hant-HK", "zh_HK");
    row("zh-Hans-HK", "");
    row("pa", "pa");
    row("pa-Guru", "pa");
    row("pa-Arab", "pa_PK");
    row("pa-Arab-PK", "pa_PK");
    row("az-Latn", "az");
    row("az-Cyrl", "az@cyrillic");
    row("ca-ES-valencia", "ca_ES@valencia");
    row("ca-valencia", "ca@valencia");
    row("sr-Latn-ekavsk", "");
    row("en-150", "en_AT en_BE en_CH en_DE en_DK en_FI en_NL en_SE en_SI");
    row("ar-001", "ar");
    row("fr-002", "");
    row("uz-Arab", "");
    row("xx", "xx");
    row("xx-Latn", "xx@latin");
    row("", "");
    row("e", "");
    row("english", "");
    row("en-", "");
    row("en-US-", "");
    row("en-x-a", "");
    row("en]\nExec", "");
    row("de_AT", "");
}

void TestPosixLocale::locales()
{
    QFETCH(QString, locales);
    const QString tag = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(posixLocales(tag).join(QLatin1Char(' ')), locales);
}

void TestPosixLocale::countriesOfARegion()
{
    const QStringList american = posixLocales(QStringLiteral("es-419"));
    for (const char *locale : {"es_AR", "es_MX", "es_US", "es_VE"})
        QVERIFY2(american.contains(QLatin1String(locale)), locale);
    for (const char *locale : {"es", "es_ES", "es_419"})
        QVERIFY2(!american.contains(QLatin1String(locale)), locale);
    const QStringList english = posixLocales(QStringLiteral("en-001"));
    for (const char *locale : {"en_AU", "en_GB", "en_ZA", "en_DE"})
        QVERIFY2(english.contains(QLatin1String(locale)), locale);
    for (const char *locale : {"en", "en_US", "en_PH"})
        QVERIFY2(!english.contains(QLatin1String(locale)), locale);
}

void TestPosixLocale::theMostExactTagHasALocale()
{
    QMap<QString, QString> byTag;
    for (const char *tag : {"en-001", "en-150", "en-GB", "es-419", "es-MX", "zh", "zh-Hant", "zh-HK", "zh-SG"})
        byTag.insert(QLatin1String(tag), QLatin1String(tag));
    const QMap<QString, QString> texts = localizedTexts(byTag).texts;
    const QMap<QString, QString> expected{
        {QStringLiteral("en_AU"), QStringLiteral("en-001")},  {QStringLiteral("en_DE"), QStringLiteral("en-150")},
        {QStringLiteral("en_GB"), QStringLiteral("en-GB")},   {QStringLiteral("es_AR"), QStringLiteral("es-419")},
        {QStringLiteral("es_MX"), QStringLiteral("es-MX")},   {QStringLiteral("zh_CN"), QStringLiteral("zh")},
        {QStringLiteral("zh_TW"), QStringLiteral("zh-Hant")}, {QStringLiteral("zh_HK"), QStringLiteral("zh-HK")},
        {QStringLiteral("zh_SG"), QStringLiteral("zh-SG")},
    };
    for (auto text = expected.cbegin(); text != expected.cend(); ++text)
        QCOMPARE(texts.value(text.key()), text.value());
}

void TestPosixLocale::theDefaultIsNoLocale()
{
    const LocalizedTexts result =
        localizedTexts({{QString(), QStringLiteral("Notes")}, {QStringLiteral("de"), QStringLiteral("Notes")}});
    QCOMPARE(result.texts, (QMap<QString, QString>{{QStringLiteral("de"), QStringLiteral("Notes")}}));
    QCOMPARE(result.lostTags, QStringList());
}

void TestPosixLocale::lostTagsAreTold()
{
    const LocalizedTexts result = localizedTexts({{QStringLiteral("uz"), QStringLiteral("a")},
                                                  {QStringLiteral("uz-Arab"), QStringLiteral("b")},
                                                  {QStringLiteral("zh-Hans-HK"), QStringLiteral("c")}});
    QCOMPARE(result.texts, (QMap<QString, QString>{{QStringLiteral("uz"), QStringLiteral("a")}}));
    QCOMPARE(result.lostTags, (QStringList{QStringLiteral("uz-Arab"), QStringLiteral("zh-Hans-HK")}));
}

QTEST_GUILESS_MAIN(TestPosixLocale)
#include "tst_posixlocale.moc"
