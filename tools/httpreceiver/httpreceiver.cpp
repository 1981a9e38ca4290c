// A loopback HTTP peer for the upload tests and the upload bench.
//
// It takes one connection at a time, records every byte of each request as it came
// (head and body) to <dir>/request-<n>.bin, or throws the bytes away with --discard,
// and answers with a chosen status. It can also cut the connection after a number of
// body bytes, and wait before it answers. What it does is reported on stdout, one line
// per event, so a test can follow it:
//   listening <port>
//   request <n> head
//   request <n> body <bytes>            the whole body has arrived (the record is complete)
//   request <n> cut <bytes>             hung up by us after that many body bytes
//   request <n> peer-closed <bytes>     the client went away first
//   request <n> answered <status>
//
// Usage: fb_httpreceiver [--bind ADDR] [--port N] (--record-dir DIR | --discard)
//                        [--status CODE] [--cut-after BYTES] [--answer-delay-ms MS]
#include <arpa/inet.h>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <string>
#include <strings.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

struct Options
{
    std::string bind = "127.0.0.1";
    int port = 0;
    std::string recordDir;
    bool discard = false;
    int status = 200;
    long long cutAfter = -1;
    int answerDelayMs = 0;
};

void report(const std::string &line)
{
    std::fputs((line + "\n").c_str(), stdout);
    std::fflush(stdout);
}

void report(long long n, const char *what, long long value)
{
    report("request " + std::to_string(n) + " " + what + " " + std::to_string(value));
}

const char *reasonPhrase(int status)
{
    switch (status) {
    case 200: return "OK";
    case 201: return "Created";
    case 204: return "No Content";
    case 400: return "Bad Request";
    case 401: return "Unauthorized";
    case 403: return "Forbidden";
    case 404: return "Not Found";
    case 413: return "Payload Too Large";
    case 500: return "Internal Server Error";
    case 502: return "Bad Gateway";
    case 503: return "Service Unavailable";
    default: return "Status";
    }
}

bool sendAll(int fd, const std::string &data)
{
    size_t sent = 0;
    while (sent < data.size()) {
        const ssize_t n = ::send(fd, data.data() + sent, data.size() - sent, MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        sent += size_t(n);
    }
    return true;
}

// Where the bytes of one request go: a file that gets its final name once the
// request is complete, or nowhere.
class Record
{
public:
    Record(const Options &options, long long n)
    {
        if (options.discard)
            return;
        m_final = options.recordDir + "/request-" + std::to_string(n) + ".bin";
        m_partial = m_final + ".partial";
        m_fd = ::open(m_partial.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    }
    ~Record() { finish(); }

    void write(const char *data, size_t size)
    {
        while (m_fd >= 0 && size > 0) {
            const ssize_t n = ::write(m_fd, data, size);
            if (n <= 0)
                return;
            data += n;
            size -= size_t(n);
        }
    }
    void finish()
    {
        if (m_fd < 0)
            return;
        ::close(m_fd);
        m_fd = -1;
        ::rename(m_partial.c_str(), m_final.c_str());
    }

private:
    int m_fd = -1;
    std::string m_partial;
    std::string m_final;
};

long long contentLength(const std::string &head, bool &expectContinue)
{
    long long length = 0;
    expectContinue = false;
    size_t start = head.find("\r\n");
    while (start != std::string::npos && start + 2 < head.size()) {
        const size_t end = head.find("\r\n", start + 2);
        const std::string line = head.substr(start + 2, end == std::string::npos ? std::string::npos : end - start - 2);
        if (strncasecmp(line.c_str(), "content-length:", 15) == 0)
            length = std::atoll(line.c_str() + 15);
        else if (strncasecmp(line.c_str(), "expect:", 7) == 0 && strcasestr(line.c_str(), "100-continue"))
            expectContinue = true;
        start = end;
    }
    return length;
}

// Waits before answering, but stops waiting when the client goes away.
bool clientStayed(int fd, int delayMs)
{
    if (delayMs <= 0)
        return true;
    pollfd p{fd, POLLIN | POLLRDHUP, 0};
    const int ready = ::poll(&p, 1, delayMs);
    if (ready <= 0)
        return true;
    char probe;
    return ::recv(fd, &probe, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
}

void serve(int fd, const Options &options, long long n, std::vector<char> &buffer)
{
    Record record(options, n);
    std::string head;
    size_t headEnd = std::string::npos;
    while (headEnd == std::string::npos) {
        const ssize_t got = ::recv(fd, buffer.data(), buffer.size(), 0);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) {
            record.write(head.data(), head.size());
            report(n, "peer-closed", 0);
            return;
        }
        head.append(buffer.data(), size_t(got));
        headEnd = head.find("\r\n\r\n");
    }
    std::string early = head.substr(headEnd + 4);
    head.resize(headEnd + 4);
    record.write(head.data(), head.size());
    report("request " + std::to_string(n) + " head");

    bool expectContinue = false;
    const long long length = contentLength(head, expectContinue);
    if (expectContinue && !sendAll(fd, "HTTP/1.1 100 Continue\r\n\r\n"))
        return;

    long long limit = length;
    if (options.cutAfter >= 0 && options.cutAfter < length)
        limit = options.cutAfter;
    long long received = std::min<long long>(limit, (long long)early.size());
    record.write(early.data(), size_t(received));
    while (received < limit) {
        const size_t want = size_t(std::min<long long>(limit - received, (long long)buffer.size()));
        const ssize_t got = ::recv(fd, buffer.data(), want, 0);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) {
            report(n, "peer-closed", received);
            return;
        }
        record.write(buffer.data(), size_t(got));
        received += got;
    }
    record.finish();
    if (limit < length) {
        // Hang up without an answer, but gracefully: the client gets our FIN while it is
        // still sending, and the rest it sends is read and dropped, so no reset races it.
        ::shutdown(fd, SHUT_WR);
        report(n, "cut", received);
        while (::recv(fd, buffer.data(), buffer.size(), 0) > 0) {
        }
        return;
    }
    report(n, "body", received);

    if (!clientStayed(fd, options.answerDelayMs)) {
        report(n, "peer-closed", received);
        return;
    }
    const std::string text = std::to_string(options.status) + " " + reasonPhrase(options.status) + "\n";
    const std::string answer = "HTTP/1.1 " + std::to_string(options.status) + " " + reasonPhrase(options.status)
        + "\r\nContent-Type: text/plain\r\nContent-Length: " + std::to_string(text.size())
        + "\r\nConnection: close\r\n\r\n" + text;
    sendAll(fd, answer);
    report(n, "answered", options.status);
}

bool parse(int argc, char **argv, Options &options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool hasValue = i + 1 < argc;
        if (arg == "--discard")
            options.discard = true;
        else if (arg == "--bind" && hasValue)
            options.bind = argv[++i];
        else if (arg == "--port" && hasValue)
            options.port = std::atoi(argv[++i]);
        else if (arg == "--record-dir" && hasValue)
            options.recordDir = argv[++i];
        else if (arg == "--status" && hasValue)
            options.status = std::atoi(argv[++i]);
        else if (arg == "--cut-after" && hasValue)
            options.cutAfter = std::atoll(argv[++i]);
        else if (arg == "--answer-delay-ms" && hasValue)
            options.answerDelayMs = std::atoi(argv[++i]);
        else
            return false;
    }
    return options.discard || !options.recordDir.empty();
}

} // namespace

int main(int argc, char **argv)
{
    Options options;
    if (!parse(argc, argv, options)) {
        std::fprintf(stderr,
                     "usage: %s [--bind ADDR] [--port N] (--record-dir DIR | --discard) [--status CODE]"
                     " [--cut-after BYTES] [--answer-delay-ms MS]\n",
                     argv[0]);
        return 2;
    }
    std::signal(SIGPIPE, SIG_IGN);
    // A test that is killed must not leave its receiver behind.
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);

    const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
    const int yes = 1;
    ::setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(uint16_t(options.port));
    if (::inet_pton(AF_INET, options.bind.c_str(), &address.sin_addr) != 1
        || ::bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0
        || ::listen(listener, 16) != 0) {
        std::perror("httpreceiver: listen");
        return 1;
    }
    socklen_t size = sizeof address;
    ::getsockname(listener, reinterpret_cast<sockaddr *>(&address), &size);
    report("listening " + std::to_string(ntohs(address.sin_port)));

    std::vector<char> buffer(1 << 20);
    for (long long n = 1;; ++n) {
        const int fd = ::accept(listener, nullptr, nullptr);
        if (fd < 0) {
            --n;
            continue;
        }
        serve(fd, options, n, buffer);
        ::close(fd);
    }
}
