#include "socketio.h"

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
using AddressLength = int;
#else
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
using AddressLength = socklen_t;
#endif

namespace socketio {

Socket listenOn(const std::string &address, int port, int &boundPort)
{
    const Socket listener = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    if (listener == invalidSocket)
        return invalidSocket;
#ifndef _WIN32
    // A port of a run that just ended is free again at once. (On Windows the same
    // option would let two listeners share a port.)
    const int yes = 1;
    ::setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
#endif
    sockaddr_in bound{};
    bound.sin_family = AF_INET;
    bound.sin_port = htons(static_cast<unsigned short>(port));
    if (::inet_pton(AF_INET, address.c_str(), &bound.sin_addr) != 1
        || ::bind(listener, reinterpret_cast<sockaddr *>(&bound), sizeof bound) != 0 || ::listen(listener, 16) != 0) {
        closeSocket(listener);
        return invalidSocket;
    }
    AddressLength size = sizeof bound;
    ::getsockname(listener, reinterpret_cast<sockaddr *>(&bound), &size);
    boundPort = ntohs(bound.sin_port);
    return listener;
}

Socket acceptOne(Socket listener)
{
    return ::accept(listener, nullptr, nullptr);
}

bool sendAll(Socket socket, const std::string &data)
{
    std::size_t sent = 0;
    while (sent < data.size()) {
        const long n = sendSome(socket, data.data() + sent, data.size() - sent);
        if (n <= 0)
            return false;
        sent += std::size_t(n);
    }
    return true;
}

} // namespace socketio
