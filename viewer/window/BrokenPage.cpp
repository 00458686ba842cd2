// SPDX-License-Identifier: LGPL-2.1-or-later
#include "window/BrokenPage.h"

#include "facts/PackageFacts.h"
#include "window/LineLabel.h"

#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace Viewer {

BrokenPage::BrokenPage(QWidget *parent)
    : QWidget(parent),
      m_heading(new QLabel),
      m_reason(new QLabel),
      m_known(new QLabel),
      m_facts(new QFormLayout),
      m_again(new QPushButton(tr("&Read again")))
{
    m_heading->setObjectName(QStringLiteral("heading"));
    m_reason->setObjectName(QStringLiteral("reason"));
    m_again->setObjectName(QStringLiteral("readAgain"));
    m_again->setAccessibleDescription(tr("Reads the file from its start."));
    for (QLabel *const label : {m_heading, m_reason, m_known}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
    QFont large = m_heading->font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    large.setBold(true);
    m_heading->setFont(large);
    m_known->setText(tr("What is known in spite of it:"));
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(m_heading);
    layout->addWidget(m_reason);
    layout->addWidget(m_again, 0, Qt::AlignLeading);
    layout->addSpacing(fontMetrics().height());
    layout->addWidget(m_known);
    layout->addLayout(m_facts);
    layout->addStretch();
    connect(m_again, &QPushButton::clicked, this, &BrokenPage::readAgain);
}

QString BrokenPage::title() const
{
    return tr("Problem");
}

void BrokenPage::showFacts(const PackageFacts &facts, const QString &fileName, const QString &failure)
{
    m_heading->setText(failure.isEmpty() ? tr("This package is broken") : tr("Reading this package ended early"));
    QStringList reasons{failure, facts.error};
    reasons.removeAll(QString());
    m_reason->setText(reasons.join(QLatin1Char('\n')));
    m_reason->setAccessibleName(m_reason->text());
    setAccessibleName(m_heading->text());
    setAccessibleDescription(m_reason->text());
    while (m_facts->rowCount() > 0)
        m_facts->removeRow(0);
    const auto add = [this](const QString &name, const QString &value) {
        if (value.isEmpty())
            return;
        auto *const line = new LineLabel;
        line->setLine(value);
        m_facts->addRow(name, line);
    };
    add(tr("File:"), fileName);
    add(tr("Size:"), facts.fileSize < 0 ? QString() : locale().formattedDataSize(facts.fileSize));
    add(tr("Label:"), facts.label);
    add(tr("Name:"), facts.packageName);
    add(tr("Version:"), facts.version);
    if (facts.signature.kind() != SignatureState::Unknown)
        add(tr("Signature:"), facts.signature.text());
}

} // namespace Viewer
