// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FILES_H
#define FILES_H

#include <QByteArray>
#include <QString>

namespace fixture {

/// Writes @p bytes to a new file @p path, in place of one that is there; its directories are made when they are missing.
/// Returns the path; ends the test when the file cannot be written.
QString writeFile(const QString &path, const QByteArray &bytes);

} // namespace fixture

#endif
