// A day of service of the idle machine: the program's wall clock and its sleeps run 288 times as fast, so
// that 24 hours pass in five minutes. One daily mail, maintenance counted, a full log rotated, memory held.
// Exit code 1 when one of them is missed, 2 when nothing could be measured.

#include "TestPrinter.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

namespace
{
constexpr double scale = 288;
constexpr int daySeconds = 24 * 3600;
constexpr double warmUpPart = 0.1; ///< of the day: pages, cards and caches are in memory by then
constexpr double growthLimitKB = 3 * 1024;
constexpr qint64 logLimit = 0x1000000; ///< at which a log rotates
const char library[] = "/usr/lib/x86_64-linux-gnu/faketime/libfaketime.so.1";

double residentKB(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.simplified().split(' ').value(1).toDouble();
    return 0;
}

bool write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// An oiling job 33 days ago of 30 is due; everything else was done on the day before.
QByteArray maintenancePlan(const QDate &today)
{
    QJsonObject plan;
    for (int row = 0; row < 50; ++row)
        plan[QString::number(row)] = today.addDays(row == 9 ? -33 : -1).toString("yyyy-MM-dd");
    return QJsonDocument(plan).toJson();
}

int countFiles(const QString &folder, const QByteArray &subject)
{
    int count = 0;
    for (const QFileInfo &entry : QDir(folder).entryInfoList(QDir::Files)) {
        QFile file(entry.filePath());
        count += file.open(QIODevice::ReadOnly) && file.readAll().contains(subject);
    }
    return count;
}

bool report(const char *what, bool good, const QString &figure)
{
    std::printf("%-32s %-28s %s\n", what, qPrintable(figure), good ? "ok" : "MISSED");
    return good;
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (!QFile::exists(library)) {
        std::fprintf(stderr, "%s is missing: the set-up of ./test installs it\n", library);
        return 2;
    }
    const QDateTime start(QDate::currentDate(), QTime(10, 0));
    TestPrinter printer;
    printer.setScale(scale);
    printer.configure("email.json", {{"Ink", true}, {"Maintain", true}, {"Error", true}});
    const QString mails = printer.install() + "/../.PeloraTemp/machine/mail";
    const QString log = printer.install() + "/../.PeloraTemp/log/pelora.log";
    if (!write(printer.install() + "/config/MaintainPlan.json", maintenancePlan(start.date())) ||
        !write(log, QByteArray(int(logLimit - 1000), '-')) ||
        !printer.start({QString("LD_PRELOAD=") + library, "FAKETIME_DONT_FAKE_MONOTONIC=1", "NO_FAKE_STAT=1",
                        QString("FAKETIME=@%1 x%2").arg(start.toString("yyyy-MM-dd hh:mm:ss")).arg(scale)})) {
        std::fprintf(stderr, "no service: %s\n", qPrintable(printer.error()));
        return 2;
    }
    const qint64 pid = printer.rig().productPid();
    QElapsedTimer clock;
    clock.start();
    const auto passed = [&] { return double(clock.elapsed()) / 1000 * scale / daySeconds; };
    printer.rig().waitFor([&] { return passed() > warmUpPart; }, 600000);
    const double before = residentKB(pid);
    printer.rig().waitFor([&] { return passed() > 1 || !printer.rig().productRuns(); }, 600000);
    const double growth = residentKB(pid) - before;
    printer.rig().click("pushButton_home");
    const QString warnings = printer.rig().text("pushButton_warning");
    bool good =
        report("program alive", printer.rig().productRuns(), QString("%1 warnings on Home").arg(warnings));
    const int sent = countFiles(mails, "Pelora");
    good &= report("daily mails", sent == 1, QString::number(sent));
    const int due = printer.log().count("00ffff07");
    good &= report("maintenance event rows", due >= 1, QString::number(due));
    good &= report("log rotated", QFileInfo::exists(log + "1"),
                   QString::number(QFileInfo(log).size()) + " bytes now");
    good &= report("memory growth, limit 3072 kB", growth < growthLimitKB && before > 0,
                   QString("%1 kB on %2 kB").arg(growth).arg(before));
    return good ? 0 : 1;
}
