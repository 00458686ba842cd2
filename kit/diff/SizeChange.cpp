// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/SizeChange.h>

#include <QSharedData>

#include <limits>

namespace SorrelKit {

class SizeChangeData : public QSharedData
{
public:
    SizeChange::Category category = SizeChange::Category::Other;
    qint64 packedBefore = 0;
    qint64 packedAfter = 0;
    qint64 sizeBefore = 0;
    qint64 sizeAfter = 0;
};

namespace {

void addTo(qint64 *sum, qint64 bytes)
{
    *sum += qBound(qint64(0), bytes, std::numeric_limits<qint64>::max() - *sum);
}

} // namespace

SizeChange::SizeChange() : d(new SizeChangeData) {}
SizeChange::SizeChange(Category category) : SizeChange()
{
    d->category = category;
}

SizeChange::SizeChange(const SizeChange &other) = default;
SizeChange::SizeChange(SizeChange &&other) noexcept = default;
SizeChange &SizeChange::operator=(const SizeChange &other) = default;
SizeChange &SizeChange::operator=(SizeChange &&other) noexcept = default;
SizeChange::~SizeChange() = default;

SizeChange::Category SizeChange::category() const
{
    return d->category;
}

qint64 SizeChange::packedBefore() const
{
    return d->packedBefore;
}

qint64 SizeChange::packedAfter() const
{
    return d->packedAfter;
}

qint64 SizeChange::sizeBefore() const
{
    return d->sizeBefore;
}

qint64 SizeChange::sizeAfter() const
{
    return d->sizeAfter;
}

void SizeChange::addBefore(qint64 packed, qint64 size)
{
    addTo(&d->packedBefore, packed);
    addTo(&d->sizeBefore, size);
}

void SizeChange::addAfter(qint64 packed, qint64 size)
{
    addTo(&d->packedAfter, packed);
    addTo(&d->sizeAfter, size);
}

} // namespace SorrelKit
