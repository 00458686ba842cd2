// SPDX-License-Identifier: LGPL-2.1-or-later
#include "window/Comparison.h"

#include "FileName.h"
#include "pages/ComparisonPage.h"
#include "reading/Reading.h"
#include "reading/SafeText.h"
#include "window/PagePanel.h"

#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

namespace Viewer {

namespace {

QString shownName(const QString &file)
{
    return safePart(QFileInfo(FileName(file).text()).fileName());
}

} // namespace

Comparison::Comparison(PagePanel *panel, QWidget *window) : QObject(window), m_panel(panel), m_window(window) {}

Comparison::~Comparison() = default;

void Comparison::setPackage(const QString &file, const PackageFacts &facts)
{
    m_file = file;
    m_facts = facts;
}

void Comparison::end()
{
    m_headReading.reset();
    m_reading.reset();
    closeQuestion();
    if (m_page != nullptr)
        m_panel->removePage(std::exchange(m_page, nullptr));
    Q_EMIT statusChanged({});
}

void Comparison::readHead(const QString &other, bool asks)
{
    closeQuestion();
    m_other = other;
    m_asks = asks;
    m_otherFacts = {};
    m_headReading = std::make_unique<Reading>();
    // A slot must not destroy the object that called it.
    const auto finish = [this] { QMetaObject::invokeMethod(this, &Comparison::finishHead, Qt::QueuedConnection); };
    connect(m_headReading.get(), &Reading::answered, this,
            [this, finish](const QString &topic, const QJsonObject &content) {
                if (m_otherFacts.isHeadKnown)
                    return;
                m_otherFacts.take(topic, content);
                if (m_otherFacts.isHeadKnown)
                    finish();
            });
    connect(m_headReading.get(), &Reading::failed, this, finish);
    Q_EMIT statusChanged(tr("Reading %1…").arg(shownName(other)));
    m_headReading->open(other, m_locale);
}

void Comparison::closeQuestion()
{
    // Its signal may be what led here, so it deletes itself later.
    if (m_question != nullptr)
        std::exchange(m_question, nullptr)->close();
}

void Comparison::finishHead()
{
    if (m_headReading == nullptr)
        return;
    m_headReading.reset();
    Q_EMIT statusChanged({});
    if (m_asks)
        ask();
    else
        start();
}

void Comparison::ask()
{
    const bool isSame =
        !m_facts.plainPackageName.isEmpty() && m_facts.plainPackageName == m_otherFacts.plainPackageName;
    m_question = new QMessageBox(m_window);
    m_question->setObjectName(QStringLiteral("dropQuestion"));
    m_question->setAttribute(Qt::WA_DeleteOnClose);
    m_question->setIcon(QMessageBox::Question);
    m_question->setTextFormat(Qt::PlainText);
    m_question->setWindowTitle(tr("Compare or Open?"));
    const QString name = shownName(m_other);
    m_question->setText(isSame ? tr("%1 is another file of the same package. Compare the two?").arg(name)
                               : tr("%1 is another package. Open it instead of this one?").arg(name));
    QPushButton *const compare = m_question->addButton(tr("&Compare"), QMessageBox::AcceptRole);
    compare->setObjectName(QStringLiteral("compareButton"));
    QPushButton *const open = m_question->addButton(tr("&Open Instead"), QMessageBox::DestructiveRole);
    open->setObjectName(QStringLiteral("openButton"));
    m_question->addButton(QMessageBox::Cancel);
    m_question->setDefaultButton(isSame ? compare : open);
    connect(m_question, &QMessageBox::buttonClicked, this, [this, compare, open](const QAbstractButton *button) {
        if (button == compare)
            start();
        else if (button == open)
            Q_EMIT openInstead(m_other);
    });
    m_question->open();
}

void Comparison::start()
{
    if (m_page == nullptr) {
        m_page = new ComparisonPage(nullptr);
        m_panel->addPage(m_page);
    }
    m_page->clear();
    m_panel->setCurrent(m_page);
    m_reading = std::make_unique<Reading>();
    connect(m_reading.get(), &Reading::answered, this, [this](const QString &topic, const QJsonObject &content) {
        if (m_page->topics().contains(topic))
            m_page->take(topic, content);
    });
    connect(m_reading.get(), &Reading::failed, this, [this](const QString &reason) {
        m_page->take(QStringLiteral("diff"), {{QStringLiteral("error"), reason}});
    });
    m_reading->open(m_file, m_locale, m_other);
}

} // namespace Viewer
