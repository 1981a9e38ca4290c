#include "socketio.h"

#include <winsock2.h>
#include <ws2tcpip.h>
// After winsock2.h, which must come before windows.h.
#include <windows.h>
#include <tlhelp32.h>

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace socketio {

const Socket invalidSocket = INVALID_SOCKET;

namespace {

DWORD parentProcessId()
{
    const DWORD self = GetCurrentProcessId();
    DWORD parent = 0;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return 0;
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32First(snapshot, &entry); more; more = Process32Next(snapshot, &entry)) {
        if (entry.th32ProcessID == self) {
            parent = entry.th32ParentProcessID;
            break;
        }
    }
    CloseHandle(snapshot);
    return parent;
}

DWORD WINAPI endWithParent(LPVOID parentHandle)
{
    WaitForSingleObject(static_cast<HANDLE>(parentHandle), INFINITE);
    ExitProcess(0);
}

} // namespace

bool setUp()
{
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0)
        return false;
    // The event lines are read by tests that split at "\n" alone.
    _setmode(_fileno(stdout), _O_BINARY);
    // Windows has no parent-death signal: a thread waits for the parent instead, so a
    // test that is killed does not leave its receiver behind.
    if (const DWORD parent = parentProcessId()) {
        if (const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, parent))
            CloseHandle(CreateThread(nullptr, 0, endWithParent, handle, 0, nullptr));
    }
    return true;
}

long receiveSome(Socket socket, char *buffer, std::size_t size)
{
    const int chunk = size > 0x40000000 ? 0x40000000 : int(size);
    return ::recv(socket, buffer, chunk, 0);
}

long sendSome(Socket socket, const char *data, std::size_t size)
{
    return ::send(socket, data, size > 0x40000000 ? 0x40000000 : int(size), 0);
}

void shutdownSending(Socket socket)
{
    ::shutdown(socket, SD_SEND);
}

void closeSocket(Socket socket)
{
    ::closesocket(socket);
}

bool peerStillThere(Socket socket, int ms)
{
    WSAPOLLFD p{};
    p.fd = socket;
    p.events = POLLRDNORM;
    const int ready = ::WSAPoll(&p, 1, ms);
    if (ready <= 0)
        return true;
    if (p.revents & (POLLHUP | POLLERR))
        return false;
    // Readable: a byte waiting means the peer is still there, end of stream that it left.
    char probe;
    return ::recv(socket, &probe, 1, MSG_PEEK) > 0;
}

} // namespace socketio
