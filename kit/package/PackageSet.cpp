// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/PackageSet.h"
#include "limits/Limits.h"

#include "format/XmlReader.h"
#include "package/Manifest.h"

#include <algorithm>

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
    const QStringList names = archive.names().mid(0, MaxMembers);
    return std::any_of(names.cbegin(), names.cend(), isPackage);
}

PackageSet::PackageSet(ZipArchive &archive, Budget &budget)
{
    QStringList paths;
    for (const QString &path : archive.names().mid(0, MaxMembers)) {
        if (isPackage(path) && paths.size() < MaxPackages)
            paths.append(path);
    }
    std::stable_sort(paths.begin(), paths.end(), [](const QString &a, const QString &b) { return rank(a) < rank(b); });

    QString application;
    for (const QString &path : paths) {
        std::unique_ptr<ZipArchive> package = archive.archive(path, &budget);
        if (package == nullptr || !package->open(&budget))
            continue;
        const QByteArray bytes =
            package->file(QStringLiteral("AndroidManifest.xml"), Limits::MaxManifestBytes, &budget);
        if (!budget.spendWork(Budget::DocumentByteWork * bytes.size()))
            continue;
        const XmlReader reader(bytes);
        if (!budget.chargeWork(Budget::DocumentByteWork * reader.characters()))
            break;
        const Manifest manifest(reader.root());
        if (reader.fault() != FormatFault::None)
            continue;
        if (!manifest.splitName().isEmpty()) {
            m_splits.push_back({manifest.splitName(), std::move(package), manifest.packageName()});
        } else if (m_base == nullptr) {
            m_base = std::move(package);
            application = manifest.packageName();
        }
    }
    m_splits.erase(std::remove_if(m_splits.begin(), m_splits.end(),
                                  [&](const Split &split) { return split.application != application; }),
                   m_splits.end());
}

} // namespace SorrelKit
