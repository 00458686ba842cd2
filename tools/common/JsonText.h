// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef JSONTEXT_H
#define JSONTEXT_H

#include <QByteArray>
#include <QJsonObject>

/**
 * @p object as JSON on one line, without the line's end; keys are in the order of their code units. It is valid UTF-8 and
 * valid JSON whatever its texts hold: a half of a surrogate pair that is alone becomes U+FFFD. Each character that
 * steersText() is escaped (`\u009b`, or a pair of escapes), which is the same JSON value, and harmless on a terminal.
 */
QByteArray jsonText(const QJsonObject &object);

#endif
