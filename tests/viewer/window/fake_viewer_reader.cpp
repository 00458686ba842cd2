// SPDX-License-Identifier: LGPL-2.1-or-later
// fake_viewer_reader FILE [--compare OTHER]...: takes the place of the reader. The file is no package but what the
// reader writes: lines of JSON. Other lines are orders:
//
//     !die             ends at once, as after a crash
//     ?locale {...}    the answer to a request for a language
//     ?diff {...}      the answer with --compare
//
// Each request becomes a line of FILE.requests. Icons are squares of one colour for each shape.
#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <cstdio>
#include <cstdlib>

namespace {

void writeLine(const QByteArray &line)
{
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

void writeAnswer(const QJsonObject &answer)
{
    writeLine(QJsonDocument(answer).toJson(QJsonDocument::Compact));
}

QList<QByteArray> linesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
}

/// The rest of the first line that begins with @p order.
QByteArray order(const QList<QByteArray> &lines, const QByteArray &order)
{
    for (const QByteArray &line : lines) {
        if (line.startsWith(order))
            return line.mid(order.size());
    }
    return {};
}

QJsonObject headOf(const QList<QByteArray> &lines)
{
    for (const QByteArray &line : lines) {
        const QJsonObject answer = QJsonDocument::fromJson(line).object();
        if (answer.value(QLatin1String("topic")) == QLatin1String("head"))
            return answer;
    }
    return {};
}

QJsonObject icon(const QJsonObject &request)
{
    const QString shape = request.value(QLatin1String("shape")).toString();
    const int size = request.value(QLatin1String("size")).toInt();
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(shape == QLatin1String("circle") ? Qt::red : Qt::blue);
    QBuffer buffer;
    image.save(&buffer, "png");
    return {{QStringLiteral("topic"), QStringLiteral("icon")},
            {QStringLiteral("size"), size},
            {QStringLiteral("shape"), shape},
            {QStringLiteral("night"), false},
            {QStringLiteral("monochrome"), false},
            {QStringLiteral("error"), QString()},
            {QStringLiteral("png"), QString::fromLatin1(buffer.data().toBase64())}};
}

void answerRequests(const QString &path, const QList<QByteArray> &lines)
{
    QFile log(path + QStringLiteral(".requests"));
    QFile input;
    if (!log.open(QIODevice::Append) || !input.open(stdin, QIODevice::ReadOnly))
        return;
    for (QByteArray line = input.readLine(); !line.isEmpty(); line = input.readLine()) {
        log.write(line);
        log.flush();
        const QJsonObject request = QJsonDocument::fromJson(line).object();
        if (request.value(QLatin1String("want")) == QLatin1String("icon"))
            writeAnswer(icon(request));
        else if (request.value(QLatin1String("want")) == QLatin1String("locale"))
            writeLine(order(lines, "?locale "));
        writeLine(R"({"topic":"done"})");
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString path = QUrl(arguments.at(1)).toLocalFile();
    const QList<QByteArray> lines = linesOf(path);
    writeLine(R"({"topic":"hello","protocol":1})");
    const int compare = int(arguments.indexOf(QStringLiteral("--compare")));
    if (compare > 0) {
        writeAnswer(headOf(lines));
        QJsonObject other = headOf(linesOf(QUrl(arguments.at(compare + 1)).toLocalFile()));
        other.insert(QStringLiteral("topic"), QStringLiteral("otherHead"));
        writeAnswer(other);
        writeLine(order(lines, "?diff "));
        writeLine(R"({"topic":"end"})");
    } else {
        for (const QByteArray &line : lines) {
            if (line == "!die")
                std::abort();
            if (line.startsWith('{'))
                writeLine(line);
        }
    }
    answerRequests(path, lines);
    return 0;
}
