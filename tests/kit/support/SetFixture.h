// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SETFIXTURE_H
#define SETFIXTURE_H

#include "Apk.h"
#include "ProtobufWriter.h"

#include <SorrelKit/PackageSet.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

/// Packages, sets and tables of contents in memory.
namespace fixture {

/// The manifest of a package that a set has.
struct SetManifest {
    const char *split = nullptr;
    const char *configForSplit = nullptr;
    bool isFeature = false;
    int minSdk = 0;
    bool isSplitRequired = false;
    const char *requiredSplitTypes = nullptr;
    const char *splitTypes = nullptr;
    const char *usesSplit = nullptr;
    const char *delivery = nullptr; ///< "on-demand", "install-time", "fast-follow"
    const char *feature = nullptr;  ///< a condition of install-time
    int conditionSdk = 0;           ///< the same
    const char *package = "org.example.app";
    int versionCode = 0;
    bool extractsLibraries = true;
    bool hasIdsOfSplits = true; ///< whether the attributes have their resource ids
};

/// The manifest as binary XML.
QByteArray manifestOf(const SetManifest &manifest);
/// A package with this manifest, with native code for @p abis and @p others.
QByteArray packageOf(const SetManifest &manifest, const QStringList &abis = {}, const QVector<Member> &others = {});
/// The member of a set at @p path.
Member memberOf(const char *path, const SetManifest &manifest, const QStringList &abis = {});

/// The texts in @p texts, which spaces separate.
QStringList list(const char *texts);
/// A phone: arm64-v8a and armeabi-v7a, German and English, 480 dpi, SDK 30.
SorrelKit::Device phone();
/// The same phone with SDK @p version.
SorrelKit::Device withSdk(int version);
/// The same phone for @p abis, which spaces separate.
SorrelKit::Device withAbis(const char *abis);
/// The same phone for @p locales, which spaces separate.
SorrelKit::Device withLocales(const char *locales);
/// The same phone with @p density dots per inch.
SorrelKit::Device withDensity(int density);

/// The paths of the packages that @p device gets; the code and the message when nothing fits.
QStringList chosen(const QByteArray &set, const SorrelKit::Device &device);

/// Parts of a table of contents.
ProtobufWriter abiTargeting(const QVector<int> &values, const QVector<int> &alternatives = {});
ProtobufWriter densityTargeting(const QVector<int> &values, const QVector<int> &alternatives = {});
ProtobufWriter sdkTargeting(const QVector<int> &values, const QVector<int> &alternatives = {});
ProtobufWriter languageTargeting(const QStringList &values, const QStringList &alternatives = {});
/// A description of the split @p path with the targeting @p targeting.
ProtobufWriter apkOf(const char *path, const ProtobufWriter &targeting = {}, int kind = 3);
/// A set of packages that are the module @p name.
ProtobufWriter moduleOf(const char *name, const QVector<ProtobufWriter> &apks, int delivery = 1,
                        const ProtobufWriter &conditions = {});
/// A variant with these modules.
ProtobufWriter variantOf(const ProtobufWriter &targeting, const QVector<ProtobufWriter> &modules, int number = 0);
/// A whole table.
QByteArray tocOf(const QVector<ProtobufWriter> &variants, const QVector<ProtobufWriter> &assets = {});
/// A set with this table and these packages.
QByteArray setOf(const QByteArray &toc, QVector<Member> packages);

} // namespace fixture

#endif
