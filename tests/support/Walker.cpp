// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Walker.h"

#include "ApkFile.h"

#include <QDomElement>
#include <QDomNamedNodeMap>

namespace fixture {

namespace {

constexpr int Depth = 5;

qint64 lookUp(const ApkResources &resources, const QString &reference)
{
    return qint64(resources.lookupAll(reference).size()) + resources.lookupAllByConfig(reference).size()
           + resources.lookupByLocale(reference, Depth).size();
}

} // namespace

qint64 visit(const ApkResources &resources, int longestGap)
{
    constexpr int FirstIds[] = {0x7f000000, 0x01000000};
    qint64 count = 0;
    for (const int packageId : FirstIds) {
        for (int type = 1; type <= 0xff; ++type) {
            const int typeId = packageId | (type << 16);
            if (!resources.refToString(typeId).contains(QLatin1Char('/')))
                break;
            for (int entry = 0, gap = 0; entry <= 0xffff && gap < longestGap; ++entry) {
                const qint64 found = lookUp(resources, resources.refToString(typeId | entry));
                gap = found > 0 ? 0 : gap + 1;
                count += found;
            }
        }
    }
    return count;
}

qint64 visit(const QDomDocument &document, const ApkResources &resources)
{
    qint64 count = 0;
    QDomNode node = document.documentElement();
    while (!node.isNull()) {
        const QDomNamedNodeMap attributes = node.attributes();
        for (int i = 0; i < attributes.length(); ++i)
            count += lookUp(resources, attributes.item(i).nodeValue());
        QDomNode next = node.firstChild();
        for (; next.isNull() && !node.isNull(); node = node.parentNode())
            next = node.nextSibling();
        node = next;
    }
    return count;
}

qint64 visit(ApkFile &apk, int longestGap)
{
    qint64 count = apk.mainPackage().size() + apk.minSdkVersion();
    for (const bool includeDisabled : {false, true}) {
        for (const ApkLauncherInfo &launcher : apk.getLauncherInfo(includeDisabled)) {
            const QMap<QString, QString> labels = launcher.labels();
            for (auto label = labels.cbegin(); label != labels.cend(); ++label)
                count += launcher.label(label.key()).size();
            count += launcher.icons().size() + launcher.launcherClass().size() + launcher.launcherPackage().size();
        }
    }
    return count + visit(apk.resources(), longestGap) + visit(apk.getManifest(), apk.resources());
}

} // namespace fixture
