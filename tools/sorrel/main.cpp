// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ManifestWriter.h"
#include "PackageReport.h"

#include <ApkFile.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDomDocument>
#include <QFile>
#include <QJsonDocument>
#include <QTextStream>

#include <clocale>
#include <cstdio>

namespace {

enum ExitStatus : int {
    Success = 0,
    CannotRead = 1,
    WrongUsage = 2,
};

void complain(const QString &subject, const QString &text)
{
    QTextStream(stderr) << "sorrel: " << subject << ": " << text << '\n';
}

int wrongUsage(const QString &text)
{
    QTextStream(stderr) << "sorrel: " << text << "\nTry 'sorrel --help'.\n";
    return WrongUsage;
}

int printInfo(QFile &out, const QStringList &files, bool asJson, bool includeDisabled)
{
    int status = Success;
    bool first = true;
    for (const QString &file : files) {
        const PackageReport report(file, includeDisabled);
        if (report.failed()) {
            complain(file, report.errorText());
            status = CannotRead;
        }
        if (asJson) {
            out.write(QJsonDocument(report.toJson()).toJson(QJsonDocument::Compact) + '\n');
        } else if (report.isValid()) {
            out.write((first ? QString() : QStringLiteral("\n")).toUtf8() + report.toText().toUtf8());
            first = false;
        }
        out.flush();
    }
    return status;
}

int printManifest(QFile &out, const QString &file)
{
    const ApkFile apk(file);
    const QDomDocument manifest = apk.getManifest();
    if (apk.getError() != 0) {
        complain(file, apk.getErrorString());
        return CannotRead;
    }
    const QDomElement root = manifest.documentElement();
    if (root.isNull()) {
        complain(file, QStringLiteral("the manifest has no element"));
        return CannotRead;
    }
    out.write(ManifestWriter::toXml(root));
    return Success;
}

QStringList argumentTexts(int argc, char *argv[])
{
    QStringList texts;
    for (int i = 0; i < argc; ++i)
        texts.append(QString::fromLocal8Bit(argv[i]));
    return texts;
}

// Standard error is for one line a package; QT_LOGGING_RULES="*=true" shows what the libraries have to say.
void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        QTextStream(stderr) << qFormatLogMessage(type, context, text) << '\n';
}

} // namespace

int main(int argc, char *argv[])
{
    // As QCoreApplication does, which is started for help alone: it takes longer than a small package.
    std::setlocale(LC_ALL, "");
    QCoreApplication::setApplicationName(QStringLiteral("sorrel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SORREL_VERSION));
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        qInstallMessageHandler(handleMessage);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Tells what Android packages (APK) hold.\n\n"
                       "  sorrel info [--json] [--all] FILE...  package, minimum SDK, launchers with labels and icons\n"
                       "  sorrel manifest FILE                  the manifest, as XML\n\n"
                       "Exit status: 0 when every file was read, 1 when one could not be, 2 for wrong usage."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption json(QStringLiteral("json"),
                                  QStringLiteral("info: one JSON object per file, on one line."));
    const QCommandLineOption all(QStringLiteral("all"), QStringLiteral("info: launchers that are disabled, too."));
    parser.addOptions({json, all});
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("info or manifest."));
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("An Android package."),
                                 QStringLiteral("FILE..."));

    if (!parser.parse(argumentTexts(argc, argv)))
        return wrongUsage(parser.errorText());
    if (parser.isSet(version) || parser.isSet(help)) {
        const QCoreApplication application(argc, argv);
        if (parser.isSet(version))
            parser.showVersion();
        parser.showHelp(Success);
    }

    QStringList files = parser.positionalArguments();
    if (files.isEmpty())
        return wrongUsage(QStringLiteral("A command is missing."));
    const QString command = files.takeFirst();
    const bool isInfo = command == QLatin1String("info");
    if (!isInfo && command != QLatin1String("manifest"))
        return wrongUsage(QStringLiteral("Unknown command '%1'.").arg(command));
    if (files.isEmpty())
        return wrongUsage(QStringLiteral("A file is missing."));
    if (!isInfo && files.size() > 1)
        return wrongUsage(QStringLiteral("manifest takes one file."));
    if (!isInfo && (parser.isSet(json) || parser.isSet(all)))
        return wrongUsage(QStringLiteral("manifest takes no options."));

    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly)) {
        complain(QStringLiteral("standard output"), out.errorString());
        return CannotRead;
    }
    const int status =
        isInfo ? printInfo(out, files, parser.isSet(json), parser.isSet(all)) : printManifest(out, files.first());
    if (!out.flush() || out.error() != QFileDevice::NoError) {
        complain(QStringLiteral("standard output"), out.errorString());
        return CannotRead;
    }
    return status;
}
