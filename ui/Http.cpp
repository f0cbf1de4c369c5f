#include "ui/Http.h"

#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QStorageInfo>
#include <QTimer>
#include <memory>
#include <utility>

#include "store/Files.h"

namespace koben::ui {

namespace {

using Result = WebAnswer::Result;

/// What becomes of the bytes of an answer.
struct WebSink {
    std::function<bool(const QByteArray& bytes)> take;  ///< as they come; false where they cannot be taken
    std::function<bool(qint64 bytes)> room = {};        ///< before them, so many are told; false where they do not fit
};

constexpr int mostRedirects = 5;
constexpr int every = 100;            // milliseconds between two questions whether the user has enough
constexpr int good = 200, bad = 400;  // the one status of a file; the first of a refusal

bool onThisMachine(const QUrl& address) {
    return address.host() == u"localhost" || QHostAddress(address.host()).isLoopback();
}

bool safeRedirect(const QUrl& from, const QUrl& to) {
    if (to.scheme() == u"https") return true;
    return to.scheme() == from.scheme() && onThisMachine(from) && onThisMachine(to);
}

/// One request on its way: what has come, and why it was broken off.
class Request {
public:
    Request(QNetworkReply& reply, const QUrl& address, const WebLimits& limits, const WebSink& sink,
            const WebProgress& go)
        : m_reply(reply), m_address(address), m_limits(limits), m_sink(sink), m_go(go) {
        QObject::connect(&reply, &QNetworkReply::redirected, [this](const QUrl& to) {
            if (!safeRedirect(m_address, to)) return stop(Result::Refused, "der Server verweist an eine fremde Stelle");
            m_address = to;
            Q_EMIT m_reply.redirectAllowed();
        });
        QObject::connect(&reply, &QNetworkReply::readyRead, [this] { receive(); });
        QObject::connect(&m_tick, &QTimer::timeout, [this] { look(); });
        if (limits.whole > 0)
            QTimer::singleShot(limits.whole, &reply, [this] { stop(Result::TimedOut, "die Antwort dauert zu lange"); });
        m_tick.start(every);
    }

    WebAnswer run() {
        QEventLoop loop;
        QObject::connect(&m_reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
        if (!m_reply.isFinished()) loop.exec(QEventLoop::ExcludeUserInputEvents);
        if (!m_stopped && m_reply.error() == QNetworkReply::NoError) receive();
        return m_stopped ? m_answer : outcome();
    }

private:
    void stop(Result result, const char* reason) { stop({result, {}, QString::fromUtf8(reason)}); }
    void stop(const WebAnswer& answer) {
        if (m_stopped) return;
        m_stopped = true;
        m_answer = answer;
        m_reply.abort();
    }

    void receive() {
        if (status() >= bad) return stop(refused());  // whatever its page says, and however long that is
        if (m_stopped || status() != good || !begin()) return;
        const QByteArray bytes = m_reply.readAll();
        m_come += bytes.size();
        if (m_come > m_limits.bytes) return stop(Result::TooLarge, "die Datei ist zu groß");
        if (!bytes.isEmpty() && !m_sink.take(bytes)) stop(Result::Unwritable, "");
    }

    /// False where what the server tells of the size is reason enough to take nothing.
    bool begin() {
        if (std::exchange(m_begun, true)) return true;
        if (told() > m_limits.bytes)
            stop(Result::TooLarge, "die Datei ist zu groß");
        else if (told() > 0 && m_sink.room && !m_sink.room(told()))
            stop(Result::Unwritable, "");
        return !m_stopped;
    }

    void look() {
        if (m_go && !m_go(m_come, told())) stop(Result::GivenUp, "der Vorgang wurde abgebrochen");
    }

    /// Bytes of the whole answer, -1 where the server does not say.
    qint64 told() const {
        const auto length = m_reply.header(QNetworkRequest::ContentLengthHeader);
        return length.isValid() ? length.toLongLong() : -1;
    }

    int status() const { return m_reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(); }

    WebAnswer refused() const {
        return {Result::Refused, {}, QStringLiteral("der Server antwortet mit dem Fehler %1").arg(status())};
    }

    WebAnswer outcome() const {
        if (status() >= bad) return refused();
        if (m_reply.error() == QNetworkReply::OperationCanceledError || m_reply.error() == QNetworkReply::TimeoutError)
            return {Result::TimedOut, {}, QStringLiteral("der Server antwortet nicht")};
        if (m_reply.error() == QNetworkReply::TooManyRedirectsError)
            return {Result::Refused, {}, QStringLiteral("der Server leitet im Kreis weiter")};
        if (m_reply.error() != QNetworkReply::NoError)
            return {Result::NoConnection, {}, QStringLiteral("es kam keine Verbindung zustande, oder sie brach ab")};
        if (status() != good) return {Result::Refused, {}, QStringLiteral("der Server hat diese Datei nicht")};
        return {Result::Read};
    }

    QNetworkReply& m_reply;
    QUrl m_address;
    const WebLimits& m_limits;
    const WebSink& m_sink;
    const WebProgress& m_go;
    QTimer m_tick;
    qint64 m_come = 0;
    bool m_begun = false, m_stopped = false;
    WebAnswer m_answer;
};

/// "" where so many bytes go into a folder and leave the disk some air, otherwise the reason why they do not.
QString lackOfRoom(const QString& folder, qint64 bytes) {
    constexpr qint64 reserve = 16'000'000;
    const qint64 free = QStorageInfo(folder).bytesAvailable();
    if (free < 0 || bytes <= free - reserve) return {};
    const QLocale german(QStringLiteral("de_DE"));
    const auto size = [&](qint64 count) { return german.formattedDataSize(count, 1, QLocale::DataSizeSIFormat); };
    return QStringLiteral("auf dem Datenträger sind nur %1 frei, und die Datei braucht %2")
        .arg(size(free), size(bytes));
}

WebAnswer fetch(const QUrl& address, const WebLimits& limits, const WebSink& sink, const WebProgress& go) {
    if (!address.isValid() || address.host().isEmpty() || (address.scheme() != u"https" && address.scheme() != u"http"))
        return {Result::Refused, {}, QStringLiteral("die Adresse des Servers ist ungültig")};
    QNetworkAccessManager manager;
    manager.setTransferTimeout(limits.silence);
    manager.setRedirectPolicy(QNetworkRequest::UserVerifiedRedirectPolicy);
    QNetworkRequest wanted(address);
    wanted.setMaximumRedirectsAllowed(mostRedirects);
    const std::unique_ptr<QNetworkReply> reply(manager.get(wanted));
    return Request(*reply, address, limits, sink, go).run();
}

}  // namespace

WebAnswer fetchText(const QUrl& address, const WebLimits& limits, const WebProgress& go) {
    QByteArray text;
    WebAnswer answer = fetch(address, limits, {[&](const QByteArray& bytes) { return text += bytes, true; }}, go);
    if (answer.read()) answer.bytes = text;
    return answer;
}

WebAnswer fetchFile(const QUrl& address, const QString& file, const WebLimits& limits, const WebProgress& go) {
    const QString draft = file + QStringLiteral(".neu");
    QString reason;
    const auto unwritable = [&] { return WebAnswer{Result::Unwritable, {}, reason}; };
    QFile out(draft);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        reason = fileReason();
        return unwritable();
    }
    const auto take = [&](const QByteArray& bytes) {
        if (out.write(bytes) == bytes.size()) return true;
        reason = fileReason();
        return false;
    };
    const auto room = [&](qint64 bytes) {
        reason = lackOfRoom(QFileInfo(file).absolutePath(), bytes);
        return reason.isEmpty();
    };
    WebAnswer answer = fetch(address, limits, {take, room}, go);
    out.close();
    if (answer.read() && QFileInfo(draft).size() == 0)
        answer = {Result::Refused, {}, QStringLiteral("die Antwort des Servers ist leer")};
    if (answer.read()) reason = replaceFile(draft, file);
    if (!reason.isEmpty()) answer = unwritable();
    if (!answer.read()) QFile::remove(draft);
    return answer;
}

}  // namespace koben::ui
