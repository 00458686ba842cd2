// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ManifestCommand.h"

#include "Console.h"
#include "ManifestWriter.h"

#include <ApkFile.h>
#include <SorrelKit/PackageNormalizer.h>

#include <QDomDocument>

#include <cerrno>
#include <cstring>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

int printManifest(const QString &file, Console &console)
{
    const std::unique_ptr<ApkFile> apk = SorrelKit::PackageNormalizer(file).apkFile();
    const QDomDocument manifest = apk->getManifest();
    if (apk->getError() != 0) {
        Console::complain(file, apk->getErrorString());
        return CannotRead;
    }
    const QDomElement root = manifest.documentElement();
    if (root.isNull()) {
        Console::complain(file, QStringLiteral("the manifest has no element"));
        return CannotRead;
    }
    console.write(ManifestWriter::toXml(root));
    return console.finish() ? Success : CannotRead;
}

// Neither a line of the assertion nor a file of the memory: that the process has ended says all.
void endQuietly()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
}

} // namespace

QString ManifestCommand::details() const
{
    return QStringLiteral("References are printed with the number of the resource in its type, \"@string/12\"; 'sorrel "
                          "resources' tells what is behind one.");
}

// In a process of its own, which ApkFile ends by an assertion at a negative string index.
int ManifestCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const QString file = parser.positionalArguments().constFirst();
    const pid_t child = fork();
    if (child < 0) {
        Console::complain(file, QString::fromLocal8Bit(std::strerror(errno)));
        return CannotRead;
    }
    if (child == 0) {
        if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
            endQuietly();
        _exit(printManifest(file, console));
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    Console::complain(file, QStringLiteral("could not parse AndroidManifest.xml"));
    return CannotRead;
}
