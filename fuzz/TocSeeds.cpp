// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TocSeeds.h"

#include "SetFixture.h"

using namespace fixture;

namespace {

QStringList german()
{
    return {QStringLiteral("de")};
}

QStringList others()
{
    return {QStringLiteral("en"), QStringLiteral("fr")};
}

QByteArray everyField()
{
    const auto abis = ProtobufWriter().message(1, ProtobufWriter().message(1, ProtobufWriter().number(1, 3)));
    const auto conditions = ProtobufWriter()
                                .message(1, sdkTargeting({24}))
                                .message(2, ProtobufWriter().message(1, ProtobufWriter().text(1, "camera")));
    const auto targeting = ProtobufWriter()
                               .message(1, abiTargeting({3}, {2, 5}))
                               .message(3, languageTargeting(german(), others()))
                               .message(4, densityTargeting({7}, {1}))
                               .message(5, sdkTargeting({21}, {26}))
                               .message(6, abiTargeting({}, {9, 10}))
                               .message(7, abis);
    const auto ofVariant = ProtobufWriter()
                               .message(1, sdkTargeting({21}, {23}))
                               .message(2, abiTargeting({3}, {2}))
                               .message(3, ProtobufWriter().message(1, ProtobufWriter().number(2, 420)))
                               .message(4, abis);
    return tocOf({variantOf(ofVariant, {moduleOf("camera", {apkOf("base.apk", targeting)}, 1, conditions)}, 5)},
                 {apkOf("asset.apk", targeting)});
}

QByteArray usual()
{
    const QVector<ProtobufWriter> apks{
        apkOf("base.apk", ProtobufWriter().message(5, sdkTargeting({21}))),
        apkOf("de.apk", ProtobufWriter().message(3, languageTargeting(german(), others()))),
        apkOf("en.apk", ProtobufWriter().message(3, languageTargeting(others(), german()))),
        apkOf("64.apk", ProtobufWriter().message(1, abiTargeting({3}, {2}))),
        apkOf("xxhdpi.apk", ProtobufWriter().message(4, densityTargeting({7}, {3, 5}))),
    };
    return tocOf(
        {variantOf(ProtobufWriter().message(1, sdkTargeting({1}, {21})), {moduleOf("base", {apkOf("old.apk", {}, 4)})}),
         variantOf(ProtobufWriter().message(1, sdkTargeting({21}, {1})),
                   {moduleOf("base", apks), moduleOf("later", {apkOf("asset.apk")}, 2)}, 1)});
}

} // namespace

QVector<Member> tocSeeds()
{
    return {{QStringLiteral("every-field"), everyField()}, {QStringLiteral("usual"), usual()}};
}
