// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AndroidFormats.h"

#include <android-base/logging.h>
#include <androidfw/LoadedArsc.h>
#include <androidfw/ResourceTypes.h>
#include <utils/String8.h>

#include <cstdio>
#include <exception>
#include <memory>

namespace android_formats {

namespace {

using android::ResXMLParser;

// As Android's string blocks for Java: the bytes in UTF-8 as they are, else UTF-16.
std::string poolText(const android::ResStringPool &pool, std::uint32_t index)
{
    size_t length = 0;
    if (const char *text = pool.string8At(index, &length))
        return std::string(text, length);
    const char16_t *wide = pool.stringAt(index, &length);
    return wide != nullptr ? android::String8(wide, length).string() : std::string("-");
}

std::string number(std::uint32_t value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%x", value);
    return text;
}

std::string attributes(const android::ResXMLTree &tree)
{
    std::string lines;
    for (size_t i = 0; i < tree.getAttributeCount(); ++i) {
        const std::uint32_t id = tree.getAttributeNameResID(i);
        android::Res_value value = {};
        tree.getAttributeValue(i, &value);
        lines += "  ";
        lines += id != 0 ? number(id) : poolText(tree.getStrings(), std::uint32_t(tree.getAttributeNameID(i)));
        lines += " type " + number(value.dataType) + " data " + number(value.data);
        const std::int32_t raw = tree.getAttributeValueStringID(i);
        if (value.dataType == android::Res_value::TYPE_STRING)
            lines += " text " + poolText(tree.getStrings(), id == 0 && raw >= 0 ? std::uint32_t(raw) : value.data);
        lines += '\n';
    }
    return lines;
}

} // namespace

std::string document(const std::string &bytes)
{
    const std::string refused = "refused";
    android::ResXMLTree tree;
    if (tree.setTo(bytes.data(), bytes.size()) != android::NO_ERROR)
        return refused;
    std::string lines;
    int depth = 0;
    bool hasRoot = false;
    for (;;) {
        switch (tree.next()) {
        case ResXMLParser::START_TAG: {
            const std::string name = poolText(tree.getStrings(), std::uint32_t(tree.getElementNameID()));
            if (name == "-")
                return refused;
            lines += "start " + name + '\n' + attributes(tree);
            ++depth;
            hasRoot = true;
            break;
        }
        case ResXMLParser::END_TAG:
            if (depth > 0) {
                lines += "end\n";
                if (--depth == 0)
                    return lines;
            }
            break;
        case ResXMLParser::BAD_DOCUMENT:
            return refused;
        case ResXMLParser::END_DOCUMENT:
            // The package manager ends the elements that are open.
            for (; depth > 0; --depth)
                lines += "end\n";
            return hasRoot ? lines : refused;
        default:
            break;
        }
    }
}

std::string table(const std::string &bytes, const std::vector<std::uint32_t> &ids)
{
    android::base::SetMinimumLogSeverity(android::base::FATAL);
    std::unique_ptr<const android::LoadedArsc> table;
    try {
        table = android::LoadedArsc::Load(android::StringPiece(bytes.data(), bytes.size()));
    } catch (const std::exception &) {
        return "no memory";
    }
    if (table == nullptr)
        return "refused";
    std::string lines;
    for (const std::uint32_t id : ids) {
        for (const auto &package : table->GetPackages()) {
            const android::TypeSpec *spec = nullptr;
            if (std::uint32_t(package->GetPackageId()) == id >> 24 && (id >> 16 & 0xff) != 0)
                spec = package->GetTypeSpecByTypeIndex(std::uint8_t((id >> 16) - 1));
            for (size_t i = 0; spec != nullptr && i < spec->type_count; ++i) {
                const android::ResTable_entry *entry =
                    android::LoadedPackage::GetEntry(spec->types[i], std::uint16_t(id));
                if (entry == nullptr)
                    continue;
                android::ResTable_config config = {};
                config.copyFromDtoH(spec->types[i]->config);
                lines += number(id) + " density " + number(config.density) + " sdk " + number(config.sdkVersion);
                if ((entry->flags & android::ResTable_entry::FLAG_COMPLEX) != 0) {
                    lines += " map\n";
                    continue;
                }
                const auto *value =
                    reinterpret_cast<const android::Res_value *>(reinterpret_cast<const char *>(entry) + entry->size);
                lines += " type " + number(value->dataType) + " data " + number(value->data);
                if (value->dataType == android::Res_value::TYPE_STRING)
                    lines += " text " + poolText(*table->GetStringPool(), value->data);
                lines += '\n';
            }
        }
    }
    return lines;
}

} // namespace android_formats
