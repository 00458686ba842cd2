// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEPROPERTIES_H
#define PACKAGEPROPERTIES_H

#include <SorrelKit/Package.h>

#include <QLocale>
#include <QString>

/**
 * The facts of a package as texts for KDE's properties of files. A property has one value, and file managers show a
 * name for each that they know, so each fact is in the property whose name fits best.
 *
 * Each text is plain, on one line, and of bounded length. Characters that change the text around them become U+FFFD,
 * and texts of the package that run from right to left are isolated.
 */
class PackageProperties
{
public:
    /// The longest text from a package within a fact, in UTF-16 units. A longer one ends with "…".
    static constexpr int MaxCharacters = 200;
    /// The largest number of permissions that permissions() lists. The rest is counted.
    static constexpr int MaxPermissions = 32;
    /// The size in bytes of the largest file that is verified. Verification reads the whole file.
    static constexpr qint64 MaxVerifiedBytes = qint64(512) << 20;

    /// The facts of @p package in the language of @p locale.
    PackageProperties(const SorrelKit::Package &package, const QLocale &locale);

    /// Whether the manifest can be read. Without it, no other fact is known.
    bool isValid() const { return m_package.isValid(); }

    /// The property Title: the application's label, or the package name when there is none.
    QString title() const;
    /// The property Subject: "org.example.notes, version 2.1 (42), for Android 8.0 (API 26) and later".
    QString packageAndVersion() const;
    /// The property Description: the permissions in words, those first that need the user's consent. "Dangerous
    /// permissions: take pictures and videos. Other permissions: have full network access", or "No permissions".
    QString permissions() const;
    /// The property Publisher: the name that each signer gave itself, with the first digits of its certificate's
    /// SHA-256 fingerprint, because anyone may choose any name. "CN=Jane (certificate 3934b45d38b65dc4)". Empty when
    /// the package, or a package of the set, is not verified, and for a file of more than MaxVerifiedBytes. @p fileSize
    /// is the size of the file. Reads the whole file.
    QString signer(qint64 fileSize) const;

private:
    const SorrelKit::Package m_package;
    const QLocale m_locale;
};

#endif
