// SPDX-License-Identifier: LGPL-2.1-or-later
#include "document/AndroidNamespace.h"

#include <QDomElement>

const QString androidNamespace = QStringLiteral("http://schemas.android.com/apk/res/android");

QString androidAttribute(const QDomElement &element, const QString &name)
{
    return element.attributeNS(androidNamespace, name, QString());
}
