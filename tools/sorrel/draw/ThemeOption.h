// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef THEMEOPTION_H
#define THEMEOPTION_H

#include <SorrelKit/IconRequest.h>
#include <SorrelKit/Package.h>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>

/// The option `--theme` of commands that draw.
class ThemeOption
{
public:
    void addTo(QCommandLineParser &parser) const { parser.addOption(m_theme); }
    /// Sets the theme of @p request, one of @p package or its platform. Without the option, changes nothing. Returns false
    /// and sets errorText() when there is no such style.
    bool read(const QCommandLineParser &parser, const SorrelKit::Package &package, SorrelKit::IconRequest *request);
    QString errorText() const { return m_error; }

private:
    const QCommandLineOption m_theme{
        QStringLiteral("theme"),
        QStringLiteral("Look up attributes of the theme in THEME: 'package' for the theme that the manifest names, "
                       "'@style/Name', '@android:style/Name', or an id like 0x7f100003."),
        QStringLiteral("THEME")};
    QString m_error;
};

#endif
