// Upload over loopback against a bare lock-step loop with the same blocks, zlib's checksum and file write.
// Ends with 1 when a limit is missed.

#include "frame/SqliteUtil.h"
#include "platform/PlatformSettings.h"
#include "remote/CTcpServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QtEndian>

#include <algorithm>
#include <arpa/inet.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <sched.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>
#include <zlib.h>

namespace
{
constexpr qint64 uploadSize = 256 << 20;
constexpr int turns = 8; // of each kind, one after the other, so that neither has the quieter machine
constexpr qint64 turnSize = uploadSize / turns;
constexpr int clientCore = 0;
constexpr int serverCore = 1;
constexpr int headSize = 14;
constexpr int replySize = 12;

struct Kind {
    const char *name;
    int blockSize;
    double minimumRatio; // of the bare loop's throughput
};
constexpr Kind kinds[] = {{"64 KiB blocks, at least 0.7", 64 << 10, 0.7},
                          {"8 KiB blocks, at least 0.5", 8 << 10, 0.5}};

[[noreturn]] void fail(const char *what)
{
    std::perror(what);
    std::exit(2);
}

// Both ends of both loops run on cores of their own where there are two.
void pin(int core)
{
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(core % int(std::thread::hardware_concurrency()), &set);
    sched_setaffinity(0, sizeof set, &set);
}

sockaddr_in loopback(quint16 port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

int connectTo(quint16 port)
{
    const int fd = socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in address = loopback(port);
    const int one = 1;
    setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    if (connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address))
        fail("connect");
    return fd;
}

bool readAll(int fd, char *bytes, int size)
{
    for (int done = 0; done < size;) {
        const ssize_t count = read(fd, bytes + done, size_t(size - done));
        if (count <= 0)
            return false;
        done += int(count);
    }
    return true;
}

void writeAll(int fd, const char *bytes, int size)
{
    for (int done = 0; done < size;) {
        const ssize_t count = write(fd, bytes + done, size_t(size - done));
        if (count <= 0)
            fail("write");
        done += int(count);
    }
}

// The least that can be done with a block: read it, sum it, write it, answer it.
class BareServer
{
public:
    BareServer()
    {
        sockaddr_in address = loopback(0);
        socklen_t size = sizeof address;
        m_listener = socket(AF_INET, SOCK_STREAM, 0);
        if (bind(m_listener, reinterpret_cast<sockaddr *>(&address), size) || ::listen(m_listener, 1))
            fail("listen");
        getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size);
        port = ntohs(address.sin_port);
        m_thread = std::thread([this] { serve(); });
    }
    ~BareServer()
    {
        m_thread.join(); // after its client went
        close(m_listener);
    }
    quint16 port = 0;

private:
    void serve()
    {
        pin(serverCore);
        const int fd = accept(m_listener, nullptr, nullptr);
        const int one = 1;
        setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        const int file = open("model/bare.tzl", O_WRONLY | O_CREAT | O_TRUNC, 0644);
        char head[headSize];
        std::vector<char> payload;
        while (readAll(fd, head, headSize)) {
            payload.resize(qFromLittleEndian<quint32>(head + 2));
            if (!readAll(fd, payload.data(), int(payload.size())))
                break;
            const uLong sum = crc32(0, reinterpret_cast<const Bytef *>(payload.data()), uInt(payload.size()));
            if (sum != qFromLittleEndian<quint32>(head + 10))
                fail("checksum");
            writeAll(file, payload.data(), int(payload.size()));
            char reply[replySize] = {};
            std::memcpy(reply + 6, head + 6, 4);
            writeAll(fd, reply, replySize);
        }
        close(file);
        close(fd);
    }

    int m_listener = -1;
    std::thread m_thread;
};

std::vector<char> blockOf(int size)
{
    std::vector<char> block(size_t(headSize + size));
    for (size_t i = headSize; i < block.size(); ++i)
        block[i] = char(i * 2654435761U >> 11);
    const auto *payload = reinterpret_cast<const Bytef *>(block.data() + headSize);
    block[0] = '\xA5';
    block[1] = '\x5A';
    qToLittleEndian(quint32(size), block.data() + 2);
    qToLittleEndian(quint32(crc32(0, payload, uInt(size))), block.data() + 10);
    return block;
}

// Megabytes a second of one turn's blocks, each sent when the one before was answered.
double sendBlocks(int fd, const std::vector<char> &block)
{
    using Clock = std::chrono::steady_clock;
    const qint64 payload = qint64(block.size()) - headSize;
    const auto start = Clock::now();
    char reply[replySize];
    for (qint64 sent = 0; sent < turnSize; sent += payload) {
        writeAll(fd, block.data(), int(block.size()));
        if (!readAll(fd, reply, replySize) || reply[10] != 0)
            fail("block not taken");
    }
    return double(turnSize) / 1e6 / std::chrono::duration<double>(Clock::now() - start).count();
}

void announce(int fd)
{
    const QByteArray name("upload.tzl");
    QByteArray frame = QByteArray::fromHex("5AA5 00000000 02 00") + QByteArray(8, '\0') + name;
    qToLittleEndian(quint64(uploadSize), frame.data() + 8);
    char reply[10];
    writeAll(fd, frame.constData(), frame.size());
    if (!readAll(fd, reply, sizeof reply) || reply[9] != 0)
        fail("announce");
}

void finish(int fd)
{
    const QByteArray frame = QByteArray::fromHex("5AA5 00000000 02 01");
    char reply[8];
    writeAll(fd, frame.constData(), frame.size());
    if (!readAll(fd, reply, sizeof reply) || QFileInfo("model/upload.tzl").size() != uploadSize)
        fail("upload");
}

double median(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + turns / 2, values.end());
    return values[turns / 2];
}

bool measure(const Kind &kind, quint16 port)
{
    BareServer bare;
    const int bareLine = connectTo(bare.port);
    const int line = connectTo(port);
    const std::vector<char> block = blockOf(kind.blockSize);
    announce(line);
    std::vector<double> bareSpeeds, speeds;
    for (int turn = 0; turn < turns; ++turn) {
        bareSpeeds.push_back(sendBlocks(bareLine, block));
        speeds.push_back(sendBlocks(line, block));
    }
    finish(line);
    close(bareLine);
    close(line);
    const double ratio = median(speeds) / median(bareSpeeds);
    const bool good = ratio >= kind.minimumRatio;
    std::printf("%-30s %7.0f MB/s of %7.0f MB/s: %.2f%s\n", kind.name, median(speeds), median(bareSpeeds),
                ratio, good ? "" : "  MISSED");
    return good;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {}); // no models these
    QTemporaryDir folder;
    if (!QDir(folder.path()).mkpath("model") || !QDir::setCurrent(folder.path()))
        fail("folder");
    setPlatformSettings([](const QString &key) {
        return key == QLatin1String("RemotePort") ? QJsonValue(0) : QJsonValue(QJsonValue::Undefined);
    });
    createSchema(sqliteUtil());
    pin(serverCore); // inherited by the service's thread
    CTcpServer server;
    server.start();
    while (server.port() == 0)
        std::this_thread::yield();
    pin(clientCore);
    bool good = true;
    for (const Kind &kind : kinds)
        good = measure(kind, server.port()) && good;
    return good ? 0 : 1;
}
