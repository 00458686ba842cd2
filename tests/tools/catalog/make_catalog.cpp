// SPDX-License-Identifier: LGPL-2.1-or-later
// make_catalog HOSTILE MANY: writes a page of packages with texts that attack the page, and a page of as many packages
// as a large collection has.
#include "CatalogPage.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QTextStream>

namespace {

constexpr int IconSize = 128;
constexpr int Many = 2000;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QJsonObject finding(const char *check, const char *severity, const char *text)
{
    return {{latin("check"), latin(check)}, {latin("severity"), latin(severity)}, {latin("text"), latin(text)}};
}

QString picture()
{
    QImage image(IconSize, IconSize, QImage::Format_ARGB32);
    image.fill(0xff2d6a4c);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return QString::fromLatin1(png.toBase64());
}

QJsonObject launcher(const QString &name, const QJsonObject &labels)
{
    return {{latin("package"), latin("org.example.made")},
            {latin("name"), name},
            {latin("class"), name},
            {latin("labels"), labels},
            {latin("icons"), QJsonArray()}};
}

QJsonObject package(const QString &file, const QString &name, const QString &label)
{
    return {{latin("file"), file},
            {latin("error"), QJsonObject{{latin("code"), 0}, {latin("text"), latin("no error")}}},
            {latin("package"), name},
            {latin("versionCode"), latin("1")},
            {latin("versionName"), latin("1.0")},
            {latin("minSdkVersion"), 21},
            {latin("launchers"), QJsonArray{launcher(name + latin(".Main"), {{QString(), label}})}}};
}

// Each of these texts sets the title or a flag of the window when it runs as a script.
void addHostile(CatalogPage *page)
{
    const QString run = latin("window.harmed=1;document.title='harmed'");
    const QStringList texts{
        latin("<script>%1</script>").arg(run),
        latin("\"><img src=x onerror=\"%1\">").arg(run),
        latin("' autofocus onfocus='%1").arg(run),
        latin("</script></style></title><svg onload=\"%1\">").arg(run),
        latin("--><script>%1</script>").arg(run),
        latin("]]><script>%1</script>").arg(run),
        latin("{{script}} &lt;b&gt; &#60;i&#62;"),
        QString::fromUtf16(u"left \u202etfel \u0007\u001b[31m"),
        QString(400, QLatin1Char('W')),
    };
    for (const QString &text : texts) {
        QJsonObject json = package(latin("made/") + text, text, text);
        json.insert(latin("versionName"), text);
        json.insert(latin("icon"), text);
        json.insert(latin("lint"),
                    QJsonArray{QJsonObject{{latin("check"), text}, {latin("severity"), text}, {latin("text"), text}}});
        json.insert(latin("launchers"),
                    QJsonArray{launcher(text, {{QString(), text}, {latin("de"), text}, {text, text}})});
        page->add(json);
    }
    QJsonObject unread = package(latin("made/unread.apk"), QString(), QString());
    unread.insert(latin("error"), QJsonObject{{latin("code"), 1}, {latin("text"), latin("could not open APK file")}});
    unread.insert(latin("launchers"), QJsonArray());
    page->add(unread);
}

// Findings from none to the worst.
void addFindings(CatalogPage *page)
{
    const QVector<QJsonArray> findings{
        {},
        {finding("missing-translation", "note", "The label is there in one language.")},
        {finding("xml-only-icon", "warning", "The icon is drawn from XML alone.")},
        {finding("xml-only-icon", "warning", "The icon is drawn from XML alone."),
         finding("missing-translation", "note", "The label is there in one language.")},
        {finding("no-launcher", "error", "No home screen shows this package.")},
    };
    for (int i = 0; i < findings.size(); ++i) {
        QJsonObject json =
            package(latin("made/findings%1.apk").arg(i), latin("org.example.findings%1").arg(i), latin("Findings"));
        json.insert(latin("lint"), findings.at(i));
        page->add(json);
    }
}

// The labels of a common application: a few launchers, twenty languages.
void addMany(CatalogPage *page)
{
    const QStringList tags =
        latin("ar cs da de el en-GB es fi fr he hi id it ja ko nl pl pt-BR ru zh-CN").split(QLatin1Char(' '));
    const QString icon = picture();
    for (int i = 0; i < Many; ++i) {
        const QString number = QString::number(i);
        QJsonObject labels{{QString(), latin("Application ") + number}};
        for (const QString &tag : tags)
            labels.insert(tag, QStringLiteral("Programm \u00e9t\u00e9 %1 in %2").arg(number, tag));
        const QString name = latin("org.example.number") + number;
        QJsonObject json = package(latin("collection/directory/number%1.apk").arg(number), name, QString());
        json.insert(latin("minSdkVersion"), 14 + i % 20);
        json.insert(latin("icon"), icon);
        json.insert(latin("launchers"),
                    QJsonArray{launcher(name + latin(".Main"), labels), launcher(name + latin(".Settings"), labels)});
        if (i % 3 == 0)
            json.insert(latin("lint"), QJsonArray{finding("old-target", "warning", "It was made for Android 4.4.")});
        page->add(json);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        QTextStream(stderr) << "Usage: make_catalog HOSTILE MANY\n";
        return 2;
    }
    QFile hostileFile(arguments.at(1));
    QFile fileOfMany(arguments.at(2));
    if (!hostileFile.open(QIODevice::WriteOnly) || !fileOfMany.open(QIODevice::WriteOnly)) {
        QTextStream(stderr) << "make_catalog: the pages cannot be written\n";
        return 1;
    }
    CatalogPage hostile(&hostileFile, latin("Made packages"));
    addHostile(&hostile);
    addFindings(&hostile);
    CatalogPage many(&fileOfMany, latin("Many packages"));
    addMany(&many);
    return hostile.finish() && many.finish() ? 0 : 1;
}
