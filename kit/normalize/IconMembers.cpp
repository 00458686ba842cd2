// SPDX-License-Identifier: LGPL-2.1-or-later
#include "normalize/IconMembers.h"

#include "format/AndroidAttributes.h"

#include <QLatin1String>
#include <QVector>

namespace SorrelKit {

namespace {

bool mayHaveALaunchersIcon(const XmlElement &element)
{
    return element.name.startsWith(QLatin1String("activity")) || element.name == QLatin1String("application")
           || element.name == QLatin1String("intent-filter");
}

} // namespace

QStringList IconMembers::paths(const XmlElement &manifest)
{
    search(manifest);
    return m_paths;
}

// Recursion ends at XmlReader::MaxDepth: no document is nested deeper.
void IconMembers::search(const XmlElement &element)
{
    const XmlAttribute *const icon = mayHaveALaunchersIcon(element) ? element.attribute(Attr::Icon) : nullptr;
    // ApkFile prefers the text that the attribute was written as.
    if (icon != nullptr)
        add(icon->raw);
    if (icon != nullptr && icon->value.isReference())
        follow(icon->value.data);
    else if (icon != nullptr && icon->value.type == ValueType::String)
        add(icon->text);
    for (const XmlElement &child : element.children)
        search(child);
}

void IconMembers::follow(quint32 resource)
{
    QVector<quint32> pending{resource};
    while (!pending.isEmpty()) {
        const quint32 id = pending.takeLast();
        const qint64 work = Budget::LookupWork + Budget::ValueWork * m_table.typeChunkCount(id);
        if (m_followed.contains(id) || !m_budget.spendWork(work) || !m_budget.holdBytes(ReferenceBytes))
            continue;
        m_followed.insert(id);
        for (const TableValue &value : m_table.values(id)) {
            if (value.isMap || !m_budget.spendWork(Budget::ValueWork))
                continue;
            if (value.value.isReference()) {
                pending.append(value.value.data);
            } else if (value.value.type == ValueType::String && !m_strings.contains(value.value.data)) {
                m_strings.insert(value.value.data);
                add(m_table.string(value.value.data));
            }
        }
    }
}

void IconMembers::add(const QString &path)
{
    if (path.isEmpty() || !m_budget.chargeWork(Budget::ByteWork * path.size()) || path.size() > MaxPathLength
        || m_paths.size() == MaxPaths || m_known.contains(path)
        || !m_budget.holdBytes(qint64(sizeof(QChar)) * path.size()))
        return;
    m_known.insert(path);
    m_paths.append(path);
}

} // namespace SorrelKit
