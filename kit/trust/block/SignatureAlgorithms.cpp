// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/SignatureAlgorithms.h"

#include "trust/result/SdkRange.h"

#include <algorithm>
#include <iterator>

namespace SorrelKit {

namespace {

using Key = SignatureMethod::Key;
using Kind = ContentDigest::Kind;

constexpr SignatureAlgorithm knownAlgorithms[] = {
    {0x0101, {Key::RsaPss, HashAlgorithm::Sha256}, Kind::ChunkedSha256, SdkRange::Nougat},
    {0x0102, {Key::RsaPss, HashAlgorithm::Sha512}, Kind::ChunkedSha512, SdkRange::Nougat},
    {0x0103, {Key::Rsa, HashAlgorithm::Sha256}, Kind::ChunkedSha256, SdkRange::Nougat},
    {0x0104, {Key::Rsa, HashAlgorithm::Sha512}, Kind::ChunkedSha512, SdkRange::Nougat},
    {0x0201, {Key::Ec, HashAlgorithm::Sha256}, Kind::ChunkedSha256, SdkRange::Nougat},
    {0x0202, {Key::Ec, HashAlgorithm::Sha512}, Kind::ChunkedSha512, SdkRange::Nougat},
    {0x0301, {Key::Dsa, HashAlgorithm::Sha256}, Kind::ChunkedSha256, SdkRange::Nougat},
    {0x0421, {Key::Rsa, HashAlgorithm::Sha256}, Kind::VeritySha256, SdkRange::Pie},
    {0x0423, {Key::Ec, HashAlgorithm::Sha256}, Kind::VeritySha256, SdkRange::Pie},
    {0x0425, {Key::Dsa, HashAlgorithm::Sha256}, Kind::VeritySha256, SdkRange::Pie},
};

} // namespace

const SignatureAlgorithm *SignatureAlgorithms::find(quint32 id)
{
    const auto *const found = std::find_if(std::begin(knownAlgorithms), std::end(knownAlgorithms),
                                           [id](const SignatureAlgorithm &each) { return each.id == id; });
    return found == std::end(knownAlgorithms) ? nullptr : found;
}

QString SignatureAlgorithms::idText(quint32 id)
{
    constexpr int Digits = 4;
    constexpr int Base = 16;
    return QStringLiteral("0x") + QStringLiteral("%1").arg(id, Digits, Base, QLatin1Char('0'));
}

} // namespace SorrelKit
