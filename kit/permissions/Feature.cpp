// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Feature.h>

#include "permissions/FeatureData.h"
#include "permissions/FeatureWords.h"

namespace SorrelKit {

Feature::Feature() : d(new FeatureData) {}
Feature::Feature(const Feature &other) = default;
Feature::Feature(Feature &&other) noexcept = default;
Feature &Feature::operator=(const Feature &other) = default;
Feature &Feature::operator=(Feature &&other) noexcept = default;
Feature::~Feature() = default;

QString Feature::name() const
{
    return d->name;
}

bool Feature::isRequired() const
{
    return d->isRequired;
}

QString Feature::label() const
{
    return featureWords(d->name);
}

int Feature::version() const
{
    return d->version;
}

bool Feature::isImplied() const
{
    return !d->impliedReason.isEmpty();
}

QString Feature::impliedReason() const
{
    return d->impliedReason;
}

} // namespace SorrelKit
