// SPDX-License-Identifier: LGPL-2.1-or-later
#include "GeneratedLaunchers.h"

#include "Pictures.h"
#include "TableBuilder.h"
#include "XmlBuilder.h"
#include "ZippedPackage.h"
#include "format/ResourceTypes.h"

namespace bench {

namespace {

constexpr qint64 FirstIcon = 0x7f010000;

QString iconPath(int index)
{
    return QStringLiteral("res/mipmap/icon%1.png").arg(index);
}

QByteArray table(int count)
{
    QStringList paths;
    fixture::TypeBuilder icons(1);
    for (int i = 0; i < count; ++i) {
        icons.value(i, int(ValueType::String), i);
        paths.append(iconPath(i));
    }
    fixture::PackageBuilder package;
    package.types({QStringLiteral("mipmap")}).keys({QStringLiteral("icon")}).type(icons);
    return fixture::TableBuilder().strings(paths).package(package).build();
}

QByteArray manifest(int count)
{
    const QString root = QStringLiteral("manifest");
    const QString application = QStringLiteral("application");
    const QString activity = QStringLiteral("activity");
    fixture::XmlBuilder builder = fixture::XmlBuilder::manifest();
    builder.start(root, {fixture::plainText(QStringLiteral("package"), QStringLiteral("org.example.app"))})
        .start(application);
    for (int i = 0; i < count; ++i) {
        builder
            .start(activity, {fixture::androidText(QStringLiteral("name"), QStringLiteral(".Activity%1").arg(i)),
                              fixture::androidReference(QStringLiteral("icon"), FirstIcon + i)})
            .launcherFilter()
            .end(activity);
    }
    return builder.end(application).end(root).build();
}

} // namespace

void writeLaunchers(const QString &fileName, int count)
{
    constexpr int Side = 48;
    const QByteArray picture = fixture::blackPng(Side, Side);
    QVector<OtherMember> icons;
    for (int i = 0; i < count; ++i)
        icons.append({iconPath(i), picture});
    writePackage(fileName, table(count), manifest(count), icons);
}

} // namespace bench
