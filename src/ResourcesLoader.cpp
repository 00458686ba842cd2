// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ResourcesLoader.h"

#include "ApkResourcesData.h"
#include "ChunkWalker.h"
#include "Extractor.h"
#include "ResourceTypes.h"

#include <QDebug>

void ResourcesLoader::load(ApkResourcesData *data, Extractor *reader)
{
    m_reader = reader;
    m_data = data;
    data->stringPool.clear();
    data->stringPool.setName(QStringLiteral("table"));
    data->packages.clear();
    parseChunk();
    if (!reader->failed())
        data->valid = true;
    else
        qDebug("Error extracting resources: %s", reader->errorString().toLocal8Bit().constData());
}

void ResourcesLoader::parseChunk()
{
    ChunkWalker chunk(m_reader);
    while (chunk.next()) {
        switch (chunk.type()) {
        case ResourceTypes::TableChunk:
            m_reader->get32(); // package count
            chunk.enter();
            break;
        case ResourceTypes::StringPoolChunk:
            m_reader->readAhead();
            m_data->stringPool.load(m_reader, chunk.headerSize());
            break;
        case ResourceTypes::PackageChunk:
            m_data->packages.append(ResourcePackage());
            m_data->packages.last().load(m_reader, chunk.headerSize());
            break;
        default:
            qDebug("Skipping unexpected 0x%04x chunk", unsigned(quint16(chunk.type())));
        }
    }
}
