#include "JobRig.h"

#include "events/EventHandler.h"
#include "frame/Folders.h"
#include "frame/SqliteUtil.h"
#include "links/Usb2Can.h"
#include "printdata/PrintQueue.h"
#include "printdata/SliceToImage.h"

#include <QDir>
#include <QJsonDocument>
#include <QLibrary>
#include <QtEndian>

namespace
{
constexpr int pictureWidth = 64;
constexpr int pictureRows = 24;

template <class T> QByteArray littleEndian(T value)
{
    value = qToLittleEndian(value);
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

/// A model with settings and no pictures.
QByteArray modelFile(const QByteArray &settings)
{
    return QByteArray(52, '\0') + littleEndian<quint64>(84) + littleEndian<quint64>(settings.size()) +
           QByteArray(16, '\0') + settings;
}

/// A layer file whose picture is filled with one byte. qCompress puts 4 bytes of length before the stream.
QByteArray layerFile(quint8 fill)
{
    const QByteArray inner = qCompress(QByteArray(pictureWidth / 8 * pictureRows, char(fill))).mid(4);
    const QByteArray outer = qCompress(inner).mid(4);
    return QByteArray(12, '\0') + littleEndian<quint32>(outer.size()) + littleEndian<quint32>(inner.size()) +
           outer;
}
} // namespace

ProbeJob::ProbeJob()
{
    const auto note = [this](const QString &title, const QString &text, int icon, int buttons) {
        MutexLock lock(m_messageMutex);
        m_messages << QStringLiteral("%1|%2|%3|%4").arg(title, text).arg(icon).arg(buttons, 0, 16);
    };
    connect(this, &PrintService::MessageFormShowSig, this, note, Qt::DirectConnection);
    connect(
        this, &PrintService::stopPrintSignals, this, [this] { ++ended; }, Qt::DirectConnection);
}

ProbeJob::~ProbeJob()
{
    setPrintStatus(PrintStatusIdle); // a test that failed in mid-job
    wait();
}

QStringList ProbeJob::messages() const
{
    MutexLock lock(m_messageMutex);
    return m_messages;
}

QStringList ProbeJob::takeMessages()
{
    MutexLock lock(m_messageMutex);
    return std::exchange(m_messages, {});
}

JobRig::JobRig()
{
    QFile::link(FAKE_HIB_FILE, "libhibApiDll64.so");
    QLibrary library(QDir::current().filePath("hibApiDll64"));
    m_takeCalls = decltype(m_takeCalls)(library.resolve("fakeHibTakeCalls"));
    hibFail = decltype(hibFail)(library.resolve("fakeHibFail"));
    hibSet = decltype(hibSet)(library.resolve("fakeHibSet"));
    hibPicture = decltype(hibPicture)(library.resolve("fakeHibPicture"));

    QDir().mkpath("model");
    QDir().mkpath("Lamorel");
    install.setPlatform({{"COM16", bridge.path()}});
    createSchema(sqliteUtil());
    EventHandler::instance();
    usb2Can()->OpenPort(16, 115200);
    reset();
}

void JobRig::reset()
{
    bridge.reset();
    bridge.setValue(2, 0x90, 500);      // the leveller turns
    bridge.setBytes(5, 0x33, {{2, 1}}); // the ink box door is closed
    bridge.setBytes(5, 0x34, {{2, 0x3E}, {3, 0xFE}, {4, 0x3E}, {5, 0xFE}, {6, 0x3E}, {7, 0xFE}}); // -450
    setUpStack();
    for (const char *function : {"hibWaitForImageTransferCompleteWto", "hibAdjustWaveformVoltage",
                                 "hibSetupAllDotclocks", "hibConfigPrintBarHead"})
        hibFail(function, 0);
    hibCalls();
    printStatus() = PrintStatusIdle;
    sliceToImage()->closeProcess();
    sqliteUtil()->ExecuteSqlQuery("delete from PrintQueue");
    sqliteUtil()->ExecuteSqlQuery("delete from PrintHistory");
    const QByteArray sys =
        R"({"ZStartPos":1000,"StartLayer":1,"XMoveSpeed":700,"LevelSpeed":501,
        "ForwardStartPos":1.5,"ForwardYOffset1":11,"ForwardYOffset2":12,"ForwardYOffset3":13,
        "ReverseStartPos":2.5,"ReverseYOffset1":21,"ReverseYOffset3":23})";
    install.writeConfig("Sys", QJsonDocument::fromJson(sys).object());
}

/// The stack follows the magnet, wherever the carriage is.
void JobRig::setUpStack()
{
    stickStack(0, 0);
    m_coupled = false;
    bridge.setHandler(2, 0x87, [this](const BoardRequest &request) {
        const bool on = request.data[1] != 0;
        std::atomic<int> &sticks = on ? m_stickCoupling : m_stickUncoupling;
        if (on == m_coupled || sticks-- > 0)
            return request.data;
        m_coupled = on;
        return request.data;
    });
    bridge.setHandler(2, 0x72, [this](const BoardRequest &request) {
        QByteArray answer = request.data;
        answer[2] = char(m_coupled);
        return answer;
    });
}

void JobRig::stickStack(int coupling, int uncoupling)
{
    m_stickCoupling = coupling;
    m_stickUncoupling = uncoupling;
}

bool JobRig::loadModel(const QString &name, const QByteArray &machine)
{
    m_model = name;
    const QByteArray text =
        "waitXTimeout=10\nlayerHeight=0.02\ndpiX=600.9\ndpiY=600\n"
        "extraBlankPixel=0\npixelsX=64\npixelsY=24\npassCnt=4\nmodelMaterial=12.5\n"
        "supportMaterial=3\nlayerCnt=480\nprintTime=60\nextentX=1\nextentY=2.5\nextentZ=3\n"
        "PrintModeName=fine\nmodelMaterialName=wax\n";
    writeFile(modelPath(name), modelFile("machineType=" + machine + "\n" + text));
    addToQueue(name);
    return sliceToImage()->loadModelInfo(modelPath(name)) == 0 && sliceToImage()->fileName() == name;
}

bool JobRig::slice(int ready, int total)
{
    const QString tool = "Lamorel/lamorel.exe";
    const QString script = "#!/bin/sh\necho 'progress: 1.0'\necho 'slice: %1/%2'\nexec sleep 100\n";
    writeFile(tool, script.arg(ready).arg(total).toUtf8());
    QFile::setPermissions(tool, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (!sliceToImage()->waitForStarted())
        return false;
    const QString folder = sliceFolder(m_model);
    for (int layer = 1; layer <= ready; ++layer) {
        writeFile(folder + "/slice_s" + QString::number(layer), layerFile(supportByte));
        writeFile(folder + "/slice_m" + QString::number(layer), layerFile(structureByte));
    }
    return waitUntil([total] { return sliceToImage()->sumLayer() == total; });
}

QVector<QSqlRecord> JobRig::query(const QString &statement) const
{
    QSqlQueryModel model;
    sqliteUtil()->ExecuteQueryModel(&model, statement);
    QVector<QSqlRecord> rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows << model.record(row);
    return rows;
}

QStringList JobRig::hibCalls(const char *name)
{
    const QStringList all = QString::fromLatin1(m_takeCalls()).split('\n', Qt::SkipEmptyParts);
    QStringList found;
    for (const QString &call : all)
        if (call.startsWith(QLatin1String(name)))
            found << call;
    return found;
}
