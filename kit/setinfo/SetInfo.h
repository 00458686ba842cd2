// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SETINFO_H
#define SORRELKIT_SETINFO_H

#include "archive/ZipArchive.h"
#include "limits/Budget.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

class QJsonObject;

namespace SorrelKit {

/**
 * The file in which the maker of a set describes it. Each member may be missing:
 *
 * | member of `manifest.json` (`.xapk`) | member of `info.json` (`.apkm`) | value                                    |
 * |-------------------------------------|---------------------------------|------------------------------------------|
 * | `package_name`                      | `pname`                         | name of the package                      |
 * | `version_code`                      | `versioncode`                   | version, a number or a text              |
 * | `split_apks`: `file`, `id`          | -                               | a package, and its split; "base"         |
 * | `expansions`: `file`, `install_path`| -                               | a file of data, and its path on a device |
 * | -                                   | `arches`                        | processors of native code                |
 *
 * Nothing binds the file to the packages, so their manifests count, and what differs is reported. A package whose
 * manifest cannot be read is known by the name that this file has for its split. Meets raw input.
 */
class SetInfo
{
public:
    /// Bytes of the file. The largest known one has some 10 KiB.
    static constexpr qint64 MaxBytes = 1 << 20;
    /// The work and the bytes that each byte of the file costs: Qt's values take some ten times the text.
    static constexpr qint64 ByteCost = 16;
    /// Packages, expansion files and processors that are looked at, of each kind.
    static constexpr int MaxItems = 1024;
    /// Characters of a text. Longer ones are cut.
    static constexpr int MaxTextLength = 256;
    /// Differences that are reported.
    static constexpr int MaxMismatches = 64;

    /// The facts of a set that the file is compared with.
    struct Facts {
        QString application;                ///< empty when no manifest can be read
        std::optional<qint64> versionCode;  ///< of the base; none when it is unknown
        QStringList paths;                  ///< of all packages
        QHash<QString, QString> splitNames; ///< by path, of the packages whose manifests were read
        QStringList abis;                   ///< of all packages
        QHash<QString, QString> expansions; ///< by path, the paths on a device
    };

    /// No file.
    SetInfo() = default;
    /// The file of the set @p archive.
    SetInfo(ZipArchive &archive, Budget *budget);

    /// The split that the file names for the package @p path: "config.de"; empty for none, and for the base.
    QString splitName(const QString &path) const;
    /// The paths of the expansion files in the set.
    QStringList expansions() const { return m_expansions.keys(); }
    /// The differences from the facts of the set, in English.
    QStringList mismatches(const Facts &facts) const;

private:
    void read(const QJsonObject &root);

    QString m_fileName;
    bool m_isSound = true;
    QString m_application;
    std::optional<qint64> m_versionCode;
    QHash<QString, QString> m_splits;     ///< by path
    QHash<QString, QString> m_expansions; ///< by path, the paths on a device
    QStringList m_abis;
};

} // namespace SorrelKit

#endif
