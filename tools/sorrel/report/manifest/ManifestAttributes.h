// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MANIFESTATTRIBUTES_H
#define MANIFESTATTRIBUTES_H

#include <QString>
#include <QXmlStreamAttributes>

#include <utility>

/// The attributes of an element of a manifest whose references are written as values. Names are those of Android's
/// namespace. An attribute that is missing, or whose value has another type, has the fallback.
class ManifestAttributes
{
public:
    /// No attributes.
    ManifestAttributes() = default;
    explicit ManifestAttributes(QXmlStreamAttributes attributes) : m_attributes(std::move(attributes)) {}

    QString text(const char *name) const;
    /// The text of an attribute that tools write with or without the namespace.
    QString textInAnyNamespace(const char *name) const;
    bool isTrue(const char *name, bool fallback = false) const;
    /// A decimal number, or a hexadecimal one with "0x".
    int number(const char *name, int fallback = 0) const;
    /// The 64 bits of `versionMajor` and `version` as a decimal number, as Android compares versions of libraries.
    QString longVersion() const;

private:
    QXmlStreamAttributes m_attributes;
};

#endif
