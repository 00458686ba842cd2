// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AndroidfwManifest.h"

#include <utils/String8.h>

#include <cstdlib>

namespace peer {

namespace {

// Resource ids of Android's own attributes, which are part of its public interface.
enum AttributeId : uint32_t {
    Label = 0x01010001,
    Icon = 0x01010002,
    Name = 0x01010003,
    Enabled = 0x0101000e,
    Exported = 0x01010010,
    TargetActivity = 0x01010202,
    MinSdkVersion = 0x0101020c,
};

bool startsWith(const std::u16string &text, const std::u16string &start)
{
    return text.compare(0, start.size(), start) == 0;
}

// 0 when the text is no decimal number.
int number(const std::string &text)
{
    char *end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    return *end == '\0' ? int(value) : 0;
}

} // namespace

AndroidfwManifest::AndroidfwManifest(android::ResXMLTree *document) : m_document(document)
{
    document->restart();
    for (;;) {
        switch (document->next()) {
        case android::ResXMLParser::START_TAG:
            startElement();
            break;
        case android::ResXMLParser::END_TAG:
            endElement();
            break;
        case android::ResXMLParser::BAD_DOCUMENT:
        case android::ResXMLParser::END_DOCUMENT:
            return;
        default:
            break;
        }
    }
}

void AndroidfwManifest::startElement()
{
    if (m_open.empty()) {
        const ssize_t package = m_document->indexOfAttribute(nullptr, "package");
        if (package >= 0)
            m_package = attributeValue(size_t(package)).text;
    }
    ManifestElement element = currentElement();
    if (!m_open.empty() && m_open.back().tag == u"intent-filter") {
        if (element.tag == u"action" && element.name.text == "android.intent.action.MAIN")
            m_open.back().hasMainAction = true;
        if (element.tag == u"category" && element.name.text == "android.intent.category.LAUNCHER")
            m_open.back().hasLauncherCategory = true;
    }
    m_open.push_back(std::move(element));
}

void AndroidfwManifest::endElement()
{
    if (m_open.empty())
        return;
    const ManifestElement element = std::move(m_open.back());
    m_open.pop_back();
    if (element.tag != u"intent-filter" || !element.hasMainAction || !element.hasLauncherCategory || m_open.size() < 2)
        return;
    const ManifestElement &activity = m_open[m_open.size() - 1];
    const ManifestElement &application = m_open[m_open.size() - 2];
    if (startsWith(activity.tag, u"activity") && application.tag == u"application")
        m_launcherFilters.push_back({element, activity, application});
}

ManifestElement AndroidfwManifest::currentElement()
{
    ManifestElement element;
    size_t length = 0;
    const char16_t *tag = m_document->getElementName(&length);
    if (tag != nullptr)
        element.tag.assign(tag, length);
    const size_t count = m_document->getAttributeCount();
    for (size_t i = 0; i < count; ++i) {
        switch (m_document->getAttributeNameResID(i)) {
        case Label:
            element.label = attributeValue(i);
            break;
        case Icon:
            element.icon = attributeValue(i);
            break;
        case Name:
            element.name = attributeValue(i);
            break;
        case Enabled:
            element.enabled = attributeValue(i);
            break;
        case Exported:
            element.exported = attributeValue(i);
            break;
        case TargetActivity:
            element.targetActivity = attributeValue(i);
            break;
        case MinSdkVersion:
            if (element.tag == u"uses-sdk" && m_minSdkVersion < 0)
                m_minSdkVersion = number(attributeValue(i).text);
            break;
        default:
            break;
        }
    }
    return element;
}

AttributeValue AndroidfwManifest::attributeValue(size_t index) const
{
    AttributeValue result;
    android::Res_value value = {};
    if (m_document->getAttributeValue(index, &value) < 0)
        return result;
    size_t length = 0;
    const char16_t *text = nullptr;
    switch (value.dataType) {
    case android::Res_value::TYPE_REFERENCE:
        result.reference = value.data;
        break;
    case android::Res_value::TYPE_STRING:
        text = m_document->getAttributeStringValue(index, &length);
        if (text != nullptr)
            result.text = android::String8(text, length).string();
        break;
    case android::Res_value::TYPE_INT_BOOLEAN:
        result.text = value.data != 0 ? "true" : "false";
        break;
    default:
        result.text = std::to_string(int32_t(value.data));
        break;
    }
    return result;
}

} // namespace peer
