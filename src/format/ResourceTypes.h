// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCETYPES_H
#define RESOURCETYPES_H

#include <QtGlobal>

/// Types of the chunks of resource tables and binary XML documents; the first field of a chunk (see ChunkView).
enum class ChunkType : quint16 {
    Untyped = 0x0000, ///< some tools leave a document's outermost chunk so
    StringPool = 0x0001,
    Table = 0x0002,
    Xml = 0x0003,

    XmlFirstNode = 0x0100, ///< from here to XmlLastNode, a node header follows the chunk header
    XmlStartNamespace = 0x0100,
    XmlEndNamespace = 0x0101,
    XmlStartElement = 0x0102,
    XmlEndElement = 0x0103,
    XmlText = 0x0104,
    XmlLastNode = 0x017f,
    XmlResourceMap = 0x0180,

    Package = 0x0200,
    Type = 0x0201,
    TypeSpec = 0x0202,
    Library = 0x0203,
    Overlayable = 0x0204,
    OverlayablePolicy = 0x0205,
    StagedAlias = 0x0206,
};

/// Data types of compiled values (see TypedValue).
enum class ValueType : quint8 {
    Null = 0x00,
    Reference = 0x01,
    Attribute = 0x02, ///< of the theme
    String = 0x03,
    Float = 0x04,
    Dimension = 0x05,
    Fraction = 0x06,
    DynamicReference = 0x07, ///< the platform may renumber the package when it loads the table; Sorrel does not
    DynamicAttribute = 0x08,
    FirstInteger = 0x10,
    Decimal = 0x10,
    Hexadecimal = 0x11,
    Boolean = 0x12,
    FirstColor = 0x1c,
    ColorArgb8 = 0x1c,
    ColorRgb8 = 0x1d,
    ColorArgb4 = 0x1e,
    ColorRgb4 = 0x1f,
    LastColor = 0x1f,
    LastInteger = 0x1f,
};

/// A resource id is 0xPPTTEEEE: package, type (1 for the first), and index of the entry within the type.
namespace ResourceId {

/// The package id of an application's own resources.
constexpr quint8 ApplicationPackage = 0x7f;
/// The package id of the platform's resources.
constexpr quint8 PlatformPackage = 0x01;

constexpr quint8 package(quint32 id)
{
    return quint8(id >> 24);
}

constexpr quint8 type(quint32 id)
{
    return quint8(id >> 16);
}

constexpr int entry(quint32 id)
{
    return int(id & 0xffff);
}

} // namespace ResourceId

#endif
