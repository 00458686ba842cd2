// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DEVICEMATCH_H
#define SORRELKIT_DEVICEMATCH_H

#include "toc/Targeting.h"

#include <SorrelKit/Device.h>

#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

namespace SorrelKit {

/// Compares a device with what packages are for. See Targeting::Dimension for values and alternatives.
class DeviceMatch
{
public:
    /// Precondition: @p device has no fault.
    explicit DeviceMatch(const Device &device);

    const Device &device() const { return m_device; }

    /// The first of the device's processors that is among @p abis; empty when there is none.
    QString bestAbi(const QStringList &abis) const;
    /// The place of bestAbi() among the device's processors; after all of them when there is none.
    int abiRank(const QStringList &abis) const;
    /// The density among @p densities that Android prefers for the device; 0 when there is none.
    int bestDensity(const QVector<int> &densities) const;
    /// Whether the user reads the language @p tag. Regions do not count.
    bool reads(const QString &tag) const;
    /// Whether the device has all of @p features.
    bool hasFeatures(const QStringList &features) const;

    /// The highest of @p versions that the device reaches; 0 when there is none.
    int bestSdk(const QVector<int> &versions) const;

    bool fitsSdk(const Targeting::Dimension<int> &versions) const;
    bool fitsAbi(const Targeting::Dimension<QString> &abis) const;
    bool fitsAbiSet(const Targeting::Dimension<QStringList> &sets) const;
    bool fitsDensity(const Targeting::Dimension<int> &densities) const;
    bool fitsTexture(const Targeting::Dimension<int> &textures) const;
    bool fitsLanguage(const Targeting::Dimension<QString> &languages) const;

private:
    /// The places of @p abis among the device's processors, ascending; empty when the device lacks one of them.
    QVector<int> ranks(const QStringList &abis) const;

    /// The place of the best of @p textures that the device supports, in an order of preference; after all of them when
    /// there is none.
    int textureRank(const QVector<int> &textures) const;

    const Device m_device;
    QVector<int> m_textures; ///< formats that the device supports, the preferred one first
    QSet<QString> m_languages;
    QSet<QString> m_features;
};

} // namespace SorrelKit

#endif
