// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef EXPECTEDAPPS_H
#define EXPECTEDAPPS_H

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <initializer_list>
#include <utility>

/// The answers that the library must give, written down from the sources of the sample applications.
namespace ExpectedApps {

using Labels = QMap<QString, QString>;

struct Launcher {
    const char *className;
    /// Whether it is listed when disabled entries are not requested.
    bool shown;
    /// By locale. The label "@string/name" means the reference text of that resource.
    Labels labels;
    /// The resource that the icon attribute names ("drawable/notes"), or an empty string.
    QString icon;
    /// Whether the label is a literal text in the manifest.
    bool literalLabel = false;
    /// Whether the element is an alias.
    bool alias = false;
};

struct App {
    QString package;
    int minSdkVersion;
    QList<Launcher> launchers;
};

inline Labels labels(std::initializer_list<std::pair<const char *, const char *>> pairs)
{
    Labels result;
    for (const auto &[locale, text] : pairs)
        result.insert(QString::fromUtf8(locale), QString::fromUtf8(text));
    return result;
}

/// @p base, plus the labels of @p more for locales that are missing in @p base.
inline Labels completed(Labels base, const Labels &more)
{
    for (auto it = more.cbegin(); it != more.cend(); ++it) {
        if (!base.contains(it.key()))
            base.insert(it.key(), it.value());
    }
    return base;
}

inline Launcher activity(const char *name, const Labels &labels, const QString &icon, bool shown = true)
{
    return {name, shown, labels, icon};
}

inline Launcher activity(const char *name, const char *label, const QString &icon, bool shown = true)
{
    return {name, shown, {{QString(), QString::fromUtf8(label)}}, icon, true};
}

template <typename Label>
Launcher alias(const char *target, const Label &label, const QString &icon, bool shown = true)
{
    Launcher launcher = activity(target, label, icon, shown);
    launcher.alias = true;
    return launcher;
}

inline App notes()
{
    const Labels appName = labels({
        {"", "Notes"},
        {"en-US", "Notes US"},
        {"en-GB", "Jotter"},
        {"de", "Notizen"},
        {"de-AT", "Notizen (AT)"},
        {"fr", "Carnet"},
        {"fr-CA", "Carnet (Canada)"},
        {"pt-BR", "Anotações"},
        {"pt-PT", "Apontamentos"},
        {"zh-CN", "笔记"},
        {"zh-TW", "筆記"},
        {"ja", "メモ 📝"},
        {"ar", "ملاحظات"},
        {"ru", "Заметки"},
        {"el", "Σημειώσεις"},
        {"hi", "नोट"},
    });
    const Labels today = labels({
        {"", "Today 🗓"},
        {"en-US", "Today"},
        {"en-GB", "Today, GB"},
        {"de", "Heute"},
        {"fr", "Aujourd’hui"},
        {"pt-BR", "Hoje"},
        {"zh-CN", "今天"},
        {"ja", "今日"},
        {"ru", "Сегодня"},
        {"nl", "Vandaag"},
    });
    const Labels shopping = labels({
        {"", "Shopping list"},
        {"de", "Einkaufszettel"},
        {"fr", "Liste d'achats"},
        {"ja", "買い物 🛒"},
    });
    // The default value refers to app_name, so it takes all locales of app_name, "de" included, before the string's own
    // locales are read. The values of "nl" and "sv" refer to today, which has a text in Dutch but none in Swedish.
    const Labels editor = completed(appName, labels({{"it", "Redattore"}, {"nl", "Vandaag"}, {"sv", "Today 🗓"}}));
    // Refers to shopping, and in Spanish to app_name, which has no text in Spanish.
    const Labels journal = completed(shopping, labels({{"es", "Notes"}}));

    const QString icon = QStringLiteral("drawable/notes");
    return {QStringLiteral("org.example.notes"),
            14,
            {
                activity("org.example.notes.ListActivity", appName, icon),
                activity("org.example.notes.ListActivity", today, QStringLiteral("drawable/today")),
                activity("org.example.notes.EditorActivity", editor, QStringLiteral("mipmap/editor")),
                activity("org.example.journal.JournalActivity", "Jane's diary & \"letters\"", icon),
                alias("org.example.notes.EditorActivity", "Quick note 📝", icon),
                alias("org.example.notes.EditorActivity", shopping, QStringLiteral("drawable/basket")),
                alias("org.example.journal.JournalActivity", journal, QStringLiteral("drawable/trolley")),
            }};
}

inline App toolbox()
{
    const Labels drill = labels({{"", "Drill 🔩"}, {"de", "Bohrer"}});
    // A language of three letters or a region of three digits is stored in two bytes, and the library reads these as
    // letters. It ignores scripts, so the first of "sr" and "sr-Latn" in the compiler's order wins.
    const Labels level = labels({
        {"", "Level"},
        {"de", "Wasserwaage"},
        {"\u00ad\u0005", "Nibel"},
        {"es", "Nivel"},
        {"es-\u00a4$", "Nivel (419)"},
        {"sr", "Либела"},
        {"iw", "פלס"},
    });
    const Labels chainEnd = labels({{"", "End of the chain"}, {"de", "Ende der Kette"}});
    // References are followed to a depth of five. This one ends at the reference before the text.
    const Labels longChain = labels({{"", "@string/chain_end"}});

    const QString icon = QStringLiteral("drawable/toolbox");
    return {QStringLiteral("org.example.toolbox"),
            1,
            {
                activity("org.example.toolbox.Hammer", "Toolbox", icon),
                activity("org.example.toolbox.Saw", "Saw", icon, false),
                activity("org.example.toolbox.Drill", drill, icon, false),
                activity("org.example.toolbox.Level", level, icon),
                activity("org.example.toolbox.Plane", "Plane", icon, false),
                activity("org.example.toolbox.Vice", "Vice", QStringLiteral("drawable/badge")),
                activity("org.example.toolbox.Rasp", "Rasp", QStringLiteral("drawable/outline")),
                activity("org.example.toolbox.Chisel", "Chisel", icon, false),
                activity("org.example.toolbox.File", "File", icon),
                activity("org.example.toolbox.Gauge", "Gauge", icon),
                activity("org.example.toolbox.Chain", longChain, icon),
                activity("org.example.toolbox.ShortChain", chainEnd, icon),
                alias("org.example.toolbox.Saw", "Saw again", icon),
                alias("org.example.toolbox.Hammer", "Hammer, off", icon, false),
                alias("org.example.toolbox.Hammer", "Toolbox", icon, false),
                alias("org.example.toolbox.Hammer", Labels(), QStringLiteral("android:drawable/sym_def_app_icon")),
                alias("org.example.toolbox.Hammer", "Swatch", QStringLiteral("drawable/swatch")),
                alias("org.example.toolbox.Hammer", "Circle", QStringLiteral("drawable/circle")),
                alias("org.example.toolbox.Hammer", "Plate", QStringLiteral("drawable/plate")),
            }};
}

inline App kiosk()
{
    const Labels label = labels({{"", "Kiosk 🎫🍿"}, {"de-CH", "Kiosk (CH)"}});
    return {QStringLiteral("org.example.kiosk"),
            9,
            {
                activity("org.example.kiosk.Tickets", label, QString(), false),
                activity("org.example.kiosk.Snacks", "Snacks & drinks", QString(), false),
            }};
}

/// The labels that generate_atlas.cmake writes for place @p number.
inline Labels place(int number)
{
    Labels result;
    result.insert(QString(), QStringLiteral("Place %1 – Ort %1 🗺").arg(number));
    int step = 0;
    for (const char *locale : {"en-rUS", "en-rGB", "de", "de-rAT", "fr", "fr-rCA", "pt-rBR", "pt-rPT", "zh-rCN",
                               "zh-rTW", "ja", "ar", "ru"}) {
        step = step % 4 + 1;
        const QString qualifier = QLatin1String(locale);
        if (number % step == 0) {
            result.insert(QString(qualifier).replace(QLatin1String("-r"), QLatin1String("-")),
                          QStringLiteral("%1 %2").arg(qualifier, QString::number(number)));
        }
    }
    return result;
}

inline App atlas()
{
    const QString compass = QStringLiteral("drawable/compass");
    return {QStringLiteral("org.example.atlas"),
            21,
            {
                activity("org.example.atlas.MapActivity", place(0), QStringLiteral("mipmap/atlas")),
                activity("org.example.atlas.CompassActivity", place(137), compass),
                alias("org.example.atlas.MapActivity", place(239), compass),
            }};
}

inline QMap<QString, App> all()
{
    return {{QStringLiteral("notes"), notes()},
            {QStringLiteral("toolbox"), toolbox()},
            {QStringLiteral("kiosk"), kiosk()},
            {QStringLiteral("atlas"), atlas()}};
}

/// The drawables defined by reference or in XML, with the pictures that they lead to, named as in iconSources.
inline QMap<QString, QStringList> indirectIcons()
{
    return {{QStringLiteral("drawable/basket"), {QStringLiteral("drawable/cart")}},
            {QStringLiteral("drawable/trolley"), {QStringLiteral("drawable/cart"), QStringLiteral("drawable/today")}},
            {QStringLiteral("drawable/swatch"), {}},
            {QStringLiteral("drawable/circle"), {QStringLiteral("drawable/badge")}},
            {QStringLiteral("drawable/plate"), {QStringLiteral("drawable/badge"), QStringLiteral("drawable/toolbox")}},
            {QStringLiteral("android:drawable/sym_def_app_icon"), {}}};
}

} // namespace ExpectedApps

#endif
