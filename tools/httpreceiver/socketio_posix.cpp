#include "socketio.h"

#include <cerrno>
#include <csignal>
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

long receiveSome(Socket socket, char *buffer, std::size_t size)
{
    for (;;) {
        const ssize_t got = ::recv(socket, buffer, size, 0);
        if (got < 0 && errno == EINTR)
            continue;
        return long(got);
    }
}

long sendSome(Socket socket, const char *data, std::size_t size)
{
    for (;;) {
        const ssize_t sent = ::send(socket, data, size, MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR)
            continue;
        return long(sent);
    }
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
