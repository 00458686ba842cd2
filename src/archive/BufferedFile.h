// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BUFFEREDFILE_H
#define BUFFEREDFILE_H

#include <QByteArray>
#include <QFile>
#include <QIODevice>

#include <memory>

/**
 * A file for ZIP libraries, which read a few bytes at a time and seek back a few bytes for every member of the
 * directory. A window of the file stays in memory, so these steps need no system call. QFile alone would seek at every
 * step, and fill its whole buffer again after every step back.
 *
 * Random-access, read-only. A file that shrinks while it is open ends early and does no harm.
 */
class BufferedFile : public QIODevice
{
public:
    /// Bytes of the window. Large reads bypass it, and so do reads that continue a read of 16 KiB.
    static constexpr int WindowSize = 1 << 15;

    /// The file with this name; open() opens it, in the mode QIODevice::ReadOnly alone.
    explicit BufferedFile(const QString &name) : m_file(name) {}
    /// The file at @p path, the bytes that the system has for it. They need not be text in any encoding. Only a regular
    /// file can be opened.
    static std::unique_ptr<BufferedFile> atNativePath(const QByteArray &path);

    bool open(OpenMode mode) override;
    void close() override;
    /// The size of the file when it was opened.
    qint64 size() const override { return m_size; }
    bool seek(qint64 position) override;

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    bool openFile();
    bool isPartOfMuch(qint64 size) const;
    qint64 readKept(char *data, qint64 size);
    qint64 readFile(qint64 from, char *data, qint64 size);
    bool isKept(qint64 size) const;

    QFile m_file;
    QByteArray m_nativePath; ///< null when m_file has the name
    qint64 m_size = 0;
    qint64 m_at = 0;       ///< offset of the next read
    qint64 m_lastEnd = 0;  ///< offset after the last read
    QByteArray m_window;   ///< bytes of the file
    qint64 m_windowAt = 0; ///< offset of the window
};

#endif
