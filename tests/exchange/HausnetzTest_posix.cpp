// The offer in the house's network, by bare connections: who gets in, what is taken, and that nobody holds it up.
#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>

#include "exchange/Geraeteabschnitte.h"
#include "exchange/PO_Hausnetz.h"
#include "exchange/PO_Pocketimport.h"
#include "tests/support/Hof.h"

namespace koben {
namespace {

constexpr net::Address Here = 0x7f000001U;
const std::string Nothing = "\r\n\r\n", Page(300'000, 's');

int dial(int port, const std::string& said = {}) {
    const int line = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in to{};
    to.sin_family = AF_INET, to.sin_port = htons(static_cast<uint16_t>(port)), to.sin_addr.s_addr = htonl(Here);
    if (connect(line, reinterpret_cast<const sockaddr*>(&to), sizeof to) != 0) return close(line), -1;
    for (size_t at = 0; at < said.size();) {
        const ssize_t gone = send(line, said.data() + at, said.size() - at, MSG_NOSIGNAL);
        if (gone < 0) break;  // it would not have more
        at += static_cast<size_t>(gone);
    }
    return line;
}

/// All that comes until the other side ends, which it must soon.
std::string answer(int line, int milliseconds = 20'000) {
    std::string all;
    char part[16384];
    for (pollfd asked{line, POLLIN, 0}; poll(&asked, 1, milliseconds) > 0;) {
        const ssize_t come = recv(line, part, sizeof part, 0);
        if (come <= 0) return close(line), all;
        all.append(part, static_cast<size_t>(come));
    }
    ADD_FAILURE() << "left hanging with: " << all.substr(0, 99);
    return close(line), all;
}

/// A file of the device with one service.
QByteArray file(int sow) {
    return QStringLiteral(" 1 \r\n%1\t01.07.2026\tE1\t1\tKB\t\t0,00\t\t\tN\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n")
        .arg(sow)
        .toLatin1();
}

class HausnetzTest : public testing::Test {
protected:
    void SetUp() override {
        offer.show(QByteArray::fromStdString(Page));
        ASSERT_EQ(offer.open(), "");
        const QString address = offer.address(Here);
        host = address.section(u'/', 2, 2).toStdString();
        path = "/" + address.section(u'/', 3).toStdString();
    }
    std::string ask(const std::string& request) { return answer(dial(offer.port(), request)); }
    std::string get() { return "GET " + path + " HTTP/1.1\r\nHost: " + host + Nothing; }
    std::string post(const QByteArray& body, const std::string& more = {}) {
        return "POST " + path + " HTTP/1.1\r\nHost: " + host + "\r\n" + more +
               "Content-Length: " + std::to_string(body.size()) + Nothing + body.toStdString();
    }

    std::atomic<int> fetched = 0;
    std::mutex mutex;
    std::multiset<QByteArray> taken;
    Hausnetz offer{{.take =
                        [this](const QByteArray& bytes, const QString&) {
                            const std::lock_guard lock(mutex);
                            taken.insert(bytes);
                            return Quittung{1, {}};
                        },
                    .fetched = [this](const QString&) { ++fetched; }}};
    std::string host, path;
};

TEST_F(HausnetzTest, onlyItsOwnAddressIsServedAndTheRestLearnsNothing) {
    const std::string own = "Host: " + host, code = path.substr(1, path.size() - 2);
    const std::string localhost = "Host: localhost" + host.substr(host.find(':'));
    struct Case {
        std::string first, headers;
        int status;
    };
    const std::vector<Case> cases{
        {"GET " + path, own, 200},
        {"GET /" + code + "?neu", localhost, 200},
        {"HEAD " + path, own, 200},
        {"POST " + path, own + "\r\nOrigin: http://" + host + "\r\nContent-Length: 2", 200},
        {"PUT " + path, own + "\r\nContent-Length: 2", 200},
        {"GET /", own, 404},
        {"GET /" + code.substr(1) + "/", own, 404},
        {"GET /" + code + "x/", own, 404},
        {"GET /x" + path, own, 404},
        {"GET " + path + "x", own, 404},
        {"GET " + path + "../../etc/passwd", own, 404},
        {"GET http://" + host + path, own, 404},
        {"DELETE " + path, own, 404},
        {"OPTIONS " + path, own + "\r\nOrigin: http://fremd.example", 404},
        {"GET " + path, own + "\r\nRange: bytes=0-,0-,0-", 404},
        {"GET " + path, "Host: fremd.example", 404},
        {"GET " + path, "Host: fremd.example\r\nLOCAL_ADDR: fremd.example", 404},
        {"GET " + path, own + "\r\nHost: fremd.example", 404},
        {"GET " + path, "Accept: */*", 404},
        {"POST " + path, own + "\r\nOrigin: http://fremd.example\r\nContent-Length: 2", 404},
        {"POST " + path, own + "\r\nOrigin: null\r\nContent-Length: 2", 404},
        {"POST " + path, own, 411},
        {"POST " + path, own + "\r\nTransfer-Encoding: chunked", 411},
        {"POST " + path, own + "\r\nContent-Length: 99999999999999999999", 411},
        {"POST " + path, own + "\r\nContent-Length: 4194305", 413},
        {"POST " + path, own + "\r\nContent-Encoding: gzip\r\nContent-Length: 2", 415},
        {"POST " + path, own + "\r\nContent-Type: multipart/form-data; boundary=x\r\nContent-Length: 2", 415}};
    size_t posts = 0;
    for (const Case& c : cases) {
        const std::string got = ask(c.first + " HTTP/1.1\r\n" + c.headers + Nothing + "ab");
        const std::string what = c.first + " | " + c.headers;
        EXPECT_EQ(got.substr(0, 12), "HTTP/1.1 " + std::to_string(c.status)) << what;
        EXPECT_NE(got.find("Cache-Control: no-store"), std::string::npos) << what;
        EXPECT_TRUE(c.status == 200 || got.substr(got.find(Nothing)) == Nothing) << what;
        posts += c.status == 200 && c.first[0] == 'P' ? 1 : 0;
    }
    EXPECT_EQ(taken.size(), posts);
    EXPECT_EQ(fetched, 2);
    const std::string page = ask(get());
    EXPECT_EQ(page.substr(page.find(Nothing) + 4), Page);
    EXPECT_NE(page.find("Referrer-Policy: no-referrer"), std::string::npos);
}

TEST_F(HausnetzTest, hugeHeadsAndBodiesEndAndWrongCodesWaitButNotTheRightOne) {
    EXPECT_EQ(ask("GET /" + std::string(1 << 20, 'x')).substr(0, 12), "HTTP/1.1 404");
    EXPECT_EQ(ask("GET " + path + " HTTP/1.1\r\nX: " + std::string(1 << 20, 'x')).substr(0, 12), "HTTP/1.1 404");
    EXPECT_NE(ask(post(QByteArray(64 << 20, 'x'))).substr(0, 12), "HTTP/1.1 200");
    EXPECT_TRUE(taken.empty());
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 6; ++i) EXPECT_EQ(ask("GET /falsch/ HTTP/1.1" + Nothing).substr(0, 12), "HTTP/1.1 404");
    EXPECT_GT(clock.restart(), 700);  // 250 + 500 ms for those beyond the first five
    EXPECT_EQ(ask(get()).substr(0, 12), "HTTP/1.1 200");
    EXPECT_LT(clock.elapsed(), 700);
}

TEST_F(HausnetzTest, slowSendersHoldNeitherOthersNorTheEnd) {
    std::vector<int> lines;
    for (int i = 0; i < 300; ++i) lines.push_back(dial(offer.port(), i % 2 ? "" : "GET " + path + " HTTP/1.1\r\nX"));
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(ask(get()).size() > Page.size(), true);
    EXPECT_LT(clock.restart(), 1500) << "behind those who do not say what they want";
    for (int i = 0; i < 40; ++i) lines.push_back(dial(offer.port(), post("ab").substr(0, post("ab").size() - 1)));
    EXPECT_EQ(ask(get()).size() > Page.size(), true);
    EXPECT_LT(clock.restart(), 9000) << "behind those who know the code";
    const int port = offer.port();
    offer.close();
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_EQ(dial(port), -1);
    EXPECT_TRUE(taken.empty());
    for (const int line : lines) close(line);
}

TEST_F(HausnetzTest, aHundredAtOnceAreAllServed) {
    std::vector<std::thread> clients;
    std::atomic<int> good = 0;
    for (int i = 0; i < 100; ++i)
        clients.emplace_back([&, i] {
            good += ask(get()).size() > Page.size() && ask(post(file(i))).substr(0, 12) == "HTTP/1.1 200" ? 1 : 0;
        });
    for (std::thread& client : clients) client.join();
    EXPECT_EQ(good, 100);
    EXPECT_EQ(std::set<QByteArray>(taken.begin(), taken.end()).size(), 100U);
}

TEST(Hausnetz, knowsTheHouse) {
    const auto of = [](const char* text) { return ntohl(inet_addr(text)); };
    for (const char* own : {"10.0.0.1", "172.16.0.1", "172.31.255.254", "192.168.1.23", "169.254.9.9", "127.9.9.9"})
        EXPECT_TRUE(net::isLocal(of(own))) << own;
    for (const char* foreign :
         {"9.255.255.255", "11.0.0.1", "172.15.0.1", "172.32.0.1", "192.169.0.1", "8.8.8.8", "0.0.0.0"})
        EXPECT_FALSE(net::isLocal(of(foreign))) << foreign;
}

TEST(Hausnetz, whatIsReceivedWaitsInOrderAndGoesThroughTheImport) {
    int count = 1;
    char name[] = "test", *names[] = {name, nullptr};
    const QCoreApplication application(count, names);  // brings the threads' news
    Hof hof;
    hof.catalogue.add<PO_Pocketimport>("PO_Pocketimport");
    hof.tier("101"), hof.tier("102");
    hof.write("Stall.html",
              "default-src 'none'; <script type=\"text/plain\" id=\"betrieb\"></script><script "
              "type=\"text/plain\" id=\"datei\"></script>");
    hof.write(DateiVomGeraet, "vom Kabel");
    const auto statuses = [](const PO_Hausnetz& form, const QList<QByteArray>& bodies) {
        const QString host = "127.0.0.1:" + form.adresse.text().section(u':', 2).section(u'/', 0, 0);
        const QString path = form.adresse.text().section(u'/', 3);
        QStringList told;
        for (const QByteArray& body : bodies) {
            const QString head = "POST /%1 HTTP/1.1\r\nHost: %2\r\nContent-Length: %3\r\n\r\n";
            const int line = dial(host.section(u':', 1).toInt(),
                                  (head.arg(path, host).arg(body.size()).toLatin1() + body).toStdString());
            told += QString::fromStdString(answer(line)).section("\r\n\r\n", 1);
        }
        return told.join(u'|');
    };
    const auto open = [&](const std::function<void(PO_Hausnetz&)>& work) {
        PO_Hausnetz form(hof.koben);
        hof.screens.work([&](Form&) { work(form); });
        hof.koben.run(form);
    };
    open([&](PO_Hausnetz& form) {
        const QString told = statuses(form, {file(101), file(102), file(101), "Unsinn"});
        EXPECT_EQ(told.count("{\"buchungen\":1,\"grund\":\"\"}"), 3) << told.toStdString();
        EXPECT_TRUE(told.section(u'|', 3).contains("keine Datei mit Buchungen")) << told.toStdString();
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(form.li.rowCount(), 2) << "sent again it is there once";
        EXPECT_TRUE(form.stand.text().contains("nichts angenommen"));
    });  // closed as a killed program leaves it
    open([&](PO_Hausnetz& form) {
        ASSERT_EQ(form.li.rowCount(), 2);
        form.einlesen.click();  // the import is closed without reading
        EXPECT_EQ(form.li.rowCount(), 2);
        EXPECT_EQ(hof.bytes("Hausnetz/eingelesen/" + QDir(hof.path("Hausnetz/eingelesen")).entryList({"*.KO2"})[0]),
                  "vom Kabel");
        for (const int left : {1, 0}) {
            hof.screens.workIn<PO_Pocketimport>([](PO_Pocketimport& import) { import.ok[1].click(); });
            form.einlesen.click();
            EXPECT_EQ(form.li.rowCount(), left) << form.stand.text().toStdString();
        }
        EXPECT_FALSE(form.einlesen.enabled());
        EXPECT_EQ(hof.show("select Kennung, Ebernr from Belegung order by Kennung"), "1 E1 | 2 E1");
        EXPECT_TRUE(hof.bytes("KOBEN-Stall.html").startsWith("default-src 'none'; <"));
    });
}

}  // namespace
}  // namespace koben
