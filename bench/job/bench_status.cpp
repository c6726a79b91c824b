// How long the machine's status takes to come while a job prints, asked once a second as a client does. Exit
// code 1 when it takes longer than it may, 2 when nothing could be measured.

#include "TestPrinter.h"
#include "Wire.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace
{
constexpr double medianLimitMs = 2, p99LimitMs = 20;
constexpr int shortestJobMs = 30000;
constexpr int replyLimitMs = 10000;
constexpr int periodMs = 1000;

/// Milliseconds of each question until the job ends; empty when one went without its answer.
std::vector<double> askWhilePrinting(PrinterRig &rig, Wire &wire)
{
    const QByteArray request = wireFrame("\x5A\xA5", "\xFF\xFF", R"({"Title":"Machine","Action":"Status"})");
    std::vector<double> times;
    QElapsedTimer clock;
    qint64 next = 0;
    bool answered = true;
    clock.start();
    rig.waitPrintEnd(600000, [&](const PrinterRig::Progress &) {
        if (clock.elapsed() < next || !answered)
            return;
        next = clock.elapsed() + periodMs;
        QElapsedTimer question;
        question.start();
        wire.send(request);
        answered = wire.takeFrame(replyLimitMs).contains("\"Percent\"");
        times.push_back(double(question.nsecsElapsed()) / 1e6);
    });
    const bool longEnough = answered && clock.elapsed() >= shortestJobMs;
    return longEnough ? times : std::vector<double>();
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    TestPrinter printer;
    Wire wire;
    if (!printer.makeModel("bar.tzl", {"--layer-height", "0.02"}, 18, writeBar) || !printer.start() ||
        !wire.connectTo(printer.remotePort()) || !printer.print("bar.tzl")) {
        std::fprintf(stderr, "no job: %s\n", qPrintable(printer.error()));
        return 2;
    }
    std::vector<double> times = askWhilePrinting(printer.rig(), wire);
    if (times.empty()) {
        std::fprintf(stderr, "nothing measured: %s\n", qPrintable(printer.error()));
        return 2;
    }
    std::sort(times.begin(), times.end());
    const auto at = [&](double share) { return times[size_t(std::ceil(share * double(times.size() - 1)))]; };
    std::printf("status beside a job, %zu questions: median %.2f ms (limit %.0f), p99 %.2f ms (limit %.0f), "
                "longest %.2f ms\n",
                times.size(), at(0.5), medianLimitMs, at(0.99), p99LimitMs, times.back());
    return at(0.5) <= medianLimitMs && at(0.99) <= p99LimitMs ? 0 : 1;
}
