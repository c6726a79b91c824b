// How long the window's event loop is held while an operator walks through every page of the installed
// program. Exit code 1 when it is held longer than it may, 2 when nothing could be measured.

#include "TestPrinter.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <cstdio>

namespace
{
constexpr qint64 limitMs = 100;
constexpr int askMs = 300; ///< for which the window is asked after each press

struct Step {
    const char *button;
    const char *answer; ///< to the message that it brings; null: none
};
constexpr Step steps[] = {
    {"pushButton_home", nullptr},
    {"pushButton_warning", nullptr},
    {"pushButton_back", nullptr},
    {"pushButton_lock", nullptr},
    {"pushButton_fileList", nullptr},
    {"pushButtonComplete", nullptr},
    {"pushButtonAbort", nullptr},
    {"pushButtonWaitPrint", nullptr},
    {"pushButton_addfile", nullptr},
    {"pushButton_back", nullptr},
    {"pushButton_material", nullptr},
    {"pushButton_5", "No"},
    {"pushButton_tool", nullptr},
    {"pushButton_machineInfo", nullptr},
    {"pushButton_back", nullptr},
    {"pushButton_UserInfo", nullptr},
    {"pushButton_back", nullptr},
    {"pushButton_3", nullptr},
    {"pushButton_back", nullptr},
    {"pushButton_Trend", nullptr},
    {"pushButton_zone2", nullptr},
    {"pushButton_back", nullptr},
    {"pushButton_Debug", nullptr},
    {"pushButton_zTest", "No"},
    {"pushButton_back", nullptr},
    {"pushButton_Power", "No"},
    {"pushButton_setup", nullptr},
    {"pushButton_Net", nullptr},
    {"pushButton_back", nullptr},
    {"pushButton_Email", nullptr},
    {"lineEdit_host", nullptr},
    {"key_a", nullptr},
    {"key_hide", nullptr},
    {"pushButton_back", nullptr},
};

/// Presses and then asks the window again and again; the longest that one answer took.
qint64 heldBy(PrinterRig &rig, const Step &step)
{
    rig.takeSlowestAnswer();
    rig.click(step.button);
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < askMs;)
        if (!rig.message().isEmpty())
            if (!step.answer || !rig.answer(step.answer))
                rig.answer("close");
    return rig.takeSlowestAnswer();
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    TestPrinter printer;
    if (!printer.makeModel("bar.tzl") || !printer.start() ||
        !printer.rig().bringFromUsb(printer.usb(), "bar.tzl")) {
        std::fprintf(stderr, "nothing measured: %s\n", qPrintable(printer.error()));
        return 2;
    }
    qint64 longest = 0;
    for (const Step &step : steps) {
        const qint64 held = heldBy(printer.rig(), step);
        std::printf("%-24s %4lld ms%s\n", step.button, static_cast<long long>(held),
                    held > limitMs ? "  MISSED" : "");
        longest = qMax(longest, held);
    }
    std::printf("longest %lld ms (limit %lld)\n", static_cast<long long>(longest),
                static_cast<long long>(limitMs));
    return longest > limitMs ? 1 : 0;
}
