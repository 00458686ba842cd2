// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LAUNCHERMARK_H
#define LAUNCHERMARK_H

#include <SorrelKit/Entry.h>

#include <QByteArray>
#include <QImage>
#include <QString>

/**
 * Identifies the launcher of a written file: the name of the package, and of the activity or alias, in ASCII.
 * Everything except letters, digits and "-._~" is %XX of its UTF-8. Desktop entries have both as values of the keys
 * X-Sorrel-Package and X-Sorrel-Component, so hosts can find the entries of a package. PNG files have them as a text.
 */
class LauncherMark
{
public:
    explicit LauncherMark(const SorrelKit::Entry &launcher);

    /// The two lines of a desktop entry.
    QByteArray entryLines() const;
    /// Adds the text to a picture that is written as a PNG file later.
    void putOn(QImage &picture) const;

    /// Whether the file at @p path has this mark. A symbolic link never has one.
    bool isOnEntry(const QString &path) const;
    bool isOnPicture(const QString &path) const;

private:
    QByteArray m_package;
    QByteArray m_component;
};

#endif
