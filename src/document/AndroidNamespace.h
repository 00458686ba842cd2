// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDNAMESPACE_H
#define ANDROIDNAMESPACE_H

#include <QString>

class QDomElement;

/// The namespace URI that Android's build tools bind to the prefix `android`, in manifests and other resources.
extern const QString androidNamespace;

/// The attribute @p name of @p element in that namespace; an empty string when it does not exist.
QString androidAttribute(const QDomElement &element, const QString &name);

#endif
