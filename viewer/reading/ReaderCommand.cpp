// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReaderCommand.h"

#include "FileName.h"
#include "ProgramPath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <iterator>

namespace {

constexpr char SandboxVariable[] = "SORREL_VIEWER_SANDBOX";
constexpr char ReaderVariable[] = "SORREL_VIEWER_READER";
constexpr char PlatformVariable[] = "SORREL_PLATFORM";

/// The language of texts, where programs and libraries are, the platform, and what a build with a sanitizer needs.
constexpr const char *PassedVariables[] = {"ASAN_OPTIONS",    "LANG",         "LANGUAGE",
                                           "LD_LIBRARY_PATH", "PATH",         "QT_PLUGIN_PATH",
                                           "SORREL_PLATFORM", "TSAN_OPTIONS", "UBSAN_OPTIONS"};

QString installedReader()
{
    const QByteArray own = programPath();
    return QDir::cleanPath(QFile::decodeName(own.left(own.lastIndexOf('/') + 1) + SORREL_VIEWER_READER));
}

// The path of an existing file without links; empty when Qt cannot name it.
QString realPath(const FileName &file)
{
    const QString name = file.forQt();
    return name.isEmpty() ? QString() : QFileInfo(name).canonicalFilePath();
}

// As a URI, a name in any bytes passes QProcess. Links may lead to folders that do not exist in the sandbox.
QString uriOf(const QString &file)
{
    const FileName name(file);
    const QString real = realPath(name);
    return QString::fromLatin1((real.isEmpty() ? name : FileName(QFile::encodeName(real))).uri());
}

QStringList readable(const QString &path)
{
    return {QStringLiteral("--ro-bind-try"), path, path};
}

} // namespace

Viewer::ReaderCommand::ReaderCommand(const QString &file, const QString &locale, const QString &compareWith)
    : m_reader(qEnvironmentVariable(ReaderVariable))
{
    if (m_reader.isEmpty())
        m_reader = installedReader();
    QStringList files{file};
    m_arguments.append(uriOf(file));
    if (!compareWith.isEmpty()) {
        files.append(compareWith);
        m_arguments.append({QStringLiteral("--compare"), uriOf(compareWith)});
    }
    if (!locale.isEmpty())
        m_arguments.append({QStringLiteral("--locale"), locale});
    const QByteArray sandbox = qgetenv(SandboxVariable);
    if (sandbox == "none")
        m_arguments.append(QStringLiteral("--unconfined"));
    if (sandbox != "none" && sandbox != "seccomp")
        wrap(files);
}

QProcessEnvironment Viewer::ReaderCommand::environment()
{
    const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment environment;
    for (const QString &name : own.keys()) {
        const bool isPassed = std::any_of(std::begin(PassedVariables), std::end(PassedVariables),
                                          [&](const char *each) { return name == QLatin1String(each); });
        if (isPassed || name.startsWith(QLatin1String("LC_")))
            environment.insert(name, own.value(name));
    }
    // A QProcess with an empty environment passes on that of this process.
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*=false"));
    return environment;
}

bool Viewer::ReaderCommand::mustWrap() const
{
    return qgetenv(SandboxVariable) == "bubblewrap";
}

void Viewer::ReaderCommand::wrap(const QStringList &files)
{
    m_bubblewrap = QStandardPaths::findExecutable(QStringLiteral("bwrap"));
    if (m_bubblewrap.isEmpty())
        return;
    // Nothing but the system's programs and libraries, and the files to read. There is no network, and no other process
    // to see.
    m_wrapping = QStringList{QStringLiteral("--unshare-all"), QStringLiteral("--die-with-parent"),
                             QStringLiteral("--new-session"), QStringLiteral("--cap-drop"),
                             QStringLiteral("ALL"),           QStringLiteral("--ro-bind"),
                             QStringLiteral("/usr"),          QStringLiteral("/usr"),
                             QStringLiteral("--proc"),        QStringLiteral("/proc"),
                             QStringLiteral("--dev"),         QStringLiteral("/dev"),
                             QStringLiteral("--chdir"),       QStringLiteral("/")};
    for (const char *const name : {"/bin", "/lib", "/lib32", "/lib64", "/libx32"}) {
        const QFileInfo directory(QString::fromLatin1(name));
        if (directory.isSymLink())
            m_wrapping +=
                {QStringLiteral("--symlink"), QStringLiteral("usr") + directory.filePath(), directory.filePath()};
        else
            m_wrapping += readable(directory.filePath());
    }
    m_wrapping += readable(QStringLiteral("/etc/ld.so.cache"));
    m_wrapping += readable(QStringLiteral("/etc/ssl/openssl.cnf"));
    // Below another prefix, the program and its libraries.
    const QString prefix = QDir::cleanPath(QFileInfo(m_reader).absolutePath() + QStringLiteral("/../.."));
    if (!prefix.startsWith(QLatin1String("/usr/")) && prefix != QLatin1String("/usr") && prefix != QLatin1String("/")) {
        for (const char *const name : {"/lib", "/lib64", "/libexec"})
            m_wrapping += readable(prefix + QLatin1String(name));
        m_wrapping += readable(QFileInfo(m_reader).absoluteFilePath());
    }
    const QString platform = QFile::decodeName(qgetenv(PlatformVariable));
    if (!platform.isEmpty())
        m_wrapping += readable(QFileInfo(platform).absoluteFilePath());
    for (const QString &file : files) {
        const QString path = realPath(FileName(file));
        // A folder would be readable with all that is in it.
        if (!QFileInfo(path).isFile())
            return;
        m_wrapping += readable(path);
    }
    m_wrapping += {QStringLiteral("--"), m_reader, QStringLiteral("--within"), QStringLiteral("bubblewrap")};
    m_canWrap = true;
}
