// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageSource.h"

#include <QCryptographicHash>
#include <QFile>

QByteArray PageSource::resource(const char *name)
{
    QFile file(QStringLiteral(":/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray PageSource::style(std::initializer_list<const char *> names)
{
    QByteArray sheets;
    for (const char *name : names)
        sheets += resource(name);
    return "/*<![CDATA[*/\n" + sheets + "/*]]>*/";
}

QByteArray PageSource::hash(const QByteArray &content)
{
    return "'sha256-" + QCryptographicHash::hash(content, QCryptographicHash::Sha256).toBase64() + "'";
}

QByteArray PageSource::filled(const char *name, const QMap<QByteArray, QByteArray> &values)
{
    const QByteArray text = resource(name);
    QByteArray page;
    int from = 0;
    for (;;) {
        const auto start = int(text.indexOf("{{", from));
        if (start < 0)
            return page + text.mid(from);
        const auto end = int(text.indexOf("}}", start));
        page += text.mid(from, start - from) + values.value(text.mid(start + 2, end - start - 2));
        from = end + 2;
    }
}
