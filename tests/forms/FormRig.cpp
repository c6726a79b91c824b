#include "tests/forms/FormRig.h"

#include "engine/XdmControl.h"
#include "forms/MsgForm.h"
#include "frame/SqliteUtil.h"
#include "material/BackgroundService.h"
#include "printdata/PrintQueue.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QtEndian>

#include <unistd.h>

namespace
{
constexpr int platformCommand = 0x71;

/// Opens what a job keeps from others.
struct OpenJob : XdmControl {
    using XdmControl::setState;
};
} // namespace

FormRig::FormRig()
{
    QDir().mkpath("Lamorel");
    writeFile("Lamorel/lamorel.exe", "#!/bin/sh\nif [ \"$1\" = -V ]; then echo 'Lamorel vesion: 1.4.0'; "
                                     "else exec sleep 600; fi\n");
    QFile::setPermissions("Lamorel/lamorel.exe", QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
    m_install.setPlatform({{"MediaFolder", m_install.parent() + "/media"}, {"COM16", bridge.path()}});
    setDiskSpace(400);
    createSchema(sqliteUtil());
}

void FormRig::setDiskSpace(double availableGB)
{
    m_install.setPlatform({{"DiskTotalGB", 500}, {"DiskAvailableGB", availableGB}});
}

void FormRig::setPlatformInPlace(bool inPlace)
{
    bridge.setBytes(2, platformCommand, {{2, inPlace}, {3, inPlace}});
}

QByteArray FormRig::modelBytes(int printTime, const QImage &picture)
{
    QByteArray image;
    if (!picture.isNull()) {
        QBuffer buffer(&image);
        picture.save(&buffer, "PNG");
    }
    const QByteArray settings =
        "[General]\nmachineType=Pelora620\nlayerCnt=480\nprintTime=" + QByteArray::number(printTime) +
        "\nlayerHeight=0.03\ndpiX=1200\ndpiY=1200\npixelsX=64\npixelsY=64\n"
        "extraBlankPixel=0\npassCnt=4\nmodelMaterialName=WAX\nPrintModeName=fine\n";
    QByteArray bytes(84, '\0');
    const auto put = [&](int at, quint64 offset, quint64 length, bool wide) {
        qToLittleEndian<quint64>(offset, bytes.data() + at);
        if (wide)
            qToLittleEndian<quint64>(length, bytes.data() + at + 8);
        else
            qToLittleEndian<qint32>(qint32(length), bytes.data() + at + 8);
    };
    put(52, 84, quint64(settings.size()), true);
    put(16, quint64(84 + settings.size()), quint64(image.size()), false);
    return bytes + settings + image;
}

void FormRig::addModel(const QString &name, int printTime, const QImage &picture)
{
    writeFile("model/" + name, modelBytes(printTime, picture));
    addToQueue(name);
}

QString FormRig::plugDisk(const QStringList &names)
{
    const QString disk = m_install.parent() + "/media/disk";
    QDir().mkpath(disk);
    for (const QString &name : names)
        writeFile(disk + '/' + name, modelBytes(9300));
    return disk;
}

MainWindow *FormRig::showWindow()
{
    MainWindow *window = mainWindow();
    QObject::disconnect(backgroundService(), &BackgroundService::MessageFormShowSig, nullptr, nullptr);
    window->show();
    waitUntil([] { return false; }, 300); // alarms that were already on their way
    msgForm()->closeMessageForm();
    return window;
}

QString FormRig::message()
{
    return msgForm()->isTaken() ? msgForm()->findChild<QLabel *>("label_text")->text() : QString();
}

void FormRig::answerLater(const QString &button, const QString &text)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        auto *pressed = msgForm()->findChild<QPushButton *>(button);
        if (message().isNull() || (!text.isEmpty() && message() != text) || !pressed->isVisible())
            return;
        timer->stop();
        timer->deleteLater();
        pressed->click();
    });
    timer->start(5);
}

void FormRig::setJobState(const QString &key, const QJsonValue &value)
{
    (xdmControl()->*(&OpenJob::setState))(key, value);
}

int runFormTest(int argc, char **argv, QObject *(*makeTest)())
{
    QApplication application(argc, argv);
    const int code = QTest::qExec(makeTest(), argc, argv);
    fflush(nullptr);
    ::_exit(code);
}
