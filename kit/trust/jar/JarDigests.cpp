// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/jar/JarDigests.h"

#include "trust/jar/JarManifest.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace SorrelKit {

namespace {

struct JarAlgorithm {
    const char *name;
    HashAlgorithm algorithm;
    int listedFrom;  ///< API level that knows the name in Digest-Algorithms
    bool isStrength; ///< whether it is among those of which the strongest counts
};

// In the order of strength.
constexpr std::array<JarAlgorithm, 6> jarAlgorithms{{
    {"SHA-512", HashAlgorithm::Sha512, 9, true},
    {"SHA-384", HashAlgorithm::Sha384, 9, true},
    {"SHA-256", HashAlgorithm::Sha256, 1, true},
    {"SHA1", HashAlgorithm::Sha1, 1, true},
    {"SHA", HashAlgorithm::Sha1, 1, false},
    {"MD5", HashAlgorithm::Md5, 1, false},
}};

/// The texts of a section's digests; null ones are missing.
struct DigestTexts {
    std::array<QByteArray, jarAlgorithms.size()> values;
    QByteArray listed; ///< Digest-Algorithms
};

DigestTexts digestTexts(const ByteView &section, const char *suffix)
{
    DigestTexts texts;
    const auto suffixSize = qint64(std::strlen(suffix));
    const auto copy = [](const ByteView &value) { return value.isEmpty() ? QByteArray("") : value.toByteArray(); };
    JarManifest::visit(section, [&](const ByteView &name, const ByteView &value) {
        if (texts.listed.isNull() && JarManifest::isSameName(name, "Digest-Algorithms"))
            texts.listed = copy(value);
        const qint64 size = name.size() - suffixSize;
        if (size <= 0 || !JarManifest::isSameName(name.from(size), suffix))
            return true;
        for (size_t i = 0; i < jarAlgorithms.size(); ++i) {
            if (texts.values.at(i).isNull() && JarManifest::isSameName(name.part(0, size), jarAlgorithms.at(i).name))
                texts.values.at(i) = copy(value);
        }
        return true;
    });
    return texts;
}

QByteArray digestOf(const QByteArray &text, HashAlgorithm algorithm)
{
    const auto decoded =
        QByteArray::fromBase64Encoding(text, QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    return decoded && decoded.decoded.size() == Digest::size(algorithm) ? decoded.decoded : QByteArray();
}

/// The number of the first listed algorithm that has a digest; -1 without one.
int firstListed(const DigestTexts &texts, int sdk)
{
    const QByteArray listed = texts.listed.isNull() ? QByteArray("SHA SHA1") : texts.listed;
    const auto isBlank = [](char each) { return std::strchr(" \t\n\f\r", each) != nullptr; };
    for (int at = 0, end = 0; at < listed.size(); at = end + 1) {
        end = int(std::find_if(listed.begin() + at, listed.end(), isBlank) - listed.begin());
        const QByteArray token = listed.mid(at, end - at);
        for (size_t i = 0; i < jarAlgorithms.size(); ++i) {
            const JarAlgorithm &algorithm = jarAlgorithms.at(i);
            if (!texts.values.at(i).isNull() && algorithm.listedFrom <= sdk
                && JarManifest::isSameName(ByteView(token), algorithm.name))
                return int(i);
        }
    }
    return -1;
}

int strongest(const DigestTexts &texts)
{
    for (size_t i = 0; i < jarAlgorithms.size(); ++i) {
        if (jarAlgorithms.at(i).isStrength && !texts.values.at(i).isNull())
            return int(i);
    }
    return -1;
}

} // namespace

std::vector<JarDigest> jarDigests(const ByteView &section, const char *suffix, SdkRange sdk)
{
    const DigestTexts texts = digestTexts(section, suffix);
    const int old = sdk.min < SdkRange::JellyBeanMr2 ? firstListed(texts, sdk.min) : -1;
    const int recent = sdk.max >= SdkRange::JellyBeanMr2 ? strongest(texts) : -1;
    if ((sdk.min < SdkRange::JellyBeanMr2 && old < 0) || (sdk.max >= SdkRange::JellyBeanMr2 && recent < 0))
        return {};
    std::vector<JarDigest> digests;
    for (const int number : {recent, old == recent ? -1 : old}) {
        if (number >= 0) {
            const HashAlgorithm algorithm = jarAlgorithms.at(size_t(number)).algorithm;
            digests.push_back({algorithm, digestOf(texts.values.at(size_t(number)), algorithm)});
        }
    }
    return digests;
}

} // namespace SorrelKit
