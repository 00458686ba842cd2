// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FileRules.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// Headers of older systems have not all of these. The numbers are the same on all processors but Alpha.
constexpr long CreateRuleset = 444;
constexpr long AddRule = 445;
constexpr long RestrictSelf = 446;
constexpr unsigned AskVersion = 1;
constexpr int PathBeneath = 1;

constexpr quint64 ReadFile = 1 << 2;
constexpr quint64 ReadDirectory = 1 << 3;
/// Rights by version of the interface: each version knows those of the older ones.
constexpr quint64 Rights[] = {(1 << 13) - 1, (1 << 14) - 1, (1 << 15) - 1, (1 << 15) - 1, (1 << 16) - 1};
constexpr long MaxVersion = sizeof Rights / sizeof *Rights;

struct RulesetAttribute {
    quint64 handledRights;
};

struct PathAttribute {
    quint64 allowedRights;
    qint32 parent;
} __attribute__((packed));

// The files of the system, and those that the C library reads for the number of processors and the limit of memory.
constexpr const char *SystemFiles[] = {"/usr", "/proc/sys/vm/overcommit_memory", "/sys/devices/system/cpu/online"};

void allowReading(int ruleset, const char *path, bool allowsFolder)
{
    const int file = ::open(path, O_PATH | O_CLOEXEC);
    struct stat status = {};
    if (file < 0)
        return;
    const bool isKnown = ::fstat(file, &status) == 0;
    // A rule for a folder is also one for all files below it.
    if (isKnown && (allowsFolder || !S_ISDIR(status.st_mode))) {
        const PathAttribute rule{S_ISDIR(status.st_mode) ? ReadFile | ReadDirectory : ReadFile, file};
        ::syscall(AddRule, ruleset, PathBeneath, &rule, 0);
    }
    ::close(file);
}

} // namespace

bool Viewer::FileRules::apply(const QList<QByteArray> &files)
{
    const long version = ::syscall(CreateRuleset, nullptr, 0, AskVersion);
    if (version < 1)
        return false;
    const RulesetAttribute attribute{Rights[qMin(version, MaxVersion) - 1]};
    const int ruleset = int(::syscall(CreateRuleset, &attribute, sizeof attribute, 0));
    if (ruleset < 0)
        return false;
    for (const char *const path : SystemFiles)
        allowReading(ruleset, path, true);
    for (const QByteArray &path : files)
        allowReading(ruleset, path.constData(), false);
    const bool isRestricted = ::syscall(RestrictSelf, ruleset, 0) == 0;
    ::close(ruleset);
    return isRestricted;
}
