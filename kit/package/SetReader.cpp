// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/SetReader.h"

#include "format/XmlReader.h"
#include "limits/Limits.h"

#include <algorithm>
#include <utility>

namespace SorrelKit {

namespace {

bool isPackage(const QString &path)
{
    return path.endsWith(QLatin1String(".apk"), Qt::CaseInsensitive);
}

// Sorts the likeliest names of a base package first.
int rank(const QString &path)
{
    const QString name = path.section(QLatin1Char('/'), -1).toLower();
    const QString usual[] = {
        QStringLiteral("base.apk"),
        QStringLiteral("base-master.apk"),
        QStringLiteral("universal.apk"),
    };
    return int(std::find(std::begin(usual), std::end(usual), name) - std::begin(usual));
}

} // namespace

bool SetReader::isSet(ZipArchive &archive)
{
    const QStringList names = archive.names(MaxMembers);
    return std::any_of(names.cbegin(), names.cend(), isPackage);
}

QStringList SetReader::packagePaths(ZipArchive &archive)
{
    QStringList paths;
    for (const QString &name : archive.names(MaxMembers)) {
        if (isPackage(name) && paths.size() < MaxPackages)
            paths.append(name);
    }
    return paths;
}

std::optional<SetReader::Opened> SetReader::openPackage(ZipArchive &archive, const QString &path, Budget *budget)
{
    Opened opened;
    opened.archive = archive.archive(path, budget);
    if (opened.archive == nullptr || !opened.archive->open(budget))
        return std::nullopt;
    const QByteArray bytes =
        opened.archive->contentAnyway(QStringLiteral("AndroidManifest.xml"), Limits::MaxManifestBytes, budget)
            .toByteArray();
    if (!budget->spendWork(Budget::DocumentByteWork * bytes.size()))
        return std::nullopt;
    const XmlReader reader(bytes);
    if (!budget->chargeWork(Budget::DocumentByteWork * reader.characters()) || reader.fault() != FormatFault::None)
        return std::nullopt;
    opened.manifest = Manifest(reader.root());
    opened.oddities = reader.oddities();
    return opened;
}

SetReader::SetReader(ZipArchive &archive, Budget &budget) : SetReader(archive, budget, packagePaths(archive)) {}

SetReader::SetReader(ZipArchive &archive, Budget &budget, const QStringList &paths)
    : m_archive(archive), m_budget(budget), m_paths(paths)
{
    std::stable_sort(m_paths.begin(), m_paths.end(),
                     [](const QString &a, const QString &b) { return rank(a) < rank(b); });
}

std::unique_ptr<ZipArchive> &SetReader::base()
{
    while (!m_hasBase && readNext()) {
    }
    return m_base;
}

Manifest &SetReader::baseManifest()
{
    base();
    return m_baseManifest;
}

std::vector<SetReader::Split> &SetReader::splits()
{
    while (readNext()) {
    }
    if (!m_isFiltered) {
        m_isFiltered = true;
        m_splits.erase(std::remove_if(m_splits.begin(), m_splits.end(),
                                      [&](const Split &split) { return split.application != m_application; }),
                       m_splits.end());
    }
    return m_splits;
}

bool SetReader::readNext()
{
    if (m_next >= m_paths.size())
        return false;
    const QString path = m_paths.at(m_next++);
    std::optional<Opened> opened = openPackage(m_archive, path, &m_budget);
    if (m_budget.workLeft() == 0)
        m_next = int(m_paths.size());
    if (!opened)
        return true;
    Manifest &manifest = opened->manifest;
    if (!manifest.splitName().isEmpty()) {
        m_splits.push_back({manifest.splitName(), std::move(opened->archive), manifest.packageName(), path,
                            std::move(opened->oddities)});
    } else if (!m_hasBase) {
        m_hasBase = true;
        m_application = manifest.packageName();
        m_basePath = path;
        m_baseOddities = std::move(opened->oddities);
        m_base = std::move(opened->archive);
        m_baseManifest = std::move(manifest);
    }
    return true;
}

} // namespace SorrelKit
