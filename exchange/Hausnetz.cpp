#include "exchange/Hausnetz.h"

#include <httplib.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

#include "exchange/Netzbedienung.h"
#include "exchange/Netzeingang.h"

namespace koben {
namespace {

using Clock = std::chrono::steady_clock;

// The same port as long as it is free: a browser keeps what was booked by machine and port.
constexpr int FirstPort = 27059, LastPort = 27068;
constexpr int Callers = 128;
constexpr int Look = 100;  // milliseconds between two looks whether a connection may go on
constexpr int CodeSigns = 26;
constexpr size_t Portion = 64U << 10U;

/// 130 bits in signs that are read and typed without a doubt.
std::string newCode() {
    static const char signs[] = "abcdefghijkmnpqrstuvwxyz23456789";
    std::string code;
    for (int i = 0; i < CodeSigns; ++i) code += signs[QRandomGenerator::system()->generate() & 31U];
    return code;
}

/// A connection as the library reads and writes it: bounded in time and size.
class Line final : public httplib::Stream {
public:
    Line(net::Socket socket, std::string begun, const Netzbedienung& service)
        : m_socket(socket), m_begun(std::move(begun)), m_service(service), m_ends(net::endsOf(socket)) {}

    bool is_readable() const override { return m_at < m_begun.size() || net::readable({m_socket}, 0)[0]; }
    bool is_writable() const override { return m_service.patient(m_start); }
    ssize_t read(char* to, size_t size) override {
        if (m_at < m_begun.size()) {
            const size_t count = m_begun.copy(to, size, m_at);
            m_at += count;
            return static_cast<ssize_t>(count);
        }
        return transfer([this]() -> bool { return net::readable({m_socket}, Look)[0]; },
                        [&] { return m_read > Hausnetz::MostBytes ? net::Broken : net::receive(m_socket, to, size); },
                        m_read);
    }
    ssize_t write(const char* from, size_t size) override {
        return transfer([this] { return net::writable(m_socket, Look); },
                        [&] { return net::send(m_socket, from, size); }, m_written);
    }
    void get_remote_ip_and_port(std::string& ip, int& port) const override { ip = net::textOf(m_ends.there), port = 0; }
    void get_local_ip_and_port(std::string& ip, int& port) const override { ip = net::textOf(m_ends.here), port = 0; }
    socket_t socket() const override { return static_cast<socket_t>(m_socket); }

private:
    template <class Wait, class Move>
    ssize_t transfer(Wait wait, Move move, qint64& sum) {
        while (m_service.patient(m_start)) {
            const long count = wait() ? move() : net::NothingNow;
            if (count == net::NothingNow) continue;
            if (count > 0) sum += count;
            return std::max<long>(count, -1);
        }
        return -1;
    }

    const net::Socket m_socket;
    const std::string m_begun;
    const Netzbedienung& m_service;
    const net::Ends m_ends;
    const Clock::time_point m_start = Clock::now();
    size_t m_at = 0;
    qint64 m_read = 0, m_written = 0;
};

/// Connections go to the door as they are accepted.
struct AtOnce final : httplib::TaskQueue {
    void enqueue(std::function<void()> work) override { work(); }
    void shutdown() override {}
};

const httplib::Headers Guards{{"Cache-Control", "no-store"},
                              {"Content-Security-Policy", "frame-ancestors 'none'"},
                              {"X-Content-Type-Options", "nosniff"},
                              {"X-Frame-Options", "DENY"},
                              {"Referrer-Policy", "no-referrer"},
                              {"Cross-Origin-Opener-Policy", "same-origin"},
                              {"Cross-Origin-Resource-Policy", "same-origin"}};

enum Status { Good = 200, NotHere = 404, NoLength = 411, TooLarge = 413, NotPlain = 415, Unusable = 422, Ending = 503 };

/// The library reads what parts are wanted by a pattern that a long list drives deep into the stack.
bool asksForPart(const std::string& head) {
    return QByteArray::fromRawData(head.data(), static_cast<qsizetype>(head.size())).toLower().contains("\nrange");
}

/// The length that a body says it has; -1 where it says none, or none that can be read.
qint64 lengthOf(const httplib::Request& request) {
    const std::string text = request.get_header_value("Content-Length");
    if (request.get_header_value_count("Content-Length") != 1 || request.has_header("Transfer-Encoding")) return -1;
    bool known = false;
    const qint64 length = QByteArray::fromStdString(text).toLongLong(&known);
    return known && length >= 0 ? length : -1;
}

}  // namespace

class Hausnetz::Server final : public httplib::Server {
public:
    explicit Server(Hausnetz& offer)
        : m_offer(offer),
          m_code(newCode()),
          m_service([this](net::Socket socket, std::string begun) { serve(socket, std::move(begun)); }),
          m_door(m_code, [this](net::Socket socket, std::string begun) { m_service.push(socket, std::move(begun)); }) {
        new_task_queue = [] { return new AtOnce; };
        set_address_family(AF_INET);
        set_socket_options([](socket_t socket) { net::holdPortAlone(static_cast<net::Socket>(socket)); });
        set_payload_max_length(MostBytes);
        set_default_headers(Guards);
        set_pre_routing_handler([this](const auto& request, auto& response) { return gate(request, response); });
        set_exception_handler([](const auto&, auto& response, std::exception_ptr) { response.status = Ending; });
        const auto hand = [this](const auto& request, auto& response, const auto& body) {
            take(request, response, body);
        };
        Post("/.*", hand);
        Put("/.*", hand);
    }
    ~Server() override { end(); }

    bool begin() {
        for (int port = FirstPort; port <= LastPort && m_port <= 0; ++port)
            if (bind_to_port("0.0.0.0", port)) m_port = port;
        if (m_port <= 0) m_port = bind_to_any_port("0.0.0.0");
        if (m_port <= 0) return false;
        net::widenQueue(static_cast<net::Socket>(svr_sock_.load()), Callers);
        m_listener = std::thread([this] { m_over = !listen_after_bind(); });
        while (!is_running() && !m_over) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return is_running();
    }
    void end() {
        stop();
        if (m_listener.joinable()) m_listener.join();
        m_door.stop();
        m_service.stop();
    }
    int port() const { return m_port; }
    QString path() const { return u'/' + QString::fromStdString(m_code) + u'/'; }

private:
    bool process_and_close_socket(socket_t socket) override {
        m_door.admit(static_cast<net::Socket>(socket));
        return true;
    }

    void serve(net::Socket socket, std::string begun) {
        if (asksForPart(begun)) return m_door.turnAway(socket);
        try {
            Line line(socket, std::move(begun), m_service);
            bool closed = false;
            process_request(line, true, closed, nullptr);
        } catch (const std::exception&) {  // of no memory: the connection ends without an answer
        }
        m_door.dismiss(socket);
    }

    HandlerResponse gate(const httplib::Request& request, httplib::Response& response) {
        const bool looks = request.method == "GET" || request.method == "HEAD";
        response.status = objection(request, looks);
        if (response.status == Good && !looks) return response.status = -1, HandlerResponse::Unhandled;
        if (response.status == Good) givePage(request, response);
        return HandlerResponse::Handled;
    }

    /// Whether what is asked for stands here, and by whose page: a foreign one that has taken our name for its own, or
    /// posts to us from elsewhere, is told nothing.
    int objection(const httplib::Request& request, bool looks) const {
        const std::string path = "/" + m_code, host = request.get_header_value("Host");
        const std::string port = ":" + std::to_string(m_port);
        const bool ours = host == request.local_addr + port ||
                          (host == "localhost" + port && request.local_addr.rfind("127.", 0) == 0);
        if (request.path != path && request.path != path + "/") return NotHere;
        if (!ours || request.get_header_value_count("Host") != 1) return NotHere;
        if (looks) return Good;
        if (request.method != "POST" && request.method != "PUT") return NotHere;
        if (request.has_header("Origin") && request.get_header_value("Origin") != "http://" + host) return NotHere;
        if (request.has_header("Content-Encoding") || request.is_multipart_form_data()) return NotPlain;
        const qint64 length = lengthOf(request);
        return length < 0 ? NoLength : length > MostBytes ? TooLarge : Good;
    }

    void givePage(const httplib::Request& request, httplib::Response& response) const {
        const auto page = m_offer.page();
        const auto part = [page](size_t offset, size_t length, httplib::DataSink& sink) {
            return sink.write(page->data() + offset, std::min(length, Portion));
        };
        const QString from = QString::fromStdString(request.remote_addr);
        response.set_content_provider(page->size(), "text/html; charset=utf-8", part, [this, from](bool whole) {
            if (whole && !m_service.stopped()) m_offer.m_hooks.fetched(from);
        });
    }

    void take(const httplib::Request& request, httplib::Response& response, const httplib::ContentReader& body) {
        std::string bytes;
        const auto gather = [&](const char* data, size_t size) {
            bytes.append(data, size);
            return static_cast<qint64>(bytes.size()) <= MostBytes;
        };
        if (!body(gather)) return;  // the library has said why
        const std::lock_guard oneAtATime(m_taking);
        Quittung receipt{0, QStringLiteral("Das Fenster am Rechner wird gerade geschlossen.")};
        if (!m_service.stopped())
            receipt =
                m_offer.m_hooks.take(QByteArray::fromStdString(bytes), QString::fromStdString(request.remote_addr));
        response.status = receipt.grund.isEmpty() ? Good : Unusable;
        const QJsonObject told{{"buchungen", receipt.buchungen}, {"grund", receipt.grund}};
        response.set_content(QJsonDocument(told).toJson(QJsonDocument::Compact).toStdString(), "application/json");
    }

    Hausnetz& m_offer;
    const std::string m_code;
    int m_port = 0;
    std::mutex m_taking;
    std::thread m_listener;
    std::atomic<bool> m_over = false;  // it could not be listened
    Netzbedienung m_service;
    Netzeingang m_door;
};

Hausnetz::Hausnetz(Hooks hooks) : m_hooks(std::move(hooks)) {}
Hausnetz::~Hausnetz() { close(); }

void Hausnetz::show(const QByteArray& page) {
    auto shown = std::make_shared<const std::string>(page.toStdString());
    const std::lock_guard lock(m_mutex);
    m_page = std::move(shown);
}

std::shared_ptr<const std::string> Hausnetz::page() const {
    const std::lock_guard lock(m_mutex);
    return m_page;
}

QString Hausnetz::open() {
    close();
    {
        const net::KeptSignals kept;
        m_server = std::make_unique<Server>(*this);
    }
    if (m_server->begin()) return {};
    m_server.reset();
    return QStringLiteral("dieser Rechner gibt keinen Anschluss dafür frei");
}

void Hausnetz::close() { m_server.reset(); }

bool Hausnetz::isOpen() const { return m_server && m_server->is_running(); }

int Hausnetz::port() const { return m_server ? m_server->port() : 0; }

QString Hausnetz::address(net::Address place) const {
    if (!m_server) return {};
    return QStringLiteral("http://%1:%2%3")
        .arg(QString::fromStdString(net::textOf(place)))
        .arg(port())
        .arg(m_server->path());
}

}  // namespace koben
