// SPDX-License-Identifier: LGPL-2.1-or-later
// make_catalog SAMPLES PAGE PAGE_OF_MANY: a page of the sample packages below the directory SAMPLES and of some that
// were made to harm it, and one of as many packages as a large collection has.
#include "CatalogPage.h"
#include "PackageReport.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
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

QJsonArray findings(const QString &fileName)
{
    QJsonArray findings;
    if (fileName.startsWith(latin("babel.")))
        findings.append(finding("xml-only-icon", "warning", "The icon is drawn from XML alone."));
    if (fileName.startsWith(latin("vectors.")) || fileName.startsWith(latin("gallery.")))
        findings.append(finding("missing-translation", "note", "The label is there in one language."));
    if (fileName.startsWith(latin("kiosk."))) {
        findings.append(finding("no-launcher", "error", "No home screen shows this package."));
        findings.append(finding("old-target", "warning", "The package was made for Android 4.4."));
    }
    return findings;
}

QJsonObject labels(const SorrelKit::Package &package)
{
    QJsonObject labels;
    const QMap<QString, QString> byLanguage = package.labels();
    for (auto label = byLanguage.cbegin(); label != byLanguage.cend(); ++label)
        labels.insert(label.key(), label.value());
    return labels;
}

QString icon(const SorrelKit::Package &package)
{
    QImage image;
    for (const SorrelKit::Launcher &launcher : package.launchers()) {
        if (image.isNull())
            image = launcher.icon(IconSize, SorrelKit::IconMask::Squircle);
    }
    if (image.isNull())
        image = package.icon(IconSize, SorrelKit::IconMask::Squircle);
    if (image.isNull())
        return {};
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

void addSamples(CatalogPage *page, const QString &directory)
{
    const QFileInfoList files = QDir(directory).entryInfoList({latin("*.apk")}, QDir::Files, QDir::Name);
    for (const QFileInfo &file : files) {
        QJsonObject json = PackageReport(file.filePath(), false).toJson();
        json.insert(latin("file"), latin("samples/") + file.fileName());
        const SorrelKit::Package package(file.filePath());
        json.insert(latin("labels"), labels(package));
        json.insert(latin("icon"), icon(package));
        json.insert(latin("lint"), findings(file.fileName()));
        page->add(json);
    }
}

// Each of these sets the title or a flag of the window where it runs.
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

// Labels as a common application has them: a few launchers, twenty languages.
void addMany(CatalogPage *page, const QString &samples)
{
    const QStringList tags =
        latin("ar cs da de el en-GB es fi fr he hi id it ja ko nl pl pt-BR ru zh-CN").split(QLatin1Char(' '));
    const QString picture = icon(SorrelKit::Package(samples + latin("/babel.aapt2.apk")));
    for (int i = 0; i < Many; ++i) {
        const QString number = QString::number(i);
        QJsonObject labels{{QString(), latin("Application ") + number}};
        for (const QString &tag : tags)
            labels.insert(tag, QStringLiteral("Programm \u00e9t\u00e9 %1 in %2").arg(number, tag));
        const QString name = latin("org.example.number") + number;
        QJsonObject json = package(latin("collection/directory/number%1.apk").arg(number), name, QString());
        json.insert(latin("minSdkVersion"), 14 + i % 20);
        json.insert(latin("icon"), picture);
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
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 4) {
        QTextStream(stderr) << "Usage: make_catalog SAMPLES PAGE PAGE_OF_MANY\n";
        return 2;
    }
    QFile file(arguments.at(2));
    QFile fileOfMany(arguments.at(3));
    if (!file.open(QIODevice::WriteOnly) || !fileOfMany.open(QIODevice::WriteOnly)) {
        QTextStream(stderr) << "make_catalog: the pages cannot be written\n";
        return 1;
    }
    CatalogPage page(&file, latin("Sample packages"));
    addSamples(&page, arguments.at(1));
    addHostile(&page);
    CatalogPage pageOfMany(&fileOfMany, latin("Many packages"));
    addMany(&pageOfMany, arguments.at(1));
    return page.finish() && pageOfMany.finish() ? 0 : 1;
}
