// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SAFEFILENAME_H
#define SAFEFILENAME_H

#include <QString>

/// Bytes for a name on a file system that allows 255, without the extension and the suffix of a temporary file.
constexpr int MaxFileNameBytes = 200;

/**
 * Converts a name from a package to a file name that always stays in its directory. The result is not empty, has no '/'
 * and no control characters, begins with neither '.' nor '-', and has at most @p maxBytes bytes of UTF-8 (at least 64).
 *
 * A short enough name of letters, marks and digits of any script, '.', '_' and '-' stays the same, such as the names of
 * Java ("org.example.notes.ListActivity"). In any other name, other characters become '_', a long name is cut between
 * two characters, and "~" with 32 hexadecimal digits of its SHA-256 follows. Unchanged names have no "~", so two names
 * never give the same file, except on a file system that ignores case.
 */
QString safeFileName(const QString &name, int maxBytes = MaxFileNameBytes);

#endif
