// SPDX-License-Identifier: LGPL-2.1-or-later
#include "GeneratedManifest.h"

#include "XmlBuilder.h"
#include "format/ResourceTypes.h"

namespace bench {

namespace {

constexpr qint64 FirstText = 0x7f010000;
constexpr int LabelCount = 100;
constexpr int LauncherStep = 100;

void addViewFilter(fixture::XmlBuilder &builder)
{
    const QString filter = QStringLiteral("intent-filter");
    const QString name = QStringLiteral("name");
    builder.start(filter)
        .empty(QStringLiteral("action"), {fixture::androidText(name, QStringLiteral("android.intent.action.VIEW"))})
        .empty(QStringLiteral("category"),
               {fixture::androidText(name, QStringLiteral("android.intent.category.DEFAULT"))})
        .end(filter);
}

void addActivity(fixture::XmlBuilder &builder, int index)
{
    const QString tag = QStringLiteral("activity");
    const QString className = QStringLiteral("org.example.app.Activity%1").arg(index);
    builder.start(tag, {fixture::androidText(QStringLiteral("name"), className),
                        fixture::androidReference(QStringLiteral("label"), FirstText + 4 * (index % LabelCount))});
    if (index % LauncherStep == 0)
        builder.launcherFilter();
    else
        addViewFilter(builder);
    builder.end(tag);
}

} // namespace

QByteArray generatedManifest(int activities)
{
    const QString root = QStringLiteral("manifest");
    const QString application = QStringLiteral("application");
    fixture::XmlBuilder builder = fixture::XmlBuilder::manifest();
    builder.start(root, {fixture::plainText(QStringLiteral("package"), QStringLiteral("org.example.app"))})
        .empty(QStringLiteral("uses-sdk"),
               {fixture::androidValue(QStringLiteral("minSdkVersion"), int(ValueType::Decimal), 14)})
        .start(application, {fixture::androidReference(QStringLiteral("label"), FirstText)});
    for (int i = 0; i < activities; ++i)
        addActivity(builder, i);
    builder.end(application).end(root).endNamespace(QStringLiteral("android"), fixture::androidUri);
    return builder.build();
}

} // namespace bench
