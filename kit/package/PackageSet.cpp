// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/PackageSet.h"

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

bool PackageSet::isSet(ZipArchive &archive)
{
    const QStringList names = archive.names(MaxMembers);
    return std::any_of(names.cbegin(), names.cend(), isPackage);
}

PackageSet::PackageSet(ZipArchive &archive, Budget &budget) : m_archive(archive), m_budget(budget)
{
    for (const QString &name : archive.names(MaxMembers)) {
        if (isPackage(name) && m_paths.size() < MaxPackages)
            m_paths.append(name);
    }
    std::stable_sort(m_paths.begin(), m_paths.end(),
                     [](const QString &a, const QString &b) { return rank(a) < rank(b); });
}

std::unique_ptr<ZipArchive> &PackageSet::base()
{
    while (!m_hasBase && readNext()) {
    }
    return m_base;
}

Manifest &PackageSet::baseManifest()
{
    base();
    return m_baseManifest;
}

std::vector<PackageSet::Split> &PackageSet::splits()
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

bool PackageSet::readNext()
{
    if (m_next >= m_paths.size())
        return false;
    const QString path = m_paths.at(m_next++);
    std::unique_ptr<ZipArchive> package = m_archive.archive(path, &m_budget);
    if (package == nullptr || !package->open(&m_budget))
        return true;
    const QByteArray bytes = package->file(QStringLiteral("AndroidManifest.xml"), Limits::MaxManifestBytes, &m_budget);
    if (!m_budget.spendWork(Budget::DocumentByteWork * bytes.size()))
        return true;
    const XmlReader reader(bytes);
    if (!m_budget.chargeWork(Budget::DocumentByteWork * reader.characters())) {
        m_next = int(m_paths.size());
        return false;
    }
    if (reader.fault() != FormatFault::None)
        return true;
    Manifest manifest(reader.root());
    if (!manifest.splitName().isEmpty()) {
        m_splits.push_back({manifest.splitName(), std::move(package), manifest.packageName(), path, reader.oddities()});
    } else if (!m_hasBase) {
        m_hasBase = true;
        m_application = manifest.packageName();
        m_basePath = path;
        m_baseOddities = reader.oddities();
        m_base = std::move(package);
        m_baseManifest = std::move(manifest);
    }
    return true;
}

} // namespace SorrelKit
