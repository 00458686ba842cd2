// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ThumbnailerRun.h"

#include "Tool.h"

#include <QProcess>

#include <fstream>
#include <iterator>

#include <dirent.h>

using namespace fixture;

Run ThumbnailerRun::run(const QStringList &arguments, const char *locale) const
{
    return start(QStringLiteral("sorrel-thumbnailer"), arguments, locale);
}

Run ThumbnailerRun::shell(const QString &script) const
{
    return start(QStringLiteral("bash"), {QStringLiteral("-c"), script}, "C.UTF-8");
}

QString ThumbnailerRun::write(const QString &name, const QByteArray &bytes) const
{
    const QString file = path(name);
    std::ofstream stream(file.toLatin1().constData(), std::ios::binary);
    if (!stream.write(bytes.constData(), bytes.size()).flush())
        qFatal("could not write %s", qPrintable(file));
    return file;
}

QStringList ThumbnailerRun::files() const
{
    QStringList names;
    DIR *const directory = ::opendir(path().toLatin1().constData());
    while (const dirent *entry = directory != nullptr ? ::readdir(directory) : nullptr)
        names.append(QString::fromLatin1(entry->d_name));
    if (directory != nullptr)
        ::closedir(directory);
    names.removeAll(QStringLiteral("."));
    names.removeAll(QStringLiteral(".."));
    names.sort();
    return names;
}

QByteArray ThumbnailerRun::contentOf(const QString &path)
{
    std::ifstream stream(path.toLatin1().constData(), std::ios::binary);
    return QByteArray::fromStdString(std::string(std::istreambuf_iterator<char>(stream), {}));
}

QString ThumbnailerRun::sample(const char *name)
{
    return QStringLiteral(SORREL_SAMPLES_DIR "/") + QString::fromLatin1(name);
}

QByteArray ThumbnailerRun::iconPackage(const char *element)
{
    const auto attributes = [element](const char *name) {
        return QString::fromLatin1(element) == QString::fromLatin1(name)
                   ? QVector<Attribute>{androidText(QStringLiteral("icon"), QStringLiteral("icon.png"))}
                   : QVector<Attribute>();
    };
    QVector<Attribute> activity = attributes("activity");
    activity.prepend(androidText(QStringLiteral("name"), QStringLiteral(".Main")));
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .start(QStringLiteral("application"), attributes("application"))
        .start(QStringLiteral("activity"), activity)
        .launcherFilter()
        .end(QStringLiteral("activity"))
        .end(QStringLiteral("application"))
        .end(QStringLiteral("manifest"));
    return package(emptyTable(), builder.build(), {{QStringLiteral("icon.png"), picture(48, 48, IconColor)}});
}

Run ThumbnailerRun::start(const QString &program, const QStringList &arguments, const char *locale) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(path());
    process.setStandardInputFile(QProcess::nullDevice());
    QStringList words{QStringLiteral("exec env LC_ALL=%1").arg(QString::fromLatin1(locale)),
                      shellWord(program.toLatin1())};
    for (const QString &argument : arguments)
        words.append(shellWord(argument.toLatin1()));
    process.start(QStringLiteral("bash"), {QStringLiteral("-c"), words.join(QLatin1Char(' '))});
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}
