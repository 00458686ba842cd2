// SPDX-License-Identifier: LGPL-2.1-or-later
#include "document/DomAttributes.h"

#include "document/AndroidNamespace.h"

#include <QDomElement>

QString androidAttribute(const QDomElement &element, const QString &name)
{
    return element.attributeNS(androidNamespace, name, QString());
}
