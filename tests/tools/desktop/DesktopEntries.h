// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DESKTOPENTRIES_H
#define DESKTOPENTRIES_H

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

/// Packages whose launchers become desktop entries, and what hosts say of those.
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

/// Makes a program at @p path that keeps the arguments that it is started with.
void makeRecorder(const QString &path);
/// The arguments that the program was last started with, waiting for that up to a minute; they are forgotten then.
/// Without any, there is one that says so.
QStringList recordedArguments(const QString &path);

/// What desktop-file-validate finds wrong with, or would do otherwise in, the entry at @p path; empty when there is
/// nothing.
QString entryFaults(const QString &path);
/// Starts what the entry at @p path starts, as GLib does it; what goes wrong, or an empty text.
QString launchEntry(const QString &path);
/// The name of the entry at @p path in each of @p locales, as GLib reads it; empty when it takes it for no entry.
QMap<QString, QString> namesInLocales(const QString &path, const QStringList &locales);
/// The line of the entry at @p path that begins with @p key, as it stands, without the key; null when there is none.
QString rawValue(const QString &path, const QString &key);

/// Every file and symbolic link below @p directory, by its path from there.
QStringList filesBelow(const QString &directory);
QByteArray contentOf(const QString &path);

} // namespace fixture

#endif
