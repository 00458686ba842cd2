// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ManifestAttributes.h"

QString ManifestAttributes::text(const char *name) const
{
    return m_attributes.value(QStringLiteral("http://schemas.android.com/apk/res/android"), QLatin1String(name))
        .toString();
}

QString ManifestAttributes::textInAnyNamespace(const char *name) const
{
    const QString value = text(name);
    return value.isEmpty() ? m_attributes.value(QLatin1String(name)).toString() : value;
}

bool ManifestAttributes::isTrue(const char *name, bool fallback) const
{
    const QString value = text(name);
    if (value == QLatin1String("true"))
        return true;
    return value == QLatin1String("false") ? false : fallback;
}

int ManifestAttributes::number(const char *name, int fallback) const
{
    constexpr int AnyBase = 0;
    bool isNumber = false;
    const int value = text(name).toInt(&isNumber, AnyBase);
    return isNumber ? value : fallback;
}

QString ManifestAttributes::longVersion() const
{
    const quint64 major = quint32(number("versionMajor"));
    const quint64 minor = quint32(number("version"));
    return QString::number(qint64(major << 32U | minor));
}
