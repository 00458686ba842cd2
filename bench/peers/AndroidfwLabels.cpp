// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AndroidfwLabels.h"

#include <utils/ByteOrder.h>
#include <utils/String8.h>

namespace peer {

namespace {

std::string locale(const android::ResTable_type &type)
{
    android::ResTable_config config = {};
    config.copyFromDtoH(type.config);
    // Three letters or digits at most, and the terminating zero.
    char language[4] = {};
    char region[4] = {};
    config.unpackLanguage(language);
    config.unpackRegion(region);
    return region[0] == '\0' ? std::string(language) : std::string(language) + '-' + region;
}

std::string poolText(const android::ResStringPool &pool, uint32_t index)
{
    // As UTF-16, because pools in UTF-8 hold characters beyond the first plane as the encoded halves of a pair.
    size_t length = 0;
    const char16_t *text = pool.stringAt(index, &length);
    return text != nullptr ? android::String8(text, length).string() : std::string();
}

std::string valueText(const android::ResStringPool &pool, const android::Res_value &value)
{
    switch (value.dataType) {
    case android::Res_value::TYPE_STRING:
        return poolText(pool, dtohl(value.data));
    case android::Res_value::TYPE_INT_BOOLEAN:
        return value.data != 0 ? "true" : "false";
    default:
        return std::to_string(int32_t(dtohl(value.data)));
    }
}

} // namespace

Texts AndroidfwLabels::byLocale(uint32_t resource, int depth) const
{
    Texts texts;
    const auto typeId = uint8_t(resource >> 16);
    const android::LoadedPackage *package = m_table->GetPackageById(uint8_t(resource >> 24));
    if (package == nullptr || typeId == 0)
        return texts;
    const android::TypeSpec *spec = package->GetTypeSpecByTypeIndex(uint8_t(typeId - 1));
    if (spec == nullptr)
        return texts;
    for (size_t i = 0; i < spec->type_count; ++i)
        add(&texts, spec->types[i], uint16_t(resource), depth);
    return texts;
}

void AndroidfwLabels::add(Texts *texts, const android::ResTable_type *type, uint16_t entry, int depth) const
{
    const android::ResTable_entry *found = android::LoadedPackage::GetEntry(type, entry);
    if (found == nullptr || (dtohs(found->flags) & android::ResTable_entry::FLAG_COMPLEX) != 0)
        return;
    const auto *value =
        reinterpret_cast<const android::Res_value *>(reinterpret_cast<const char *>(found) + dtohs(found->size));
    const std::string key = locale(*type);
    if (value->dataType != android::Res_value::TYPE_REFERENCE) {
        texts->emplace(key, valueText(*m_table->GetStringPool(), *value));
        return;
    }
    if (depth == 0)
        return;
    const Texts referenced = byLocale(dtohl(value->data), depth - 1);
    if (key.empty())
        texts->insert(referenced.cbegin(), referenced.cend());
    else if (referenced.count(key) != 0)
        texts->emplace(key, referenced.at(key));
    else if (referenced.count(std::string()) != 0)
        texts->emplace(key, referenced.at(std::string()));
}

} // namespace peer
