// SPDX-License-Identifier: LGPL-2.1-or-later
#include "install/InstallCommand.h"

namespace Viewer {

InstallCommand::InstallCommand(const QString &text) : m_text(text.trimmed()), m_template(m_text, QStringLiteral("f")) {}

QString InstallCommand::fault() const
{
    if (isEmpty())
        return tr("No install command is set.");
    if (!m_template.errorText().isEmpty())
        return m_template.errorText();
    return m_template.has(QLatin1Char('f')) ? QString() : tr("The command has no %f, which stands for the file.");
}

QStringList InstallCommand::arguments(const QString &file, QString *fault) const
{
    const auto fileFor = [&file](QChar, bool, QString *problem) {
        if (file.isEmpty() || !CommandTemplate::canBeArgument(file))
            *problem = tr("The name of the file has characters that no command can contain.");
        return file;
    };
    return m_template.arguments(fileFor, fault);
}

} // namespace Viewer
