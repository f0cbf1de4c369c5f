#pragma once
// The offer in the house's own network: the page for the phone is fetched from here, and what was booked on it handed
// over, while a window stands open. The one door to the HTTP library. Served is one address alone, with a code that
// nobody knows but who sees the window, made anew for each opening; all else is answered as if nothing were here.
#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "exchange/Sockets.h"

namespace koben {

/// What the desk answers to a hand-over.
struct Quittung {
    int buchungen = 0;  ///< that are on its disk now
    QString grund;      ///< why they are not; "" where they are
};

class Hausnetz {
public:
    /// Of a hand-over: what the busiest farm books in a year, and little enough to be held in memory some times over.
    static constexpr qint64 MostBytes = 4 << 20;

    /// Both are called from threads of the offer, `take` one at a time.
    struct Hooks {
        std::function<Quittung(const QByteArray& bytes, const QString& from)> take;
        std::function<void(const QString& from)> fetched;  ///< the page has arrived there whole
    };
    explicit Hausnetz(Hooks hooks);
    ~Hausnetz();

    /// What is fetched from now on; before open() for the first time.
    void show(const QByteArray& page);
    /// Opens a port of this machine: "" or why there is none.
    QString open();
    /// Returns when the port is shut and nothing of the offer runs any more. Hooks are not called afterwards.
    void close();

    bool isOpen() const;
    int port() const;
    /// As a phone of the house has to ask for it, with the code.
    QString address(net::Address place) const;

private:
    class Server;
    std::shared_ptr<const std::string> page() const;

    std::unique_ptr<Server> m_server;
    Hooks m_hooks;
    mutable std::mutex m_mutex;
    std::shared_ptr<const std::string> m_page;  // guarded by it; who serves it keeps it meanwhile
};

}  // namespace koben
