// SPDX-License-Identifier: LGPL-2.1-or-later
#include "permissions/PermissionRequests.h"

#include "format/AndroidAttributes.h"
#include "package/PackageData.h"

#include <QHash>

#include <algorithm>

namespace SorrelKit {

namespace {

constexpr int FirstSdkWithRequests = 23;

PermissionRequest requestOf(PackageData &package, const XmlElement &element)
{
    PermissionRequest request;
    request.name = Manifest::text(element, Attr::Name);
    if (element.name == QLatin1String("uses-permission-sdk-23"))
        request.minSdkVersion = FirstSdkWithRequests;
    request.maxSdkVersion =
        qMax(0, package.resolved(element.attribute(Attr::MaxSdkVersion)).value.integer().value_or(0));
    request.isRequired = package.isTrue(element.attribute(Attr::Required), true);
    return request;
}

void widen(PermissionRequest &request, const PermissionRequest &other)
{
    request.minSdkVersion = qMin(request.minSdkVersion, other.minSdkVersion);
    const bool isLimited = request.maxSdkVersion != 0 && other.maxSdkVersion != 0;
    request.maxSdkVersion = isLimited ? qMax(request.maxSdkVersion, other.maxSdkVersion) : 0;
    request.isRequired = request.isRequired || other.isRequired;
}

} // namespace

QVector<PermissionRequest> PermissionRequests::inManifest(PackageData &package)
{
    QVector<PermissionRequest> requests;
    QHash<QString, int> places;
    for (const XmlElement &child : package.manifest().root().children) {
        if (child.name != QLatin1String("uses-permission") && child.name != QLatin1String("uses-permission-sdk-23"))
            continue;
        const PermissionRequest request = requestOf(package, child);
        const auto known = places.constFind(request.name);
        if (known != places.constEnd()) {
            widen(requests[*known], request);
        } else if (!request.name.isEmpty() && requests.size() < MaxPermissions) {
            places.insert(request.name, int(requests.size()));
            requests.append(request);
        }
    }
    return requests;
}

QVector<PermissionRequest> PermissionRequests::withImplied(QVector<PermissionRequest> requests, int targetSdkVersion)
{
    constexpr int FirstSdkWithStorage = 4;
    constexpr int FirstSdkWithCallLog = 16;
    const auto find = [&](const QString &name) {
        const auto found = std::find_if(requests.cbegin(), requests.cend(),
                                        [&](const PermissionRequest &request) { return request.name == name; });
        return found == requests.cend() ? nullptr : &*found;
    };
    const auto full = [](const char *constant) {
        return QStringLiteral("android.permission.") + QLatin1String(constant);
    };
    const auto addAlone = [&](const char *constant) {
        if (find(full(constant)) != nullptr)
            return;
        PermissionRequest added;
        added.name = full(constant);
        added.impliedReason = QStringLiteral("targetSdkVersion < %1").arg(FirstSdkWithStorage);
        requests.append(added);
    };
    const auto addWith = [&](const char *cause, const char *constant, int firstSdkWithout) {
        const PermissionRequest *const request = find(full(cause));
        if (request == nullptr || find(full(constant)) != nullptr)
            return;
        PermissionRequest added = *request;
        added.name = full(constant);
        added.impliedReason = QStringLiteral("requested ") + QLatin1String(cause);
        if (firstSdkWithout != 0)
            added.impliedReason.prepend(QStringLiteral("targetSdkVersion < %1 and ").arg(firstSdkWithout));
        requests.append(added);
    };

    if (targetSdkVersion < FirstSdkWithStorage) {
        addAlone("WRITE_EXTERNAL_STORAGE");
        addAlone("READ_PHONE_STATE");
    }
    addWith("WRITE_EXTERNAL_STORAGE", "READ_EXTERNAL_STORAGE", 0);
    if (targetSdkVersion < FirstSdkWithCallLog) {
        addWith("READ_CONTACTS", "READ_CALL_LOG", FirstSdkWithCallLog);
        addWith("WRITE_CONTACTS", "WRITE_CALL_LOG", FirstSdkWithCallLog);
    }
    return requests;
}

} // namespace SorrelKit
