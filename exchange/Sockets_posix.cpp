#include <arpa/inet.h>
#include <fcntl.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

#include "exchange/Sockets.h"

namespace koben::net {

namespace {

int handle(Socket socket) { return static_cast<int>(socket); }

template <class Call>
Address ask(int socket, Call call) {
    sockaddr_storage found{};
    socklen_t size = sizeof found;
    if (call(socket, reinterpret_cast<sockaddr*>(&found), &size) != 0 || found.ss_family != AF_INET) return 0;
    return ntohl(reinterpret_cast<const sockaddr_in*>(&found)->sin_addr.s_addr);
}

long outcome(ssize_t bytes) {
    if (bytes >= 0) return static_cast<long>(bytes);
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR ? NothingNow : Broken;
}

}  // namespace

std::vector<Place> readPlaces() {
    std::vector<Place> places;
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) return places;
    for (const ifaddrs* card = first; card; card = card->ifa_next) {
        if (!card->ifa_addr || card->ifa_addr->sa_family != AF_INET || !(card->ifa_flags & IFF_RUNNING)) continue;
        std::error_code none;
        places.push_back(
            {ntohl(reinterpret_cast<const sockaddr_in*>(card->ifa_addr)->sin_addr.s_addr), card->ifa_name,
             std::filesystem::exists(std::string("/sys/class/net/") + card->ifa_name + "/wireless", none)});
    }
    freeifaddrs(first);
    return places;
}

Address wayOut() {
    const int probe = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (probe < 0) return 0;
    sockaddr_in far{};
    far.sin_family = AF_INET;
    far.sin_port = htons(9);
    far.sin_addr.s_addr = htonl(0xc0000201U);  // 192.0.2.1, which nobody has
    const bool led = connect(probe, reinterpret_cast<const sockaddr*>(&far), sizeof far) == 0;
    const Address own = led ? ask(probe, getsockname) : 0;
    ::close(probe);
    return own;
}

void holdPortAlone(Socket socket) {
    const int on = 1;  // a port whose last connections have just ended may be taken again, one in use may not
    setsockopt(handle(socket), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
}

void widenQueue(Socket listening, int callers) { listen(handle(listening), callers); }

void prepare(Socket socket) {
    fcntl(handle(socket), F_SETFD, FD_CLOEXEC);
    fcntl(handle(socket), F_SETFL, fcntl(handle(socket), F_GETFL) | O_NONBLOCK);
}

Ends endsOf(Socket socket) { return {ask(handle(socket), getsockname), ask(handle(socket), getpeername)}; }

long receive(Socket socket, char* to, std::size_t size) { return outcome(recv(handle(socket), to, size, 0)); }

long send(Socket socket, const char* from, std::size_t size) {
    return outcome(::send(handle(socket), from, size, MSG_NOSIGNAL));
}

std::vector<bool> readable(const std::vector<Socket>& sockets, int milliseconds) {
    std::vector<pollfd> asked;
    for (const Socket socket : sockets) asked.push_back({handle(socket), POLLIN, 0});
    std::vector<bool> found(sockets.size());
    if (poll(asked.data(), asked.size(), milliseconds) <= 0) return found;
    for (std::size_t i = 0; i < asked.size(); ++i) found[i] = asked[i].revents != 0;
    return found;
}

bool writable(Socket socket, int milliseconds) {
    pollfd asked{handle(socket), POLLOUT, 0};
    return poll(&asked, 1, milliseconds) > 0;
}

void endSending(Socket socket) { shutdown(handle(socket), SHUT_WR); }

void close(Socket socket) { ::close(handle(socket)); }

KeptSignals::KeptSignals() : m_pipe(std::signal(SIGPIPE, SIG_IGN)) {}
KeptSignals::~KeptSignals() {
    if (m_pipe != SIG_ERR) std::signal(SIGPIPE, m_pipe);
}

}  // namespace koben::net
