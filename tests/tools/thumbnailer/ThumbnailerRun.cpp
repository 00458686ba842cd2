// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ThumbnailerRun.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTextCodec>

using namespace fixture;

void ThumbnailerRun::useNamesAsBytes()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
}

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
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("could not write %s", qPrintable(file.fileName()));
    return file.fileName();
}

QStringList ThumbnailerRun::files() const
{
    QStringList names = QDir(path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    names.sort();
    return names;
}

QByteArray ThumbnailerRun::contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
    environment.insert(QStringLiteral("LC_ALL"), QString::fromLatin1(locale));
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(path());
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}
