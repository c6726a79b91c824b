// Every page by real clicks, on the installed program and the simulated machine.

#include "TestPrinter.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QtTest>

class TestPages : public QObject
{
    Q_OBJECT
    TestPrinter m_printer;

    static constexpr int limitMs = 60000;

    PrinterRig &rig() { return m_printer.rig(); }
    bool shows(const char *widget)
    {
        return rig().waitFor([&] { return rig().state(widget)["visible"].toBool(); }, limitMs);
    }
    /// Presses a button; the page that comes up shows this widget.
    bool opens(const char *button, const char *shown) { return rig().click(button) && shows(shown); }
    bool asked(const char *question, const char *answer)
    {
        return !rig().waitMessage(question, limitMs).isEmpty() && rig().answer(answer);
    }
    /// Waits until a label's or button's text matches.
    bool reads(const char *widget, const char *pattern)
    {
        const QRegularExpression wanted(pattern);
        return rig().waitFor([&] { return wanted.match(rig().text(widget)).hasMatch(); }, limitMs);
    }
    /// Fills a box, and puts the keyboard that comes up away again.
    bool type(const char *widget, const QString &text)
    {
        return rig().operate("type", {{"widget", widget}, {"text", text}})["ok"].toBool() && shows("key_hide") &&
               rig().click("key_hide") && reads(widget, qPrintable('^' + QRegularExpression::escape(text)));
    }
    QByteArray mailWith(const QByteArray &subject) const
    {
        QDirIterator mails(m_printer.install() + "/../.PeloraTemp/machine/mail", QDir::Files);
        while (mails.hasNext()) {
            QFile file(mails.next());
            if (file.open(QIODevice::ReadOnly))
                if (const QByteArray text = file.readAll(); text.contains(subject))
                    return text;
        }
        return {};
    }

private slots:
    void initTestCase();
    void queueAndDetails();
    void warningsAndMaterial();
    void mailAccount();
    void network();
    void toolPages();
    void logExport();
    void maintenance();
    void serviceRun();
    void language();
    void powerOff();
};

void TestPages::initTestCase()
{
    for (const char *name : {"戒指 \"17\".tzl", "bar.tzl"})
        QVERIFY2(m_printer.makeModel(name), qPrintable(m_printer.error()));
    QVERIFY2(m_printer.start() && m_printer.settle(), qPrintable(m_printer.error()));
}

void TestPages::queueAndDetails()
{
    for (const char *name : {"戒指 \"17\".tzl", "bar.tzl"}) {
        rig().machine({"usb", "unplug"});
        QVERIFY2(rig().bringFromUsb(m_printer.usb(), name), qPrintable(rig().error()));
    }
    QCOMPARE(rig().column("tableView", 1), (QStringList{"bar.tzl", "戒指 \"17\".tzl"}));
    QVERIFY(rig().clickCell("tableView", 1, 4) && shows("label_layers"));
    QVERIFY(reads("label_layers", "^[1-9][0-9]*"));
    QVERIFY(reads("label_name", "戒指 \"17\""));
    QVERIFY(rig().click("pushButton_printImage") && asked("平台是否为空", "No"));
    QVERIFY(shows("pushButton_printStop") && reads("label_Name", "^bar$")); // Home, and what it would start
    QVERIFY(opens("pushButton_fileList", "pushButtonAbort"));
    for (const char *tab : {"pushButtonComplete", "pushButtonAbort"}) {
        QVERIFY(rig().click(tab));
        QVERIFY(reads("label_page", "^0/0$"));
    }
    QVERIFY(rig().click("pushButtonWaitPrint") && reads("label_page", "^1/1$"));
    QVERIFY(rig().clickCell("tableView", 1, 1) && rig().click("toolButton_fileup"));
    QTRY_COMPARE(rig().column("tableView", 1).value(0), QString("戒指 \"17\".tzl"));
    QVERIFY(rig().click("toolButton_delfile"));
    QTRY_COMPARE(rig().column("tableView", 1), QStringList{"bar.tzl"});
    QVERIFY(!QFile::exists(m_printer.install() + "/model/戒指 \"17\".tzl"));
}

void TestPages::warningsAndMaterial()
{
    QVERIFY(rig().machine({"platform", "take"})["ok"].toBool());
    QVERIFY(opens("pushButton_home", "pushButton_warning"));
    QVERIFY(reads("pushButton_warning", "^[0-9]+$"));
    QVERIFY(opens("pushButton_warning", "label_Name"));
    QVERIFY(opens("pushButton_back", "pushButton_printStop"));
    QVERIFY(rig().machine({"platform", "put"})["ok"].toBool());
    QVERIFY(opens("pushButton_material", "pushButton_4") && rig().click("pushButton_4"));
    QVERIFY(asked("剩余重量", rig().message()["buttons"].toArray().contains("No") ? "No" : "close"));
}

void TestPages::mailAccount()
{
    QVERIFY(opens("pushButton_setup", "pushButton_Email") && opens("pushButton_Email", "lineEdit_host"));
    QVERIFY(type("lineEdit_host", "mail.example"));
    QVERIFY(type("lineEdit_emailFrom", "printer@example.org"));
    QVERIFY(type("textEdit_emailCc", "one@example.org;two@example.org"));
    QVERIFY(rig().click("lineEdit_passwd") && shows("key_w"));
    for (const char *key : {"key_w", "key_a", "key_x", "key_hide"})
        QVERIFY(rig().click(key));
    QVERIFY(rig().click("pushButton_apply") && asked("保存成功", "close"));
    QVERIFY(mailWith("TestEmail").contains("Test  email"));
    QFile account(m_printer.install() + "/config/email.json");
    QVERIFY(account.open(QIODevice::ReadOnly));
    QCOMPARE(QJsonDocument::fromJson(account.readAll())["Password"].toString(), QString("wax"));
    QVERIFY(rig().click("pushButton_reset") && asked("保存成功", "close"));
    QVERIFY(reads("lineEdit_host", "^$"));
    QVERIFY(opens("pushButton_back", "pushButton_Net"));
}

void TestPages::network()
{
    QVERIFY(opens("pushButton_setup", "pushButton_Net") && rig().click("pushButton_Net"));
    rig().waitFor([&] { return !rig().message().isEmpty() || rig().state("lineEdit_ip")["visible"].toBool(); }, limitMs);
    if (!rig().message().isEmpty()) // a computer without such an adapter
        QVERIFY(asked("网卡未正常工作", "close"));
    QVERIFY(shows("lineEdit_ip") && opens("pushButton_back", "pushButton_Language"));
}

void TestPages::toolPages()
{
    const struct {
        const char *door, *widget, *pattern;
    } pages[] = {{"pushButton_machineInfo", "label_version", "^4\\.4\\.1\\.4-III$"},
                 {"pushButton_UserInfo", "label_SystemTotalRunTime", " d$"},
                 {"pushButton_Trend", "label_events", ""},
                 {"pushButton_Debug", "pushButton_zTest", ""}};
    for (const auto &page : pages) {
        QVERIFY(opens("pushButton_tool", page.door) && opens(page.door, page.widget));
        QVERIFY2(reads(page.widget, page.pattern), page.door);
        QVERIFY(opens("pushButton_back", "pushButton_Power"));
    }
}

void TestPages::logExport()
{
    QVERIFY(opens("pushButton_tool", "pushButton_Log") && rig().click("pushButton_Log"));
    const QString exported = m_printer.usb() + "/log/";
    QTRY_VERIFY_WITH_TIMEOUT(rig().message().isEmpty() && QFile::exists(exported + "event.csv"), limitMs);
    QVERIFY(QFileInfo(exported + "pelora.log").size() > 0);
    QVERIFY(!QFile::exists(exported + "pelora.log.md5"));
    QVERIFY(rig().machine({"usb", "unplug"})["ok"].toBool());
    QTRY_VERIFY(!rig().state("pushButton_Log")["enabled"].toBool());
}

void TestPages::maintenance()
{
    QVERIFY(opens("pushButton_tool", "pushButton_3") && opens("pushButton_3", "tableView"));
    QVERIFY(rig().clickCell("tableView", 0, 0));
    QVERIFY(asked("维护是否完成", "Yes"));
    QTRY_VERIFY(rig().column("tableView", 1).value(0).startsWith("100% "));
}

void TestPages::serviceRun()
{
    QVERIFY(opens("pushButton_tool", "pushButton_Debug") && opens("pushButton_Debug", "pushButton_zTest"));
    QVERIFY(rig().click("pushButton_zTest"));
    QVERIFY(asked("是否运动测试", "Yes") && asked("0~145000往复运动", "Yes"));
    QVERIFY(rig().waitFor([&] { return !rig().message()["buttons"].toArray().isEmpty(); }, limitMs));
    QVERIFY(rig().answer("close"));
    QVERIFY(asked("测试完成", "close"));
}

void TestPages::language()
{
    QVERIFY(opens("pushButton_setup", "pushButton_Language"));
    if (!rig().state("pushButton_French")["visible"].toBool())
        QVERIFY(opens("pushButton_Language", "pushButton_French"));
    QVERIFY(rig().click("pushButton_French") && asked("即将重启", "No"));
    QVERIFY(m_printer.restart());
    QVERIFY(opens("pushButton_tool", "pushButton_Power"));
    QVERIFY(!QRegularExpression("\\p{Han}").match(rig().text("pushButton_Power")).hasMatch());
    QFile::remove(m_printer.install() + "/translations/Korean.qm");
    QVERIFY(opens("pushButton_setup", "pushButton_Language"));
    if (!rig().state("pushButton_Korean")["visible"].toBool())
        QVERIFY(opens("pushButton_Language", "pushButton_Korean"));
    QVERIFY(rig().click("pushButton_Korean"));
    QTRY_VERIFY_WITH_TIMEOUT(!rig().message().isEmpty(), limitMs);
    QVERIFY(rig().answer("close"));
    QVERIFY(!QFile::exists(m_printer.install() + "/lan.qm"));
    QVERIFY(m_printer.restart()); // in Chinese again
}

void TestPages::powerOff()
{
    QVERIFY(opens("pushButton_tool", "pushButton_Power") && rig().click("pushButton_Power"));
    QVERIFY(asked("是否关机", "Yes"));
    QVERIFY(!rig().waitMessage("关机中", limitMs).isEmpty());
    QVERIFY(!rig().waitMessage("请关闭电源", limitMs).isEmpty());
    QVERIFY(rig().message()["buttons"].toArray().isEmpty());
    QTRY_VERIFY(m_printer.log().contains("system command not allowed here, taken as done: poweroff"));
    QCOMPARE(TestPrinter::violations(m_printer.stop()), QString());
}

QTEST_GUILESS_MAIN(TestPages)
#include "test_pages.moc"
