// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BINARYXML_H
#define BINARYXML_H

#include "format/XmlElement.h"

#include <QByteArray>

namespace fixture {

/// The binary XML document whose root is @p root: what XmlReader reads as the same element.
QByteArray binaryXml(const XmlElement &root);

} // namespace fixture

#endif
