// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/parts/PngPicture.h"

#include <QBuffer>
#include <QtTest>

using Viewer::pngPicture;

class TestPngPicture : public QObject
{
    Q_OBJECT

private slots:
    void decodes();
    void sidesHaveACeiling();
    void onlyPng();
    void damaged();
};

void TestPngPicture::decodes()
{
    const QImage picture = pngPicture(PageFacts::png(5, Qt::blue), 64);
    QCOMPARE(picture.size(), QSize(5, 5));
    QCOMPARE(picture.pixelColor(2, 2), QColor(Qt::blue));
}

void TestPngPicture::sidesHaveACeiling()
{
    QVERIFY(!pngPicture(PageFacts::png(64), 64).isNull());
    QVERIFY(pngPicture(PageFacts::png(65), 64).isNull());
    // A file with bytes behind the picture.
    QVERIFY(pngPicture(PageFacts::png(5) + QString(1 << 20, QLatin1Char('A')), 64).isNull());
}

void TestPngPicture::onlyPng()
{
    QImage picture(5, 5, QImage::Format_RGB32);
    picture.fill(Qt::red);
    for (const char *format : {"BMP", "PPM", "JPG"}) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(picture.save(&buffer, format));
        QVERIFY(pngPicture(QString::fromLatin1(bytes.toBase64()), 64).isNull());
    }
    for (const QJsonValue &value :
         {QJsonValue(), QJsonValue(5), QJsonValue(QString()), QJsonValue(QStringLiteral("%&"))})
        QVERIFY(pngPicture(value, 64).isNull());
}

void TestPngPicture::damaged()
{
    const QByteArray bytes = QByteArray::fromBase64(PageFacts::png(9).toLatin1());
    for (int size = 0; size < int(bytes.size()); ++size) {
        const QImage picture = pngPicture(QString::fromLatin1(bytes.left(size).toBase64()), 64);
        QVERIFY(picture.isNull() || picture.size() == QSize(9, 9));
    }
}

QTEST_MAIN(TestPngPicture)
#include "tst_pngpicture.moc"
