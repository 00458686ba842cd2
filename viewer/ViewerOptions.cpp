// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ViewerOptions.h"

#include "FileName.h"
#include "install/InstallCommand.h"

namespace Viewer {

ViewerOptions::ViewerOptions()
    : m_compare(QStringLiteral("compare"), QStringLiteral("Compare FILE with the package OTHER."),
                QStringLiteral("OTHER")),
      m_installCommand(QStringLiteral("install-command"),
                       QStringLiteral("The command of the button Install, in place of the stored one; %f is the file."),
                       QStringLiteral("COMMAND")),
      m_help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help and exit.")),
      m_version({QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Show the version and exit."))
{
    m_parser.setApplicationDescription(
        QStringLiteral("Show what an Android package, or a set of packages, contains before it is opened."));
    m_parser.addOptions({m_compare, m_installCommand, m_help, m_version});
    m_parser.addPositionalArgument(
        QStringLiteral("FILE"),
        QStringLiteral("The path or the file URI of a package (.apk) or of a set (.apks, .xapk, .apkm)."),
        QStringLiteral("[FILE]"));
}

bool ViewerOptions::parse(const QStringList &arguments)
{
    if (!m_parser.parse(arguments)) {
        m_error = m_parser.errorText();
        return false;
    }
    if (isHelp() || isVersion())
        return true;
    const QStringList names = m_parser.positionalArguments();
    if (names.size() > 1)
        m_error = QStringLiteral("More than one FILE: '%1'.").arg(names.at(1));
    else if (m_parser.isSet(m_compare) && names.isEmpty())
        m_error = QStringLiteral("There is no FILE to compare with OTHER.");
    else if (hasInstallCommand())
        m_error = InstallCommand(installCommand()).fault();
    if (!m_error.isEmpty())
        return false;
    return (names.isEmpty() || readFile(names.first(), &m_file))
           && (!m_parser.isSet(m_compare) || readFile(m_parser.value(m_compare), &m_compareWith));
}

bool ViewerOptions::readFile(const QString &argument, QString *file)
{
    const QByteArray path = FileName(argument).pathOfUri();
    if (path.isEmpty()) {
        m_error = QStringLiteral("'%1' names no file of this machine.").arg(argument);
        return false;
    }
    *file = argumentText(path);
    return true;
}

} // namespace Viewer
