#include "events/MaintainPlan.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>

namespace
{
constexpr int rowsOfNewFile = 50; // leaves room for more jobs
const QString fileName = QStringLiteral("config/MaintainPlan.json");
const QString dateForm = QStringLiteral("yyyy-MM-dd");

QString todayText()
{
    return QDate::currentDate().toString(dateForm);
}
} // namespace

const MaintainJob maintainJobs[maintainJobCount] = {
    {QT_TRANSLATE_NOOP("MaintainForm", "清洁顶部风扇过滤棉"), 7},
    {QT_TRANSLATE_NOOP("MaintainForm", "清洁初效过滤器"), 7},
    {QT_TRANSLATE_NOOP("MaintainForm", "清洁外表面"), 7},
    {QT_TRANSLATE_NOOP("MaintainForm", "清洁喷车底板非喷头安装区域"), 7},
    {QT_TRANSLATE_NOOP("MaintainForm", "清洁Y梁底面"), 7},
    {QT_TRANSLATE_NOOP("MaintainForm", "滚筒吸粉管道除粉"), 7},
    {QT_TRANSLATE_NOOP("MaintainForm", "清洁墨站刮刀"), 7},
    {QT_TRANSLATE_NOOP("MaintainForm", "清洁整平棍及整平棍刮刀表面"), 15},
    {QT_TRANSLATE_NOOP("MaintainForm", "更换初效过滤器"), 30},
    {QT_TRANSLATE_NOOP("MaintainForm", "X轴导轨上油"), 30},
    {QT_TRANSLATE_NOOP("MaintainForm", "Y轴导轨和电机丝杆上油"), 30},
    {QT_TRANSLATE_NOOP("MaintainForm", "Z轴导轨和电机丝杆上油"), 30},
};

int restPercent(const QDate &done, const QDate &today, int cycleDays)
{
    return int(100 - done.daysTo(today) * 100 / cycleDays);
}

MaintainState maintainState(int restPercent)
{
    if (restPercent < -99)
        return MaintainState::Overdue;
    return restPercent < 1 ? MaintainState::Due : MaintainState::InTime;
}

void MaintainPlan::createFile()
{
    if (QFile::exists(fileName))
        return;
    QJsonObject dates;
    for (int row = 0; row < rowsOfNewFile; ++row)
        dates.insert(QString::number(row), todayText());
    m_dates.Init(fileName); // takes the name, though there is nothing to read yet
    m_dates.syncFile(QString::fromUtf8(QJsonDocument(dates).toJson()));
}

bool MaintainPlan::load()
{
    return m_dates.Init(fileName);
}

int MaintainPlan::restPercent(int row) const
{
    const QDate done = QDate::fromString(m_dates.getString(QString::number(row)), dateForm);
    return ::restPercent(done, QDate::currentDate(), maintainJobs[row].cycleDays);
}

void MaintainPlan::setDone(int row)
{
    load();
    m_dates.setValueSync(QString::number(row), todayText());
}
