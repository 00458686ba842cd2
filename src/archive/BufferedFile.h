// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BUFFEREDFILE_H
#define BUFFEREDFILE_H

#include <QByteArray>
#include <QFile>
#include <QIODevice>

/**
 * A file that is read as ZIP libraries read archives: a few bytes at a time, and for every member of the directory a
 * few bytes back. A part of the file is kept in memory, so that such steps ask nothing of the system; QFile alone asks
 * it for a seek at every step, and for its whole buffer anew after every step back.
 *
 * Random-access, read-only. A file that shrinks while it is open ends early, and does no harm.
 */
class BufferedFile : public QIODevice
{
public:
    /// Bytes of the file that are kept. Large reads, and those that go on where a read of 16 KiB ended, go past them.
    static constexpr int WindowSize = 1 << 15;

    /// The file of that name, which open() opens; QIODevice::ReadOnly is the one mode that there is.
    explicit BufferedFile(const QString &name) : m_file(name) {}

    bool open(OpenMode mode) override;
    void close() override;
    /// The size that the file had when it was opened.
    qint64 size() const override { return m_size; }
    bool seek(qint64 position) override;

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    bool isPartOfMuch(qint64 size) const;
    qint64 readKept(char *data, qint64 size);
    qint64 readFile(qint64 from, char *data, qint64 size);
    bool isKept(qint64 size) const;

    QFile m_file;
    qint64 m_size = 0;
    qint64 m_at = 0;       ///< where readData() goes on
    qint64 m_lastEnd = 0;  ///< where it ended last
    QByteArray m_window;   ///< bytes of the file,
    qint64 m_windowAt = 0; ///< from here on
};

#endif
