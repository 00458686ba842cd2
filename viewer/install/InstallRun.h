// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_INSTALLRUN_H
#define VIEWER_INSTALLRUN_H

#include <QByteArray>
#include <QDialog>
#include <QProcess>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace Viewer {

/// Runs the install command, and shows its output and its exit code as plain text. The dialog stays until the command
/// ended; its button Stop ends the command. Destroying the dialog kills the command.
class InstallRun : public QDialog
{
    Q_OBJECT

public:
    /// Starts @p command, a program with its arguments, without a shell.
    explicit InstallRun(const QStringList &command, QWidget *parent = nullptr);
    ~InstallRun() override;

    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /// Does nothing while the command runs.
    void reject() override;

private:
    void readOutput();
    void append(const QByteArray &lines);
    void showEnd(const QString &text);
    void stop();

    QProcess m_process;
    QLabel *const m_state;
    QPlainTextEdit *const m_output;
    QPushButton *m_stop = nullptr;
    QPushButton *m_close = nullptr;
    QByteArray m_line;  ///< the last line of output, which has not ended
    qint64 m_shown = 0; ///< bytes of output
    bool m_isStopping = false;
};

} // namespace Viewer

#endif
