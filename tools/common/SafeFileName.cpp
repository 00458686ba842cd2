// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SafeFileName.h"

#include <QCryptographicHash>
#include <QVector>

namespace {

constexpr int HashDigits = 32;

bool isSafe(uint character)
{
    return QChar::isLetterOrNumber(character) || QChar::isMark(character) || character == '.' || character == '_'
           || character == '-';
}

bool isSafeFirst(uint character)
{
    return isSafe(character) && character != '.' && character != '-';
}

// The hash is of UTF-16 units: two texts with lone surrogates may have the same UTF-8.
QString hashOf(const QString &name)
{
    QByteArray bytes;
    for (const QChar unit : name) {
        bytes.append(char(unit.row()));
        bytes.append(char(unit.cell()));
    }
    const QByteArray digits = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    return QString::fromLatin1(digits.left(HashDigits));
}

} // namespace

QString safeFileName(const QString &name, int maxBytes)
{
    const int maxStemBytes = maxBytes - HashDigits - 1;
    QString stem;
    int stemBytes = 0;
    bool isChanged = name.isEmpty() || name.toUtf8().size() > maxBytes;
    for (const uint character : name.toUcs4()) {
        const bool fits = stem.isEmpty() ? isSafeFirst(character) : isSafe(character);
        isChanged = isChanged || !fits;
        const char32_t written = fits ? char32_t(character) : U'_';
        const QString text = QString::fromUcs4(&written, 1);
        stemBytes += int(text.toUtf8().size());
        if (stemBytes > maxStemBytes)
            break;
        stem += text;
    }
    return isChanged ? stem + QLatin1Char('~') + hashOf(name) : name;
}
