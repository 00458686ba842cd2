// SPDX-License-Identifier: LGPL-2.1-or-later
#include "install/CommandDialog.h"

#include "install/InstallCommand.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace Viewer {

CommandDialog::CommandDialog(const QString &command, QWidget *parent)
    : QDialog(parent),
      m_edit(new QLineEdit(command)),
      m_fault(new QLabel),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(tr("Install Command"));
    auto *const prompt = new QLabel(tr("&Command that installs a package; %f is the file:"));
    prompt->setBuddy(m_edit);
    auto *const explanation = new QLabel(
        tr("The command runs only after you agree to it for a package. No shell is involved. Arguments with spaces are "
           "in double quotes. Leave the line empty for no command."));
    for (QLabel *const label : {prompt, explanation, m_fault}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    m_edit->setObjectName(QStringLiteral("command"));
    m_edit->setPlaceholderText(QStringLiteral("adb install %f"));
    m_edit->setAccessibleName(tr("Install command"));
    m_edit->setAccessibleDescription(explanation->text());
    // A command is read from left to right in every language.
    m_edit->setLayoutDirection(Qt::LeftToRight);
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(prompt);
    layout->addWidget(m_edit);
    layout->addWidget(m_fault);
    layout->addWidget(explanation);
    layout->addWidget(m_buttons);
    connect(m_edit, &QLineEdit::textChanged, this, &CommandDialog::check);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(sizeHint().expandedTo({fontMetrics().averageCharWidth() * 70, 0}));
    check();
}

QString CommandDialog::command() const
{
    return m_edit->text().trimmed();
}

void CommandDialog::check()
{
    const InstallCommand command(m_edit->text());
    const QString fault = command.isEmpty() ? QString() : command.fault();
    m_fault->setText(fault);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(fault.isEmpty());
}

} // namespace Viewer
