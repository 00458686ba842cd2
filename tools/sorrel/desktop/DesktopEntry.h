// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DESKTOPENTRY_H
#define DESKTOPENTRY_H

#include <SorrelKit/Entry.h>

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

/**
 * The entry of a launcher for menus and home screens of freedesktop hosts, in the form of the Desktop Entry
 * Specification. It has only facts of the package: no categories, and nothing about start-up notification.
 *
 * `Name` is the default label of the package. `Name[LOCALE]` is the label of a language, for each locale that
 * posixLocales() returns for it, even when it equals the default. Line ends and tabs are escaped. Other control
 * characters are removed, and so are characters that embed, override or isolate directions, because they would affect
 * text beyond the label. Labels are cut at MaxLabelLength.
 */
class DesktopEntry
{
public:
    /// The number of UTF-16 units that Android shows of a label.
    static constexpr int MaxLabelLength = 1000;

    /// The entry of @p launcher, started by @p command, with the icon @p icon, or without an icon when it is empty.
    DesktopEntry(const SorrelKit::Entry &launcher, const QString &command, const QString &icon);

    /// The version of the package. A host can compare it with the version of an installed entry.
    void setVersionCode(qint64 code) { m_versionCode = code; }

    /// The content of the file.
    QByteArray toUtf8() const;
    /// Languages of labels without a locale; see posixLocales().
    QStringList lostLanguages() const { return m_lostLanguages; }

    /**
     * The name of the launcher's files, without an extension. It is stable, and unique for each launcher of each
     * package. It is the name of the activity or alias when that begins with the package and has one further part
     * ("org.example.notes.ListActivity"). Otherwise it is the package, a dash, and the name of the activity or alias
     * ("org.example.game-com.example.engine.Activity"), because several packages may have a class of one name.
     * safeFileName() converts all other names.
     */
    static QString fileName(const SorrelKit::Entry &launcher);

private:
    SorrelKit::Entry m_launcher;
    QString m_command;
    QString m_icon;
    QString m_name;
    QMap<QString, QString> m_names; ///< by locale
    QStringList m_lostLanguages;
    qint64 m_versionCode = 0;
};

#endif
