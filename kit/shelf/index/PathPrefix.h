// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PATHPREFIX_H
#define SORRELKIT_PATHPREFIX_H

#include <QByteArray>
#include <QList>

#include <algorithm>

namespace SorrelKit {

/// Whether @p path is @p folder, or below it. Both are absolute and have no "." or "..".
inline bool isBelow(const QByteArray &path, const QByteArray &folder)
{
    return path.startsWith(folder)
           && (folder.endsWith('/') || path.size() == folder.size() || path.at(folder.size()) == '/');
}

/// Whether @p path is one of @p folders, or below one.
inline bool isBelowAny(const QByteArray &path, const QList<QByteArray> &folders)
{
    return std::any_of(folders.cbegin(), folders.cend(), [&](const QByteArray &each) { return isBelow(path, each); });
}

} // namespace SorrelKit

#endif
