// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ICONCOMMAND_H
#define ICONCOMMAND_H

#include "Command.h"
#include "IconOptions.h"
#include "ThemeOption.h"

#include <QCommandLineOption>

/// `sorrel icon`: writes a package's icon as a PNG file.
class IconCommand : public Command
{
public:
    QString details() const override;
    void addOptions(QCommandLineParser &parser) const override;
    bool usesPlatform() const override { return true; }
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const IconOptions m_icon{192};
    const ThemeOption m_theme;
    const QCommandLineOption m_launcher{
        QStringLiteral("launcher"),
        QStringLiteral(
            "Draw the icon of the launcher NAME instead of the application's. 'sorrel info' prints the names."),
        QStringLiteral("NAME")};
    const QCommandLineOption m_output{{QStringLiteral("o"), QStringLiteral("output")},
                                      QStringLiteral("Write to this file. '-', the default, is standard output."),
                                      QStringLiteral("OUT.png"),
                                      QStringLiteral("-")};
};

#endif
