// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_READERCOMMAND_H
#define VIEWER_READERCOMMAND_H

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace Viewer {

/**
 * The command that starts the reader for a file. The path of the program is relative to that of this process's program,
 * so a moved installation and the build tree work.
 *
 * These variables of the environment change it, for tests and for trouble:
 * - SORREL_VIEWER_READER is the path of another program;
 * - SORREL_VIEWER_SANDBOX is "bubblewrap" (start the reader within bubblewrap, or not at all), "seccomp" (never start
 *   bubblewrap) or "none" (the same, and the reader does not confine itself).
 */
class ReaderCommand
{
public:
    /// Names are argumentTexts(), so files with names in no encoding can be read.
    ReaderCommand(const QString &file, const QString &locale, const QString &compareWith);

    /// Whether there is a command within bubblewrap for these files: bubblewrap is installed, the files
    /// exist, and QProcess can pass their names.
    bool canWrap() const { return m_canWrap; }
    /// Whether the reader must not run without bubblewrap.
    bool mustWrap() const;
    /// The program and the arguments, within bubblewrap or not.
    QString program(bool wraps) const { return wraps ? m_bubblewrap : m_reader; }
    QStringList arguments(bool wraps) const { return wraps ? m_wrapping + m_arguments : m_arguments; }
    /// The environment of the reader: what its libraries need of this process's. The rest may have secrets, which a
    /// package that takes the reader over would see.
    static QProcessEnvironment environment();

private:
    void wrap(const QStringList &files);

    QString m_reader;
    QStringList m_arguments;
    QString m_bubblewrap;
    QStringList m_wrapping; ///< arguments before those of the reader
    bool m_canWrap = false;
};

} // namespace Viewer

#endif
