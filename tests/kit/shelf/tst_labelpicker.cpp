// SPDX-License-Identifier: LGPL-2.1-or-later
#include "language/LocaleChooser.h"
#include "shelf/index/LabelPicker.h"
#include "shelf/index/ShelfTexts.h"

#include <QtTest>

using namespace SorrelKit;

namespace {

constexpr const char *Tags[] = {"",      "en",         "en-GB",  "en-001",  "de", "de-AT", "pt-BR",  "pt-PT",
                                "zh-CN", "zh-Hant-TW", "sr",     "sr-Latn", "iw", "tl",    "es-419", "ca-ES-valencia",
                                "EN_us", "x",          "toolong"};
constexpr const char *Locales[] = {"C",     "en_US",  "en_GB", "en_AU", "de_DE", "de_AT", "de_CH",
                                   "pt_AO", "pt_BR",  "zh_CN", "zh_HK", "zh_TW", "sr_RS", "sr_Latn_RS",
                                   "he_IL", "fil_PH", "es_MX", "ca_ES", "ja_JP"};

/// The label that LocaleChooser takes from all labels.
std::optional<QString> expected(const QMap<QString, QString> &labels, const QLocale &locale)
{
    LocaleChooser chooser;
    QStringList texts;
    for (auto label = labels.cbegin(); label != labels.cend(); ++label) {
        if (chooser.add(LanguageTag(label.key())))
            texts.append(label.value());
    }
    const int best = chooser.best(LanguageTag(locale));
    return best < 0 ? std::optional<QString>() : texts.at(best);
}

} // namespace

class TestLabelPicker : public QObject
{
    Q_OBJECT

private slots:
    void picksAsTheChooser();
    void picksFromMoreListsThanItKeeps();
    void aColumnThatIsCut();
    void theLanguageOfATag();
};

// All pairs and triples of the tags, so that each can be the best one beside any other.
void TestLabelPicker::picksAsTheChooser()
{
    for (const char *name : Locales) {
        const QLocale locale(QString::fromLatin1(name));
        LabelPicker picker(locale);
        for (const char *a : Tags) {
            for (const char *b : Tags) {
                for (const char *c : Tags) {
                    QMap<QString, QString> labels;
                    for (const char *tag : {a, b, c})
                        labels.insert(QString::fromLatin1(tag),
                                      QStringLiteral("label %1").arg(QString::fromLatin1(tag)));
                    const std::optional<QString> label = picker.best(ShelfTexts::fromLabels(labels));
                    QVERIFY2(label == expected(labels, locale), qPrintable(QStringList(labels.keys()).join(u' ')));
                }
            }
        }
    }
}

void TestLabelPicker::picksFromMoreListsThanItKeeps()
{
    const QLocale locale(QStringLiteral("de_AT"));
    LabelPicker picker(locale);
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < LabelPicker::MaxChoices + 10; ++i) {
            const QMap<QString, QString> labels = {
                {QStringLiteral("de-%1").arg(i, 3, 10, QLatin1Char('0')), QStringLiteral("A")},
                {QStringLiteral("de"), QString::number(i)}};
            QCOMPARE(picker.best(ShelfTexts::fromLabels(labels)), std::optional<QString>(QString::number(i)));
        }
    }
}

void TestLabelPicker::aColumnThatIsCut()
{
    LabelPicker picker(QLocale(QStringLiteral("de_DE")));
    const QString column =
        ShelfTexts::fromLabels({{QString(), QStringLiteral("Notes")}, {QStringLiteral("de"), QString()}});
    QCOMPARE(picker.best(column), std::optional<QString>(QString()));
    for (int length = 0; length < column.size(); ++length) {
        const QString cut = column.left(length);
        QVERIFY2(picker.best(cut) == expected(ShelfTexts::toLabels(cut), QLocale(QStringLiteral("de_DE"))),
                 qPrintable(QString::number(length)));
    }
}

void TestLabelPicker::theLanguageOfATag()
{
    for (const char *tag : Tags) {
        const QString text = QString::fromLatin1(tag);
        QCOMPARE(LanguageTag::languageOf(text).toString(), LanguageTag(text).language().toString());
    }
}

QTEST_GUILESS_MAIN(TestLabelPicker)
#include "tst_labelpicker.moc"
