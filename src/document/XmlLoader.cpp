// SPDX-License-Identifier: LGPL-2.1-or-later
#include "document/XmlLoader.h"

#include "stream/Extractor.h"
#include "table/ApkResourcesData.h"

#include <QDebug>

XmlLoader::XmlLoader() : m_decoder(this) {}

void XmlLoader::load(Extractor *reader, const ApkResources &resources)
{
    m_resources = resources;
    m_document.clear();
    m_openElements.clear();
    m_decoder.decode(reader, ApkResourcesData::of(m_resources));
    if (reader->failed() && !reader->diagnostics().isQuiet())
        qDebug("XmlLoader error: %s", reader->errorString().toLocal8Bit().constData());
}

void XmlLoader::parseChunk()
{
    m_decoder.parseChunk();
}

void XmlLoader::parseNamespaceChunk(bool start)
{
    m_decoder.parseNamespaceChunk(start);
}

void XmlLoader::parseStartElementChunk()
{
    m_decoder.parseStartElementChunk();
}

void XmlLoader::parseEndElementChunk()
{
    m_decoder.parseEndElementChunk();
}

const char *XmlLoader::lookupAndroidAttribute(int id)
{
    return XmlDecoder::androidAttributeName(id);
}

QString XmlLoader::startElement(const QString &name)
{
    m_started = m_document.createElement(name);
    return m_started.tagName();
}

QString XmlLoader::startElement(const QString &uri, const QString &qualifiedName)
{
    m_started = m_document.createElementNS(uri, qualifiedName);
    return m_started.tagName();
}

void XmlLoader::addAttribute(const QString &name, const QString &value)
{
    m_started.setAttribute(name, value);
}

void XmlLoader::addAttribute(const QString &uri, const QString &qualifiedName, const QString &value)
{
    m_started.setAttributeNS(uri, qualifiedName, value);
}

void XmlLoader::endAttributes()
{
    if (m_openElements.isEmpty())
        m_document.appendChild(m_started);
    else
        m_openElements.last().appendChild(m_started);
    if (m_started.isNull())
        m_openElements.clear();
    else
        m_openElements.append(m_started);
}

void XmlLoader::endElement()
{
    m_openElements.removeLast();
}

void XmlLoader::addOddity(Extractor *reader, const Diagnostics::Item &oddity)
{
    reader->diagnostics().add(SORREL_LOGGER, oddity);
}
