// The service page on scripted boards: what each routine asks, what it then moves, and how it ends.

#include "engine/MachineServices.h"
#include "engine/XdmControl.h"
#include "forms/DebugForm.h"
#include "forms/MsgForm.h"
#include "frame/JsonConfig.h"
#include "printdata/SliceToImage.h"
#include "scripted/fakehib.h"
#include "tests/forms/FormRig.h"

#include <QLabel>
#include <QLibrary>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace
{
struct Services : MachineServices {
    float encoderResolution() const override { return 25400; }
    bool checkHeadInkLevels() override { return low; }
    bool isTempReady() const override { return warm; }
    void setTemperatureMode(quint8) override {}
    QString structureBottleSerial() const override { return {}; }
    QString supportBottleSerial() const override { return {}; }
    std::atomic<bool> low{false};
    bool warm = true;
};

const QString station = "墨站是否正确放置，运动范围内是否清洁";
const QString moveTest = "是否运动测试？";
const QString watch = "测试时注意人工观察是否异常，Z轴即将回零进行0~145000往复运动？";
const QString clear = "请确认喷头下方没有异物，否则将损坏喷头，Z轴即将上下运动？";
const QString container = "喷头下方是否放置容器，即将开始挤蜡？";
const QString closing = "关闭弹窗后完成测试";
const QString cancel = "是否取消挤蜡？";
const QString stackFault = "墨栈光电状态异常";
const QString approach = "h v400 x690000 x550000";
const QString prepared = approach + " H z12000 H";
const QString round = " h v300 x690000 m1 x640000 x690000 m0";
const QString purgeHeight = "H z80000";
} // namespace

class TestService : public QObject
{
    Q_OBJECT

    FormRig m_rig;
    Services m_services;
    std::atomic<bool> m_coupled{false}; // the bridge's thread works the stack
    std::atomic<int> m_sensor{-1};      ///< what the sensor reads whatever the magnet does
    QStringList m_said;                 ///< the messages of a routine, in turn

    /// Axes, magnet, X speed and pressing, in the order of the commands.
    QString trace() const
    {
        const QMap<int, QString> values{{0x60, "y"}, {0x65, "z"}, {0x86, "x"}, {0x8E, "v"}};
        const QMap<int, QString> moves{{0x62, "Y"}, {0x63, "H"}, {0x83, "s"}};
        QStringList steps;
        for (const BoardRequest &request : m_rig.bridge.requests(2)) {
            const int command = request.command();
            if (command == 0x85)
                steps.last() = "h"; // with the homing speed before it
            else if (command == 0x87)
                steps << "m" + QString::number(request.data[1]);
            else if (values.contains(command))
                steps << values[command] + QString::number(request.value());
            else if (moves.contains(command))
                steps << moves[command];
        }
        return steps.join(' ');
    }
    int presses() const { return m_rig.bridge.count(5, 0x57) + m_rig.bridge.count(5, 0x59); }

    /// Presses a button of the page and answers what is asked: each message by its button, once it may.
    struct Answer {
        QString text;
        QString button = "pushButton_Yes";
        std::function<bool()> when = [] { return true; };
    };
    void run(const QString &button, const QVector<Answer> &answers)
    {
        m_said.clear();
        QTimer hand;
        int next = 0;
        connect(&hand, &QTimer::timeout, [&] {
            const QString text = FormRig::message();
            if (!text.isEmpty() && (m_said.isEmpty() || m_said.last() != text))
                m_said << text;
            if (next < answers.size() && text == answers[next].text && answers[next].when())
                FormRig::press(answers[next++].button);
        });
        hand.start(2);
        FormRig::press(button);
        m_said << FormRig::message();
        QCOMPARE(next, answers.size());
    }
    Answer yes(const QString &text) { return {text}; }
    Answer no(const QString &text) { return {text, "pushButton_No"}; }
    Answer close(
        const QString &text, std::function<bool()> when = [] { return true; })
    {
        return {text, "pushButton_close", std::move(when)};
    }
    std::function<bool()> after(int count, int board, int command)
    {
        return [=] { return m_rig.bridge.count(board, command) >= count; };
    }

private slots:
    void initTestCase()
    {
        QFile::link(FAKE_HIB_FILE, "libhibApiDll64.so");
        FormRig::showWindow();
        setMachineServices(&m_services);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.bridge.count(5, 0x42) > 0, 20000); // the boards' start state
        mainWindow()->showWidgetInStacked(debugForm());
    }
    void init()
    {
        writeFile("config/Sys.json", R"({"PullInkStack":690000,"xPressInkPos":640000,"XMoveSpeed":600,
                                         "ZStartPos":2000,"ReverseStartPos":5})");
        sysConfig()->Init("config/Sys.json");
        m_rig.bridge.reset();
        m_coupled = false;
        m_sensor = -1;
        m_services.low = false;
        m_rig.bridge.setHandler(2, 0x87, [this](const BoardRequest &request) {
            m_coupled = request.data[1] != 0;
            return request.data;
        });
        m_rig.bridge.setHandler(2, 0x72, [this](const BoardRequest &request) {
            QByteArray answer = request.data;
            answer[2] = char(m_sensor < 0 ? int(m_coupled) : int(m_sensor));
            return answer;
        });
        m_rig.setPlatformInPlace(true);
    }
    void cleanup()
    {
        msgForm()->closeMessageForm();
        xdmControl()->setPrintStatus(PrintStatusIdle);
    }

    /// A No anywhere ends a routine with no move but those that an earlier Yes allowed.
    void noEndsIt()
    {
        const struct {
            const char *button;
            QVector<Answer> answers;
            QString trace;
        } cases[] = {
            {"pullInkStation", {no(station)}, {}}, {"printDot", {no(station)}, {}},
            {"zTest", {no(moveTest)}, {}},         {"zTest", {yes(moveTest), no(watch)}, {}},
            {"presssInk", {no(clear)}, {}},        {"presssInk", {yes(clear), no(container)}, purgeHeight}};
        for (const auto &row : cases) {
            init();
            run(QString("pushButton_") + row.button, row.answers);
            QCOMPARE(trace(), row.trace);
            QVERIFY(presses() == 0 && !msgForm()->isTaken());
        }
    }

    /// Over another's message no routine starts, and none over a job that it would spoil.
    void refusals()
    {
        for (const char *button : {"pullInkStation", "printDot", "zTest", "presssInk", "normOriginal"}) {
            QVERIFY(mainWindow()->showMessageForm("alarm", 3, 0x200000, ""));
            run(QString("pushButton_") + button, {});
            QCOMPARE(m_said.last(), QString("alarm"));
            msgForm()->closeMessageForm();
        }
        for (const int status : {PrintStatusPrinting, PrintStatusPaused}) {
            xdmControl()->setPrintStatus(status);
            run("pushButton_presssInk", {close("机器处于非空闲状态(打印/暂停)，无法进行此流程")});
        }
        QCOMPARE(trace(), QString());
    }

    void pullsTheStationUntilClosed()
    {
        run("pushButton_pullInkStation", {yes(station), close(closing, [this] {
                                              FormRig::press("pushButton_zTest"); // nothing runs beside it
                                              return after(3, 2, 0x87)();
                                          })});
        const int rounds = m_rig.bridge.count(2, 0x87) / 2;
        QVERIFY(rounds >= 2);
        QCOMPARE(trace(), prepared + QString(round).repeated(rounds));
        QVERIFY(m_said.contains("请稍后，准备中..."));
        QVERIFY(m_said.contains("请稍后，测试即将完成"));
        QCOMPARE(m_said.last(), QString("测试完成(%1)").arg(rounds));
    }

    /// What failed is said, and then how far the run had come.
    void stationFaults()
    {
        sysConfig()->setValue("xPressInkPos", 0);
        run("pushButton_pullInkStation", {yes(station), close("配置文件丢失")});
        QCOMPARE(trace(), QString());

        init();
        m_rig.bridge.fail(FakeBridge::Silent, 2, 0x86, 1);
        run("pushButton_pullInkStation", {yes(station), close("X轴错误(3)")});
        QCOMPARE(trace(), QString("h v400 x690000"));

        init();
        m_sensor = 1; // the stack hangs on the carriage, also without the magnet
        run("pushButton_pullInkStation",
            {yes(station), close(stackFault), close(stackFault, after(1, 2, 0x87))});
        QCOMPARE(trace(), approach + " m0");

        init();
        m_sensor = 0; // it does not come along
        run("pushButton_pullInkStation", {yes(station), close(stackFault)});
        QCOMPARE(trace(), prepared + " h v300 x690000 m1 x640000 m0");
        QCOMPARE(m_said.last(), QString("测试完成(0)"));

        init();
        std::atomic<int> moves{0}; // two to prepare, three a round
        m_rig.bridge.setHandler(2, 0x86, [&moves](const BoardRequest &request) {
            return ++moves == 6 ? QByteArray() : request.data;
        });
        run("pushButton_pullInkStation", {yes(station), close("X 轴停止运动超时")});
        QCOMPARE(trace(), prepared + round + " h v300 x690000");
        QCOMPARE(m_said.last(), QString("测试完成(1)"));
        m_rig.bridge.reset();
    }

    void printsDotsBetweenTheRounds()
    {
        run("pushButton_printDot", {yes(station), close("请选择打印文件")});
        FormRig::addModel("dots.tzl");
        QCOMPARE(sliceToImage()->loadModelInfo("model/dots.tzl"), 0);
        m_rig.setPlatformInPlace(false);
        run("pushButton_printDot", {yes(station), close("平台未放好")});
        m_rig.setPlatformInPlace(true);
        m_services.warm = false;
        run("pushButton_printDot", {yes(station), close("请稍后，加热中(保温->打印)")});
        m_services.warm = true;
        QCOMPARE(trace(), QString());

        run("pushButton_printDot", {yes(station), close(closing, after(2, 2, 0x83))});
        const int rounds = m_rig.bridge.count(2, 0x83);
        QVERIFY(rounds >= 2);
        QCOMPARE(trace(), prepared + " h z2000" + QString(round + " v600 s").repeated(rounds));
        QLibrary heads(QDir::current().filePath("hibApiDll64"));
        const QString picture = decltype(&fakeHibPicture)(heads.resolve("fakeHibPicture"))();
        QVERIFY2(picture.startsWith("64,1320,1,150,600,0,"), qPrintable(picture));
        const bool isLastSupport = rounds % 2 == 0; // the two waxes take turns
        QCOMPARE(picture.section(',', 6), QString(isLastSupport ? "128,0" : "0,128"));
        QCOMPARE(m_said.last(), QString("测试完成(%1)").arg(rounds));

        decltype (&fakeHibFail)(heads.resolve("fakeHibFail"))("hibWaitForImageTransferCompleteWto", 7);
        run("pushButton_printDot", {yes(station), close("打印超时")});
        QCOMPARE(m_said.last(), QString("测试完成(0)"));
    }

    void travelsZ()
    {
        LogCapture log;
        run("pushButton_zTest", {yes(moveTest), yes(watch), close(closing, after(2, 2, 0x65))});
        const int rounds = m_rig.bridge.count(2, 0x65);
        QCOMPARE(trace(), QString("H z145000 ").repeated(rounds).trimmed());
        QCOMPARE(log.count("z test count="), rounds);
        QCOMPARE(m_said.last(), QString("测试完成，请拷贝日志查看测试次数"));
    }

    void purgesUntilCancelled()
    {
        LogCapture log;
        run("pushButton_presssInk", {yes(clear), yes(container), close(cancel, after(3, 5, 0x59))});
        const int rounds = m_rig.bridge.count(5, 0x6A);
        QVERIFY(rounds >= 2);
        QCOMPARE(trace(), purgeHeight);
        QCOMPARE(presses(), 4 * rounds); // two of each head
        QCOMPARE(log.count("press ink count="), rounds);
        QVERIFY(m_said.contains("Z 轴运动中，请注意观察"));
        QCOMPARE(m_said.last(), QString("挤蜡完成"));

        init(); // at its height Z stays; a head that is short of ink holds the run, and closing ends that
        m_rig.bridge.setValue(2, 0x84, 80000);
        m_services.low = true;
        run("pushButton_presssInk", {yes(container), close(cancel, after(2, 5, 0x57))});
        QCOMPARE(trace() + QString::number(m_rig.bridge.count(5, 0x58)), QString("0"));
        QCOMPARE(m_said.last(), QString("挤蜡完成"));
    }

    void worksNormValues()
    {
        const QString edit = "将喷头2 结构材料的归一化值加上偏移量，存为修改值？";
        for (const char *button : {"pushButton_head2", "pushButton_normStructure"})
            FormRig::press(button);
        for (int i = 0; i < 300; ++i)
            FormRig::press("toolButton_plus");
        QCOMPARE(FormRig::text("label_offset"), QString("127"));
        for (int i = 0; i < 120; ++i)
            FormRig::press("toolButton_minus");
        run("pushButton_normEdit", {no(edit)});
        QVERIFY(QDir().entryList({"*.norm"}).isEmpty());
        run("pushButton_normEdit", {yes(edit)});
        QCOMPARE(m_said.last(), QString("归一化值读写完成"));
        QCOMPARE(readFile(QDir().entryList({"*_wave2_edited.norm"}).value(0)), QByteArray("-113\n9\n127\n"));
        xdmControl()->setPrintStatus(PrintStatusPaused);
        run("pushButton_normEdited",
            {yes("将修改后的归一化值写入喷头2 结构材料？"), close("打印时不能读写归一化值")});
    }
};

FORM_TEST_MAIN(TestService)
#include "test_service.moc"
