// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LAUNCHERINSTALLER_H
#define LAUNCHERINSTALLER_H

#include "ExecTemplate.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Entry.h>
#include <SorrelKit/Package.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

/// The files of a launcher: all of them, or none.
struct LauncherFiles {
    QString entry; ///< path of the desktop entry; empty when none was written
    QStringList icons;
};

/**
 * Writes desktop entries and icons of the launchers of one package below a data directory, such as `~/.local/share`:
 * `applications/NAME.desktop` and `icons/hicolor/SIZExSIZE/apps/NAME.png`. Errors are printed on standard error.
 *
 * An existing file is replaced only when its LauncherMark is that of the same launcher. If any other file has the name,
 * nothing is written for the launcher. Icons of sizes that the launcher no longer has are removed. Each file is written
 * whole or not at all, and the entry comes last. When a file cannot be written, the new ones are removed again.
 */
class LauncherInstaller
{
public:
    /// Writes below @p directory, for @p package, which is in the file @p file.
    LauncherInstaller(const SorrelKit::Package &package, const QString &file, const QString &directory,
                      const ExecTemplate &command);

    void setMask(SorrelKit::IconMask mask) { m_mask = mask; }
    void setVersionCode(qint64 code) { m_versionCode = code; }

    LauncherFiles install(const SorrelKit::Entry &launcher);

private:
    struct File {
        QString path;
        QByteArray content;
        bool isNew = true;
    };

    void complain(const SorrelKit::Entry &launcher, const QString &text) const;
    QVector<File> iconFiles(const SorrelKit::Entry &launcher, const QString &name);
    void removeOldIcons(const SorrelKit::Entry &launcher, const QString &name, const QStringList &icons) const;
    QString path(const QString &relative) const { return m_directory + QLatin1Char('/') + relative; }

    SorrelKit::DrawableRenderer m_renderer;
    QString m_file;
    QString m_directory;
    ExecTemplate m_command;
    SorrelKit::IconMask m_mask = SorrelKit::IconMask::None;
    qint64 m_versionCode = 0;
};

#endif
