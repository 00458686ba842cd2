// SPDX-License-Identifier: LGPL-2.1-or-later
// pages_sheet FACTS FOLDER [rtl]: paints each page of the viewer, light and dark, into PNG files in FOLDER. FACTS is
// sheet.json, which has made-up content of topics, or a file like it. QT_SCALE_FACTOR=2 is a screen with twice the
// pixels.
#include "PageFacts.h"

#include "pages/ComparisonPage.h"
#include "pages/Pages.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLineEdit>
#include <QPainter>
#include <QStyleFactory>
#include <QTabWidget>

#include <cstdio>

using namespace Viewer;

namespace {

QPalette darkPalette()
{
    const QColor window(0x2a, 0x2e, 0x32);
    const QColor base(0x1b, 0x1e, 0x20);
    const QColor text(0xfc, 0xfc, 0xfc);
    QPalette palette(window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    return palette;
}

QString pictureOf(int number, int side)
{
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor::fromHsv(number * 47 % 360, 200, 220));
    painter.setPen(Qt::NoPen);
    if (number % 2 == 0)
        painter.drawEllipse(picture.rect());
    else
        painter.drawRoundedRect(picture.rect(), side / 5.0, side / 5.0);
    painter.end();
    return PageFacts::pngOf(picture);
}

QJsonObject withIcons(const QJsonObject &launchers)
{
    QList<QJsonObject> items;
    for (const QJsonValue &item : launchers.value(QLatin1String("items")).toArray()) {
        QJsonObject launcher = item.toObject();
        if (!launcher.contains(QLatin1String("png")))
            launcher.insert(QStringLiteral("png"), pictureOf(int(items.size()), 64));
        items.append(launcher);
    }
    return PageFacts::listOf(items);
}

QJsonObject contents()
{
    QList<QJsonObject> items;
    const auto add = [&items](const QString &name, int size) {
        items.append(
            {{QStringLiteral("name"), name}, {QStringLiteral("size"), size}, {QStringLiteral("packed"), size * 2 / 5}});
    };
    add(QStringLiteral("classes.dex"), 4200000);
    add(QStringLiteral("classes2.dex"), 1900000);
    add(QStringLiteral("resources.arsc"), 900000);
    add(QStringLiteral("AndroidManifest.xml"), 24000);
    for (const char *abi : {"arm64-v8a", "armeabi-v7a", "x86_64"}) {
        add(QStringLiteral("lib/%1/libnative.so").arg(QLatin1String(abi)), 1300000);
        add(QStringLiteral("lib/%1/libother-library.so").arg(QLatin1String(abi)), 310000);
    }
    for (int i = 0; i < 140; ++i)
        add(QStringLiteral("res/drawable-%1/picture%2.png").arg(QLatin1String(i % 3 == 0 ? "xhdpi" : "nodpi")).arg(i),
            400 + 97 * (i * i % 311));
    for (int i = 0; i < 60; ++i)
        add(QStringLiteral("res/layout/layout%1.xml").arg(i), 900 + 37 * (i * i % 101));
    for (int i = 0; i < 9; ++i)
        add(QStringLiteral("assets/fonts/font%1.ttf").arg(i), 90000 + 30000 * i);
    add(QStringLiteral("META-INF/MANIFEST.MF"), 160000);
    add(QStringLiteral("META-INF/CERT.SF"), 165000);
    add(QStringLiteral("META-INF/CERT.RSA"), 1400);
    add(QStringLiteral("kotlin/kotlin.kotlin_builtins"), 120000);
    return PageFacts::listOf(items);
}

QJsonObject resources()
{
    QList<QJsonObject> items;
    const auto add = [&items](const char *type, const QString &name, const QString &value) {
        items.append({{QStringLiteral("name"), QStringLiteral("org.example:%1/%2").arg(QLatin1String(type), name)},
                      {QStringLiteral("type"), QLatin1String(type)},
                      {QStringLiteral("value"), value},
                      {QStringLiteral("isDrawable"), QLatin1String(type) == QLatin1String("drawable")}});
    };
    for (int i = 0; i < 40; ++i)
        add("drawable", QStringLiteral("picture_%1").arg(i), QStringLiteral("res/drawable/picture_%1.png").arg(i));
    for (int i = 0; i < 40; ++i)
        add("string", QStringLiteral("text_%1").arg(i), QStringLiteral("Text with <b>markup</b> %1").arg(i));
    return PageFacts::listOf(items);
}

QJsonObject factsOf(const QString &topic, const QJsonObject &facts)
{
    if (topic == QLatin1String("contents") && !facts.contains(topic))
        return contents();
    if (topic == QLatin1String("resources") && !facts.contains(topic))
        return resources();
    const QJsonObject content = facts.value(topic).toObject();
    return topic == QLatin1String("launchers") ? withIcons(content) : content;
}

// Some drawables are answered, one cannot be drawn, and the others are not read yet.
void answerDrawables(Page *page)
{
    const auto answer = [page](const QJsonObject &request) {
        constexpr int Answered = 11;
        constexpr int Broken = 3;
        constexpr int Small = 5;
        const QString name = request.value(QLatin1String("name")).toString();
        const int number = name.section(QLatin1Char('_'), -1).toInt();
        if (number >= Answered)
            return;
        const QString error = QStringLiteral("the vector has no path data");
        page->take(
            QStringLiteral("drawable"),
            {{QStringLiteral("name"), name},
             {QStringLiteral("png"), number == Broken ? QString() : pictureOf(number, number == Small ? 24 : 96)},
             {QStringLiteral("error"), number == Broken ? error : QString()}});
    };
    QObject::connect(page, &Page::wants, page, answer, Qt::QueuedConnection);
}

bool paintPage(Page *page, const QString &file)
{
    page->resize(760, 560);
    page->setAutoFillBackground(true);
    page->show();
    QApplication::processEvents();
    page->grab();
    QApplication::processEvents();
    return page->grab().save(file);
}

// Paints the page, and what is behind its second tab.
bool paintPages(Page *page, const QJsonObject &facts, const QDir &folder, const QString &suffix)
{
    for (const QString &topic : page->topics()) {
        if (topic != QLatin1String("drawable"))
            page->take(topic, factsOf(topic, facts));
    }
    if (page->topics().contains(QStringLiteral("manifest"))) {
        auto *const field = page->findChild<QLineEdit *>();
        field->setText(QStringLiteral("permission"));
        Q_EMIT field->textEdited(field->text());
    }
    const bool isSaved = paintPage(page, folder.filePath(page->title().toLower() + suffix));
    auto *const tabs = page->findChild<QTabWidget *>();
    if (tabs == nullptr)
        return isSaved;
    answerDrawables(page);
    tabs->setCurrentIndex(1);
    return paintPage(page, folder.filePath(QStringLiteral("gallery") + suffix)) && isSaved;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    QFile file(arguments.value(1));
    if (arguments.size() < 3 || !file.open(QIODevice::ReadOnly)) {
        std::fputs("usage: pages_sheet FACTS FOLDER [rtl]\n", stderr);
        return 2;
    }
    const QJsonObject facts = QJsonDocument::fromJson(file.readAll()).object();
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (arguments.value(3) == QLatin1String("rtl"))
        QApplication::setLayoutDirection(Qt::RightToLeft);
    QLocale::setDefault(QLocale(QLocale::English));
    const QPalette light = QApplication::palette();
    bool isSaved = true;
    for (const bool isDark : {false, true}) {
        QApplication::setPalette(isDark ? darkPalette() : light);
        const QString suffix = QLatin1String(isDark ? "-dark.png" : "-light.png");
        QWidget parent;
        QList<Page *> pages = makePages(&parent);
        pages.append(new ComparisonPage(&parent));
        for (Page *const page : pages) {
            page->setParent(nullptr);
            isSaved = paintPages(page, facts, QDir(arguments.at(2)), suffix) && isSaved;
            delete page;
        }
    }
    return isSaved ? 0 : 1;
}
