// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sets/DeviceMatch.h"

#include "format/Configuration.h"
#include "language/LanguageTag.h"

#include <algorithm>

namespace SorrelKit {

namespace {

// A format of textures, its number in the table of contents, and the extension of OpenGL ES of devices that have it.
struct TextureFormat {
    int alias;
    const char *extension;
};
// The best formats come first: those with most detail in few bytes, then those of one maker, then old ones.
constexpr TextureFormat TextureFormats[] = {
    {9, "GL_KHR_texture_compression_astc_ldr"}, {8, "GL_IMG_texture_compression_pvrtc"},
    {7, "GL_EXT_texture_compression_s3tc"},     {6, "GL_EXT_texture_compression_dxt1"},
    {5, "GL_EXT_texture_compression_latc"},     {4, "GL_AMD_compressed_ATC_texture"},
    {3, "GL_AMD_compressed_3DC_texture"},       {10, nullptr}, // ETC2 is part of OpenGL ES 3
    {1, "GL_OES_compressed_ETC1_RGB8_texture"}, {2, "GL_OES_compressed_paletted_texture"},
};

// Whether @p features have version 3 of OpenGL ES, which tools write as "reqGlEsVersion=0x30002".
bool hasOpenGlEs3(const QStringList &features)
{
    constexpr uint Version3 = 0x30000;
    const QLatin1String name("reqGlEsVersion=");
    return std::any_of(features.cbegin(), features.cend(), [&](const QString &feature) {
        return feature.startsWith(name) && feature.mid(name.size()).toUInt(nullptr, 0) >= Version3;
    });
}

QString languageOfTag(const QString &tag)
{
    return LanguageTag(LanguageTag(tag).language().toString()).toString();
}

} // namespace

DeviceMatch::DeviceMatch(const Device &device) : m_device(device)
{
    for (const QString &locale : device.locales())
        m_languages.insert(languageOfTag(locale));
    for (const QString &feature : device.features())
        m_features.insert(feature);
    const QStringList extensions = device.glExtensions();
    for (const TextureFormat &format : TextureFormats) {
        if (format.extension != nullptr ? extensions.contains(QLatin1String(format.extension))
                                        : hasOpenGlEs3(device.features()))
            m_textures.append(format.alias);
    }
}

QString DeviceMatch::bestAbi(const QStringList &abis) const
{
    return m_device.abis().value(abiRank(abis));
}

int DeviceMatch::abiRank(const QStringList &abis) const
{
    const QStringList own = m_device.abis();
    return int(std::find_if(own.cbegin(), own.cend(), [&](const QString &abi) { return abis.contains(abi); })
               - own.cbegin());
}

int DeviceMatch::bestDensity(const QVector<int> &densities) const
{
    const Configuration device = Configuration::phone(m_device.screenDensity());
    Configuration best;
    for (const int density : densities) {
        Configuration candidate;
        candidate.density = density;
        if (best.density == 0 || candidate.isBetterThan(best, device))
            best = candidate;
    }
    return best.density;
}

bool DeviceMatch::reads(const QString &tag) const
{
    return m_languages.contains(languageOfTag(tag));
}

bool DeviceMatch::hasFeatures(const QStringList &features) const
{
    return std::all_of(features.cbegin(), features.cend(),
                       [this](const QString &feature) { return m_features.contains(feature); });
}

int DeviceMatch::bestSdk(const QVector<int> &versions) const
{
    int best = 0;
    for (const int version : versions) {
        if (version <= m_device.sdkVersion())
            best = qMax(best, version);
    }
    return best;
}

bool DeviceMatch::fitsSdk(const Targeting::Dimension<int> &versions) const
{
    const int other = bestSdk(versions.alternatives);
    if (versions.values.isEmpty())
        return other == 0;
    const int own = bestSdk(versions.values);
    return own > 0 && own >= other;
}

bool DeviceMatch::fitsAbi(const Targeting::Dimension<QString> &abis) const
{
    const auto rank = [this](const QVector<QString> &list) { return abiRank(QStringList(list.cbegin(), list.cend())); };
    const int none = int(m_device.abis().size());
    const int other = rank(abis.alternatives);
    if (abis.values.isEmpty())
        return other == none;
    const int own = rank(abis.values);
    return own < none && own <= other;
}

bool DeviceMatch::fitsAbiSet(const Targeting::Dimension<QStringList> &sets) const
{
    // The set with the better first processor is better. When they are the same, the one with more of them is.
    const auto isBetter = [](const QVector<int> &a, const QVector<int> &b) {
        const auto places = std::mismatch(a.cbegin(), a.cend(), b.cbegin(), b.cend());
        if (places.second == b.cend())
            return places.first != a.cend();
        return places.first != a.cend() && *places.first < *places.second;
    };
    const auto best = [&](const QVector<QStringList> &all) {
        QVector<int> found;
        for (const QStringList &abis : all) {
            const QVector<int> candidate = ranks(abis);
            if (!candidate.isEmpty() && (found.isEmpty() || isBetter(candidate, found)))
                found = candidate;
        }
        return found;
    };
    const QVector<int> other = best(sets.alternatives);
    if (sets.values.isEmpty())
        return other.isEmpty();
    const QVector<int> own = best(sets.values);
    return !own.isEmpty() && (other.isEmpty() || !isBetter(other, own));
}

bool DeviceMatch::fitsDensity(const Targeting::Dimension<int> &densities) const
{
    return densities.isAny() || densities.values.contains(bestDensity(densities.values + densities.alternatives));
}

int DeviceMatch::textureRank(const QVector<int> &textures) const
{
    return int(
        std::find_if(m_textures.cbegin(), m_textures.cend(), [&](int format) { return textures.contains(format); })
        - m_textures.cbegin());
}

bool DeviceMatch::fitsTexture(const Targeting::Dimension<int> &textures) const
{
    const int none = int(m_textures.size());
    const int other = textureRank(textures.alternatives);
    if (textures.values.isEmpty())
        return other == none;
    const int own = textureRank(textures.values);
    return own < none && own <= other;
}

bool DeviceMatch::fitsLanguage(const Targeting::Dimension<QString> &languages) const
{
    const auto readsAny = [this](const QVector<QString> &tags) {
        return std::any_of(tags.cbegin(), tags.cend(), [this](const QString &tag) { return reads(tag); });
    };
    return languages.values.isEmpty() ? !readsAny(languages.alternatives) : readsAny(languages.values);
}

QVector<int> DeviceMatch::ranks(const QStringList &abis) const
{
    QVector<int> found;
    for (const QString &abi : abis) {
        const int rank = int(m_device.abis().indexOf(abi));
        if (rank < 0)
            return {};
        found.append(rank);
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace SorrelKit
