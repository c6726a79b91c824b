// What holds for all pages alike: opening them leaves nothing behind, and a finger that presses twice does no
// harm.

#include "engine/XdmControl.h"
#include "events/EventHandler.h"
#include "forms/AddFileForm.h"
#include "forms/DebugForm.h"
#include "forms/EmailForm.h"
#include "forms/FileForm.h"
#include "forms/HomeForm.h"
#include "forms/MachineForm.h"
#include "forms/MaintainForm.h"
#include "forms/MaterialForm.h"
#include "forms/MsgForm.h"
#include "forms/NetForm.h"
#include "forms/PrintInfoForm.h"
#include "forms/SetupForm.h"
#include "forms/ToolForm.h"
#include "forms/TrendForm.h"
#include "forms/UserInfoForm.h"
#include "forms/WarningForm.h"
#include "material/TempCtl.h"
#include "tests/forms/FormRig.h"

#include <QAbstractButton>
#include <QMetaMethod>
#include <QtTest>
#include <malloc.h>

namespace
{
constexpr int usualRounds = 60; ///< PELORA_PAGE_ROUNDS asks for more
constexpr int warmUp = 20;      ///< rounds after which caches and lazily made parts are there
constexpr qint64 growthLimit = 256 * 1024;

QList<QWidget *> pages()
{
    return {homeForm(),     fileForm(),  addFileForm(), materialForm(), toolForm(),
            setupForm(),    netForm(),   emailForm(),   userInfoForm(), machineForm(),
            maintainForm(), debugForm(), trendForm(),   warningForm(),  printInfoForm()};
}

struct Open : QObject {
    using QObject::receivers;
};

/// Connections that go out from an object and all below it.
int connections(QObject *root)
{
    int count = 0;
    QList<QObject *> objects = root->findChildren<QObject *>();
    objects << root;
    for (QObject *object : objects) {
        for (int i = 0; i < object->metaObject()->methodCount(); ++i) {
            const QMetaMethod method = object->metaObject()->method(i);
            if (method.methodType() == QMetaMethod::Signal)
                count += (object->*(&Open::receivers))("2" + method.methodSignature());
        }
    }
    return count;
}

int allConnections()
{
    int count = connections(mainWindow());
    QObject *const services[] = {EventHandler::instance(), tempCtl(), xdmControl()};
    for (QObject *service : services)
        count += connections(service);
    for (QWidget *page : pages())
        if (!mainWindow()->isAncestorOf(page))
            count += connections(page);
    return count;
}

void openAll()
{
    for (QWidget *page : pages()) {
        mainWindow()->showWidgetInStacked(page);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}
} // namespace

class TestEveryPage : public QObject
{
    Q_OBJECT
    FormRig m_rig;

    /// Refuses every question and closes every message.
    void refuseMessages()
    {
        auto *timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, [] {
            for (const char *name : {"pushButton_No", "pushButton_close"})
                if (auto *button = msgForm()->findChild<QAbstractButton *>(name);
                    msgForm()->isTaken() && button->isVisible())
                    return button->click();
        });
        timer->start(5);
    }

private slots:
    void initTestCase()
    {
        FormRig::addModel("ring.tzl");
        FormRig::showWindow();
    }

    void openedManyTimes()
    {
        for (int i = 0; i < warmUp; ++i)
            openAll();
        const int connected = allConnections();
        m_rig.bridge.clearRecord();
        const qint64 before = qint64(mallinfo2().uordblks);
        for (int i = 0; i < qMax(usualRounds, qEnvironmentVariableIntValue("PELORA_PAGE_ROUNDS")); ++i)
            openAll();
        m_rig.bridge.clearRecord();
        QCOMPARE(allConnections(), connected);
        const auto growth = [before] { return qint64(mallinfo2().uordblks) - before; };
        QTRY_VERIFY2(growth() < growthLimit, // what a page's worker has in hand goes
                     qPrintable(QString("%1 bytes more in use").arg(growth())));
    }

    void pressedTwiceFast()
    {
        refuseMessages();
        for (QWidget *page : pages()) {
            mainWindow()->showWidgetInStacked(page);
            for (QAbstractButton *button : page->findChildren<QAbstractButton *>()) {
                if (!page->isVisible())
                    mainWindow()->showWidgetInStacked(page);
                if (!button->isVisible() || !button->isEnabled())
                    continue;
                QTest::mouseClick(button, Qt::LeftButton);
                QTest::mouseClick(button, Qt::LeftButton);
                QTRY_VERIFY2(!msgForm()->isTaken(), qPrintable(button->objectName()));
            }
        }
        QVERIFY(mainWindow()->isEnabled());
        FormRig::press("pushButton_home"); // and the pages still follow
        QVERIFY(homeForm()->isVisible());
    }
};

FORM_TEST_MAIN(TestEveryPage)
#include "test_every_page.moc"
