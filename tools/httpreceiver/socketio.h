#pragma once
// The few socket and process calls the receiver needs, with a POSIX side and a Winsock
// side (socketio_posix.cpp, socketio_win.cpp) and what is the same on both
// (socketio.cpp), so that the same receiver runs beside the Linux tests and the Windows ones.
#include <cstddef>
#include <string>

namespace socketio {

#ifdef _WIN32
using Socket = unsigned long long; // SOCKET
#else
using Socket = int;
#endif
extern const Socket invalidSocket;

// Sockets ready; a write to a peer that went away fails instead of ending the process;
// stdout writes "\n" as it is; the receiver ends when the process that started it ends.
bool setUp();

// A listening socket on address:port (port 0: any free port), its port in boundPort.
Socket listenOn(const std::string &address, int port, int &boundPort);
Socket acceptOne(Socket listener);
// Bytes received (0: the peer closed, -1: an error); interrupted calls are retried.
long receiveSome(Socket socket, char *buffer, std::size_t size);
// Bytes sent, at most size (-1: an error); interrupted calls are retried.
long sendSome(Socket socket, const char *data, std::size_t size);
bool sendAll(Socket socket, const std::string &data);
// Half-closes: the peer reads the end of our stream while we can still read its bytes.
void shutdownSending(Socket socket);
void closeSocket(Socket socket);
// Waits up to ms for the peer to send or hang up; false when it has hung up.
bool peerStillThere(Socket socket, int ms);

} // namespace socketio
