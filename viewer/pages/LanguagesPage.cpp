// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/LanguagesPage.h"

#include "pages/parts/FactList.h"
#include "pages/parts/FactTable.h"
#include "pages/parts/FactTableView.h"

#include <QLocale>

namespace Viewer {

namespace {

// Qt knows the names of languages in English and in the language itself.
QString nameOfLanguage(const QString &tag, const QString &ownName)
{
    const QLocale::Language language = QLocale(tag).language();
    if (QLocale().language() != QLocale::English || language == QLocale::C)
        return ownName;
    const QString english = QLocale::languageToString(language);
    if (ownName.isEmpty() || english == ownName)
        return english;
    return LanguagesPage::tr("%1 (%2)", "English and own name of a language").arg(english, ownName);
}

} // namespace

LanguagesPage::LanguagesPage(QWidget *parent)
    : Page(parent), m_model(new FactTable(this)), m_table(new FactTableView(m_model, this))
{
    m_model->setTitles({tr("Language"), tr("Tag"), tr("Name of the application")});
    m_table->setAccessibleName(title());
    m_table->setShortColumn(1);
    setView(m_table);
}

QString LanguagesPage::title() const
{
    return tr("Languages");
}

QStringList LanguagesPage::topics() const
{
    return {QStringLiteral("languages")};
}

void LanguagesPage::take(const QString &, const QJsonObject &content)
{
    if (takeError(content))
        return;
    constexpr int MaxLanguages = 8192;
    const FactList facts(content, MaxLanguages);
    QVector<FactTable::Row> rows;
    for (const QJsonObject &item : facts.items()) {
        const QString tag = item.value(QLatin1String("tag")).toString();
        const QString name = item.value(QLatin1String("name")).toString();
        rows.append({{tag.isEmpty() ? tr("All other languages") : nameOfLanguage(tag, name), tag,
                      item.value(QLatin1String("label")).toString()}});
    }
    m_model->setRows(rows);
    if (facts.leftOut() > 0 && notice().isEmpty())
        setNotice(tr("Languages that are not shown: %1").arg(QLocale().toString(facts.leftOut())));
    if (rows.isEmpty())
        showMessage(tr("This package has texts for no particular language."));
    else
        showView();
}

void LanguagesPage::clear()
{
    m_model->setRows({});
    showReading();
}

} // namespace Viewer
