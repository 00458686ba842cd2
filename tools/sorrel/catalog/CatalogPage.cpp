// SPDX-License-Identifier: LGPL-2.1-or-later
#include "CatalogPage.h"

#include "CatalogCard.h"
#include "PageSource.h"

#include <QFileDevice>
#include <QIODevice>

// XML reads the script as a CDATA section; HTML reads the marks around it as comments.
CatalogPage::CatalogPage(QIODevice *output, const QString &title)
    : m_output(output),
      m_title(title),
      m_style(PageSource::style({"catalog/page.css"})),
      m_script("//<![CDATA[\n" + PageSource::resource("catalog/page.js") + "//]]>\n"),
      m_template(PageSource::resource("catalog/page.html"))
{
    writeTemplate();
}

void CatalogPage::add(const QJsonObject &package)
{
    write(CatalogCard(package, ++m_count).markup().toUtf8());
}

bool CatalogPage::finish()
{
    writeTemplate();
    // A file may buffer bytes that do not fit on the disk.
    auto *file = qobject_cast<QFileDevice *>(m_output);
    if (file != nullptr && !file->flush())
        m_hasFailed = true;
    return !m_hasFailed;
}

// The template up to the cards, or to its end.
void CatalogPage::writeTemplate()
{
    for (;;) {
        const auto start = m_template.indexOf("{{");
        if (start < 0) {
            write(m_template);
            m_template.clear();
            return;
        }
        const auto end = m_template.indexOf("}}", start);
        const QByteArray name = m_template.mid(start + 2, end - start - 2);
        write(m_template.left(start));
        m_template.remove(0, end + 2);
        if (name == "cards")
            return;
        write(valueOf(name));
    }
}

QByteArray CatalogPage::valueOf(const QByteArray &name) const
{
    if (name == "policy")
        return "default-src 'none'; img-src data:; style-src " + PageSource::hash(m_style) + "; script-src "
               + PageSource::hash(m_script) + "; base-uri 'none'; form-action 'none'";
    if (name == "style")
        return m_style;
    if (name == "script")
        return m_script;
    if (name == "title")
        return Markup::text(m_title).toUtf8();
    Q_ASSERT(name == "count");
    if (m_count == 0)
        return "There is no package here.";
    return m_count == 1 ? QByteArray("1 package") : QByteArray::number(m_count) + " packages";
}

void CatalogPage::write(const QByteArray &bytes)
{
    // After a gap, further output would make a page that looks whole.
    if (!m_hasFailed && m_output->write(bytes) != bytes.size())
        m_hasFailed = true;
}
