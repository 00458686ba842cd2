// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TOCREADER_H
#define SORRELKIT_TOCREADER_H

#include "format/ByteView.h"
#include "limits/Budget.h"
#include "toc/Targeting.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace SorrelKit {

class ProtobufView;

/**
 * Reads `toc.pb`, the table of contents in a set that bundletool made: a protocol buffer message of the type
 * BuildApksResult. The fields that are read, by their numbers:
 *
 * | message                | fields                                                                                 |
 * |------------------------|----------------------------------------------------------------------------------------|
 * | BuildApksResult        | 1 Variant*, 3 AssetSliceSet*, 4 package name                                           |
 * | Variant                | 1 VariantTargeting, 2 ApkSet*, 3 number                                                |
 * | VariantTargeting       | 1 SDK version, 2 ABI, 3 screen density, 4 several ABIs, 5 textures                     |
 * | ApkSet                 | 1 ModuleMetadata, 2 ApkDescription*                                                    |
 * | AssetSliceSet          | 2 ApkDescription*                                                                      |
 * | ModuleMetadata         | 1 name, 2 on demand, 5 ModuleTargeting, 6 delivery type                                |
 * | ModuleTargeting        | 1 SDK version, 2 DeviceFeatureTargeting* { 1 DeviceFeature { 1 name } }                |
 * | ApkDescription         | 1 ApkTargeting, 2 path, 3 SplitApkMetadata, 4 standalone, 5 instant, 6 system          |
 * | SplitApkMetadata       | 1 name of the split                                                                    |
 * | ApkTargeting           | 1 ABI, 3 language, 4 screen density, 5 SDK version, 6 textures, 7 several ABIs         |
 * | each kind of targeting | 1 value*, 2 alternative*                                                               |
 * | Abi, ScreenDensity     | 1 alias; 2 dots per inch of a ScreenDensity                                            |
 * | texture format         | 1 alias                                                                                |
 * | MultiAbi               | 1 Abi*                                                                                 |
 * | SdkVersion             | 1 Int32Value { 1 value }: the lowest API level                                         |
 *
 * Meets raw input. Messages are nested as deep as the table goes, so damage cannot nest them deeper. Everything takes
 * memory in proportion to the bytes, up to the ceilings.
 */
class TocReader
{
public:
    /// Bytes of the table. One for a hundred languages has some 100 KiB.
    static constexpr qint64 MaxBytes = 4 << 20;
    static constexpr int MaxVariants = 256;
    /// Modules, and packages, of all variants together; each variant may list each package.
    static constexpr int MaxModules = 4096;
    static constexpr int MaxPackages = 1 << 14;
    /// Values and alternatives of all packages together. Each package for a language lists all others.
    static constexpr int MaxValues = 1 << 18;

    /// A package as the table describes it.
    struct Apk {
        enum class Kind {
            Split,
            Standalone, ///< the whole application, for devices without splits
            System,     ///< for the image of a system
            Other,      ///< an instant application, or one that this class does not know
        };

        Targeting targeting;
        QString path; ///< in the set
        QString splitName;
        Kind kind = Kind::Other;
    };
    /// A module, and the packages that it consists of.
    struct Module {
        QString name;
        bool isInstallTime = true;
        Targeting::Dimension<int> sdkVersions; ///< condition of its installation
        QStringList features;                  ///< the same: all of these
        QVector<Apk> apks;
    };
    struct Variant {
        Targeting targeting;
        quint64 number = 0;
        QVector<Module> modules;
    };

    /// Reads the table @p bytes. Spends from @p budget, which is needed by the constructor alone.
    TocReader(const ByteView &bytes, Budget *budget);

    /// Whether the table is sound, and has no more than the ceilings. Otherwise callers use nothing of it.
    bool isWhole() const { return m_isWhole; }
    QString packageName() const { return m_packageName; }
    const QVector<Variant> &variants() const { return m_variants; }
    /// The packages of asset packs. Their manifests have the time of delivery.
    const QVector<Apk> &assets() const { return m_assets; }

private:
    template <typename Visitor>
    void readFields(const ByteView &message, const Visitor &visit);
    template <typename Value, typename Reader>
    void readDimension(const ByteView &message, Targeting::Dimension<Value> *dimension, const Reader &read);
    bool take(int *left);

    void readVariant(const ByteView &message, Variant *variant);
    void readModule(const ByteView &message, Module *module);
    void readMetadata(const ByteView &message, Module *module);
    void readConditions(const ByteView &message, Module *module);
    void readApk(const ByteView &message, Apk *apk);
    void readSdkVersions(const ByteView &message, Targeting::Dimension<int> *dimension);
    void readAbis(const ByteView &message, Targeting::Dimension<QString> *dimension);
    void readAbiSets(const ByteView &message, Targeting::Dimension<QStringList> *dimension);
    void readDensities(const ByteView &message, Targeting::Dimension<int> *dimension);
    void readTextures(const ByteView &message, Targeting::Dimension<int> *dimension);
    void readLanguages(const ByteView &message, Targeting::Dimension<QString> *dimension);
    void readAsset(const ByteView &message);
    QString abi(const ByteView &message);
    int density(const ByteView &message);
    int sdkVersion(const ByteView &message);

    Budget *m_budget;
    bool m_isWhole = true;
    int m_variantsLeft = MaxVariants;
    int m_modulesLeft = MaxModules;
    int m_packagesLeft = MaxPackages;
    int m_valuesLeft = MaxValues;
    QString m_packageName;
    QVector<Variant> m_variants;
    QVector<Apk> m_assets;
};

} // namespace SorrelKit

#endif
