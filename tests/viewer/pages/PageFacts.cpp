// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/Page.h"
#include "pages/parts/CardModel.h"

#include <QBuffer>
#include <QJsonArray>
#include <QLabel>
#include <QtTest>

namespace {

void collectTexts(const QAbstractItemModel &model, const QModelIndex &parent, const QList<int> &roles,
                  QStringList *texts)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        for (int column = 0; column < model.columnCount(parent); ++column) {
            for (const int role : roles)
                texts->append(model.index(row, column, parent).data(role).toString());
        }
        collectTexts(model, model.index(row, 0, parent), roles, texts);
    }
}

QList<QJsonValue> valuesOfAllTypes()
{
    return {QJsonValue(QJsonValue::Null),
            true,
            -1.0,
            1e300,
            QStringLiteral("text"),
            QJsonArray{QJsonArray{}, 1, QStringLiteral("x")},
            QJsonObject{{QStringLiteral("items"), 1}}};
}

// Calls take with each way to spoil the value, whose other ways are those of its parts.
int spoil(const QJsonValue &value, const std::function<void(const QJsonValue &)> &take)
{
    int count = 0;
    for (const QJsonValue &wrong : valuesOfAllTypes()) {
        take(wrong);
        ++count;
    }
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (const QString &key : object.keys()) {
            QJsonObject less = object;
            less.remove(key);
            take(less);
            count += 1 + spoil(object.value(key), [&](const QJsonValue &part) {
                         QJsonObject changed = object;
                         changed.insert(key, part);
                         take(changed);
                     });
        }
    } else if (value.isArray()) {
        const QJsonArray array = value.toArray();
        for (int i = 0; i < int(array.size()); ++i)
            count += spoil(array.at(i), [&](const QJsonValue &part) {
                QJsonArray changed = array;
                changed.replace(i, part);
                take(changed);
            });
    }
    return count;
}

} // namespace

QStringList PageFacts::hostileTexts()
{
    return {
        QStringLiteral("<b>bold</b><img src=\"file:///etc/passwd\">&amp;%1%n"),
        QStringLiteral("evil\u202egpj.apk\u2066x\u2069\u200f"),
        QStringLiteral("\u05e9\u05dc\u05d5\u05dd\u202c 123"),
        QStringLiteral("one\ntwo\r\u2028three\tfour"),
        QStringLiteral("nul") + QChar(0) + QStringLiteral("behind\u001b[31m"),
        QString(1 << 20, QLatin1Char('w')),
        QString(1 << 16, QChar(0x0301)),
        QString(QChar(0xd800)),
        QString(),
    };
}

bool PageFacts::isSafe(const QString &shown)
{
    int isolates = 0;
    for (const QChar unit : shown) {
        const char16_t code = unit.unicode();
        if (code == 0x2068)
            ++isolates;
        else if (code == 0x2069)
            --isolates;
        else if (code < ' ' || (code >= 0x7f && code < 0xa0) || code == 0x61c || code == 0x200e || code == 0x200f
                 || (code >= 0x2028 && code <= 0x202e) || code == 0x2066 || code == 0x2067 || code == 0xfeff)
            return false;
        if (isolates < 0)
            return false;
    }
    constexpr int LongestLine = 8192; // a few texts of strangers, each shortened
    return isolates == 0 && shown.size() <= LongestLine;
}

QStringList PageFacts::shownTexts(const QAbstractItemModel &model)
{
    QStringList texts;
    collectTexts(model, {}, {Qt::DisplayRole, Qt::AccessibleTextRole, Qt::AccessibleDescriptionRole}, &texts);
    if (qobject_cast<const Viewer::CardModel *>(&model) != nullptr)
        collectTexts(model, {},
                     {Viewer::CardModel::BadgeRole, Viewer::CardModel::DescriptionRole, Viewer::CardModel::NameRole},
                     &texts);
    return texts;
}

QStringList PageFacts::toolTips(const QAbstractItemModel &model)
{
    QStringList texts;
    collectTexts(model, {}, {Qt::ToolTipRole}, &texts);
    return texts;
}

int PageFacts::forEachWrongType(const QJsonObject &content, const std::function<void(const QJsonObject &)> &take)
{
    return spoil(content, [&take](const QJsonValue &spoilt) { take(spoilt.toObject()); });
}

QJsonObject PageFacts::listOf(const QList<QJsonObject> &items)
{
    QJsonArray array;
    for (const QJsonObject &item : items)
        array.append(item);
    return {{QStringLiteral("items"), array}};
}

QString PageFacts::png(int side, const QColor &color)
{
    QImage picture(side, side, QImage::Format_ARGB32);
    picture.fill(color);
    return pngOf(picture);
}

QString PageFacts::pngOf(const QImage &picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return QString::fromLatin1(bytes.toBase64());
}

void PageFacts::checkStates(Viewer::Page *page, const QString &topic, const QJsonObject &content)
{
    QVERIFY(!page->title().isEmpty());
    QVERIFY(page->topics().contains(topic));
    page->clear();
    QCOMPARE(page->message(), QStringLiteral("Reading..."));
    page->take(topic, content);
    QCOMPARE(page->message(), QString());
    page->clear();
    QCOMPARE(page->message(), QStringLiteral("Reading..."));
    for (const QString &text : hostileTexts()) {
        page->take(topic, {{QStringLiteral("error"), text}});
        QVERIFY(isSafe(page->message()));
        QVERIFY(text.isEmpty() || !page->message().isEmpty());
    }
    for (const QLabel *const label : page->findChildren<QLabel *>())
        QCOMPARE(label->textFormat(), Qt::PlainText);
    page->clear();
}
