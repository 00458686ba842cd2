// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef APK_H
#define APK_H

#include "TableBuilder.h"
#include "XmlBuilder.h"
#include "ZipBuilder.h"

#include <QBuffer>
#include <QString>

/// Whole packages in memory, with the least that makes them good.
namespace fixture {

/// Data types of values, as tests write them.
enum DataType : int {
    Reference = 0x01,
    String = 0x03,
    Integer = 0x10,
    Boolean = 0x12,
};

/// A table with no resources.
QByteArray emptyTable();
/// A manifest of the package @p name with no application.
QByteArray smallManifest(const QString &name = QStringLiteral("org.example.app"));

/// A package held in memory, as the device of an ApkFile.
class PackageDevice : public QBuffer
{
public:
    explicit PackageDevice(const QByteArray &bytes);
    PackageDevice(const QByteArray &table, const QByteArray &manifest, const QVector<Member> &others = {});

    bool open(OpenMode mode) override;
    int timesOpened() const { return m_timesOpened; }
    /// Bytes that were read, as often as they were.
    qint64 bytesRead() const { return m_bytesRead; }

protected:
    qint64 readData(char *data, qint64 size) override;

private:
    int m_timesOpened = 0;
    qint64 m_bytesRead = 0;
};

} // namespace fixture

#endif
