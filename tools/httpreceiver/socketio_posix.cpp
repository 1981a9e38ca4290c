#include "socketio.h"

#include <arpa/inet.h>
#include <cerrno>
#include <csignal>
#include <netinet/in.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace socketio {

const Socket invalidSocket = -1;

bool setUp()
{
    std::signal(SIGPIPE, SIG_IGN);
    // A test that is killed must not leave its receiver behind.
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    return true;
}

Socket listenOn(const std::string &address, int port, int &boundPort)
{
    const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
    if (listener < 0)
        return invalidSocket;
    const int yes = 1;
    ::setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in bound{};
    bound.sin_family = AF_INET;
    bound.sin_port = htons(uint16_t(port));
    if (::inet_pton(AF_INET, address.c_str(), &bound.sin_addr) != 1
        || ::bind(listener, reinterpret_cast<sockaddr *>(&bound), sizeof bound) != 0
        || ::listen(listener, 16) != 0) {
        ::close(listener);
        return invalidSocket;
    }
    socklen_t size = sizeof bound;
    ::getsockname(listener, reinterpret_cast<sockaddr *>(&bound), &size);
    boundPort = ntohs(bound.sin_port);
    return listener;
}

Socket acceptOne(Socket listener)
{
    return ::accept(listener, nullptr, nullptr);
}

long receiveSome(Socket socket, char *buffer, std::size_t size)
{
    for (;;) {
        const ssize_t got = ::recv(socket, buffer, size, 0);
        if (got < 0 && errno == EINTR)
            continue;
        return long(got);
    }
}

bool sendAll(Socket socket, const std::string &data)
{
    std::size_t sent = 0;
    while (sent < data.size()) {
        const ssize_t n = ::send(socket, data.data() + sent, data.size() - sent, MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        sent += std::size_t(n);
    }
    return true;
}

void shutdownSending(Socket socket)
{
    ::shutdown(socket, SHUT_WR);
}

void closeSocket(Socket socket)
{
    ::close(socket);
}

bool peerStillThere(Socket socket, int ms)
{
    pollfd p{socket, POLLIN | POLLRDHUP, 0};
    if (::poll(&p, 1, ms) <= 0)
        return true;
    char probe;
    return ::recv(socket, &probe, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
}

} // namespace socketio
