// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FileName.h"

#include "PrintableText.h"

#include <QFile>

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QByteArray scheme("file://");
const QByteArray thisMachine("localhost");

// The current directory, with a '/' at its end; the root when the current directory was removed.
QByteArray workingDirectory()
{
    char *const path = ::getcwd(nullptr, 0);
    const QByteArray directory(path);
    std::free(path);
    return directory.endsWith('/') ? directory : directory + '/';
}

bool startsWithAnyCase(const QByteArray &bytes, const QByteArray &start)
{
    return bytes.left(start.size()).toLower() == start;
}

} // namespace

QByteArray FileName::pathOfUri() const
{
    if (!startsWithAnyCase(m_path, scheme))
        return path();
    QByteArray encoded = m_path.mid(scheme.size());
    if (startsWithAnyCase(encoded, thisMachine))
        encoded.remove(0, thisMachine.size());
    const QByteArray bytes = QByteArray::fromPercentEncoding(encoded);
    // A path ends at its first NUL, so the program would open another file than the URI names.
    return bytes.startsWith('/') && !bytes.contains('\0') ? bytes : QByteArray();
}

QString FileName::forQt() const
{
    if (m_path.isEmpty())
        return QStringLiteral("");
    const QString name = QFile::decodeName(m_path);
    if (QFile::encodeName(name) != m_path)
        return {};
    // A '/' in the name keeps Qt from looking among its own resources.
    return name.startsWith(QLatin1Char('/')) ? name : QStringLiteral("./") + name;
}

QString FileName::text() const
{
    QString text = argumentText(m_path);
    forEachCharacter(argumentText(m_path), [&](int first, int, char32_t character) {
        if (character == QChar::ReplacementCharacter)
            text[first] = QChar::ReplacementCharacter;
    });
    return text;
}

QByteArray FileName::uri() const
{
    const QByteArray absolute = m_path.startsWith('/') ? m_path : workingDirectory() + m_path;
    return scheme + absolute.toPercentEncoding("/");
}

QJsonObject FileName::toJson() const
{
    QJsonObject json{{QStringLiteral("file"), text()}};
    if (text().toUtf8() != m_path)
        json.insert(QStringLiteral("uri"), QString::fromLatin1(uri()));
    return json;
}

bool FileName::isSameFile(const FileName &other) const
{
    struct stat mine = {};
    struct stat theirs = {};
    return ::stat(m_path.constData(), &mine) == 0 && ::stat(other.m_path.constData(), &theirs) == 0
           && mine.st_dev == theirs.st_dev && mine.st_ino == theirs.st_ino;
}
