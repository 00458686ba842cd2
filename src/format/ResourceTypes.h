// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCETYPES_H
#define RESOURCETYPES_H

/**
 * The codes that Android's compiled formats share. A chunk's type is the first field of its header (see ChunkWalker);
 * a value's type is the fourth byte of its 8-byte record:
 *
 * | offset | width | field                                    |
 * |--------|-------|------------------------------------------|
 * | 0      | u16   | size of the record, 8                    |
 * | 2      | u8    | reserved, 0                              |
 * | 3      | u8    | type, one of ValueType                   |
 * | 4      | u32   | data, whose meaning depends on the type  |
 */
namespace ResourceTypes {

enum ChunkType : int {
    StringPoolChunk = 0x0001,
    TableChunk = 0x0002,
    XmlDocumentChunk = 0x0003,

    FirstXmlNodeChunk = 0x0100, ///< from here to LastXmlNodeChunk, a node header follows the chunk header
    StartNamespaceChunk = 0x0100,
    EndNamespaceChunk = 0x0101,
    StartElementChunk = 0x0102,
    EndElementChunk = 0x0103,
    LastXmlNodeChunk = 0x017f,
    ResourceIdMapChunk = 0x0180,

    PackageChunk = 0x0200,
    TypeChunk = 0x0201,
    TypeSpecChunk = 0x0202,
};

enum ValueType : int {
    NullValue = 0x00,
    ReferenceValue = 0x01,
    AttributeValue = 0x02,
    StringValue = 0x03,
    FloatValue = 0x04,
    DimensionValue = 0x05,
    FractionValue = 0x06,
    DecimalValue = 0x10,
    HexadecimalValue = 0x11,
    BooleanValue = 0x12,
    ColorArgb8Value = 0x1c,
    ColorRgb8Value = 0x1d,
    ColorArgb4Value = 0x1e,
    ColorRgb4Value = 0x1f,
};

/// The package id of an application's own resources; the framework's is 0x01.
constexpr int ApplicationPackageId = 0x7f;

/// Size of the header that every chunk starts with, in bytes.
constexpr int ChunkHeaderSize = 8;

} // namespace ResourceTypes

#endif
