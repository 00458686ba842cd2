// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Console.h"

#include "Command.h"
#include "JsonText.h"
#include "PrintableText.h"

#include <QTextStream>

#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

bool wantsColor()
{
    return qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

} // namespace

Console::Console() : m_isTerminal(isatty(STDOUT_FILENO) == 1), m_style(m_isTerminal && wantsColor())
{
    // finish() reports a failure to open, like every other failure to write.
    m_output.open(stdout, QIODevice::WriteOnly);
}

int Console::columns() const
{
    winsize size{};
    return m_isTerminal && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

void Console::writeLine(const QJsonObject &object)
{
    m_output.write(jsonText(object) + '\n');
}

bool Console::finish()
{
    m_output.flush();
    if (m_output.error() == QFileDevice::NoError)
        return true;
    complain(QStringLiteral("standard output"), m_output.errorString());
    return false;
}

void Console::complain(const QString &subject, const QString &text)
{
    QTextStream(stderr) << "sorrel: " << printableText(subject) << ": " << printableText(text) << '\n';
}

int Console::wrongUsage(const QString &text, const QString &program)
{
    QTextStream(stderr) << "sorrel: " << printableText(text) << "\nTry '" << program << " --help'.\n";
    return WrongUsage;
}
