// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICES_H
#define DEVICES_H

#include <QByteArray>
#include <QIODevice>

namespace fixture {

/// Bytes as a sequential device, which counts all of them as available. It is open from the start, and unbuffered
/// unless @p mode is another one; a member of an archive is buffered.
class SequentialDevice : public QIODevice
{
public:
    explicit SequentialDevice(const QByteArray &bytes, OpenMode mode = ReadOnly | Unbuffered);

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return QIODevice::bytesAvailable() + m_bytes.size() - m_at; }
    /// Bytes that the device has delivered, including those that QIODevice keeps for the next read.
    int delivered() const { return m_at; }
    /// The same without the bytes that QIODevice keeps.
    int taken() const { return m_at - int(QIODevice::bytesAvailable()); }
    /// The largest number of bytes that one read delivers; by default the requested number.
    void setLargestRead(int count) { m_largestRead = count; }
    /// The result of a read at the end: 0 by default.
    void setAnswerAtEnd(int answer) { m_answerAtEnd = answer; }
    /// The text of errorString(); by default QIODevice's own.
    void setErrorText(const QString &text) { setErrorString(text); }

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    QByteArray m_bytes;
    int m_at = 0;
    int m_largestRead = 0x7fffffff;
    int m_answerAtEnd = 0;
};

} // namespace fixture

#endif
