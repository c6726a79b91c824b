// The setup pages: languages, the address of lan, the mail account; and the maintenance page.

#include "events/EventHandler.h"
#include "events/SendEmail.h"
#include "forms/EmailForm.h"
#include "forms/MaintainForm.h"
#include "forms/MsgForm.h"
#include "forms/NetForm.h"
#include "forms/SetupForm.h"
#include "frame/JsonConfig.h"
#include "support/LogCapture.h"
#include "tests/forms/FormRig.h"

#include <QAbstractEventDispatcher>
#include <QCheckBox>
#include <QDir>
#include <QJsonDocument>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QtConcurrent>

class TestSetup : public QObject
{
    Q_OBJECT

    FormRig m_rig;

    static void writeTool(const QString &path, const QByteArray &body)
    {
        QDir().mkpath(QFileInfo(path).path());
        writeFile(path, "#!/bin/sh\n" + body + "\n");
        QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
    }
    /// The message on screen, which is closed.
    static QString closed()
    {
        const QString text = FormRig::message();
        if (!text.isNull())
            msgForm()->closeMessageForm();
        return text;
    }
    static QString chosenLanguage()
    {
        for (const char *name : {"Chinese", "English", "Turkish", "French", "Korean"})
            if (setupForm()->findChild<QPushButton *>(QString("pushButton_") + name)->isChecked())
                return name;
        return QString();
    }
    static void check()
    {
        const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(maintainForm());
        QCOMPARE(timers.size(), 1);
        QCOMPARE(timers.first().interval, 60000);
        QTimerEvent event(timers.first().timerId);
        QCoreApplication::sendEvent(maintainForm(), &event);
    }
    static QString daysAgo(int days) { return QDate::currentDate().addDays(-days).toString("yyyy-MM-dd"); }

private slots:
    void initTestCase() { FormRig::showWindow(); }
    void cleanup()
    {
        closed();
        platformConfig()->setValue("AllowSystem", false);
    }

    void languages()
    {
        QDir().mkpath("translations");
        for (const char *name : {"Chinese", "English", "French"})
            writeFile(QString("translations/%1.qm").arg(name), name);
        FormRig::press("pushButton_setup");
        QCOMPARE(chosenLanguage(), QString("Chinese"));
        QVERIFY(!FormRig::find<QPushButton>("pushButton_English")->isVisible());
        FormRig::press("pushButton_Language");
        QVERIFY(FormRig::find<QPushButton>("pushButton_English")->isVisible());
        const struct {
            const char *language, *answer, *lanFile, *message;
            int restarts;
        } cases[] = {{"English", "pushButton_No", "English", "", 0},
                     {"French", "pushButton_Yes", "French", "", 1},
                     {"Turkish", nullptr, "", "资源文件拷贝失败", 0}, // the old choice is gone
                     {"Chinese", "pushButton_No", "Chinese", "", 0}};
        for (const auto &row : cases) {
            LogCapture log;
            if (row.answer)
                FormRig::answerLater(row.answer, "即将重启?");
            FormRig::press(QString("pushButton_") + row.language);
            QCOMPARE(closed(), QString(row.message));
            QCOMPARE(readFile("lan.qm"), QByteArray(row.lanFile));
            QCOMPARE(chosenLanguage(), QString(*row.lanFile ? row.lanFile : "Chinese"));
            QCOMPARE(log.count("reboot"), row.restarts);
        }
        FormRig::press("pushButton_home");
        FormRig::press("pushButton_setup");
        QVERIFY(!FormRig::find<QPushButton>("pushButton_English")->isVisible());
        LogCapture log;
        setupForm()->switchLanguage();
        QCOMPARE(log.count("no sender"), 1);
    }

    void addresses()
    {
        const QString mask = " 255.255.255.0 ", ip = "192.168.1.2 ";
        const QMap<LanFault, QStringList> cases = {
            {LanFault::None, {ip + mask + "192.168.1.1", "10.0.0.1 255.255.255.252"}},
            {LanFault::Ip,
             {"0" + mask, "192.168.1" + mask, "192.168.1.256" + mask, "192.168.1.-1" + mask,
              "192.168.01.1" + mask, "192.168.1.0" + mask, "192.168.1.255" + mask, "127.0.0.1 255.0.0.0",
              "239.1.1.1" + mask}},
            {LanFault::Mask, {ip, ip + "255.0.255.0", ip + "0.0.0.0", ip + "255.255.255.254"}},
            {LanFault::Gateway,
             {ip + mask + "192.168.2.1", ip + mask + "192.168.1.2", ip + mask + "router"}}};
        for (auto row = cases.begin(); row != cases.end(); ++row)
            for (const QString &text : row.value()) {
                const QStringList words = text.simplified().split(' ') + QStringList{"", ""};
                QVERIFY2(lanFault({false, words[0], words[1], words[2]}) == row.key(), qPrintable(text));
            }
    }

    void network()
    {
        FormRig::press("pushButton_setup");
        FormRig::press("pushButton_Net");
        closed(); // this computer may have no such adapter
        const auto adapter = [](const char *description, const char *ip, bool dhcp) {
            return AdapterInfo{"eth", description, "", ip, "255.255.0.0", "10.1.0.1", true, dhcp};
        };
        netForm()->initNetwork({adapter("USB eth0", "10.1.0.2", true)});
        QCOMPARE(closed(), QString("网卡未正常工作请检查网线是否正常连接，人工排查问题"));
        netForm()->initNetwork({adapter("USB eth0", "10.1.0.2", false),
                                adapter("Intel(R) a", "10.1.0.3", true),
                                adapter("PCIe b", "10.1.0.4", false)});
        QCOMPARE(closed(), QString());
        auto *ip = FormRig::find<QLineEdit>("lineEdit_ip");
        QCOMPARE(ip->text(), QString("10.1.0.3"));
        QVERIFY(!ip->isEnabled()); // lent
        FormRig::find<QCheckBox>("checkBox_dhcp")->click();
        QVERIFY(ip->isEnabled());

        const QString tools = QDir::current().filePath("tools");
        writeTool(tools + "/nmcli", "echo \"$@\" >> calls; exit `read c < code; echo $c`");
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", tools.toLocal8Bit());
        platformConfig()->setValue("AllowSystem", true);
        const auto save = [&](const QString &address, const QByteArray &code) {
            QFile::remove("calls");
            writeFile("code", code + "\n");
            ip->setText(address);
            FormRig::press("pushButton_Save");
            return closed();
        };
        QCOMPARE(save("10.1.0.300", "0"), QString("IP地址无效，请检查"));
        QVERIFY(!QFile::exists("calls"));
        QCOMPARE(save(" 10.1.0.30 ", "0"), QString("保存成功"));
        QCOMPARE(readFile("calls"),
                 QByteArray("connection modify lan ipv4.method manual ipv4.addresses 10.1.0.30/16 "
                            "ipv4.gateway 10.1.0.1\n--wait 0 connection up lan\n"));
        QCOMPARE(save("10.1.0.30", "10"), QString()); // no connection called lan
        QCOMPARE(save("10.1.0.30", "8"), QString("配置已取消"));
        FormRig::find<QCheckBox>("checkBox_dhcp")->click();
        QCOMPARE(save("", "0"), QString("保存成功"));
        QVERIFY(readFile("calls").startsWith("connection modify lan ipv4.method auto ipv4.addresses  ipv4."));
        writeTool(tools + "/nmcli", "kill -9 $$");
        QCOMPARE(save("", "0"), QString());
        QFile::remove(tools + "/nmcli");
        QCOMPARE(save("", "0"), QString("配置已取消"));
        qputenv("PATH", path);
        platformConfig()->setValue("AllowSystem", false);
        QCOMPARE(save("", "0"), QString("保存成功"));
    }

    void mail()
    {
        writeTool("Postrel/Postrel.exe", "read line < gate; echo \"550 $4\"");
        QCOMPARE(::system("mkfifo gate"), 0);
        writeFile("config/email.json",
                  "{\"Host\":\"mail.test\",\"Password\":\"p\",\"Ink\":true,\"Cc\":\"a@b;c@d\"}");
        emailConfig()->Init("config/email.json");
        FormRig::press("pushButton_setup");
        FormRig::press("pushButton_Email");
        auto *password = FormRig::find<QLineEdit>("lineEdit_passwd");
        QCOMPARE(FormRig::find<QLineEdit>("lineEdit_host")->text() + password->text() +
                     FormRig::find<QTextEdit>("textEdit_emailCc")->toPlainText(),
                 QString("mail.testpa@b;c@d"));
        QCOMPARE(password->echoMode(), QLineEdit::Password);
        FormRig::press("pushButton_visible");
        QCOMPARE(password->echoMode(), QLineEdit::Normal);
        for (const char *toggle : {"pushButton_1", "pushButton_2"})
            FormRig::press(toggle);

        QTimer::singleShot(0, [] {
            QCOMPARE(FormRig::message(), QString("正在发送测试邮件，请稍候"));
            emailForm()->on_pushButton_apply_clicked(); // one mail at a time
            QtConcurrent::run([] { writeFile("gate", "go\n"); });
        });
        FormRig::press("pushButton_apply");
        QCOMPARE(closed(), QString("保存成功\n550 TestEmail\n"));
        const QJsonObject stored = QJsonDocument::fromJson(readFile("config/email.json")).object();
        const QJsonObject expected = {{"Host", "mail.test"}, {"From", ""},        {"Password", "p"},
                                      {"Cc", "a@b;c@d"},     {"Ink", false},      {"SslOnConnect", false},
                                      {"Error", false},      {"Maintain", false}, {"PrintStop", true}};
        QCOMPARE(stored, expected);
        FormRig::press("pushButton_reset");
        QCOMPARE(closed(), QString("保存成功"));
        QCOMPARE(readFile("config/email.json"), QByteArray("{}"));
        QVERIFY(password->text().isEmpty() && !FormRig::find<QPushButton>("pushButton_2")->isChecked());
    }

    void keyboardForEditBoxes()
    {
        int calls = 0;
        connect(emailForm(), &EmailForm::showKeyBoard, this, [&] { ++calls; });
        connect(netForm(), &NetForm::showKeyBoard, this, [&] { ++calls; });
        QWidgetList boxes = {emailForm()->findChild<QTextEdit *>()->viewport()};
        for (QWidget *form : QWidgetList{emailForm(), netForm()})
            for (QLineEdit *box : form->findChildren<QLineEdit *>())
                boxes << box;
        QCOMPARE(boxes.size(), 7);
        for (QWidget *box : boxes) {
            calls = 0;
            QTest::mouseClick(box, Qt::LeftButton);
            QVERIFY2(calls > 0, qPrintable(box->objectName()));
        }
    }

    void maintenance()
    {
        constexpr quint32 event = 0x00ffff07;
        const QString file = "config/MaintainPlan.json";
        const struct {
            QByteArray dates;
            const char *rest; ///< of row 0
            int count;        ///< of the event
            bool told;
        } cases[] = {
            {"{\"0\": \"" + daysAgo(6).toUtf8() + "\"}", "15% 当前维护循环", 0, false},
            {"{\"0\": \"" + daysAgo(7).toUtf8() + "\"}", "0% 当前维护循环", 1, false},
            {"{\"0\": \"" + daysAgo(14).toUtf8() + "\"}", "-100% 当前维护循环", 2, true},
            {"no JSON", "-100% 当前维护循环", 0, false},
            {"{\"0\": \"" + daysAgo(-365).toUtf8() + "\"}", "5314% 当前维护循环", 0, false},
            {"{\"0\": \"" + daysAgo(365).toUtf8() + "\"}", "-5114% 当前维护循环", 1, true},
        };
        const auto *model = maintainForm()->findChild<QTableView *>("tableView")->model();
        for (const auto &row : cases) {
            writeFile(file, row.dates);
            check();
            QCOMPARE(model->index(0, 1).data().toString(), QString(row.rest));
            QCOMPARE(int(EventHandler::eventCount(event)), row.count);
            QCOMPARE(closed(), row.told ? EventHandler::eventMessage(event) : QString());
        }
        const auto touch = [&](const char *answer) {
            FormRig::answerLater(answer, "维护是否完成?");
            maintainForm()->showToolTip(model->index(0, 0));
            return model->index(0, 1).data().toString();
        };
        QCOMPARE(touch("pushButton_No"), QString("-5114% 当前维护循环"));
        QCOMPARE(touch("pushButton_Yes"), QString("100% 当前维护循环"));
        QVERIFY(EventHandler::isEventActive(event)); // until the next check
        check();
        QVERIFY(!EventHandler::isEventActive(event));
        QCOMPARE(readFile(file).count(daysAgo(0).toUtf8()), 1);
        QFile::remove(file);
        check();
        QCOMPARE(FormRig::message(), QString());
    }
};

FORM_TEST_MAIN(TestSetup)
#include "test_setup.moc"
