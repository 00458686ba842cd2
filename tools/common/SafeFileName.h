// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SAFEFILENAME_H
#define SAFEFILENAME_H

#include <QString>

/// Bytes that are left for a name where the file system takes 255, with an ending and what a temporary file adds.
constexpr int MaxFileNameBytes = 200;

/**
 * A name out of a package as the name of a file, which is one below the directory that it is put into, whatever the
 * name says: not empty, without '/' and control characters, with neither '.' nor '-' at its front, in at most @p
 * maxBytes bytes of UTF-8 (64 at least).
 *
 * A name stays as it is when it has letters, marks and digits of any script, '.', '_' and '-' alone, and is short
 * enough: so do those of Java ("org.example.notes.ListActivity"). In all others, other characters become '_'; the name
 * is cut where it is too long, between two characters; and "~" with 32 hexadecimal digits of its SHA-256 follows. No
 * name that stays as it is holds a "~", so that two names are never the same file. They may be where a file system
 * takes capital letters for small ones.
 */
QString safeFileName(const QString &name, int maxBytes = MaxFileNameBytes);

#endif
