// SPDX-License-Identifier: LGPL-2.1-or-later
#include "install/InstallQuestion.h"

#include "facts/PackageFacts.h"
#include "facts/StatusMark.h"
#include "reading/SafeText.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace Viewer {

namespace {

QLabel *wrapped(const QString &text)
{
    auto *const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

InstallQuestion::InstallQuestion(const PackageFacts &facts, const QStringList &command, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Install a Package?"));
    const bool isVerified = facts.signature.kind() == SignatureState::Verified;
    auto *const layout = new QVBoxLayout(this);
    QLabel *const question =
        wrapped(tr("Install “%1” (%2, version %3)?")
                    .arg(facts.label.isEmpty() ? facts.packageName : facts.label, facts.packageName, facts.version));
    QFont bold = question->font();
    bold.setBold(true);
    question->setFont(bold);
    question->setObjectName(QStringLiteral("question"));
    layout->addWidget(question);

    auto *const state = new QGridLayout;
    auto *const mark = new QLabel;
    const int markSize = style()->pixelMetric(QStyle::PM_ButtonIconSize);
    mark->setPixmap(StatusMark::pixmap(facts.signature.kind(), markSize, devicePixelRatioF(), palette()));
    QLabel *const signer = wrapped(facts.signature.text());
    signer->setObjectName(QStringLiteral("signer"));
    QPalette colors = signer->palette();
    colors.setColor(QPalette::WindowText, StatusMark::color(facts.signature.kind(), palette()));
    signer->setPalette(colors);
    state->addWidget(mark, 0, 0, Qt::AlignTop);
    state->addWidget(signer, 0, 1);
    if (isVerified)
        state->addWidget(wrapped(tr("The signer chose this name. Nobody checked it.")), 1, 1);
    state->setColumnStretch(1, 1);
    layout->addLayout(state);

    layout->addWidget(permissionsOf(facts), 1);

    QStringList shown;
    for (const QString &argument : command)
        shown.append(safePart(argument));
    QLabel *const commandLine = wrapped(tr("This command runs: %1").arg(shown.join(QLatin1Char(' '))));
    commandLine->setObjectName(QStringLiteral("commandLine"));
    layout->addWidget(commandLine);

    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_install = buttons->addButton(tr("&Install"), QDialogButtonBox::AcceptRole);
    m_install->setObjectName(QStringLiteral("install"));
    m_install->setAutoDefault(false);
    if (!isVerified) {
        m_confirmation = new QCheckBox(tr("Install it &although it is not verified"));
        m_confirmation->setObjectName(QStringLiteral("confirmation"));
        layout->addWidget(m_confirmation);
        m_install->setEnabled(false);
        connect(m_confirmation, &QCheckBox::toggled, m_install, &QPushButton::setEnabled);
    }
    layout->addWidget(buttons);
    QPushButton *const cancel = buttons->button(QDialogButtonBox::Cancel);
    cancel->setDefault(true);
    cancel->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(sizeHint().expandedTo({fontMetrics().averageCharWidth() * 64, 0}));
}

QWidget *InstallQuestion::permissionsOf(const PackageFacts &facts)
{
    if (!facts.permissionsError.isEmpty())
        return wrapped(tr("Its permissions could not be read: %1").arg(facts.permissionsError));
    if (facts.dangerousCount == 0)
        return wrapped(tr("It asks for no dangerous permissions."));
    auto *const box = new QWidget;
    auto *const layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *const list = new QListWidget;
    list->setObjectName(QStringLiteral("permissions"));
    list->addItems(facts.dangerousPermissions);
    const int more = facts.dangerousCount - int(facts.dangerousPermissions.size());
    if (more > 0)
        list->addItem(tr("and %n more", nullptr, more));
    list->setSelectionMode(QAbstractItemView::NoSelection);
    list->setTextElideMode(Qt::ElideMiddle);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setUniformItemSizes(true);
    list->setAccessibleName(tr("Dangerous permissions"));
    QLabel *const heading = wrapped(tr("It asks for dangerous permissions (%1):").arg(facts.dangerousCount));
    heading->setBuddy(list);
    layout->addWidget(heading);
    layout->addWidget(list);
    layout->addStretch(1);
    constexpr int ShownRows = 6;
    list->setMaximumHeight(list->sizeHintForRow(0) * qMin(ShownRows, list->count()) + 2 * list->frameWidth() + 4);
    return box;
}

} // namespace Viewer
