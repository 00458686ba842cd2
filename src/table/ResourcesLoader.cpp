// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/ResourcesLoader.h"

#include "stream/ChunkWalker.h"
#include "stream/Extractor.h"
#include "table/ApkResourcesData.h"

#include <QDebug>

void ResourcesLoader::load(ApkResourcesData *data, Extractor *reader)
{
    m_reader = reader;
    m_data = data;
    data->stringPool.clear();
    data->stringPool.setName(QStringLiteral("table"));
    data->packages.clear();
    parseChunk();
    reader->release();
    if (!reader->failed())
        data->valid = true;
    else if (!reader->diagnostics().isQuiet())
        qDebug("Error extracting resources: %s", reader->errorString().toLocal8Bit().constData());
}

void ResourcesLoader::parseChunk()
{
    ChunkWalker chunk(m_reader);
    while (chunk.next()) {
        switch (chunk.type()) {
        case ChunkType::Table:
            m_reader->get32(); // package count
            chunk.enter();
            break;
        case ChunkType::StringPool:
            m_data->stringPool.load(m_reader, chunk.headerSize());
            break;
        case ChunkType::Package:
            parsePackage(chunk.headerSize());
            break;
        default:
            m_reader->diagnostics().add(SORREL_LOGGER,
                                        {Diagnostics::Code::UnexpectedTableChunk, unsigned(chunk.type())});
        }
    }
}

void ResourcesLoader::parsePackage(int headerSize)
{
    if (m_data->packages.size() == MaxPackages) {
        m_reader->setError(QStringLiteral("too many packages in resource table"));
        return;
    }
    m_data->packages.append(ResourcePackage());
    m_data->packages.last().load(m_reader, headerSize);
}
