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
#include "socketio.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using socketio::Socket;

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
    case 200:
        return "OK";
    case 201:
        return "Created";
    case 204:
        return "No Content";
    case 400:
        return "Bad Request";
    case 401:
        return "Unauthorized";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 413:
        return "Payload Too Large";
    case 500:
        return "Internal Server Error";
    case 502:
        return "Bad Gateway";
    case 503:
        return "Service Unavailable";
    default:
        return "Status";
    }
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
        m_file = std::fopen(m_partial.c_str(), "wb");
    }
    ~Record() { finish(); }

    void write(const char *data, size_t size)
    {
        if (m_file)
            std::fwrite(data, 1, size, m_file);
    }
    void finish()
    {
        if (!m_file)
            return;
        std::fclose(m_file);
        m_file = nullptr;
        std::rename(m_partial.c_str(), m_final.c_str());
    }

private:
    std::FILE *m_file = nullptr;
    std::string m_partial;
    std::string m_final;
};

bool startsWithNoCase(const std::string &text, const std::string &prefix)
{
    return text.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), text.begin(), [](char a, char b) {
               return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
           });
}

bool containsNoCase(std::string text, const std::string &lowerNeedle)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return char(std::tolower(static_cast<unsigned char>(c))); });
    return text.find(lowerNeedle) != std::string::npos;
}

long long contentLength(const std::string &head, bool &expectContinue)
{
    long long length = 0;
    expectContinue = false;
    size_t start = head.find("\r\n");
    while (start != std::string::npos && start + 2 < head.size()) {
        const size_t end = head.find("\r\n", start + 2);
        const std::string line = head.substr(start + 2, end == std::string::npos ? std::string::npos : end - start - 2);
        if (startsWithNoCase(line, "content-length:"))
            length = std::atoll(line.c_str() + 15);
        else if (startsWithNoCase(line, "expect:") && containsNoCase(line, "100-continue"))
            expectContinue = true;
        start = end;
    }
    return length;
}

// Waits before answering, but stops waiting when the client goes away.
bool clientStayed(Socket socket, int delayMs)
{
    return delayMs <= 0 || socketio::peerStillThere(socket, delayMs);
}

void serve(Socket fd, const Options &options, long long n, std::vector<char> &buffer)
{
    Record record(options, n);
    std::string head;
    size_t headEnd = std::string::npos;
    while (headEnd == std::string::npos) {
        const long got = socketio::receiveSome(fd, buffer.data(), buffer.size());
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
    if (expectContinue && !socketio::sendAll(fd, "HTTP/1.1 100 Continue\r\n\r\n"))
        return;

    long long limit = length;
    if (options.cutAfter >= 0 && options.cutAfter < length)
        limit = options.cutAfter;
    long long received = std::min<long long>(limit, (long long)early.size());
    record.write(early.data(), size_t(received));
    while (received < limit) {
        const size_t want = size_t(std::min<long long>(limit - received, (long long)buffer.size()));
        const long got = socketio::receiveSome(fd, buffer.data(), want);
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
        socketio::shutdownSending(fd);
        report(n, "cut", received);
        while (socketio::receiveSome(fd, buffer.data(), buffer.size()) > 0) {
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
    socketio::sendAll(fd, answer);
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
    if (!socketio::setUp()) {
        std::fputs("httpreceiver: no sockets\n", stderr);
        return 1;
    }
    int port = 0;
    const Socket listener = socketio::listenOn(options.bind, options.port, port);
    if (listener == socketio::invalidSocket) {
        std::perror("httpreceiver: listen");
        return 1;
    }
    report("listening " + std::to_string(port));

    std::vector<char> buffer(1 << 20);
    for (long long n = 1;; ++n) {
        const Socket fd = socketio::acceptOne(listener);
        if (fd == socketio::invalidSocket) {
            --n;
            continue;
        }
        serve(fd, options, n, buffer);
        socketio::closeSocket(fd);
    }
}
