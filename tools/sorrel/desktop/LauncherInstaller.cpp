// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LauncherInstaller.h"

#include "Console.h"
#include "DesktopEntry.h"
#include "HicolorIcons.h"
#include "LauncherMark.h"
#include "PngBytes.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

using SorrelKit::Entry;

namespace {

// A dangling link counts as existing, because writing would follow it.
bool isThere(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

bool writeFile(const QString &path, const QByteArray &content)
{
    const QString directory = QFileInfo(path).path();
    if (!QDir().mkpath(directory)) {
        Console::complain(directory, QStringLiteral("the directory could not be made"));
        return false;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        Console::complain(path, file.errorString());
        return false;
    }
    // commit() does not notice that a full disk cut the file. flush() does, but has no reason.
    if (file.write(content) == content.size() && file.flush() && file.commit())
        return true;
    Console::complain(path, QStringLiteral("it could not be written whole"));
    return false;
}

} // namespace

LauncherInstaller::LauncherInstaller(const SorrelKit::Package &package, const QString &file, const QString &directory,
                                     const ExecTemplate &command)
    : m_renderer(package), m_file(file), m_directory(directory), m_command(command)
{
}

void LauncherInstaller::complain(const Entry &launcher, const QString &text) const
{
    Console::complain(m_file, launcher.name() + QLatin1String(": ") + text);
}

QVector<LauncherInstaller::File> LauncherInstaller::iconFiles(const Entry &launcher, const QString &name)
{
    QVector<File> files;
    const HicolorIcons icons(m_renderer, launcher, m_mask);
    for (const QString &fault : icons.faults())
        complain(launcher, fault);
    for (QImage picture : icons.pictures()) {
        LauncherMark(launcher).putOn(picture);
        files.append({path(HicolorIcons::path(name, picture.width())), pngBytes(picture)});
    }
    return files;
}

void LauncherInstaller::removeOldIcons(const Entry &launcher, const QString &name, const QStringList &icons) const
{
    for (const int size : HicolorIcons::sizes()) {
        const QString icon = path(HicolorIcons::path(name, size));
        if (!icons.contains(icon) && LauncherMark(launcher).isOnPicture(icon))
            QFile::remove(icon);
    }
}

LauncherFiles LauncherInstaller::install(const Entry &launcher)
{
    QString fault;
    const QString command = m_command.command(launcher, &fault);
    if (command.isEmpty()) {
        complain(launcher, fault);
        return {};
    }
    const QString name = DesktopEntry::fileName(launcher);
    QVector<File> files = iconFiles(launcher, name);
    DesktopEntry entry(launcher, command, files.isEmpty() ? QString() : name);
    entry.setVersionCode(m_versionCode);
    if (!entry.lostLanguages().isEmpty())
        complain(launcher, QStringLiteral("no locale stands for the language of the label in %1")
                               .arg(entry.lostLanguages().join(QLatin1String(", "))));
    const QString entryPath = path(QStringLiteral("applications/%1.desktop").arg(name));
    files.append({entryPath, entry.toUtf8()});

    const LauncherMark mark(launcher);
    for (File &file : files) {
        file.isNew = !isThere(file.path);
        if (!file.isNew && !(file.path == entryPath ? mark.isOnEntry(file.path) : mark.isOnPicture(file.path))) {
            Console::complain(file.path, QStringLiteral("a file that is not of %1 is there").arg(launcher.name()));
            return {};
        }
    }
    LauncherFiles written;
    for (int i = 0; i < files.size(); ++i) {
        if (!writeFile(files.at(i).path, files.at(i).content)) {
            for (const File &file : files.mid(0, i)) {
                if (file.isNew)
                    QFile::remove(file.path);
            }
            return {};
        }
        if (files.at(i).path != entryPath)
            written.icons.append(files.at(i).path);
    }
    written.entry = entryPath;
    removeOldIcons(launcher, name, written.icons);
    return written;
}
