// SPDX-License-Identifier: LGPL-2.1-or-later
#include "permissions/PermissionWords.h"

#include "format/AndroidAttributes.h"
#include "permissions/PermissionTable.h"

namespace SorrelKit {

const PermissionDeclarations &PermissionWords::own()
{
    if (!m_own)
        m_own.emplace(m_package->manifest().root());
    return *m_own;
}

const PermissionDeclarations &PermissionWords::ofPlatform()
{
    if (m_package->manifest().packageName() == QLatin1String("android"))
        return own();
    if (!m_ofPlatform) {
        m_platform = PlatformDataPointer(m_package->platform());
        static const XmlElement none;
        m_ofPlatform.emplace(m_platform.data() != nullptr ? m_platform->manifest() : none);
    }
    return *m_ofPlatform;
}

const XmlElement *PermissionWords::declaration(const QString &name)
{
    const XmlElement *const element = ofPlatform().permission(name);
    return element != nullptr || PermissionTable::find(name) ? element : own().permission(name);
}

std::optional<quint32> PermissionWords::protection(const QString &name)
{
    // Without the attribute, a permission is normal.
    if (const XmlElement *const element = declaration(name))
        return quint32(m_package->resolved(element->attribute(Attr::ProtectionLevel)).value.integer().value_or(0));
    const auto known = PermissionTable::find(name);
    return known ? std::make_optional(known->protection) : std::nullopt;
}

QString PermissionWords::group(const QString &name)
{
    const XmlElement *const element = declaration(name);
    QString declared = element != nullptr ? m_package->text(element->attribute(Attr::PermissionGroup)) : QString();
    const auto known = PermissionTable::find(name);
    // Since Android 10, the platform's manifest has the group UNDEFINED for every dangerous permission.
    const bool isUndefined = declared.isEmpty() || declared == PermissionTable::groupName("UNDEFINED");
    if (!isUndefined)
        return declared;
    return known && known->group != nullptr ? PermissionTable::groupName(known->group) : QString();
}

QString PermissionWords::text(const XmlElement *element, quint32 id, const QLocale &locale)
{
    if (element == nullptr)
        return {};
    if (!m_texts)
        m_texts.emplace(m_package->resolver());
    return m_texts->label(element->attribute(id), LanguageTag(locale));
}

QString PermissionWords::label(const QString &name, const QLocale &locale)
{
    QString label = text(declaration(name), Attr::Label, locale);
    if (!label.isEmpty())
        return label;
    const bool isOfPlatform = ofPlatform().permission(name) != nullptr || PermissionTable::find(name);
    return isOfPlatform ? PermissionTable::words(name) : name;
}

QString PermissionWords::description(const QString &name, const QLocale &locale)
{
    return text(declaration(name), Attr::Description, locale);
}

QString PermissionWords::groupLabel(const QString &name, const QLocale &locale)
{
    const QString groupOfName = group(name);
    const QString words = PermissionTable::groupWords(groupOfName);
    const XmlElement *element = ofPlatform().group(groupOfName);
    if (element == nullptr && words.isEmpty())
        element = own().group(groupOfName);
    QString label = text(element, Attr::Label, locale);
    if (!label.isEmpty())
        return label;
    return words.isEmpty() ? groupOfName : words;
}

} // namespace SorrelKit
