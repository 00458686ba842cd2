// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DOMATTRIBUTES_H
#define DOMATTRIBUTES_H

#include <QString>

class QDomElement;

/// The attribute @p name of @p element in Android's namespace; an empty string when it does not exist.
QString androidAttribute(const QDomElement &element, const QString &name);

#endif
