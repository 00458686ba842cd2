// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef JSONTEXT_H
#define JSONTEXT_H

#include <QByteArray>
#include <QJsonObject>

/**
 * @p object as JSON on one line, without the end of the line. Keys are in the order of their code units. The result is
 * valid UTF-8 and valid JSON for all texts: a lone half of a surrogate pair becomes U+FFFD. Each character for which
 * steersText() is true is escaped (`\u009b`, or a pair of escapes). The JSON value stays the same, and is harmless on a
 * terminal.
 */
QByteArray jsonText(const QJsonObject &object);

#endif
