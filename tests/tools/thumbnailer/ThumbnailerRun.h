// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef THUMBNAILERRUN_H
#define THUMBNAILERRUN_H

#include "Apk.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// The result of a program. The status is -1 when it did not start, crashed or took too long.
struct Run {
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

/**
 * An empty directory that `sorrel-thumbnailer` runs in.
 *
 * Names and arguments are bytes. Each character of a text here is one byte.
 */
class ThumbnailerRun
{
public:
    /// Runs the program in the locale @p locale.
    Run run(const QStringList &arguments, const char *locale = "C.UTF-8") const;
    /// Runs a Bash script.
    Run shell(const QString &script) const;

    /// The directory, and the path of the file @p name in it.
    QString path() const { return m_directory.path(); }
    QString path(const QString &name) const { return m_directory.path() + QLatin1Char('/') + name; }
    /// Writes a file, and returns its path.
    QString write(const QString &name, const QByteArray &bytes) const;
    /// Names of all files in the directory, sorted.
    QStringList files() const;

    /// Bytes of a file; empty when there is none.
    static QByteArray contentOf(const QString &path);
    /// Path of a sample package.
    static QString sample(const char *name);
    /// A package with an icon in IconColor, for the application or only for its launcher ("activity").
    static QByteArray iconPackage(const char *element = "application");
    static constexpr quint32 IconColor = 0xff2080c0;

private:
    Run start(const QString &program, const QStringList &arguments, const char *locale) const;

    QTemporaryDir m_directory;
};

#endif
