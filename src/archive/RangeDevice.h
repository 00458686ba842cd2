// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RANGEDEVICE_H
#define RANGEDEVICE_H

#include <QIODevice>

/// A range of bytes of another device as a device of its own, random-access and read-only: a package that is stored
/// uncompressed in an archive. The other device is open and random-access, and stays the caller's. Others may read it
/// in the same thread meanwhile.
class RangeDevice : public QIODevice
{
public:
    /// The @p size bytes of @p device from @p start on, cut where the device ends.
    RangeDevice(QIODevice *device, qint64 start, qint64 size);

    bool open(OpenMode mode) override;
    qint64 size() const override { return m_size; }

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    QIODevice *m_device;
    qint64 m_start;
    qint64 m_size;
};

#endif
