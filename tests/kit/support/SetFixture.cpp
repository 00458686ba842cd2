// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SetFixture.h"

#include "format/AndroidAttributes.h"

namespace fixture {

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

template <typename Value>
ProtobufWriter dimension(const QVector<Value> &values, const QVector<Value> &alternatives,
                         ProtobufWriter (*write)(const Value &value))
{
    ProtobufWriter writer;
    for (const Value &value : values)
        writer.message(1, write(value));
    for (const Value &value : alternatives)
        writer.message(2, write(value));
    return writer;
}

ProtobufWriter alias(const int &value)
{
    return ProtobufWriter().number(1, quint64(value));
}

} // namespace

QByteArray manifestOf(const SetManifest &manifest)
{
    XmlBuilder builder;
    builder.attributeId(latin("name"), Attr::Name)
        .attributeId(latin("minSdkVersion"), Attr::MinSdkVersion)
        .attributeId(latin("versionCode"), Attr::VersionCode)
        .attributeId(latin("extractNativeLibs"), Attr::ExtractNativeLibs);
    if (manifest.hasIdsOfSplits) {
        builder.attributeId(latin("isFeatureSplit"), Attr::IsFeatureSplit)
            .attributeId(latin("isSplitRequired"), Attr::IsSplitRequired)
            .attributeId(latin("requiredSplitTypes"), Attr::RequiredSplitTypes)
            .attributeId(latin("splitTypes"), Attr::SplitTypes);
    }
    builder.startNamespace(latin("android"), androidUri);
    QVector<Attribute> attributes{plainText(latin("package"), latin(manifest.package))};
    if (manifest.split != nullptr)
        attributes.append(plainText(latin("split"), latin(manifest.split)));
    if (manifest.configForSplit != nullptr)
        attributes.append(plainText(latin("configForSplit"), latin(manifest.configForSplit)));
    if (manifest.isFeature)
        attributes.append(androidValue(latin("isFeatureSplit"), Boolean, -1));
    if (manifest.isSplitRequired)
        attributes.append(androidValue(latin("isSplitRequired"), Boolean, -1));
    if (manifest.requiredSplitTypes != nullptr)
        attributes.append(androidText(latin("requiredSplitTypes"), latin(manifest.requiredSplitTypes)));
    if (manifest.splitTypes != nullptr)
        attributes.append(androidText(latin("splitTypes"), latin(manifest.splitTypes)));
    if (manifest.versionCode != 0)
        attributes.append(androidValue(latin("versionCode"), Integer, manifest.versionCode));
    builder.start(latin("manifest"), attributes);
    if (!manifest.extractsLibraries)
        builder.empty(latin("application"), {androidValue(latin("extractNativeLibs"), Boolean, 0)});
    if (manifest.minSdk != 0)
        builder.empty(latin("uses-sdk"), {androidValue(latin("minSdkVersion"), Integer, manifest.minSdk)});
    if (manifest.usesSplit != nullptr)
        builder.empty(latin("uses-split"), {androidText(latin("name"), latin(manifest.usesSplit))});
    if (manifest.delivery != nullptr) {
        builder.start(latin("module")).start(latin("delivery")).start(latin(manifest.delivery));
        if (manifest.feature != nullptr || manifest.conditionSdk != 0)
            builder.start(latin("conditions"));
        if (manifest.feature != nullptr)
            builder.empty(latin("device-feature"), {plainText(latin("name"), latin(manifest.feature))});
        if (manifest.conditionSdk != 0)
            builder.empty(latin("min-sdk"),
                          {Attribute{QString(), latin("value"), QString(), Integer, manifest.conditionSdk}});
        if (manifest.feature != nullptr || manifest.conditionSdk != 0)
            builder.end(latin("conditions"));
        builder.end(latin(manifest.delivery)).end(latin("delivery")).end(latin("module"));
    }
    return builder.end(latin("manifest")).build();
}

QByteArray packageOf(const SetManifest &manifest, const QStringList &abis, const QVector<Member> &others)
{
    QVector<Member> members{{latin("AndroidManifest.xml"), manifestOf(manifest)}};
    for (const QString &abi : abis)
        members.append({QStringLiteral("lib/%1/libmain.so").arg(abi), "code"});
    return zip(members + others);
}

Member memberOf(const char *path, const SetManifest &manifest, const QStringList &abis)
{
    return {latin(path), packageOf(manifest, abis)};
}

QStringList list(const char *texts)
{
    return latin(texts).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

SorrelKit::Device phone()
{
    SorrelKit::Device device;
    device.setAbis({latin("arm64-v8a"), latin("armeabi-v7a")});
    device.setLocales({latin("de-DE"), latin("en-US")});
    device.setScreenDensity(480);
    device.setSdkVersion(30);
    return device;
}

SorrelKit::Device withSdk(int version)
{
    SorrelKit::Device device = phone();
    device.setSdkVersion(version);
    return device;
}

SorrelKit::Device withAbis(const char *abis)
{
    SorrelKit::Device device = phone();
    device.setAbis(list(abis));
    return device;
}

SorrelKit::Device withLocales(const char *locales)
{
    SorrelKit::Device device = phone();
    device.setLocales(list(locales));
    return device;
}

SorrelKit::Device withDensity(int density)
{
    SorrelKit::Device device = phone();
    device.setScreenDensity(density);
    return device;
}

QStringList chosen(const QByteArray &set, const SorrelKit::Device &device)
{
    PackageDevice file(set);
    const SorrelKit::SplitChoice choice = SorrelKit::PackageSet(SorrelKit::Package(&file)).splitsFor(device);
    if (!choice.fits())
        return {QStringLiteral("%1: %2").arg(int(choice.code())).arg(choice.message())};
    QStringList paths;
    for (const SorrelKit::SetPackage &package : choice.packages())
        paths.append(package.path());
    return paths;
}

ProtobufWriter abiTargeting(const QVector<int> &values, const QVector<int> &alternatives)
{
    return dimension<int>(values, alternatives, alias);
}

ProtobufWriter densityTargeting(const QVector<int> &values, const QVector<int> &alternatives)
{
    return dimension<int>(values, alternatives, alias);
}

ProtobufWriter sdkTargeting(const QVector<int> &values, const QVector<int> &alternatives)
{
    return dimension<int>(values, alternatives, [](const int &value) {
        return ProtobufWriter().message(1, ProtobufWriter().number(1, quint64(value)));
    });
}

ProtobufWriter languageTargeting(const QStringList &values, const QStringList &alternatives)
{
    ProtobufWriter writer;
    for (const QString &value : values)
        writer.text(1, value);
    for (const QString &value : alternatives)
        writer.text(2, value);
    return writer;
}

ProtobufWriter apkOf(const char *path, const ProtobufWriter &targeting, int kind)
{
    return ProtobufWriter().message(1, targeting).text(2, path).message(kind, ProtobufWriter());
}

ProtobufWriter moduleOf(const char *name, const QVector<ProtobufWriter> &apks, int delivery,
                        const ProtobufWriter &conditions)
{
    ProtobufWriter writer;
    writer.message(1, ProtobufWriter().text(1, name).message(5, conditions).number(6, quint64(delivery)));
    for (const ProtobufWriter &apk : apks)
        writer.message(2, apk);
    return writer;
}

ProtobufWriter variantOf(const ProtobufWriter &targeting, const QVector<ProtobufWriter> &modules, int number)
{
    ProtobufWriter writer;
    writer.message(1, targeting);
    for (const ProtobufWriter &module : modules)
        writer.message(2, module);
    return writer.number(3, quint64(number));
}

QByteArray tocOf(const QVector<ProtobufWriter> &variants, const QVector<ProtobufWriter> &assets)
{
    ProtobufWriter writer;
    for (const ProtobufWriter &variant : variants)
        writer.message(1, variant);
    writer.message(2, ProtobufWriter().text(2, "1.15.6"));
    if (!assets.isEmpty()) {
        ProtobufWriter slices;
        for (const ProtobufWriter &asset : assets)
            slices.message(2, asset);
        writer.message(3, slices);
    }
    return writer.text(4, "org.example.app").data();
}

QByteArray setOf(const QByteArray &toc, QVector<Member> packages)
{
    packages.prepend({latin("toc.pb"), toc});
    return zip(packages);
}

} // namespace fixture
