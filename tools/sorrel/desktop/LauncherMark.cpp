// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LauncherMark.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace {

QString pictureKey()
{
    return QStringLiteral("X-Sorrel-Launcher");
}

// Opening a pipe would wait for a writer.
bool isPlainFile(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() && !info.isSymLink();
}

// The decoder would log a message about a file that is no PNG.
bool isPng(const QString &path)
{
    const QByteArray signature("\x89PNG\r\n\x1a\n");
    QFile file(path);
    return isPlainFile(path) && file.open(QIODevice::ReadOnly) && file.read(signature.size()) == signature;
}

} // namespace

LauncherMark::LauncherMark(const SorrelKit::Entry &launcher)
    : m_package(launcher.packageName().toUtf8().toPercentEncoding()),
      m_component(launcher.name().toUtf8().toPercentEncoding())
{
}

QByteArray LauncherMark::entryLines() const
{
    return "X-Sorrel-Package=" + m_package + "\nX-Sorrel-Component=" + m_component + '\n';
}

void LauncherMark::putOn(QImage &picture) const
{
    picture.setText(pictureKey(), QString::fromLatin1(m_package + '/' + m_component));
}

bool LauncherMark::isOnEntry(const QString &path) const
{
    // The lines are at the start of an entry.
    constexpr qint64 maxBytes = qint64(1) << 20;
    QFile file(path);
    return isPlainFile(path) && file.open(QIODevice::ReadOnly) && file.read(maxBytes).contains('\n' + entryLines());
}

bool LauncherMark::isOnPicture(const QString &path) const
{
    return isPng(path)
           && QImageReader(path, "png").text(pictureKey()) == QString::fromLatin1(m_package + '/' + m_component);
}
