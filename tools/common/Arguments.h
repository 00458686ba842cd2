// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARGUMENTS_H
#define ARGUMENTS_H

#include <QByteArray>
#include <QString>
#include <QStringList>

/**
 * Arguments of a program as texts for QCommandLineParser, with a way back to their bytes. On Linux an argument may have
 * any bytes except NUL, as a file name may.
 *
 * Arguments are read as UTF-8 in every locale. A byte that is not UTF-8 becomes a lone half of a surrogate pair, U+DC80
 * to U+DCFF, which UTF-8 never decodes to. printableText() and jsonText() show it as U+FFFD.
 */
QStringList argumentTexts(int argc, char *argv[]);

/// The text for @p bytes.
QString argumentText(const QByteArray &bytes);
/// The bytes of @p text, which argumentText() made.
QByteArray argumentBytes(const QString &text);

#endif
