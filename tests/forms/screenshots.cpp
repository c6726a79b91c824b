// screenshots FOLDER [TRANSLATION.qm]: writes the pictures of the pages for the documents. Not a test.

#include "engine/XdmControl.h"
#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "forms/HomeForm.h"
#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/MaterialForm.h"
#include "forms/MsgForm.h"
#include "material/TempCtl.h"
#include "printdata/PrintQueue.h"
#include "tests/forms/FormRig.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QTranslator>

#include <unistd.h>

namespace
{
QString folder;

/// A ring with a stone, as a model's picture: bright lines on black, which the pages show as transparent.
QImage ringPicture()
{
    QImage image(348, 348, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0xd8, 0xde, 0xe6), 5));
    painter.drawEllipse(QRectF(50, 120, 248, 200));
    painter.drawEllipse(QRectF(74, 142, 200, 156));
    painter.setBrush(QColor(0x46, 0x3a, 0x28));
    painter.setPen(QPen(QColor(0xf2, 0xa3, 0x3c), 5));
    painter.drawPolygon(QPolygonF({{174, 40}, {226, 100}, {174, 142}, {122, 100}}));
    return image;
}

void shot(const QString &name)
{
    QApplication::processEvents();
    mainWindow()->grab().save(folder + '/' + name + ".png");
}

/// Four bottles with these rests in grams; those with less than nothing are missing.
Bottles bottles(const std::array<int, 4> &rests = {2950, 540, 3000, 1860})
{
    Bottles result;
    for (size_t i = 0; i < rests.size(); ++i) {
        CardInfo &card = result.cards[i + 2];
        if (rests[i] < 0)
            continue;
        qstrcpy(card.type, i < 2 ? "MTS7205" : "MTJ7401");
        qstrcpy(card.sn, qPrintable(QString("26B1104-%1").arg(4711 + i * 13)));
        card.weight = 3000;
        card.rest_weight = quint32(rests[i]);
        card.date = 20271130;
    }
    return result;
}

void materials()
{
    FormRig::press("pushButton_material");
    const auto show = [](const char *name, const Bottles &shown) {
        QApplication::processEvents();
        materialForm()->refresh(shown);
        mainWindow()->grab().save(folder + '/' + name + ".png");
    };
    const auto touch = [&](const char *name, const char *button, const char *answer) {
        QTimer::singleShot(100, [=] {
            shot(name);
            FormRig::press(answer);
        });
        materialForm()->refresh(bottles());
        FormRig::press(button);
    };
    show("material", bottles());
    show("material-missing", bottles({2950, -1, 3000, 12}));
    show("material-all-missing", Bottles());
    touch("material-in-use", "pushButton_4", "pushButton_close");
    touch("material-question", "pushButton_5", "pushButton_No");
    materialForm()->refresh(bottles());
    FormRig::find<QPushButton>("pushButton_3")->setDown(true);
    shot("material-pressed");
    FormRig::find<QPushButton>("pushButton_3")->setDown(false);
}

void fillHome()
{
    xdmControl()->setPrintStatus(PrintStatusPrinting);
    const QDateTime start = QDateTime::currentDateTime().addSecs(-3600 * 4);
    for (const auto &value : {std::pair<const char *, QJsonValue>{"Tips", "288-2 480"},
                              {"PrintLayer", 288},
                              {"SumLayer", 480},
                              {"LeftTime", 9300.0},
                              {"StartTime", start.toString("yyyy-MM-dd hh:mm")}})
        FormRig::setJobState(value.first, value.second);
    emit tempCtl()->tempStatus(1);
    FormRig::find<QPushButton>("pushButton_printStop")->setEnabled(true);
    homeForm()->msecEvent();
    homeForm()->showBottles(bottles());
    FormRig::find<QPushButton>("pushButton_warning")->setText("2");
    FormRig::find<QPushButton>("pushButton_printImage")->setIcon(darkIcon("Pause"));
    FormRig::find<QPushButton>("pushButton_printImage")->setText(HomeForm::tr("暂停"));
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
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    folder = QDir(arguments.value(1, ".")).absolutePath();
    QTranslator translator;
    if (arguments.size() > 2 && translator.load(QFileInfo(arguments.at(2)).absoluteFilePath()))
        QCoreApplication::installTranslator(&translator);
    FormRig rig;
    const QStringList names =
        QString("calibration-pins bracelet-link-x24 impeller-88 signet-oval 珍珠吊坠-v3 crown-bridge-4u "
                "a-very-long-name-of-a-part-from-the-office filigree-ring-17mm")
            .replace(' ', ".tzl ")
            .append(".tzl")
            .split(' ');
    for (const QString &name : names)
        FormRig::addModel(name, ringPicture());
    rig.plugDisk(names.mid(1) + QStringList{"cuff-links.tzl", "chain-110.tzl"});
    FormRig::showWindow();
    FormRig::press("pushButton_home");
    shot("home-idle");
    fillHome();
    shot("home-printing");
    messages();
    materials();
    FormRig::press("pushButton_fileList");
    FormRig::find<QTableView>("tableView")->selectRow(0);
    waitUntil([] { return FormRig::find<QPushButton>("pushButton_addfile")->isVisible(); });
    shot("queue");
    FormRig::press("pushButton_addfile");
    QApplication::processEvents();
    auto *table = FormRig::find<QTableView>("tableView");
    for (int row : {0, 2})
        emit table->clicked(table->model()->index(row, 1));
    shot("add-file");
    ::_exit(0);
}
