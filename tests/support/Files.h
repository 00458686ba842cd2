// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FILES_H
#define FILES_H

#include <QByteArray>
#include <QString>

namespace fixture {

/// Replaces the file @p path by a new one with @p bytes, and makes missing directories. Returns the path. Ends the test
/// when the file cannot be written.
QString writeFile(const QString &path, const QByteArray &bytes);

} // namespace fixture

#endif
