// SPDX-License-Identifier: LGPL-2.1-or-later
#include "install/InstallRun.h"

#include "reading/SafeText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextCursor>
#include <QVBoxLayout>

namespace Viewer {

namespace {

/// Output beyond this is not shown.
constexpr qint64 MaxOutputBytes = qint64(1) << 20;
/// A line without an end is shown when it is this long.
constexpr int MaxLineBytes = 1 << 16;

} // namespace

InstallRun::InstallRun(const QStringList &command, QWidget *parent)
    : QDialog(parent), m_state(new QLabel), m_output(new QPlainTextEdit)
{
    setWindowTitle(tr("Installing"));
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    m_state->setObjectName(QStringLiteral("state"));
    m_output->setReadOnly(true);
    m_output->setUndoRedoEnabled(false);
    m_output->setObjectName(QStringLiteral("output"));
    m_output->setAccessibleName(tr("Output of the command"));
    m_output->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_stop = new QPushButton(tr("&Stop"));
    m_stop->setObjectName(QStringLiteral("stop"));
    m_stop->setAutoDefault(false);
    m_close = new QPushButton(tr("&Close"));
    m_close->setObjectName(QStringLiteral("close"));
    m_close->setEnabled(false);
    auto *const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_stop);
    buttons->addWidget(m_close);
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(m_state);
    layout->addWidget(m_output);
    layout->addLayout(buttons);
    resize(fontMetrics().averageCharWidth() * 80, fontMetrics().height() * 20);

    connect(m_stop, &QPushButton::clicked, this, &InstallRun::stop);
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);
    connect(&m_process, &QProcess::readyRead, this, &InstallRun::readOutput);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            showEnd(tr("The command could not be started: %1").arg(safePart(m_process.errorString())));
    });
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this](int code, QProcess::ExitStatus status) {
                readOutput();
                append(m_line);
                if (status == QProcess::CrashExit)
                    showEnd(tr("The command was ended before it was done."));
                else if (code == 0)
                    showEnd(tr("The command succeeded, with exit code 0."));
                else
                    showEnd(tr("The command failed, with exit code %1.").arg(code));
            });
    m_state->setText(tr("Running: %1").arg(safePart(command.join(QLatin1Char(' ')))));
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.start(command.first(), command.mid(1));
}

InstallRun::~InstallRun()
{
    m_process.disconnect(this);
    m_process.kill();
    m_process.waitForFinished();
}

void InstallRun::reject()
{
    if (!isRunning())
        QDialog::reject();
}

void InstallRun::readOutput()
{
    m_line += m_process.readAll();
    const auto end = m_line.lastIndexOf('\n');
    if (end >= 0 || m_line.size() > MaxLineBytes) {
        const auto size = end >= 0 ? end + 1 : m_line.size();
        append(m_line.left(size));
        m_line.remove(0, size);
    }
}

void InstallRun::append(const QByteArray &lines)
{
    if (m_shown > MaxOutputBytes)
        return;
    const QByteArray shown = lines.left(int(MaxOutputBytes - m_shown));
    QString text = safeLines(QString::fromUtf8(shown));
    m_shown += lines.size();
    if (m_shown > MaxOutputBytes)
        text += QLatin1Char('\n') + tr("More output is left out.");
    QTextCursor cursor(m_output->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text);
}

void InstallRun::showEnd(const QString &text)
{
    m_state->setText(text);
    setWindowTitle(tr("Install Command Ended"));
    m_stop->setEnabled(false);
    m_close->setEnabled(true);
    m_close->setDefault(true);
    m_close->setFocus();
}

void InstallRun::stop()
{
    // The first time the command may tidy up.
    if (m_isStopping) {
        m_process.kill();
    } else {
        m_isStopping = true;
        m_process.terminate();
    }
}

} // namespace Viewer
