// screenshots FOLDER [TRANSLATION.qm]: writes a picture of every page and message. Not a test.

#include "engine/XdmControl.h"
#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "forms/HomeForm.h"
#include "forms/Icons.h"
#include "forms/LayerPicture.h"
#include "forms/MaterialForm.h"
#include "forms/MsgForm.h"
#include "forms/NetForm.h"
#include "material/TempCtl.h"
#include "printdata/SliceToImage.h"
#include "tests/forms/FormRig.h"
#include "screens/Palette.h"
#include "screens/ScreenData.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTranslator>

#include <functional>
#include <unistd.h>

namespace
{
QString folder;

void shot(const QString &name)
{
    QApplication::processEvents();
    withPalette(mainWindow()->grab().toImage(), 64).save(folder + '/' + name + ".png", nullptr, 0);
}

void openTool(const char *button)
{
    FormRig::press("pushButton_tool");
    FormRig::press(button);
}

/// Gives these answers to what `ask` asks; takes each message before its answer.
void shotMessages(const QString &name, const std::function<void()> &ask, const QStringList &answers)
{
    QTimer timer;
    int given = 0;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        const auto *answer = msgForm()->findChild<QPushButton *>(answers.value(given));
        if (!msgForm()->isTaken() || !answer || !answer->isVisible())
            return;
        shot(given ? QString("%1-%2").arg(name).arg(given + 1) : name);
        FormRig::press(answers.at(given++));
    });
    timer.start(20);
    ask();
    waitUntil([&] { return given == answers.size() && !msgForm()->isTaken(); });
}

void shotMessages(const QString &name, const char *button, const QStringList &answers)
{
    shotMessages(
        name, [=] { FormRig::press(button); }, answers);
}

void home(FormRig *rig)
{
    FormRig::press("pushButton_home");
    homeForm()->showBottles(bottles());
    shot("home-idle");
    rig->setPlatformInPlace(true);
    shotMessages("home-start", "pushButton_printImage", {"pushButton_Yes", "pushButton_No"});
    rig->setDiskSpace(60);
    shotMessages("home-disk", "pushButton_printImage", {"pushButton_close"});
    rig->setDiskSpace(400);
}

void setJob(int status, const char *icon, const QString &meaning)
{
    xdmControl()->setPrintStatus(status);
    const QString start = QDateTime::currentDateTime().addSecs(-3600 * 4).toString("yyyy-MM-dd hh:mm");
    const QJsonObject state{{"Tips", QString("%1-2 480").arg(jobLayer)},
                            {"PrintLayer", jobLayer},
                            {"SumLayer", 480},
                            {"LeftTime", 9300.0},
                            {"StartTime", start}};
    for (auto it = state.begin(); it != state.end(); ++it)
        FormRig::setJobState(it.key(), it.value());
    FormRig::find<QPushButton>("pushButton_printImage")->setIcon(darkIcon(icon));
    FormRig::find<QPushButton>("pushButton_printImage")->setText(meaning);
    homeForm()->msecEvent();
    homeForm()->showBottles(bottles());
}

/// The pages that differ while a job runs.
void job()
{
    FormRig::press("pushButton_home");
    FormRig::find<QPushButton>("pushButton_printStop")->setEnabled(true);
    emit tempCtl()->tempStatus(1);
    setJob(PrintStatusPrinting, "Pause", HomeForm::tr("暂停"));
    writeJobLayer(sliceToImage()->fileName());
    auto *layer = FormRig::find<LayerPicture>("layerPicture");
    layer->look();
    waitUntil([=] { return layer->layer() == jobLayer; });
    shot("home-printing");
    shotMessages("home-stop", "pushButton_printStop", {"pushButton_No"});
    openTool("pushButton_Debug");
    shotMessages("service-refused", "pushButton_presssInk", {"pushButton_close"});
    FormRig::press("pushButton_home");
    setJob(PrintStatusPaused, "Resume", HomeForm::tr("继续"));
    shot("home-paused");
    homeForm()->stopPrintSlots();
    layer->look();
}

void messages()
{
    const auto show = [](const char *name, quint32 id, const QString &text, int icon, int buttons) {
        mainWindow()->showMessageForm(id, text, icon, buttons, QString());
        shot(name);
        mainWindow()->closeMessageForm();
    };
    const auto event = [](quint32 id) { return EventHandler::eventMessage(id); };
    show("message-information", 0x14, event(0x14), MessageIcon::information, MessageButtons::close);
    show("message-warning", 0x16, event(0x16), MessageIcon::warning, MessageButtons::close);
    show("message-error", 0x10, event(0x10), MessageIcon::critical, MessageButtons::close);
    show("message-question", 0x13, event(0x13).arg("filigree-ring-17mm.tzl", "Pelora620"),
         MessageIcon::critical, MessageButtons::yesNo);
    mainWindow()->showProgress(QCoreApplication::translate("FileForm", "文件拷贝中"),
                               QCoreApplication::translate("FileForm", "从 %1 到 %2")
                                   .arg("/media/disk/filigree-ring-17mm.tzl", "model/filigree-ring-17mm.tzl"),
                               62, 100);
    shot("message-progress");
    mainWindow()->closeMessageForm();
}

void materials()
{
    FormRig::press("pushButton_material");
    const auto show = [](const char *name, const Bottles &shown) {
        QApplication::processEvents();
        materialForm()->refresh(shown);
        shot(name);
    };
    show("material-missing", bottles({2950, -1, 3000, 12}));
    show("material-all-missing", Bottles());
    show("material", bottles());
    shotMessages("material-in-use", "pushButton_4", {"pushButton_close"});
    materialForm()->refresh(bottles());
    shotMessages("material-question", "pushButton_5", {"pushButton_No"});
}

void queue()
{
    FormRig::press("pushButton_fileList");
    waitUntil([] { return FormRig::find<QPushButton>("pushButton_addfile")->isVisible(); });
    for (const char *tab : {"pushButtonComplete", "pushButtonAbort", "pushButtonWaitPrint"}) {
        FormRig::press(tab);
        FormRig::find<QTableView>("tableView")->selectRow(0);
        shot(QString("queue-") + QString(tab).mid(10).toLower());
    }
    auto *table = FormRig::find<QTableView>("tableView");
    emit table->clicked(table->model()->index(0, 4));
    shot("model-details");
    FormRig::press("pushButton_back");
    FormRig::press("pushButton_addfile");
    QApplication::processEvents();
    table = FormRig::find<QTableView>("tableView");
    for (int row : {0, 2})
        emit table->clicked(table->model()->index(row, 1));
    shot("add-file");
}

void tools()
{
    const std::pair<const char *, const char *> pages[] = {{"machine", "pushButton_machineInfo"},
                                                           {"usage", "pushButton_UserInfo"},
                                                           {"maintain", "pushButton_3"},
                                                           {"service", "pushButton_Debug"}};
    for (const auto &page : pages) {
        openTool(page.second);
        waitUntil([] { return false; }, 200); // what a page fetches off this thread
        shot(page.first);
    }
    shotMessages("service-station", "pushButton_pullInkStation", {"pushButton_No"});
    shotMessages("service-z", "pushButton_zTest", {"pushButton_Yes", "pushButton_No"});
    shotMessages("service-purge", "pushButton_presssInk", {"pushButton_Yes", "pushButton_No"});
    openTool("pushButton_3");
    auto *plan = FormRig::find<QTableView>("tableView");
    shotMessages("maintain-question", [=] { emit plan->clicked(plan->model()->index(1, 0)); },
                 {"pushButton_No"});
    FormRig::press("pushButton_tool");
    shot("tool");
    FormRig::press("pushButton_Log");
    shot("tool-logs-saved");
}

void trends()
{
    writeTrendLogs();
    openTool("pushButton_Trend");
    waitUntil([] { return false; }, 1500);
    shot("trend");
    FormRig::press("pushButton_zone4");
    FormRig::press("pushButton_air2");
    QTest::mouseClick(FormRig::find<QWidget>("plotTemp"), Qt::LeftButton, {}, QPoint(310, 120));
    shot("trend-touched");
}

void typeInto(const char *box)
{
    QTest::mouseClick(FormRig::find<QLineEdit>(box), Qt::LeftButton);
}

void strike(const QStringList &keys)
{
    for (const QString &key : keys)
        QTest::mouseClick(FormRig::find<QPushButton>("key_" + key), Qt::LeftButton);
}

void setup()
{
    FormRig::press("pushButton_setup");
    FormRig::press("pushButton_Language");
    shot("setup");
    FormRig::press("pushButton_Net");
    mainWindow()->closeMessageForm();
    AdapterInfo adapter;
    adapter.name = "lan";
    adapter.description = "PCIe GbE";
    adapter.ip = "192.168.10.42";
    adapter.mask = "255.255.255.0";
    adapter.gateway = "192.168.10.1";
    netForm()->initNetwork({adapter});
    shot("net");
    typeInto("lineEdit_ip");
    shot("net-keyboard");
    strike({"hide"});
    netForm()->initNetwork({});
    shot("net-no-adapter");
    mainWindow()->closeMessageForm();
    FormRig::press("pushButton_setup");
    FormRig::press("pushButton_Email");
    shot("email");
    typeInto("lineEdit_emailFrom");
    shot("email-keyboard");
    for (const char *page : {"symbols", "accents"}) {
        strike({page});
        shot(QString("keyboard-") + page);
    }
    strike(QString("letters language z h i c h e n g").split(' '));
    shot("keyboard-pinyin");
    strike({"hide"});
}

void warnings()
{
    FormRig::press("pushButton_home");
    FormRig::press("pushButton_warning");
    shot("warning-none");
    raiseEvents();
    FormRig::press("pushButton_home");
    waitUntil([] { return FormRig::find<QPushButton>("pushButton_warning")->text() != "0"; });
    shot("home-warnings");
    raiseEvents();
    FormRig::press("pushButton_warning");
    shot("warning");
}

/// As the start of the program finds it.
void chooseLanguage(const QString &file)
{
    QDir().mkpath("translations");
    QFile::copy(file, "translations/" + QFileInfo(file).fileName());
    QFile::copy(file, "lan.qm");
}

/// Ends with the machine off.
void power()
{
    FormRig::press("pushButton_tool");
    QTimer::singleShot(3000, [] {
        shot("power-cooling");
        ::_exit(0);
    });
    shotMessages("power", "pushButton_Power", {"pushButton_Yes"});
}
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    folder = QDir(arguments.value(1, ".")).absolutePath();
    QTranslator translator;
    const QString language = QFileInfo(arguments.value(2)).absoluteFilePath();
    if (translator.load(language))
        QCoreApplication::installTranslator(&translator);
    FormRig rig;
    chooseLanguage(language);
    fillQueue();
    writeSettings();
    rig.plugDisk({"cuff-links.tzl", "filigree-ring-17mm.tzl", "impeller-88.tzl", "珍珠吊坠-v3.tzl",
                  "chain-110.tzl", "signet-oval.tzl", "bracelet-link-x24.tzl", "pendant-leaf.tzl"});
    FormRig::showWindow();
    home(&rig);
    messages();
    materials();
    queue();
    tools();
    trends();
    setup();
    job();
    warnings();
    power();
}
