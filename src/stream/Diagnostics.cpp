// SPDX-License-Identifier: LGPL-2.1-or-later
#include "stream/Diagnostics.h"

namespace {

void print(const QMessageLogger &logger, const Diagnostics::Item &item)
{
    using Code = Diagnostics::Code;
    const QByteArray uri = item.uri.toLocal8Bit();
    switch (item.code) {
    case Code::UnexpectedTableChunk:
        logger.debug("Skipping unexpected 0x%04x chunk", item.number);
        break;
    case Code::UnknownStringPool:
        logger.debug("Skipping unknown string pool at %x", item.number);
        break;
    case Code::UnexpectedDocumentChunk:
        logger.debug("Unexpected chunk 0x%04x", item.number);
        break;
    case Code::UnknownElementNamespace:
        logger.debug("Unknown namespace %s for element %s", uri.constData(), item.name.toLocal8Bit().constData());
        break;
    case Code::UnknownAttributeNamespace:
        logger.debug("Unknown namespace %s", uri.constData());
        break;
    case Code::NoAndroidNamespace:
        logger.debug("Android namespace not defined");
        break;
    }
}

} // namespace

void Diagnostics::add(const QMessageLogger &logger, const Item &item)
{
    if (m_items.size() == MaxItems)
        return;
    m_items.append(item);
    if (!m_isQuiet)
        print(logger, item);
}
