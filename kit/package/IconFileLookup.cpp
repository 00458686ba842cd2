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
    for (const ResolvedValue &candidate : candidates(icon, m_resolver, &m_budget)) {
        const Kind kind = kindOf(candidate.file());
        File file;
        file.path = candidate.file();
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
                                                  Budget *budget)
{
    if (icon.resource == 0)
        return {icon};
    QVector<ResolvedValue> files;
    QSet<quint32> visited;
    QSet<OwnedPath> paths;
    QVector<quint32> open{icon.resource};
    while (!open.isEmpty() && visited.size() < MaxFiles) {
        const quint32 id = open.takeFirst();
        if (visited.contains(id) || !budget->spendWork(resolver.work(id)))
            continue;
        visited.insert(id);
        for (const ResolvedValue &candidate : resolver.candidates(id)) {
            if (candidate.value.isReference() && open.size() < MaxFiles)
                open.append(candidate.value.data);
            if (candidate.value.type != ValueType::String || files.size() >= MaxFiles)
                continue;
            const ResolvedValue file = ResourceResolver::withText(candidate);
            if (!budget->spendWork(Budget::ByteWork * file.text.size()))
                return files;
            if (!paths.contains(file.file()))
                files.append(file);
            paths.insert(file.file());
        }
    }
    return files;
}

void IconFileLookup::forget()
{
    m_kinds.clear();
    m_ofResources.clear();
}

IconFileLookup::Kind IconFileLookup::kindOf(const OwnedPath &path)
{
    const auto known = m_kinds.constFind(path);
    if (known != m_kinds.cend())
        return *known;
    Kind kind;
    FileSource &files = path.owner == ResourceOwner::Platform ? m_resolver.platform()->files() : m_files;
    QByteArray bytes = files.file(path.path, PictureFile::MaxBytes, &m_budget);
    if (XmlReader::isDocument(bytes)) {
        if (m_budget.spendWork(Budget::DocumentByteWork * bytes.size())) {
            const XmlReader reader(bytes);
            m_budget.chargeWork(Budget::DocumentByteWork * reader.characters());
            kind.name = reader.root().name;
        }
    } else {
        const PictureFile picture = PictureFile::opened(std::move(bytes), &m_budget);
        kind.name = QString::fromLatin1(picture.format());
        kind.size = picture.size();
    }
    if (m_budget.holdBytes(ResultBytes + qint64(sizeof(QChar)) * path.path.size()))
        m_kinds.insert(path, kind);
    return kind;
}

} // namespace SorrelKit
