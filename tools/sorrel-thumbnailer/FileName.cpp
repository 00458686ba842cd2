// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FileName.h"

namespace {

const QLatin1String scheme("file://");
const QLatin1String thisMachine("localhost");

} // namespace

QByteArray FileName::pathOfUri() const
{
    if (!m_argument.startsWith(scheme, Qt::CaseInsensitive))
        return path();
    QString encoded = m_argument.mid(scheme.size());
    if (encoded.startsWith(thisMachine, Qt::CaseInsensitive))
        encoded.remove(0, thisMachine.size());
    const QByteArray bytes = QByteArray::fromPercentEncoding(encoded.toLatin1());
    // A path ends at its first NUL: what is opened would not be what the URI names.
    return bytes.startsWith('/') && !bytes.contains('\0') ? bytes : QByteArray();
}

QString FileName::text() const
{
    return QString::fromUtf8(m_argument.toLatin1());
}

bool FileName::isDash() const
{
    return m_argument == QLatin1String("-");
}
