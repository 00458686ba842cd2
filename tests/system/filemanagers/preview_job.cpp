// SPDX-License-Identifier: LGPL-2.1-or-later
// preview_job SIZE RATIO FILE...: requests a preview of each file as KDE's file managers do, and compares the pictures with
// those of sorrel-thumbnailer. A FILE after "-" must have no preview.

#include <KFileItem>
#include <KIO/PreviewJob>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QMap>
#include <QPixmap>
#include <QProcess>

#include <cstdio>

namespace {

int fail(const QString &text)
{
    std::fprintf(stderr, "%s\n", qPrintable(text));
    return 1;
}

QImage pixels(QImage image)
{
    image.setDevicePixelRatio(1);
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage drawnByTheProgram(const QString &file, int size)
{
    QProcess program;
    program.start(QStringLiteral("sorrel-thumbnailer"),
                  {QStringLiteral("-s"), QString::number(size), file, QStringLiteral("-")});
    program.waitForFinished(-1);
    return QImage::fromData(program.readAllStandardOutput(), "PNG");
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int size = arguments.at(1).toInt();
    const qreal ratio = arguments.at(2).toDouble();
    QStringList files = arguments.mid(3);
    const int separator = int(files.indexOf(QStringLiteral("-")));
    const QStringList others = separator < 0 ? QStringList() : files.mid(separator + 1);
    files = files.mid(0, separator);

    QStringList plugins = KIO::PreviewJob::availablePlugins();
    if (!plugins.contains(QStringLiteral("sorrelthumbnail")))
        return fail(QStringLiteral("KDE knows only the plugins ") + plugins.join(QLatin1Char(' ')));
    if (!KIO::PreviewJob::defaultPlugins().contains(QStringLiteral("sorrelthumbnail")))
        return fail(QStringLiteral("previews of packages are off by default"));
    KFileItemList items;
    for (const QString &file : files + others)
        items.append(KFileItem(QUrl::fromLocalFile(file)));
    plugins = KIO::PreviewJob::defaultPlugins();
    KIO::PreviewJob *job = KIO::filePreview(items, QSize(size, size), &plugins);
    job->setDevicePixelRatio(ratio);
    job->setIgnoreMaximumSize();
    QMap<QString, QImage> pictures;
    QStringList withoutPreview;
    QObject::connect(job, &KIO::PreviewJob::gotPreview, [&](const KFileItem &item, const QPixmap &picture) {
        pictures.insert(item.localPath(), picture.toImage());
    });
    QObject::connect(job, &KIO::PreviewJob::failed,
                     [&](const KFileItem &item) { withoutPreview.append(item.localPath()); });
    if (!job->exec())
        return fail(QStringLiteral("the job fails: ") + job->errorString());

    for (const QString &file : files) {
        const QImage expected = pixels(drawnByTheProgram(file, int(size * ratio)));
        if (expected.size() != QSize(size, size) * ratio)
            return fail(QStringLiteral("the program draws no icon of ") + file);
        const QImage picture = pictures.value(file);
        if (picture.isNull())
            return fail(QStringLiteral("there is no preview of ") + file);
        if (pixels(picture) != expected)
            return fail(QStringLiteral("the preview of %1 is another picture, of %2 x %3 pixels")
                            .arg(file)
                            .arg(picture.width())
                            .arg(picture.height()));
    }
    for (const QString &file : others) {
        if (!withoutPreview.contains(file) || pictures.contains(file))
            return fail(QStringLiteral("there is a preview of ") + file);
    }
    return 0;
}
