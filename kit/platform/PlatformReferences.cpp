// SPDX-License-Identifier: LGPL-2.1-or-later
#include "platform/PlatformReferences.h"

#include "format/XmlReader.h"

#include <algorithm>

namespace SorrelKit {

QList<quint32> PlatformReferences::ids(const XmlElement &root)
{
    collect(root);
    while (!m_open.isEmpty())
        follow(m_open.takeLast());
    QList<quint32> sorted = m_ids.values();
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

// Recursion ends at XmlReader::MaxDepth: no document is nested deeper.
void PlatformReferences::collect(const XmlElement &element)
{
    for (const XmlAttribute &attribute : element.attributes)
        add(attribute.value);
    for (const XmlElement &child : element.children)
        collect(child);
}

void PlatformReferences::add(const TypedValue &value)
{
    const quint32 id = value.data;
    if ((!value.isReference() && !value.isThemeAttribute()) || id == 0 || m_ids.contains(id) || m_visited.contains(id)
        || !m_budget.spendWork(Budget::ValueWork) || !m_budget.holdBytes(IdBytes))
        return;
    if (m_resolver.isOfPlatform(id)) {
        m_ids.insert(id);
    } else {
        m_visited.insert(id);
        if (value.isReference())
            m_open.append(id);
    }
}

void PlatformReferences::follow(quint32 id)
{
    if (!m_budget.spendWork(m_resolver.work(id)))
        return;
    const bool isText = m_resolver.typeName(id) == QLatin1String("string");
    for (const ResolvedValue &candidate : m_resolver.candidates(id, ResourceResolver::Locales::Any)) {
        add(candidate.value);
        if (isText || candidate.value.type != ValueType::String)
            continue;
        const QString path = ResourceResolver::withText(candidate).text;
        if (m_budget.spendWork(Budget::ByteWork * path.size()) && path.endsWith(QLatin1String(".xml")))
            readFile(path);
    }
}

void PlatformReferences::readFile(const QString &path)
{
    if (m_paths.contains(path) || !m_budget.holdBytes(IdBytes + qint64(sizeof(QChar)) * path.size()))
        return;
    m_paths.insert(path);
    const QByteArray bytes = m_files.file(path, MaxFileBytes, &m_budget);
    if (!XmlReader::isDocument(bytes) || !m_budget.spendWork(Budget::DocumentByteWork * bytes.size()))
        return;
    const XmlReader reader(bytes, m_budget.workLeft() / Budget::DocumentByteWork);
    m_budget.chargeWork(Budget::DocumentByteWork * reader.characters());
    collect(reader.root());
}

} // namespace SorrelKit
