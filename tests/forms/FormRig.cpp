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
    m_install.setPlatform({{"MediaFolder", m_install.parent() + "/media"}, {"COM16", bridge.path()}, {"RemotePort", 0}});
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

void FormRig::addModel(const QString &name, const QImage &picture, const char *machine)
{
    QByteArray icon;
    QBuffer buffer(&icon);
    if (!picture.isNull())
        picture.save(&buffer, "PNG");
    writeFile("model/" + name,
              modelBytes(pictureSettings(64, 64, 0, 4) + "printTime=9300\nmachineType=" + machine, icon));
    addToQueue(name);
}

QString FormRig::plugDisk(const QStringList &names)
{
    const QString disk = m_install.parent() + "/media/disk";
    QDir().mkpath(disk);
    for (const QString &name : names)
        writeFile(disk + '/' + name, modelBytes(pictureSettings(64, 64, 0, 4)));
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

void FormRig::press(const QString &button)
{
    find<QAbstractButton>(button)->click();
}

QString FormRig::text(const QString &label)
{
    return find<QLabel>(label)->text();
}

QString FormRig::message()
{
    return msgForm()->isTaken() ? text("label_text") : QString();
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
