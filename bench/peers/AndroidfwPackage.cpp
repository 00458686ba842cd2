// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AndroidfwPackage.h"

namespace peer {

namespace {

constexpr int LabelReferenceDepth = 5;
// A reference behind that of an attribute "enabled" is not followed, as Sorrel does not.
constexpr int EnabledReferenceDepth = 0;

Texts texts(const AttributeValue &value, const AndroidfwLabels &labels, int depth)
{
    if (value.reference != 0)
        return labels.byLocale(value.reference, depth);
    return {{std::string(), value.text}};
}

} // namespace

AndroidfwPackage::AndroidfwPackage(const std::string &file) : m_assets(android::ApkAssets::Load(file))
{
    if (m_assets == nullptr || m_assets->GetLoadedArsc()->GetPackages().empty())
        return;
    m_manifestBytes = m_assets->Open("AndroidManifest.xml", android::Asset::ACCESS_BUFFER);
    if (m_manifestBytes == nullptr)
        return;
    const void *bytes = m_manifestBytes->getBuffer(true);
    if (bytes == nullptr || m_document.setTo(bytes, size_t(m_manifestBytes->getLength())) != android::NO_ERROR)
        return;
    m_manifest = std::make_unique<AndroidfwManifest>(&m_document);
}

std::vector<Launcher> AndroidfwPackage::launchers() const
{
    std::vector<Launcher> launchers;
    if (!isOpen())
        return launchers;
    const AndroidfwLabels labels(m_assets->GetLoadedArsc());
    for (const LauncherFilter &found : m_manifest->launcherFilters()) {
        if (!isShown(found, labels))
            continue;
        Launcher launcher;
        launcher.className = className(found.activity);
        for (const ManifestElement *element : {&found.filter, &found.activity, &found.application}) {
            if (!element->label.isEmpty()) {
                launcher.labels = texts(element->label, labels, LabelReferenceDepth);
                break;
            }
        }
        for (const ManifestElement *element : {&found.filter, &found.activity, &found.application}) {
            if (!element->icon.isEmpty()) {
                launcher.icon = element->icon.reference;
                break;
            }
        }
        launchers.push_back(std::move(launcher));
    }
    return launchers;
}

std::vector<IconFile> AndroidfwPackage::iconFiles(const Launcher &launcher) const
{
    return launcher.icon != 0 ? AndroidfwIcons(m_assets.get()).files(launcher.icon) : std::vector<IconFile>();
}

bool AndroidfwPackage::isShown(const LauncherFilter &launcher, const AndroidfwLabels &labels) const
{
    const Texts enabled = texts(launcher.activity.enabled, labels, EnabledReferenceDepth);
    const auto byDefault = enabled.find(std::string());
    return (byDefault == enabled.cend() || byDefault->second != "false") && launcher.application.enabled.text != "false"
           && launcher.activity.exported.text != "false";
}

std::string AndroidfwPackage::className(const ManifestElement &activity) const
{
    const std::string &name = (activity.tag == u"activity-alias" ? activity.targetActivity : activity.name).text;
    if (name.find('.') == std::string::npos)
        return package() + '.' + name;
    return name.front() == '.' ? package() + name : name;
}

} // namespace peer
