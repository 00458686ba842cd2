// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PRINTABLETEXT_H
#define PRINTABLETEXT_H

#include <QString>

/**
 * @p text as a terminal may show it: on one line, and steering nothing. Control characters (ESC among them), separators of
 * lines and paragraphs, and the characters that embed, override or isolate directions become U+FFFD, each one.
 */
QString printableText(QString text);

#endif
