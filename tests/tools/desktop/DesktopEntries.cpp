// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DesktopEntries.h"

#include "Apk.h"
#include "Tool.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

namespace fixture {

namespace {

// Prints a name per locale, each ended by a NUL.
constexpr char nameScript[] = R"(
import sys
from gi.repository import Gio, GLib
if Gio.DesktopAppInfo.new_from_filename(sys.argv[1]) is None:
    sys.exit("no entry")
entry = GLib.KeyFile()
entry.load_from_file(sys.argv[1], GLib.KeyFileFlags.KEEP_TRANSLATIONS)
for locale in sys.argv[2:]:
    sys.stdout.write(entry.get_locale_string("Desktop Entry", "Name", locale) + "\0")
)";

// Splits texts that each end with a NUL.
QStringList textsOf(const QByteArray &bytes)
{
    QStringList texts;
    for (const QByteArray &text : bytes.split('\0'))
        texts.append(QString::fromUtf8(text));
    texts.removeLast();
    return texts;
}

} // namespace

QByteArray manifestOf(const QString &name, const QVector<Activity> &activities)
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), name)});
    builder.start(QStringLiteral("application"));
    for (const Activity &activity : activities) {
        QVector<Attribute> attributes{androidText(QStringLiteral("name"), activity.name),
                                      androidText(QStringLiteral("label"), activity.label),
                                      androidValue(QStringLiteral("enabled"), Boolean, activity.isEnabled ? -1 : 0)};
        if (!activity.icon.isEmpty())
            attributes.append(androidText(QStringLiteral("icon"), activity.icon));
        builder.start(QStringLiteral("activity"), attributes).launcherFilter().end(QStringLiteral("activity"));
    }
    return builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
}

void makeRecorder(const QString &path)
{
    QFile program(path);
    if (!program.open(QIODevice::WriteOnly))
        qFatal("could not write %s", qPrintable(path));
    program.write("#!/bin/sh\nfor argument; do printf '%s\\0' \"$argument\"; done > \"$0.part\"\n"
                  "mv \"$0.part\" \"$0.arguments\"\n");
    program.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

QStringList recordedArguments(const QString &path)
{
    constexpr int timeout = 60000;
    const QString arguments = path + QStringLiteral(".arguments");
    QElapsedTimer timer;
    timer.start();
    while (!QFile::exists(arguments)) {
        if (timer.hasExpired(timeout))
            return {QStringLiteral("(not started)")};
        QThread::msleep(10);
    }
    const QStringList texts = textsOf(contentOf(arguments));
    QFile::remove(arguments);
    return texts;
}

QString entryFaults(const QString &path)
{
    const ToolRun result = runTool(QStringLiteral("desktop-file-validate"), {path});
    if (result.status == -1)
        return QStringLiteral("desktop-file-validate (desktop-file-utils) is missing, or did not end");
    const QByteArray texts = result.output + result.errors;
    return result.status == 0 ? QString::fromUtf8(texts) : QStringLiteral("invalid: ") + QString::fromUtf8(texts);
}

QString launchEntry(const QString &path)
{
    const ToolRun result = runTool(QStringLiteral("gio"), {QStringLiteral("launch"), path});
    if (result.status == -1)
        return QStringLiteral("gio (libglib2.0-bin) is missing, or did not end");
    return result.status == 0 ? QString() : QString::fromUtf8(result.errors);
}

QMap<QString, QString> namesInLocales(const QString &path, const QStringList &locales)
{
    // Only the system's Python has the modules of the system.
    const ToolRun result = runTool(QStringLiteral("/usr/bin/python3"),
                                   QStringList{QStringLiteral("-c"), QString::fromLatin1(nameScript), path} + locales);
    QMap<QString, QString> names;
    if (result.status != 0) {
        qWarning("python3 with python3-gi is missing, or took %s for no entry: %s", qPrintable(path),
                 result.errors.constData());
        return names;
    }
    const QStringList texts = textsOf(result.output);
    for (int i = 0; i < locales.size(); ++i)
        names.insert(locales.at(i), texts.value(i));
    return names;
}

QString rawValue(const QString &path, const QString &key)
{
    for (const QByteArray &line : contentOf(path).split('\n')) {
        if (line.startsWith(key.toUtf8() + '='))
            return QString::fromUtf8(line.mid(key.toUtf8().size() + 1));
    }
    return {};
}

QStringList filesBelow(const QString &directory)
{
    QStringList paths;
    QDirIterator files(directory, QDir::Files | QDir::System | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        paths.append(QDir(directory).relativeFilePath(files.next()));
    paths.sort();
    return paths;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace fixture
