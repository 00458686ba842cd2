// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/treemap/MemberKind.h"

#include <QCoreApplication>

namespace Viewer {

namespace {

MemberKind memberKindInPackage(const QString &path)
{
    if (path.startsWith(QLatin1String("res/")) || path == QLatin1String("resources.arsc")
        || path == QLatin1String("AndroidManifest.xml"))
        return MemberKind::Resources;
    if (path.startsWith(QLatin1String("lib/")))
        return MemberKind::Libraries;
    if (path.startsWith(QLatin1String("assets/")))
        return MemberKind::Assets;
    if (path.startsWith(QLatin1String("META-INF/")))
        return MemberKind::Signatures;
    return path.endsWith(QLatin1String(".dex")) ? MemberKind::Code : MemberKind::Other;
}

} // namespace

MemberKind memberKind(const QString &path)
{
    // A package in a set, which is no file of its own package.
    const int package = int(path.indexOf(QLatin1String(".apk/")));
    if (package >= 0 && !path.startsWith(QLatin1String("assets/")) && !path.startsWith(QLatin1String("res/")))
        return memberKindInPackage(path.mid(package + 5));
    return memberKindInPackage(path);
}

QString memberKindName(MemberKind kind)
{
    switch (kind) {
    case MemberKind::Code:
        return QCoreApplication::translate("Viewer::MemberKind", "code");
    case MemberKind::Resources:
        return QCoreApplication::translate("Viewer::MemberKind", "resources");
    case MemberKind::Libraries:
        return QCoreApplication::translate("Viewer::MemberKind", "native libraries");
    case MemberKind::Assets:
        return QCoreApplication::translate("Viewer::MemberKind", "assets");
    case MemberKind::Signatures:
        return QCoreApplication::translate("Viewer::MemberKind", "META-INF");
    case MemberKind::Other:
        break;
    }
    return QCoreApplication::translate("Viewer::MemberKind", "other");
}

} // namespace Viewer
