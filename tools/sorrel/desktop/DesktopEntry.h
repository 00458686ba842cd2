// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DESKTOPENTRY_H
#define DESKTOPENTRY_H

#include <SorrelKit/Launcher.h>

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

/**
 * The entry of a launcher for menus and home screens of freedesktop hosts, after the Desktop Entry Specification. It
 * says what the package says, and no more: there are no categories, and nothing on start-up notification.
 *
 * Labels are those of the package: the default one as `Name`, each other language's as `Name[LOCALE]` of the locales
 * that posixLocales() has for it, the same as the default included. Ends of lines and tabs stay, escaped; other control
 * characters, and those that embed, override or isolate directions and would reach beyond the label, go. Labels above
 * MaxLabelLength are cut there.
 */
class DesktopEntry
{
public:
    /// As many UTF-16 units as Android shows of a label.
    static constexpr int MaxLabelLength = 1000;

    /// The entry of @p launcher, which @p command starts, with the icon of the name @p icon, or without one when that
    /// is empty.
    DesktopEntry(const SorrelKit::Launcher &launcher, const QString &command, const QString &icon);

    /// The version of the package, for hosts that ask whether the entry is that of another one.
    void setVersionCode(qint64 code) { m_versionCode = code; }

    /// The file.
    QByteArray toUtf8() const;
    /// Languages of labels that no locale stands for; see posixLocales().
    QStringList lostLanguages() const { return m_lostLanguages; }

    /**
     * The name of the launcher's files, without an ending: one of its own for each launcher of each package, whatever
     * their names are, and always the same. That of the activity or alias, when all in front of its last dot is the
     * package ("org.example.notes.ListActivity"); else that of the package, a dash, and that of the activity or alias
     * ("org.example.game-com.example.engine.Activity"), as packages may have a class of one name. safeFileName() tells
     * what becomes of others.
     */
    static QString fileName(const SorrelKit::Launcher &launcher);

private:
    SorrelKit::Launcher m_launcher;
    QString m_command;
    QString m_icon;
    QString m_name;
    QMap<QString, QString> m_names; ///< by locale
    QStringList m_lostLanguages;
    qint64 m_versionCode = 0;
};

#endif
