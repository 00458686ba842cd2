// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LINTCOMMAND_H
#define LINTCOMMAND_H

#include "Command.h"
#include "IconCheck.h"
#include "SignatureCheck.h"

#include <QCommandLineOption>

#include <limits>

/// `sorrel lint`: reports what is odd in packages and which readers it affects.
class LintCommand : public Command
{
public:
    /// @p makeDrawnCheck makes the check for `--draw`. `sorrel` starts such commands in a program that has it.
    explicit LintCommand(const SignatureCheck &checkSignatures, const IconCheckFactory &makeDrawnCheck = {})
        : m_checkSignatures(checkSignatures), m_makeDrawnCheck(makeDrawnCheck)
    {
    }

    QString details() const override;
    /// `--checks` needs no file; otherwise run() requires one.
    int minArguments() const override { return 0; }
    int maxArguments() const override { return std::numeric_limits<int>::max(); }
    void addArguments(QCommandLineParser &parser) const override
    {
        parser.addPositionalArgument(QStringLiteral("FILE"), fileText(), QStringLiteral("FILE..."));
    }
    void addOptions(QCommandLineParser &parser) const override;
    bool usesPlatform() const override { return true; }
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const SignatureCheck m_checkSignatures;
    const IconCheckFactory m_makeDrawnCheck;
    const QCommandLineOption m_json{QStringLiteral("json"),
                                    QStringLiteral("Print one JSON object per file, each on one line.")};
    const QCommandLineOption m_draw{QStringLiteral("draw"),
                                    QStringLiteral("Also draw the icons, and report those that cannot be drawn.")};
    const QCommandLineOption m_checks{QStringLiteral("checks"), QStringLiteral("List the checks and their meanings.")};
};

#endif
