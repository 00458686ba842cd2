// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FindCommand.h"

#include "Console.h"
#include "FileName.h"
#include "OpenIndex.h"
#include "PrintableText.h"

#include "shelf/index/IndexReader.h"

#include <QJsonArray>
#include <QLocale>

using SorrelKit::ShelfItem;

namespace {

QJsonObject toJson(const ShelfItem &item)
{
    const char *const states[] = {"waiting", "ready", "broken"};
    QJsonObject labels;
    const QMap<QString, QString> all = item.labels();
    for (auto label = all.cbegin(); label != all.cend(); ++label)
        labels.insert(label.key(), label.value());
    QJsonObject json = FileName(item.nativePath()).toJson();
    json.insert(QStringLiteral("state"), QLatin1String(states[int(item.state())]));
    json.insert(QStringLiteral("error"),
                QJsonObject{{QStringLiteral("code"), item.errorCode()}, {QStringLiteral("text"), item.errorText()}});
    json.insert(QStringLiteral("package"), item.packageName());
    json.insert(QStringLiteral("launcher"), item.entryName());
    json.insert(QStringLiteral("labels"), labels);
    json.insert(QStringLiteral("versionName"), item.versionName());
    json.insert(QStringLiteral("versionCode"), QString::number(item.versionCode()));
    json.insert(QStringLiteral("permissions"), QJsonArray::fromStringList(item.permissions()));
    json.insert(QStringLiteral("signer"), item.signer());
    return json;
}

} // namespace

QString FindCommand::details() const
{
    return QStringLiteral(
        "Prints the label, the package and the file of each launcher whose package has every WORD as a part of a "
        "label in any language, of its name, of a permission, or of the SHA-256 of its signer. Case and accents are "
        "ignored. 'sorrel scan --index' and 'sorrel catalog --index' fill the index.\n\n"
        "Exit status: 1 when nothing is found, or the index cannot be read.");
}

void FindCommand::addArguments(QCommandLineParser &parser) const
{
    parser.addPositionalArgument(QStringLiteral("WORD"), QStringLiteral("A word, or a part of one."),
                                 QStringLiteral("WORD..."));
}

void FindCommand::addOptions(QCommandLineParser &parser) const
{
    m_index.addTo(parser);
    parser.addOption(m_json);
}

int FindCommand::run(const QCommandLineParser &parser, Console &console) const
{
    SorrelKit::IndexFile file;
    if (!openIndex(m_index.value(parser), true, &file))
        return CannotRead;
    const QString words = parser.positionalArguments().join(QLatin1Char(' '));
    const QList<ShelfItem> items = SorrelKit::IndexReader(file.database()).find(words);
    if (file.database().error()) {
        Console::complain(QStringLiteral("index"), file.database().error().text());
        return CannotRead;
    }
    const QStringList labels = parser.isSet(m_json) ? QStringList() : ShelfItem::labelsOf(items, QLocale::system());
    for (int i = 0; i < int(items.size()); ++i) {
        const ShelfItem &item = items.at(i);
        if (parser.isSet(m_json)) {
            console.writeLine(toJson(item));
            continue;
        }
        const QString fault = item.errorText().isEmpty() ? QString() : QStringLiteral(" (%1)").arg(item.errorText());
        console.write(console.style().strong(printableText(labels.at(i))) + QLatin1Char('\t')
                      + printableText(item.packageName()) + QLatin1Char('\t')
                      + printableText(FileName(item.nativePath()).text()) + printableText(fault) + QLatin1Char('\n'));
    }
    return items.isEmpty() ? CannotRead : Success;
}
