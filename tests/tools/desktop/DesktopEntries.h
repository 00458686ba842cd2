// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DESKTOPENTRIES_H
#define DESKTOPENTRIES_H

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

/// Packages for desktop entries, and host programs that read the entries.
namespace fixture {

/// An activity for home screens.
struct Activity {
    QString name;
    QString label = QStringLiteral("Label");
    QString icon = QString(); ///< path of a member; empty for none
    bool isEnabled = true;
};

/// A manifest of the package @p name with these activities.
QByteArray manifestOf(const QString &name, const QVector<Activity> &activities);

/// Makes a program at @p path that stores its arguments.
void makeRecorder(const QString &path);
/// Waits up to a minute for the program to start, and returns and removes its stored arguments. Without a start,
/// returns one argument that says so.
QStringList recordedArguments(const QString &path);

/// The errors and hints of desktop-file-validate about the entry at @p path; empty when there are none.
QString entryFaults(const QString &path);
/// Starts the entry at @p path with GLib. Returns the error text, or an empty text.
QString launchEntry(const QString &path);
/// The name of the entry at @p path in each of @p locales, read by GLib; empty when GLib does not accept the entry.
QMap<QString, QString> namesInLocales(const QString &path, const QStringList &locales);
/// The raw line of the entry at @p path that begins with @p key, without the key; null when there is none.
QString rawValue(const QString &path, const QString &key);

/// Every file and symbolic link below @p directory, by its relative path.
QStringList filesBelow(const QString &directory);
QByteArray contentOf(const QString &path);

} // namespace fixture

#endif
