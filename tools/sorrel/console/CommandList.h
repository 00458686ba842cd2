// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMANDLIST_H
#define COMMANDLIST_H

#include "Program.h"

/// A command in the help.
struct ListedCommand {
    const char *name = nullptr;
    const char *summary = nullptr;         ///< a sentence
    Program program = Program::Core;       ///< the program that has the command
    const char *option = nullptr;          ///< an option that needs another program
    Program optionProgram = Program::Core; ///< the program that has the command with this option
};

/// The commands of `sorrel` in the order of its help, whichever program runs them.
constexpr ListedCommand CommandList[] = {
    {"info", "Show the name, version, minimum SDK, and launchers with labels and icons.", Program::Core, "--signer",
     Program::Trust},
    {"manifest", "Print the manifest as XML.", Program::Core},
    {"icon", "Write the icon as a PNG file.", Program::Draw},
    {"resources", "List the resources with their names and values.", Program::Core},
    {"files", "List the files with their sizes.", Program::Core},
    {"lint", "Report what is wrong or unusual in packages.", Program::Trust, "--draw", Program::Draw},
    {"verify", "Verify the signatures as Android does.", Program::Trust},
    {"diff", "Show what differs between two packages.", Program::Trust},
    {"desktop", "Write desktop entries and icons for the menus of hosts.", Program::Draw},
    {"scan", "Print a line of JSON for every package below directories.", Program::Core, "--index", Program::Shelf},
    {"catalog", "Write a web page of every package below directories.", Program::Draw, "--index", Program::Shelf},
    {"find", "Find packages in an index by their labels, names, permissions and signers.", Program::Shelf},
};

#endif
