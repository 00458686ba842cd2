// SPDX-License-Identifier: LGPL-2.1-or-later
#include "toc/TocReader.h"

#include "format/Configuration.h"
#include "toc/ProtobufView.h"

#include <iterator>

namespace SorrelKit {

namespace {

constexpr const char *TocAbis[] = {"",       "armeabi", "armeabi-v7a", "arm64-v8a", "x86",
                                   "x86_64", "mips",    "mips64",      "riscv64"};
constexpr int TocDensities[] = {0, Configuration::NoDensity, 120, 160, 213, 240, 320, 480, 640};

// The types of delivery; 0 is that of old tables.
constexpr int UnknownDelivery = 0;
constexpr int InstallTimeDelivery = 1;

} // namespace

TocReader::TocReader(const ByteView &bytes, Budget *budget) : m_budget(budget)
{
    if (bytes.size() > MaxBytes) {
        m_isWhole = false;
        return;
    }
    readFields(bytes, [this](const ProtobufView &field) {
        if (field.field() == 1 && take(&m_variantsLeft)) {
            m_variants.append(Variant());
            readVariant(field.bytes(), &m_variants.last());
        } else if (field.field() == 3) {
            readAsset(field.bytes());
        } else if (field.field() == 4) {
            m_packageName = field.text();
        }
    });
    m_budget = nullptr;
}

template <typename Visitor>
void TocReader::readFields(const ByteView &message, const Visitor &visit)
{
    ProtobufView fields(message, m_budget);
    while (m_isWhole && fields.next())
        visit(fields);
    m_isWhole = m_isWhole && !fields.isDamaged();
}

template <typename Value, typename Reader>
void TocReader::readDimension(const ByteView &message, Targeting::Dimension<Value> *dimension, const Reader &read)
{
    readFields(message, [&](const ProtobufView &field) {
        if ((field.field() == 1 || field.field() == 2) && take(&m_valuesLeft))
            (field.field() == 1 ? dimension->values : dimension->alternatives).append(read(field));
    });
}

bool TocReader::take(int *left)
{
    m_isWhole = m_isWhole && *left > 0;
    if (m_isWhole)
        --*left;
    return m_isWhole;
}

void TocReader::readVariant(const ByteView &message, Variant *variant)
{
    readFields(message, [&](const ProtobufView &field) {
        if (field.field() == 1) {
            Targeting &targeting = variant->targeting;
            readFields(field.bytes(), [&](const ProtobufView &part) {
                switch (part.field()) {
                case 1:
                    return readSdkVersions(part.bytes(), &targeting.sdkVersions);
                case 2:
                    return readAbis(part.bytes(), &targeting.abis);
                case 3:
                    return readDensities(part.bytes(), &targeting.densities);
                case 4:
                    return readAbiSets(part.bytes(), &targeting.abiSets);
                case 5:
                    return readTextures(part.bytes(), &targeting.textures);
                default:
                    return;
                }
            });
        } else if (field.field() == 2 && take(&m_modulesLeft)) {
            variant->modules.append(Module());
            readModule(field.bytes(), &variant->modules.last());
        } else if (field.field() == 3) {
            variant->number = field.number();
        }
    });
}

void TocReader::readModule(const ByteView &message, Module *module)
{
    readFields(message, [&](const ProtobufView &field) {
        if (field.field() == 1) {
            readMetadata(field.bytes(), module);
        } else if (field.field() == 2 && take(&m_packagesLeft)) {
            module->apks.append(Apk());
            readApk(field.bytes(), &module->apks.last());
        }
    });
}

void TocReader::readMetadata(const ByteView &message, Module *module)
{
    bool isOnDemand = false;
    int delivery = UnknownDelivery;
    readFields(message, [&](const ProtobufView &field) {
        switch (field.field()) {
        case 1:
            module->name = field.text();
            break;
        case 2:
            isOnDemand = field.number() != 0;
            break;
        case 5:
            readConditions(field.bytes(), module);
            break;
        case 6:
            delivery = field.smallNumber();
            break;
        default:
            break;
        }
    });
    module->isInstallTime = delivery == UnknownDelivery ? !isOnDemand : delivery == InstallTimeDelivery;
}

void TocReader::readConditions(const ByteView &message, Module *module)
{
    readFields(message, [&](const ProtobufView &field) {
        if (field.field() == 1) {
            readSdkVersions(field.bytes(), &module->sdkVersions);
        } else if (field.field() == 2) {
            readFields(field.bytes(), [&](const ProtobufView &feature) {
                if (feature.field() != 1)
                    return;
                readFields(feature.bytes(), [&](const ProtobufView &part) {
                    if (part.field() == 1 && take(&m_valuesLeft))
                        module->features.append(part.text());
                });
            });
        }
    });
}

void TocReader::readApk(const ByteView &message, Apk *apk)
{
    readFields(message, [&](const ProtobufView &field) {
        switch (field.field()) {
        case 1: {
            Targeting &targeting = apk->targeting;
            readFields(field.bytes(), [&](const ProtobufView &part) {
                switch (part.field()) {
                case 1:
                    return readAbis(part.bytes(), &targeting.abis);
                case 3:
                    return readLanguages(part.bytes(), &targeting.languages);
                case 4:
                    return readDensities(part.bytes(), &targeting.densities);
                case 5:
                    return readSdkVersions(part.bytes(), &targeting.sdkVersions);
                case 6:
                    return readTextures(part.bytes(), &targeting.textures);
                case 7:
                    return readAbiSets(part.bytes(), &targeting.abiSets);
                default:
                    return;
                }
            });
            break;
        }
        case 2:
            apk->path = field.text();
            break;
        case 3:
            apk->kind = Apk::Kind::Split;
            readFields(field.bytes(), [&](const ProtobufView &part) {
                if (part.field() == 1)
                    apk->splitName = part.text();
            });
            break;
        case 4:
            apk->kind = Apk::Kind::Standalone;
            break;
        case 6:
            apk->kind = Apk::Kind::System;
            break;
        default:
            break;
        }
    });
}

void TocReader::readAsset(const ByteView &message)
{
    readFields(message, [&](const ProtobufView &field) {
        if (field.field() == 2 && take(&m_packagesLeft)) {
            m_assets.append(Apk());
            readApk(field.bytes(), &m_assets.last());
        }
    });
}

void TocReader::readSdkVersions(const ByteView &message, Targeting::Dimension<int> *dimension)
{
    readDimension(message, dimension, [this](const ProtobufView &field) { return sdkVersion(field.bytes()); });
}

void TocReader::readAbis(const ByteView &message, Targeting::Dimension<QString> *dimension)
{
    readDimension(message, dimension, [this](const ProtobufView &field) { return abi(field.bytes()); });
}

void TocReader::readAbiSets(const ByteView &message, Targeting::Dimension<QStringList> *dimension)
{
    readDimension(message, dimension, [this](const ProtobufView &field) {
        QStringList abis;
        readFields(field.bytes(), [&](const ProtobufView &part) {
            if (part.field() == 1 && take(&m_valuesLeft))
                abis.append(abi(part.bytes()));
        });
        return abis;
    });
}

void TocReader::readDensities(const ByteView &message, Targeting::Dimension<int> *dimension)
{
    readDimension(message, dimension, [this](const ProtobufView &field) { return density(field.bytes()); });
}

void TocReader::readTextures(const ByteView &message, Targeting::Dimension<int> *dimension)
{
    readDimension(message, dimension, [this](const ProtobufView &field) {
        int alias = 0;
        readFields(field.bytes(), [&](const ProtobufView &part) {
            if (part.field() == 1)
                alias = part.smallNumber();
        });
        return alias;
    });
}

void TocReader::readLanguages(const ByteView &message, Targeting::Dimension<QString> *dimension)
{
    readDimension(message, dimension, [](const ProtobufView &field) { return field.text(); });
}

QString TocReader::abi(const ByteView &message)
{
    int alias = 0;
    readFields(message, [&](const ProtobufView &field) {
        if (field.field() == 1)
            alias = field.smallNumber();
    });
    return QString::fromLatin1(alias < int(std::size(TocAbis)) ? TocAbis[alias] : "");
}

int TocReader::density(const ByteView &message)
{
    int density = 0;
    readFields(message, [&](const ProtobufView &field) {
        if (field.field() == 1 && field.smallNumber() < int(std::size(TocDensities)))
            density = TocDensities[field.smallNumber()];
        else if (field.field() == 2)
            density = qMin(field.smallNumber(), int(Configuration::NoDensity));
    });
    return density;
}

int TocReader::sdkVersion(const ByteView &message)
{
    int version = 1;
    readFields(message, [&](const ProtobufView &field) {
        if (field.field() != 1)
            return;
        readFields(field.bytes(), [&](const ProtobufView &part) {
            if (part.field() == 1)
                version = part.smallNumber();
        });
    });
    return version;
}

} // namespace SorrelKit
