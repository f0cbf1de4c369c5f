// Asking a server, for which a socket of this machine stands in: what comes of each kind of answer, and when.
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>

#include "exchange/HV_Updatemanager.h"
#include "tests/ui/Support.h"
#include "ui/Http.h"

namespace koben::ui {
namespace {

using Result = WebAnswer::Result;

/// Answers every request with these bytes, one piece after the other with a pause between, for ever where they repeat.
class Server : public QTcpServer {
public:
    QByteArray head = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n", body = "gut";
    int pieces = 1, pause = 0;  ///< milliseconds
    bool closes = true;

    Server() {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, [this] { serve(*nextPendingConnection()); });
    }
    QUrl address(const char* path = "/Sauenplaner/daten.txt") const {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(QString::fromLatin1(path));
    }
    int asked = 0;

private:
    void serve(QTcpSocket& client) {
        connect(&client, &QTcpSocket::disconnected, &client, &QObject::deleteLater);
        connect(&client, &QTcpSocket::readyRead, &client, [this, &client] {
            ++asked;
            client.write(client.readAll().startsWith("GET /neu.txt ") ? QByteArray("HTTP/1.1 200 OK\r\n\r\n") : head);
            send(client, pieces);
        });
    }
    void send(QTcpSocket& client, int left) {
        if (left == 0) return closes ? client.disconnectFromHost() : void();
        client.write(body);
        QTimer::singleShot(pause, &client, [this, &client, left] { send(client, left - 1); });
    }
};

TEST(HttpTest, WasDerServerAntwortet) {
    constexpr int many = 1'000'000;  // pieces of what has no end
    const struct {
        const char* name;
        QByteArray head, body;
        int pieces, pause;
        bool closes;
        Result result;
    } table[] = {
        {"well", "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\n", "gut", 1, 0, true, Result::Read},
        {"slowly", "HTTP/1.1 200 OK\r\nContent-Length: 12\r\n\r\n", "gut", 4, 60, true, Result::Read},
        {"cut off", "HTTP/1.1 200 OK\r\nContent-Length: 30\r\n\r\n", "gut", 1, 0, true, Result::NoConnection},
        {"rubbish", "Guten Tag\r\n", "", 1, 0, true, Result::NoConnection},
        {"404", "HTTP/1.1 404 Not Found\r\nContent-Length: 3\r\n\r\n", "weg", 1, 0, true, Result::Refused},
        {"404 without end", "HTTP/1.1 404 Not Found\r\n\r\n", QByteArray(9000, 'x'), many, 0, true, Result::Refused},
        {"nothing", "HTTP/1.1 204 No Content\r\n\r\n", "", 1, 0, true, Result::Refused},
        {"too much", "HTTP/1.1 200 OK\r\n\r\n", QByteArray(9000, 'x'), many, 0, true, Result::TooLarge},
        {"silence", "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\n", "", 1, 0, false, Result::TimedOut},
        {"drop by drop", "HTTP/1.1 200 OK\r\nContent-Length: 9999\r\n\r\n", "x", many, 50, true, Result::TimedOut},
        {"to another server", "HTTP/1.1 302 Found\r\nLocation: http://example.com/daten.txt\r\n\r\n", "", 1, 0, true,
         Result::Refused},
        {"to a file", "HTTP/1.1 302 Found\r\nLocation: file:///etc/passwd\r\n\r\n", "", 1, 0, true,
         Result::NoConnection},
        {"elsewhere here", "HTTP/1.1 302 Found\r\nLocation: /neu.txt\r\nContent-Length: 3\r\n\r\n", "gut", 1, 0, true,
         Result::Read},
        {"in a circle", "HTTP/1.1 302 Found\r\nLocation: /Sauenplaner/daten.txt\r\nContent-Length: 0\r\n\r\n", "", 1, 0,
         true, Result::Refused}};
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        Server server;
        server.head = row.head, server.body = row.body;
        server.pieces = row.pieces, server.pause = row.pause, server.closes = row.closes;
        const WebAnswer answer = fetchText(server.address(), {.bytes = 50'000, .silence = 300, .whole = 1500}, {});
        EXPECT_EQ(answer.result, row.result) << answer.reason.toStdString();
        EXPECT_EQ(answer.bytes.isEmpty(), row.result != Result::Read);
        EXPECT_EQ(answer.reason.isEmpty(), row.result == Result::Read);
        EXPECT_GT(server.asked, 0);
    }
    EXPECT_EQ(fetchText(QUrl("http://127.0.0.1:1/"), {.bytes = 9}, {}).result, Result::NoConnection);
    EXPECT_EQ(fetchText(QUrl("file:///etc/passwd"), {.bytes = 9}, {}).result, Result::Refused);
}

/// A file takes its place when all of it has come; a cancel, an end before the end, or a full folder leave the old one.
TEST(HttpTest, EineDateiTrittErstGanzAnIhreStelle) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("koben20_setup.exe");
    const auto content = [&] {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    Server server;
    server.body = QByteArray(9000, 's');
    server.pieces = 5, server.pause = 120;
    const WebLimits limits{.bytes = 1'000'000, .silence = 2000};
    EXPECT_TRUE(fetchFile(server.address(), path, limits, {}).read());
    EXPECT_EQ(content(), QByteArray(45'000, 's'));
    server.body = QByteArray(9000, 't');
    const auto cancel = [](qint64 come, qint64) { return come == 0; };
    EXPECT_EQ(fetchFile(server.address(), path, limits, cancel).result, Result::GivenUp);
    EXPECT_EQ(fetchFile(server.address(), path, {.bytes = 20'000}, {}).result, Result::TooLarge);
    EXPECT_EQ(content(), QByteArray(45'000, 's'));
    EXPECT_EQ(fetchFile(server.address(), folder.filePath("fehlt/x.exe"), limits, {}).result, Result::Unwritable);
    server.head = "HTTP/1.1 200 OK\r\nContent-Length: 9000000000000000\r\n\r\n";
    EXPECT_EQ(fetchFile(server.address(), path, limits, {}).result, Result::TooLarge);
    const WebAnswer crowded = fetchFile(server.address(), path, {.bytes = 1LL << 62}, {});
    EXPECT_TRUE(crowded.result == Result::Unwritable && crowded.reason.endsWith(" frei, und die Datei braucht 9,0 PB"))
        << crowded.reason.toStdString();
    EXPECT_EQ(content(), QByteArray(45'000, 's'));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("koben20_setup.exe"));
}

/// From the window through to the socket: what the user reads of a list, and of a server that has none.
TEST(HttpTest, DerUpdatemanagerFragtDenServer) {
    Server server;
    Bench bench;
    bench.platform.server = server.address("").toString();
    const auto told = [&](const QByteArray& head, const QByteArray& body) {
        server.head = head, server.body = body;
        bench.screens.told.clear();
        HV_Updatemanager form(bench.koben);
        QString newest;
        bench.run(form, [&](FormWindow&) { newest = form.labelakt[1].text(); });
        return bench.screens.told.last().left(19) + u'|' + newest;
    };
    EXPECT_EQ(told("HTTP/1.1 200 OK\r\n\r\n", "A\nB\n" + Version.toLatin1() + ": x\n"),
              "Ihre Version ist au|" + Version);
    EXPECT_EQ(told("HTTP/1.1 404 Not Found\r\n\r\n", Version.toLatin1() + ":"), "Es ist ein Fehler a|");
}

}  // namespace
}  // namespace koben::ui
