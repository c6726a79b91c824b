#include "frame/Startup.h"

#include "frame/Folders.h"
#include "frame/JsonConfig.h"
#include "frame/RotatingLog.h"
#include "frame/SqliteUtil.h"
#include "platform/Clock.h"
#include "platform/CrashDump.h"
#include "platform/PlatformSettings.h"
#include "platform/ThreadName.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QTranslator>
#include <QtConcurrent>

#include <atomic>

namespace
{
constexpr double periodDays = 0.006944444444444444; // ten minutes
constexpr double periodHours = 0.16666666666666666; // ten minutes
constexpr unsigned periodSeconds = 600;

// The application waits for its pool when it is destroyed, so the counter has to see the end coming.
std::atomic<bool> applicationEnds{false};
} // namespace

void startRunTimeCounter()
{
    JsonConfig *info = useInfoConfig();
    info->Init(QStringLiteral("config/UseInfo.json"));
    info->setValue(QStringLiteral("SystemSingleRunTime"), 0);
    info->setValue(QStringLiteral("PowerOn"),
                   QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
}

void countRunTime()
{
    const QString total = QStringLiteral("SystemTotalRunTime");   // days over the machine's life
    const QString single = QStringLiteral("SystemSingleRunTime"); // hours since this start
    JsonConfig *info = useInfoConfig();
    info->setValue(total, info->getFloat(total) + periodDays);
    info->setValueSync(single, info->getFloat(single) + periodHours);
}

void runTimeCounterTask()
{
    setThreadName("run-time");
    startRunTimeCounter();
    while (!applicationEnds) {
        countRunTime();
        for (unsigned second = 0; second < periodSeconds && !applicationEnds; ++second)
            Sleep(1000);
    }
}

int runApplication(int argc, char **argv, const std::function<QWidget *()> &mainWindow)
{
    installCrashHandler("../.PeloraTemp/log/");
    setPlatformSettings([](const QString &key) { return platformConfig()->getValue(key); });
    QApplication application(argc, argv);
    setThreadName("pelora-gui");
    prepareFolders();
    qInstallMessageHandler(logMessageHandler);
    QtConcurrent::run(runTimeCounterTask);
    if (SqliteUtil *database = sqliteUtil())
        createSchema(database);
    QTranslator translator;
    if (translator.load(QStringLiteral("lan.qm"), QStringLiteral(""), QStringLiteral(""), QStringLiteral("")))
        QCoreApplication::installTranslator(&translator);
    if (QWidget *window = mainWindow())
        window->show();
    const int code = QApplication::exec();
    applicationEnds = true;
    return code;
}
