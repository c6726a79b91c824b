#include "material/HeadBoardSetup.h"

#include "engine/HibLibrary.h"
#include "engine/XdmControl.h"
#include "frame/JsonConfig.h"
#include "platform/Log.h"

#include <QCoreApplication>

namespace
{
constexpr int headBoards = 3;
constexpr int maxBoards = 16;     ///< more than any library can mean
constexpr float mfgCode = 88.51f; ///< of the boards that this machine is built with

int countBoards()
{
    int count = 0;
    if (lockHibInitAllBoards(&count, 1) != 0)
        LOG_WARNING(QStringLiteral("hib init all boards error\n"));
    return count;
}

QStringList wrongBoards(int count)
{
    QStringList wrong;
    for (int board = 1; board <= qMin(count, maxBoards); ++board) {
        float code = 0.0f;
        lockHibGetMfgCode(board, &code);
        const QString line =
            QStringLiteral("Hib#%1  Mfg Code = %2").arg(board).arg(QString::number(double(code)));
        LOG_WARNING(line);
        if (!qFuzzyCompare(code, mfgCode))
            wrong << line;
    }
    return wrong;
}

QString applyHeadSettings()
{
    QString fault;
    if (!xdmControl()->setDotClock(headBoards, 0.0f))
        fault = QCoreApplication::translate("BackgroundService", "设置喷头参数异常，请重启");
    const JsonConfig *sys = sysConfig();
    if (!setWaveformVoltage(sys->getFloat(QStringLiteral("WaveFormVoltage1")),
                            sys->getFloat(QStringLiteral("WaveFormVoltage2")),
                            sys->getFloat(QStringLiteral("WaveFormVoltage3"))))
        fault += QLatin1String(" setWaveForm Error !!!! ");
    return fault;
}
} // namespace

HeadBoardReport setUpHeadBoards()
{
    HeadBoardReport report;
    const int count = countBoards();
    report.wrongBoards = wrongBoards(count);
    if (count == headBoards)
        report.fault = applyHeadSettings();
    else
        report.fault = QCoreApplication::translate("BackgroundService",
                                                   "检测到喷头异常(%1)，请尝试断电重启(检查 喷头控制板连接)")
                           .arg(count);
    return report;
}
