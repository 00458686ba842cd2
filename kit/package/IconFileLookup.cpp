// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/IconFileLookup.h"

#include "format/XmlReader.h"

#include <QSet>

#include <utility>

namespace SorrelKit {

QVector<IconFileLookup::File> IconFileLookup::files(const ResolvedValue &icon)
{
    const auto known = m_ofResources.constFind(icon.resource);
    if (known != m_ofResources.cend())
        return *known;
    QVector<File> files;
    for (const ResolvedValue &candidate : candidates(icon, m_resolver, &m_steps)) {
        const Kind &kind = kindOf(candidate.text);
        File file;
        file.path = candidate.text;
        file.density = candidate.density;
        file.kind = kind.name;
        file.size = kind.size;
        if (!file.kind.isEmpty())
            files.append(file);
    }
    if (icon.resource != 0)
        m_ofResources.insert(icon.resource, files);
    return files;
}

QVector<ResolvedValue> IconFileLookup::candidates(const ResolvedValue &icon, const ResourceResolver &resolver,
                                                  Allowance *steps)
{
    if (icon.resource == 0)
        return {icon};
    QVector<ResolvedValue> files;
    QSet<quint32> visited;
    QSet<QString> paths;
    QVector<quint32> open{icon.resource};
    while (!open.isEmpty() && visited.size() < MaxFiles) {
        const quint32 id = open.takeFirst();
        if (visited.contains(id) || !steps->spend(resolver.steps(id)))
            continue;
        visited.insert(id);
        for (const ResolvedValue &candidate : resolver.candidates(id)) {
            if (candidate.value.isReference() && open.size() < MaxFiles)
                open.append(candidate.value.data);
            if (candidate.value.type != ValueType::String || files.size() >= MaxFiles)
                continue;
            const ResolvedValue file = ResourceResolver::withText(candidate);
            if (!steps->spend(file.text.size()))
                return files;
            if (!paths.contains(file.text))
                files.append(file);
            paths.insert(file.text);
        }
    }
    return files;
}

const IconFileLookup::Kind &IconFileLookup::kindOf(const QString &path)
{
    const auto known = m_kinds.constFind(path);
    if (known != m_kinds.cend())
        return *known;
    Kind kind;
    QByteArray bytes = m_files.file(path, MaxFileBytes, &m_readCost);
    if (XmlReader::isDocument(bytes)) {
        const XmlReader reader(bytes);
        m_readCost.chargeWork(reader.characters());
        kind.name = reader.root().name;
    } else {
        const PictureFile picture = PictureFile::opened(std::move(bytes), &m_pictureSteps);
        kind.name = QString::fromLatin1(picture.format());
        kind.size = picture.size();
    }
    return *m_kinds.insert(path, kind);
}

} // namespace SorrelKit
