// How long a change of page takes until it is painted, and a list of 255 rows. Exit code 1 when one takes
// longer than it may.

#include "forms/AddFileForm.h"
#include "forms/DebugForm.h"
#include "forms/EmailForm.h"
#include "forms/FileForm.h"
#include "forms/HomeForm.h"
#include "forms/MachineForm.h"
#include "forms/MaintainForm.h"
#include "forms/MaterialForm.h"
#include "forms/NetForm.h"
#include "forms/PrintInfoForm.h"
#include "forms/SetupForm.h"
#include "forms/ToolForm.h"
#include "forms/TrendForm.h"
#include "forms/UserInfoForm.h"
#include "forms/WarningForm.h"
#include "frame/SqliteUtil.h"
#include "tests/forms/FormRig.h"

#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <unistd.h>
#include <vector>

namespace
{
constexpr double limitMs = 50;
constexpr int rounds = 21;
constexpr int listRows = 255;

void paint()
{
    QApplication::processEvents();
    mainWindow()->grab();
}

/// The slowest of the rounds but the first, which loads fonts and icons.
double slowestMs(const std::function<void()> &prepare, const std::function<void()> &action)
{
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        prepare();
        paint();
        QElapsedTimer clock;
        clock.start();
        action();
        paint();
        times.push_back(double(clock.nsecsElapsed()) / 1e6);
    }
    return *std::max_element(times.begin() + 1, times.end());
}

bool report(const char *what, double ms)
{
    std::printf("%-24s %6.1f ms  (limit %.0f)%s\n", what, ms, limitMs, ms < limitMs ? "" : "  MISSED");
    return ms < limitMs;
}

void fillQueue(int count)
{
    for (int i = 0; i < count; ++i)
        sqliteUtil()->ExecuteSqlQuery(QString("insert into PrintQueue(ModelName,createtime,status,ID) "
                                              "values(\"part-%1.tzl\",\"2026-11-21\",0,%1)")
                                          .arg(i));
}
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    FormRig rig;
    FormRig::addModel("ring.tzl");
    FormRig::showWindow();
    bool good = true;
    const std::pair<const char *, QWidget *> pages[] = {
        {"HomeForm", homeForm()},
        {"FileForm", fileForm()},
        {"AddFileForm", addFileForm()},
        {"MaterialForm", materialForm()},
        {"ToolForm", toolForm()},
        {"SetupForm", setupForm()},
        {"NetForm", netForm()},
        {"EmailForm", emailForm()},
        {"UserInfoForm", userInfoForm()},
        {"MachineForm", machineForm()},
        {"MaintainForm", maintainForm()},
        {"DebugForm", debugForm()},
        {"TrendForm", trendForm()},
        {"WarningForm", warningForm()},
        {"PrintInfoForm", printInfoForm()},
    };
    for (const auto &page : pages) {
        QWidget *other = page.second == homeForm() ? static_cast<QWidget *>(fileForm()) : homeForm();
        good &= report(page.first, slowestMs([&] { mainWindow()->showWidgetInStacked(other); },
                                             [&] { mainWindow()->showWidgetInStacked(page.second); }));
    }
    fillQueue(listRows);
    mainWindow()->showWidgetInStacked(fileForm());
    good &= report("queue of 255, first page", slowestMs([] {}, [] { fileForm()->refresh(false); }));
    good &= report("queue of 255, last page", slowestMs([] {}, [] { fileForm()->updateUiFileLIst(252); }));
    std::fflush(stdout);
    ::_exit(good ? 0 : 1);
}
