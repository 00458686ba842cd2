// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Lines.h"
#include "Protocol.h"

#include <QJsonDocument>
#include <QTemporaryFile>
#include <QtTest>

#include <csignal>
#include <unistd.h>

using Viewer::Lines;

namespace {

/// A pipe, closed with the object.
struct Pipe {
    Pipe()
    {
        if (::pipe(ends) != 0)
            qFatal("no pipe");
    }
    ~Pipe()
    {
        ::close(ends[0]);
        closeInput();
    }
    void send(const QByteArray &bytes) const
    {
        QCOMPARE(::write(ends[1], bytes.constData(), size_t(bytes.size())), ssize_t(bytes.size()));
    }
    void closeInput()
    {
        if (ends[1] >= 0)
            ::close(ends[1]);
        ends[1] = -1;
    }
    int ends[2];
};

QString wantIn(const QJsonObject &request)
{
    return request.value(QLatin1String("want")).toString();
}

} // namespace

class TestLines : public QObject
{
    Q_OBJECT

private slots:
    void requests();
    void requestInPieces();
    void wrongRequests();
    void endOfTheInput();
    void longRequests();
    void answers();
    void longAnswers();
    void nobodyReads();
};

void TestLines::requests()
{
    Pipe pipe;
    Lines lines(pipe.ends[0], -1);
    QJsonObject request;
    QVERIFY(!lines.take(false, &request));
    QVERIFY(lines.isOpen());
    pipe.send("{\"want\":\"icon\"}\n{\"want\":\"locale\"}\n");
    QVERIFY(lines.take(false, &request));
    QCOMPARE(wantIn(request), QStringLiteral("icon"));
    QVERIFY(lines.take(true, &request));
    QCOMPARE(wantIn(request), QStringLiteral("locale"));
    QVERIFY(!lines.take(false, &request));
    QVERIFY(lines.isOpen());
}

void TestLines::requestInPieces()
{
    Pipe pipe;
    Lines lines(pipe.ends[0], -1);
    QJsonObject request;
    pipe.send("{\"want\":");
    QVERIFY(!lines.take(false, &request));
    QVERIFY(lines.isOpen());
    pipe.send("\"icon\"}\n");
    QVERIFY(lines.take(false, &request));
    QCOMPARE(wantIn(request), QStringLiteral("icon"));
}

void TestLines::wrongRequests()
{
    Pipe pipe;
    Lines lines(pipe.ends[0], -1);
    pipe.send("\nno JSON\n[1]\n");
    for (int i = 0; i < 3; ++i) {
        QJsonObject request{{QStringLiteral("old"), 1}};
        QVERIFY(lines.take(false, &request));
        QCOMPARE(request, QJsonObject());
    }
}

void TestLines::endOfTheInput()
{
    Pipe pipe;
    Lines lines(pipe.ends[0], -1);
    pipe.send("{\"want\":\"icon\"}\n{\"want\"");
    pipe.closeInput();
    QJsonObject request;
    QVERIFY(lines.take(true, &request));
    QVERIFY(!lines.take(true, &request));
    QVERIFY(!lines.isOpen());
    QVERIFY(!lines.take(true, &request));
}

void TestLines::longRequests()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    const QByteArray spaces(Viewer::Protocol::MaxRequestBytes - 2, ' ');
    file.write('{' + spaces + "}\n{" + spaces + spaces + "}\n");
    QVERIFY(file.flush() && file.seek(0));
    Lines lines(file.handle(), -1);
    QJsonObject request;
    QVERIFY(lines.take(true, &request));
    QVERIFY(!lines.take(true, &request));
    QVERIFY(!lines.isOpen());
}

void TestLines::answers()
{
    Pipe pipe;
    Lines lines(-1, pipe.ends[1]);
    QVERIFY(lines.write("manifest", {{QStringLiteral("text"), QStringLiteral("a\nb\u2028\u202e")}}));
    QVERIFY(lines.write("end", {}));
    char bytes[256];
    const ssize_t count = ::read(pipe.ends[0], bytes, sizeof bytes);
    QCOMPARE(QByteArray(bytes, int(count)),
             QByteArray("{\"text\":\"a\\nb\\u2028\\u202e\",\"topic\":\"manifest\"}\n{\"topic\":\"end\"}\n"));
}

void TestLines::longAnswers()
{
    const auto written = [](int size) {
        QTemporaryFile file;
        if (!file.open()
            || !Lines(-1, file.handle()).write("m", {{QStringLiteral("t"), QString(size, QLatin1Char('a'))}}))
            return QJsonObject();
        file.seek(0);
        return QJsonDocument::fromJson(file.readAll()).object();
    };
    constexpr int Frame = int(sizeof(R"({"t":"","topic":"m"})")) - 1;
    const int most = Viewer::Protocol::MaxLineBytes - Frame;
    QCOMPARE(int(written(most).value(QLatin1String("t")).toString().size()), most);
    QCOMPARE(written(most + 1),
             (QJsonObject{{QStringLiteral("topic"), QStringLiteral("m")},
                          {QStringLiteral("error"), QStringLiteral("the package has too much of it")}}));
}

void TestLines::nobodyReads()
{
    std::signal(SIGPIPE, SIG_IGN);
    Pipe pipe;
    Lines lines(-1, pipe.ends[1]);
    ::close(pipe.ends[0]);
    QVERIFY(!lines.write("end", {}));
    pipe.ends[0] = -1;
}

QTEST_GUILESS_MAIN(TestLines)
#include "tst_lines.moc"
