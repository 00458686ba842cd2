// SPDX-License-Identifier: LGPL-2.1-or-later
#include "document/NamespaceBindings.h"

void NamespaceBindings::bind(const QString &uri, const QString &prefix)
{
    m_byUri[uri].bindings.append({++m_serial, prefix});
}

void NamespaceBindings::release(const QString &uri, const QString &prefix)
{
    const auto found = m_byUri.find(uri);
    if (found == m_byUri.end())
        return;
    found->released.insert(prefix, m_serial);
    QVector<Binding> &bindings = found->bindings;
    while (!bindings.isEmpty() && bindings.constLast().serial <= found->released.value(bindings.constLast().prefix))
        bindings.removeLast();
    if (bindings.isEmpty())
        m_byUri.erase(found);
}

QString NamespaceBindings::prefix(const QString &uri) const
{
    const auto found = m_byUri.constFind(uri);
    return found == m_byUri.cend() ? QString() : found->bindings.constLast().prefix;
}
