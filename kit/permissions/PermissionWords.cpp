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

const XmlElement *PermissionWords::declaration(const QString &name)
{
    return PermissionTable::find(name) ? nullptr : own().permission(name);
}

std::optional<quint32> PermissionWords::protection(const QString &name)
{
    if (const auto known = PermissionTable::find(name))
        return known->protection;
    const XmlElement *const element = declaration(name);
    if (element == nullptr)
        return std::nullopt;
    // Without the attribute, a permission is normal.
    return quint32(m_package->resolved(element->attribute(Attr::ProtectionLevel)).value.integer().value_or(0));
}

QString PermissionWords::group(const QString &name)
{
    if (const auto known = PermissionTable::find(name))
        return known->group != nullptr ? PermissionTable::groupName(known->group) : QString();
    const XmlElement *const element = declaration(name);
    return element != nullptr ? m_package->text(element->attribute(Attr::PermissionGroup)) : QString();
}

QString PermissionWords::ownText(const XmlElement *element, quint32 attribute, const QLocale &locale)
{
    if (element == nullptr)
        return {};
    if (!m_ownTexts)
        m_ownTexts.emplace(m_package->resolver());
    return m_ownTexts->label(element->attribute(attribute), LanguageTag(locale));
}

QString PermissionWords::label(const QString &name, const QLocale &locale)
{
    const QString text = ownText(declaration(name), Attr::Label, locale);
    if (!text.isEmpty())
        return text;
    return PermissionTable::find(name) ? PermissionTable::words(name) : name;
}

QString PermissionWords::description(const QString &name, const QLocale &locale)
{
    return ownText(declaration(name), Attr::Description, locale);
}

QString PermissionWords::groupLabel(const QString &name, const QLocale &locale)
{
    const QString groupOfName = group(name);
    const QString text = ownText(own().group(groupOfName), Attr::Label, locale);
    if (!text.isEmpty())
        return text;
    const QString words = PermissionTable::groupWords(groupOfName);
    return words.isEmpty() ? groupOfName : words;
}

} // namespace SorrelKit
