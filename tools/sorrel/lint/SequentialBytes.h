// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SEQUENTIALBYTES_H
#define SEQUENTIALBYTES_H

#include <QByteArray>
#include <QIODevice>

/// Bytes as a sequential device, like a member of an archive. Open from the start.
class SequentialBytes : public QIODevice
{
public:
    explicit SequentialBytes(const QByteArray &bytes);

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qint64 m_at = 0;
};

#endif
