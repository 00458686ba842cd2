// SPDX-License-Identifier: LGPL-2.1-or-later
//
// sorrel-trust: the commands of sorrel that verify signatures, and draw nothing.

#include "CommandLine.h"
#include "DiffCommand.h"
#include "InfoCommand.h"
#include "LintCommand.h"
#include "ReportLint.h"
#include "ReportSignatures.h"
#include "SignatureLint.h"
#include "SignatureReport.h"
#include "VerifyCommand.h"
#include "WorkerCommand.h"

namespace {

class SignerInfo : public InfoCommand
{
public:
    SignerInfo() : InfoCommand({signerRows, addSigner}) {}
};

class SignerDiff : public DiffCommand
{
public:
    SignerDiff() : DiffCommand(SignatureReport::signerJson) {}
};

class TrustLint : public LintCommand
{
public:
    TrustLint() : LintCommand(SignatureLint::check) {}
};

class TrustWorker : public WorkerCommand
{
public:
    TrustWorker() : WorkerCommand({addLint, addSignatures}) {}
};

} // namespace

int main(int argc, char *argv[])
{
    return CommandLine::run(argc, argv,
                            {
                                CommandLine::entry<SignerInfo>("info"),
                                CommandLine::entry<SignerDiff>("diff"),
                                CommandLine::entry<TrustLint>("lint"),
                                CommandLine::entry<VerifyCommand>("verify"),
                                CommandLine::entry<TrustWorker>("worker"),
                            });
}
