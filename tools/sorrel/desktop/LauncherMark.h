// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LAUNCHERMARK_H
#define LAUNCHERMARK_H

#include <SorrelKit/Launcher.h>

#include <QByteArray>
#include <QImage>
#include <QString>

/**
 * What tells, in a file that was written for a launcher, which launcher that is: name of the package, and of the
 * activity or alias, in ASCII with all but letters, digits and "-._~" as %XX of its UTF-8. Desktop entries have them as
 * values of the keys X-Sorrel-Package and X-Sorrel-Component, by which hosts find what they have for a package; PNG
 * files as a text.
 */
class LauncherMark
{
public:
    explicit LauncherMark(const SorrelKit::Launcher &launcher);

    /// The two lines of a desktop entry.
    QByteArray entryLines() const;
    /// Makes the text part of a picture that is to become a PNG file.
    void putOn(QImage &picture) const;

    /// Whether the file at @p path has this mark. A symbolic link has none, wherever it leads.
    bool isOnEntry(const QString &path) const;
    bool isOnPicture(const QString &path) const;

private:
    QByteArray m_package;
    QByteArray m_component;
};

#endif
