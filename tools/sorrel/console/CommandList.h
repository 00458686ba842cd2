// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMANDLIST_H
#define COMMANDLIST_H

/// A command in the help.
struct ListedCommand {
    const char *name;
    const char *summary; ///< a sentence
    bool isDrawing;      ///< whether it is a command of DrawProgram
};

/// The commands of `sorrel` in the order of its help, whichever program runs them.
constexpr ListedCommand CommandList[] = {
    {"info", "Show the name, version, minimum SDK, and launchers with labels and icons.", false},
    {"manifest", "Print the manifest as XML.", false},
    {"icon", "Write the icon as a PNG file.", true},
    {"resources", "List the resources with their names and values.", false},
    {"files", "List the files with their sizes.", false},
    {"lint", "Report what is wrong or unusual in packages.", false},
    {"desktop", "Write desktop entries and icons for the menus of hosts.", true},
    {"scan", "Print a line of JSON for every package below directories.", false},
    {"catalog", "Write a web page of every package below directories.", true},
};

#endif
