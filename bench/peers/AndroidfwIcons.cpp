// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AndroidfwIcons.h"

#include <androidfw/ResourceTypes.h>
#include <utils/ByteOrder.h>
#include <utils/String8.h>

#include <memory>

namespace peer {

std::vector<IconFile> AndroidfwIcons::files(uint32_t resource) const
{
    std::vector<IconFile> files;
    std::set<uint32_t> visited;
    std::vector<uint32_t> open{resource};
    for (size_t i = 0; i < open.size(); ++i) {
        const uint32_t id = open[i];
        const auto typeId = uint8_t(id >> 16);
        const android::LoadedPackage *package = m_assets->GetLoadedArsc()->GetPackageById(uint8_t(id >> 24));
        if (!visited.insert(id).second || package == nullptr || typeId == 0)
            continue;
        const android::TypeSpec *spec = package->GetTypeSpecByTypeIndex(uint8_t(typeId - 1));
        for (size_t type = 0; spec != nullptr && type < spec->type_count; ++type)
            add(&files, spec->types[type], uint16_t(id), &open);
    }
    return files;
}

void AndroidfwIcons::add(std::vector<IconFile> *files, const android::ResTable_type *type, uint16_t entry,
                         std::vector<uint32_t> *open) const
{
    const android::ResTable_entry *found = android::LoadedPackage::GetEntry(type, entry);
    if (found == nullptr || (dtohs(found->flags) & android::ResTable_entry::FLAG_COMPLEX) != 0)
        return;
    android::ResTable_config config = {};
    config.copyFromDtoH(type->config);
    const auto *value =
        reinterpret_cast<const android::Res_value *>(reinterpret_cast<const char *>(found) + dtohs(found->size));
    if (value->dataType == android::Res_value::TYPE_REFERENCE)
        open->push_back(dtohl(value->data));
    if (value->dataType != android::Res_value::TYPE_STRING || config.locale != 0)
        return;
    size_t length = 0;
    const android::ResStringPool *pool = m_assets->GetLoadedArsc()->GetStringPool();
    const char *text = pool->string8At(dtohl(value->data), &length);
    IconFile file;
    if (text != nullptr) {
        file.path.assign(text, length);
    } else if (const char16_t *wide = pool->stringAt(dtohl(value->data), &length)) {
        file.path = android::String8(wide, length).string();
    }
    file.density = config.density;
    for (const IconFile &known : *files) {
        if (known.path == file.path)
            return;
    }
    if (read(&file))
        files->push_back(std::move(file));
}

bool AndroidfwIcons::read(IconFile *file) const
{
    const std::unique_ptr<android::Asset> asset = m_assets->Open(file->path, android::Asset::ACCESS_BUFFER);
    const void *bytes = asset != nullptr ? asset->getBuffer(true) : nullptr;
    if (bytes == nullptr)
        return false;
    const auto size = size_t(asset->getLength());
    const auto *start = static_cast<const uint8_t *>(bytes);
    if (size < 2 || start[0] > android::RES_XML_TYPE || start[1] != 0)
        return true;
    android::ResXMLTree document;
    if (document.setTo(bytes, size) != android::NO_ERROR)
        return false;
    for (;;) {
        const android::ResXMLParser::event_code_t event = document.next();
        if (event == android::ResXMLParser::BAD_DOCUMENT || event == android::ResXMLParser::END_DOCUMENT)
            return false;
        if (event != android::ResXMLParser::START_TAG)
            continue;
        size_t length = 0;
        const char16_t *tag = document.getElementName(&length);
        file->kind = tag != nullptr ? android::String8(tag, length).string() : "";
        return true;
    }
}

} // namespace peer
