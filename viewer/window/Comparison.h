// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_COMPARISON_H
#define VIEWER_COMPARISON_H

#include "facts/PackageFacts.h"

#include <QObject>
#include <QPointer>

#include <memory>

class QMessageBox;

namespace Viewer {

class ComparisonPage;
class PagePanel;
class Reading;

/// The comparison of the package of a window with another one, on a page of its own: the changes from the first to the
/// second.
class Comparison : public QObject
{
    Q_OBJECT

public:
    /// Adds its page to @p panel, and asks before @p window. Both live longer.
    Comparison(PagePanel *panel, QWidget *window);
    ~Comparison() override;

    /// The package of the window. Names of files are argumentTexts().
    void setPackage(const QString &file, const PackageFacts &facts);
    /// The language of texts, as for Reading::open().
    void setLocale(const QString &locale) { m_locale = locale; }

    /// Compares the package with @p other.
    void compareWith(const QString &other) { readHead(other, false); }
    /// Reads the head of @p other, and asks whether to compare, or to open it instead. Comparing is the default when
    /// both have one name.
    void askAbout(const QString &other) { readHead(other, true); }
    /// Removes the page, and closes the question.
    void end();

Q_SIGNALS:
    void openInstead(const QString &file);
    /// Something is being read, or no longer: a text for people, or an empty one.
    void statusChanged(const QString &text);

private:
    void readHead(const QString &other, bool asks);
    void finishHead();
    void ask();
    void closeQuestion();
    void start();

    PagePanel *const m_panel;
    QWidget *const m_window;
    QString m_file;
    PackageFacts m_facts;
    QString m_locale;
    QString m_other;
    PackageFacts m_otherFacts;
    bool m_asks = false;
    std::unique_ptr<Reading> m_headReading;
    std::unique_ptr<Reading> m_reading;
    QPointer<QMessageBox> m_question;
    ComparisonPage *m_page = nullptr;
};

} // namespace Viewer

#endif
