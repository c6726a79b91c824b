// Frames a second, and what SendMsg adds to the bare way over a pseudo terminal. Ends with 1 when a limit is
// missed.

#include "links/FrameCodec.h"
#include "links/Usb2Can.h"
#include "platform/PlatformSettings.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <map>
#include <poll.h>
#include <random>
#include <termios.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

constexpr double minimumMBs = 50;  // encode and decode each
constexpr double maximumRatio = 3; // SendMsg to a bare round trip, medians
constexpr int recordSize = 16;
constexpr int frameSize = 21; // of a record without a byte to escape
constexpr int turns = 100;
constexpr int turn = 50; // round trips of a kind

using Records = std::vector<std::array<quint8, recordSize>>;

// Plausible traffic: a few set bytes, now and then one that must be escaped.
Records records()
{
    std::mt19937 random(7);
    Records all(1024);
    for (auto &record : all) {
        record = {0x42, 0, 0, 0, quint8(random())};
        for (int i = 8; i < 12; ++i)
            record[size_t(i)] = quint8(random());
        record[12] = 8;
    }
    return all;
}

void encode(benchmark::State &state)
{
    const Records all = records();
    quint8 out[64];
    for (auto _ : state)
        for (const auto &record : all)
            benchmark::DoNotOptimize(encodeFrame(record.data(), recordSize, out));
    state.SetBytesProcessed(state.iterations() * int64_t(all.size()) * recordSize);
}

void decode(benchmark::State &state)
{
    std::vector<quint8> stream;
    for (const auto &record : records()) {
        quint8 out[64];
        stream.insert(stream.end(), out, out + encodeFrame(record.data(), recordSize, out));
    }
    FrameDecoder decoder;
    for (auto _ : state) {
        int frames = 0;
        for (quint8 byte : stream)
            frames += decoder.feed(byte);
        if (frames != 1024 || decoder.errors() != 0)
            state.SkipWithError("frames were lost");
    }
    state.SetBytesProcessed(state.iterations() * int64_t(stream.size()));
}

double median(std::vector<double> &values)
{
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

// Waits for `size` bytes; false when the line ended.
bool readAll(int fd, char *bytes, int size)
{
    for (int done = 0; done < size;) {
        pollfd ready{fd, POLLIN, 0};
        if (poll(&ready, 1, -1) < 0)
            return false;
        const ssize_t count = read(fd, bytes + done, size_t(size - done));
        if (count <= 0)
            return false;
        done += int(count);
    }
    return true;
}

// Far end of a pseudo terminal that sends each frame back as it came: an immediate answer, since only the
// command's echo counts.
class EchoLine
{
public:
    EchoLine()
    {
        m_master = posix_openpt(O_RDWR | O_NOCTTY);
        if (m_master < 0 || grantpt(m_master) || unlockpt(m_master))
            std::abort();
        slave = open(ptsname(m_master), O_RDWR | O_NOCTTY);
        termios settings{};
        tcgetattr(slave, &settings);
        cfmakeraw(&settings);
        tcsetattr(slave, TCSANOW, &settings);
        m_echo = std::thread([this] {
            char bytes[frameSize];
            while (readAll(m_master, bytes, frameSize) && write(m_master, bytes, frameSize) == frameSize)
                ;
        });
    }
    ~EchoLine()
    {
        close(slave); // the echo's read then fails
        m_echo.join();
        close(m_master);
    }
    QString path() const { return QString::fromLocal8Bit(ptsname(m_master)); }

    int slave = -1;

private:
    int m_master = -1;
    std::thread m_echo;
};

double microseconds(const std::function<bool()> &round, benchmark::State &state)
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    if (!round())
        state.SkipWithError("no answer");
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

// Short turns of both, one after the other, so that neither has the quieter machine. Medians do not mind
// another program's turn on the core.
void sendMsg(benchmark::State &state)
{
    EchoLine bareLine;
    EchoLine boardLine;
    setPlatformSettings([path = boardLine.path()](const QString &) { return QJsonValue(path); });
    Usb2Can can;
    if (!can.OpenPort(16, 115200))
        return state.SkipWithError("port not open");
    const CanMsg request = canMessage(2, 0x70);
    CanMsg reply;
    char bytes[frameSize] = {};
    const auto bare = [&] {
        return write(bareLine.slave, bytes, frameSize) == frameSize &&
               readAll(bareLine.slave, bytes, frameSize);
    };
    const auto message = [&] { return can.SendMsg(&request, &reply, 1000, 0, 8, 0, 0) == SendOk; };
    std::vector<double> bareTimes;
    std::vector<double> messageTimes;
    for (auto _ : state) {
        for (int i = 0; i < turn; ++i)
            bareTimes.push_back(microseconds(bare, state));
        for (int i = 0; i < turn; ++i)
            messageTimes.push_back(microseconds(message, state));
    }
    can.ClosePort();
    state.counters["bare_us"] = median(bareTimes);
    state.counters["sendmsg_us"] = median(messageTimes);
}

BENCHMARK(encode);
BENCHMARK(decode);
BENCHMARK(sendMsg)->Iterations(turns)->UseRealTime()->Unit(benchmark::kMillisecond);

// Keeps the figures that the limits are about.
class Figures : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs)
            for (const auto &[key, counter] : run.counters)
                m_values[run.run_name.function_name + ' ' + key] = counter.value;
    }
    double operator[](const std::string &key) { return m_values[key]; }

private:
    std::map<std::string, double> m_values;
};

bool hold(const char *what, double ratio, bool good)
{
    std::printf("%-44s %8.2f of the limit%s\n", what, ratio, good ? "" : "  MISSED");
    return good;
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    Figures figures;
    benchmark::RunSpecifiedBenchmarks(&figures);
    const double encoded = figures["encode bytes_per_second"] / 1e6 / minimumMBs;
    const double decoded = figures["decode bytes_per_second"] / 1e6 / minimumMBs;
    const double bare = figures["sendMsg bare_us"];
    const double ratio = bare > 0 ? figures["sendMsg sendmsg_us"] / bare : maximumRatio + 1;
    std::printf("SendMsg takes %.2f bare round trips (limit %.0f)\n", ratio, maximumRatio);
    bool good = hold("frame encode, at least 50 MB/s", encoded, encoded >= 1);
    good = hold("frame decode, at least 50 MB/s", decoded, decoded >= 1) && good;
    good = hold("SendMsg, at most 3 bare round trips", ratio / maximumRatio, ratio <= maximumRatio) && good;
    return good ? 0 : 1;
}
