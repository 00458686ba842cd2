// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ShelfFixture.h"

#include "Apk.h"
#include "Pictures.h"

#include <QSignalSpy>

namespace fixture {

QByteArray ShelfPackage::build() const
{
    constexpr quint32 labelResource = 0x7f010000;
    PackageBuilder package;
    package.types({QStringLiteral("string")}).keys({QStringLiteral("label")});
    for (auto label = labels.cbegin(); label != labels.cend(); ++label) {
        const QByteArray config = label.key().isEmpty()
                                      ? ConfigBuilder().build()
                                      : ConfigBuilder().locale(label.key().toLatin1().constData()).build();
        const int text = int(std::distance(labels.cbegin(), label));
        package.type(TypeBuilder(1, config).value(0, String, text));
    }
    const QByteArray table = TableBuilder().strings(labels.values()).package(package).build();

    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), name)});
    if (minSdk > 0)
        builder.empty(QStringLiteral("uses-sdk"), {androidValue(QStringLiteral("minSdkVersion"), Integer, minSdk)});
    builder.start(QStringLiteral("uses-permission"), {androidText(QStringLiteral("name"), permission)});
    builder.end(QStringLiteral("uses-permission"));
    builder.start(QStringLiteral("application"), {androidText(QStringLiteral("icon"), QStringLiteral("icon.png")),
                                                  androidReference(QStringLiteral("label"), labelResource)});
    for (int i = 0; i < launchers; ++i) {
        builder.start(QStringLiteral("activity"),
                      {androidText(QStringLiteral("name"), QStringLiteral(".Activity%1").arg(i))});
        builder.launcherFilter().end(QStringLiteral("activity"));
    }
    const QByteArray manifest = builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
    constexpr int side = 48;
    return fixture::package(table, manifest, {{QStringLiteral("icon.png"), picture(side, side, color)}});
}

bool refreshed(SorrelKit::Shelf &shelf)
{
    constexpr int minute = 60000;
    QSignalSpy finished(&shelf, &SorrelKit::Shelf::finished);
    shelf.refresh();
    return finished.wait(minute);
}

QStringList labelsOf(const SorrelKit::Shelf &shelf)
{
    QStringList labels;
    for (const SorrelKit::ShelfItem &item : shelf.items())
        labels.append(item.label(QLocale::c()));
    return labels;
}

} // namespace fixture
