// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Feature.h>

#include "package/FeatureData.h"

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

} // namespace SorrelKit
