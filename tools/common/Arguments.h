// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARGUMENTS_H
#define ARGUMENTS_H

#include <QByteArray>
#include <QString>
#include <QStringList>

/**
 * Arguments of a program as texts, which QCommandLineParser takes, from which their bytes can be had again. On Linux an
 * argument, as the name of a file, is any bytes but NUL; only for people it is text.
 *
 * Arguments are read as UTF-8 in every locale. Each byte that is no UTF-8 becomes a half of a surrogate pair that is alone,
 * U+DC80 to U+DCFF, which UTF-8 never decodes to; printableText() and jsonText() show it as U+FFFD.
 */
QStringList argumentTexts(int argc, char *argv[]);

/// @p bytes as such a text.
QString argumentText(const QByteArray &bytes);
/// The bytes that argumentText() made @p text of.
QByteArray argumentBytes(const QString &text);

#endif
