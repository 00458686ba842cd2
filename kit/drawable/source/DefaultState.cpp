// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/source/DefaultState.h"

#include "drawable/source/DrawableLoader.h"
#include "format/AndroidAttributes.h"

#include <algorithm>

namespace SorrelKit {

namespace {

bool isOn(quint32 state)
{
    return state == Attr::StateEnabled || state == Attr::StateWindowFocused;
}

} // namespace

bool isDefaultState(const XmlElement &item, DrawableLoader &loader)
{
    return std::all_of(item.attributes.cbegin(), item.attributes.cend(), [&](const XmlAttribute &attribute) {
        const TypedValue value = loader.resolved(&attribute).value;
        return value.type != ValueType::Boolean || (value.data != 0) == isOn(attribute.id);
    });
}

} // namespace SorrelKit
