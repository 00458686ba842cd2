// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ICONCOMMAND_H
#define ICONCOMMAND_H

#include "Command.h"
#include "FileName.h"
#include "IconOptions.h"
#include "ThemeOption.h"

#include <SorrelKit/DrawableRenderer.h>

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
    /// Writes the frames of the icon of @p entry, or of the application when it is null.
    int writeFrames(const FileName &file, SorrelKit::DrawableRenderer &renderer, const SorrelKit::Entry *entry,
                    const SorrelKit::IconRequest &request, const FileName &directory, Console &console) const;

    const IconOptions m_icon{192};
    const ThemeOption m_theme{};
    const QCommandLineOption m_launcher{
        QStringLiteral("launcher"),
        QStringLiteral(
            "Draw the icon of the launcher NAME instead of the application's. 'sorrel info' prints the names."),
        QStringLiteral("NAME")};
    const QCommandLineOption m_round{QStringLiteral("round"),
                                     QStringLiteral("Draw the icon for round screens, where there is one.")};
    const QCommandLineOption m_night{QStringLiteral("night"), QStringLiteral("Draw for the night mode.")};
    const QCommandLineOption m_monochrome{
        QStringLiteral("monochrome"),
        QStringLiteral("Draw only the monochrome layer of an adaptive icon, where there is one.")};
    const QCommandLineOption m_rtl{QStringLiteral("rtl"), QStringLiteral("Draw for a layout from right to left.")};
    const QCommandLineOption m_banner{
        QStringLiteral("banner"),
        QStringLiteral("Draw the banner for televisions: '--size' is its height, up to 576 pixels.")};
    const QCommandLineOption m_frames{
        QStringLiteral("frames"),
        QStringLiteral("Write each frame of an animated icon into the directory DIR, and print its duration."),
        QStringLiteral("DIR")};
    const QCommandLineOption m_output{{QStringLiteral("o"), QStringLiteral("output")},
                                      QStringLiteral("Write to this file. '-', the default, is standard output."),
                                      QStringLiteral("OUT.png"),
                                      QStringLiteral("-")};
};

#endif
