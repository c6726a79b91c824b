// The look of every page in one language (PELORA_TEST_QM names its file; none: the texts of the sources):
// what is written can be read and is not cut, what is touched is large enough and has its place for itself.

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
#include "forms/WrapLabel.h"
#include "tests/forms/FormRig.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QTranslator>
#include <cmath>

namespace
{
constexpr double leastContrast = 4.5;
constexpr int leastTouch = 56;

double luminance(QRgb colour)
{
    const auto linear = [](int part) {
        const double share = part / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

double contrast(double a, double b)
{
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

/// Of the most frequent colour in an area, the ground, against the one that stands out most, the strokes'
/// core.
double textContrast(const QImage &shot, const QRect &area)
{
    QHash<QRgb, int> colours;
    for (int y = qMax(0, area.top()); y <= qMin(area.bottom(), shot.height() - 1); ++y)
        for (int x = qMax(0, area.left()); x <= qMin(area.right(), shot.width() - 1); ++x)
            ++colours[shot.pixel(x, y)];
    QRgb ground = 0;
    for (auto it = colours.cbegin(); it != colours.cend(); ++it)
        if (it.value() > colours.value(ground))
            ground = it.key();
    double best = 1;
    for (auto it = colours.cbegin(); it != colours.cend(); ++it)
        best = qMax(best, contrast(luminance(it.key()), luminance(ground)));
    return best;
}

bool isTouchable(const QWidget *widget)
{
    return widget->isVisible() && widget->isEnabled() &&
           (qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLineEdit *>(widget) ||
            qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractSlider *>(widget) ||
            qobject_cast<const QAbstractSpinBox *>(widget)) &&
           !qobject_cast<const QHeaderView *>(widget->parent()) &&
           !widget->objectName().startsWith(QLatin1String("qt_")); // parts of other widgets
}

QString nameOf(const QWidget *widget)
{
    return QString("%1 %2").arg(widget->metaObject()->className(), widget->objectName());
}
} // namespace

class TestLook : public QObject
{
    Q_OBJECT

    FormRig m_rig;
    QStringList m_faults;
    QString m_page;

    void fault(const QWidget *widget, const QString &what)
    {
        m_faults << QString("%1: %2: %3").arg(m_page, nameOf(widget), what);
    }

    static QRect placeIn(const QWidget *root, const QWidget *widget)
    {
        return QRect(widget->mapTo(root, QPoint()), widget->size());
    }

    void checkContrast(const QImage &shot, const QWidget *widget, const QRect &area, const QString &text)
    {
        const double found = textContrast(shot, area);
        if (found < leastContrast)
            fault(widget, QString("contrast %1 of \"%2\"").arg(found, 0, 'f', 1).arg(text));
    }

    void checkLabel(const QImage &shot, const QWidget *root, const QLabel *label)
    {
        const QString text = label->text();
        if (text.trimmed().isEmpty() || !label->isEnabled())
            return;
        checkContrast(shot, label, placeIn(root, label), text);
        const QSize room = label->contentsRect().size();
        const bool wraps = label->wordWrap() || qobject_cast<const WrapLabel *>(label);
        const int needed = wraps ? label->heightForWidth(room.width()) : label->sizeHint().height();
        if (needed > room.height() + 2 || (!wraps && label->sizeHint().width() > label->width()))
            fault(label, QString("cut \"%1\"").arg(text));
    }

    void checkButton(const QImage &shot, const QWidget *root, const QAbstractButton *button)
    {
        if (button->text().trimmed().isEmpty() || !button->isEnabled())
            return;
        checkContrast(shot, button, placeIn(root, button), button->text());
        const QSize needed(button->sizeHint().width(), button->fontMetrics().height()), room = button->size();
        if (needed.width() > room.width() || needed.height() > room.height())
            fault(button, QString("cut \"%1\": %2 x %3 of %4 x %5")
                              .arg(button->text())
                              .arg(needed.width())
                              .arg(needed.height())
                              .arg(room.width())
                              .arg(room.height()));
    }

    void checkTable(const QImage &shot, const QWidget *root, const QTableView *table)
    {
        const QAbstractItemModel *model = table->model();
        const QPoint corner = table->viewport()->mapTo(root, QPoint());
        for (int row = 0; model && row < model->rowCount(); ++row) {
            if (table->rowHeight(row) < leastTouch)
                fault(table, QString("row of %1").arg(table->rowHeight(row)));
            for (int column = 0; column < model->columnCount(); ++column) {
                const QModelIndex cell = model->index(row, column);
                const QRect area = table->visualRect(cell);
                const bool hasText =
                    cell.data(Qt::DecorationRole).isNull() && !cell.data().toString().isEmpty();
                if (hasText && !table->isColumnHidden(column) && table->viewport()->rect().contains(area))
                    checkContrast(shot, table, area.translated(corner), cell.data().toString());
            }
        }
    }

    void checkTouch(const QWidget *root)
    {
        QVector<QPair<const QWidget *, QRect>> places;
        for (const QWidget *widget : root->findChildren<QWidget *>()) {
            if (!isTouchable(widget))
                continue;
            const QRect place = placeIn(root, widget);
            if (place.width() < leastTouch || place.height() < leastTouch)
                fault(widget, QString("%1 x %2").arg(place.width()).arg(place.height()));
            for (const QWidget *above = widget->parentWidget(); above; above = above->parentWidget()) {
                if (!above->rect().contains(placeIn(above, widget)))
                    fault(widget, QString("reaches out of %1").arg(nameOf(above)));
                if (above == root)
                    break;
            }
            for (const auto &other : places)
                if (other.second.intersects(place))
                    fault(widget, QString("overlaps %1").arg(nameOf(other.first)));
            places << qMakePair(widget, place);
        }
    }

    /// All that is visible in `root` and may be read or touched.
    void check(const QString &page, QWidget *root)
    {
        m_page = page;
        QApplication::processEvents();
        checkTouch(root);
        const QList<QAbstractButton *> buttons = root->findChildren<QAbstractButton *>();
        QVector<QIcon> icons;
        for (QAbstractButton *button : buttons)
            if (button->isVisible()) // its text alone is looked at
                icons << button->icon(), button->setIcon(QIcon());
        const QImage shot = root->window()->grab(placeIn(root->window(), root)).toImage();
        int next = 0;
        for (QAbstractButton *button : buttons)
            if (button->isVisible())
                button->setIcon(icons[next++]);
        for (const QAbstractButton *button : buttons)
            if (button->isVisible())
                checkButton(shot, root, button);
        for (const QLabel *label : root->findChildren<QLabel *>())
            if (label->isVisible())
                checkLabel(shot, root, label);
        for (const QTableView *table : root->findChildren<QTableView *>())
            if (table->isVisible())
                checkTable(shot, root, table);
        for (const QLineEdit *edit : root->findChildren<QLineEdit *>())
            if (edit->isVisible() && edit->isEnabled() && !edit->text().isEmpty())
                checkContrast(shot, edit, placeIn(root, edit), edit->text());
    }

    void checkPage(const QString &name, QWidget *page)
    {
        mainWindow()->showWidgetInStacked(page);
        QApplication::processEvents();
        msgForm()->closeMessageForm(); // what the page had to tell
        check(name, mainWindow()->centralWidget());
    }

private slots:
    void initTestCase()
    {
        const QString language = qEnvironmentVariable("PELORA_TEST_QM");
        auto *translator = new QTranslator(this);
        QVERIFY2(language.isEmpty() || translator->load(language), qPrintable(language));
        QCoreApplication::installTranslator(translator);
        for (int i = 1; i <= 9; ++i)
            FormRig::addModel(QString("ring-%1.tzl").arg(i));
        m_rig.plugDisk({"ring-1.tzl", "cuff-links.tzl"});
        FormRig::showWindow();
    }
    void cleanup()
    {
        const QStringList faults = m_faults;
        m_faults.clear();
        QVERIFY2(faults.isEmpty(), qPrintable('\n' + faults.join('\n')));
    }

    void pages_data()
    {
        QTest::addColumn<QWidget *>("page");
        const std::pair<const char *, QWidget *> pages[] = {
            {"home", homeForm()},         {"queue", fileForm()},     {"add", addFileForm()},
            {"material", materialForm()}, {"tool", toolForm()},      {"setup", setupForm()},
            {"net", netForm()},           {"email", emailForm()},    {"maintain", maintainForm()},
            {"machine", machineForm()},   {"user", userInfoForm()},  {"warning", warningForm()},
            {"service", debugForm()},     {"info", printInfoForm()}, {"trend", trendForm()}};
        for (const auto &page : pages)
            QTest::newRow(page.first) << page.second;
    }
    void pages()
    {
        QFETCH(QWidget *, page);
        checkPage(QTest::currentDataTag(), page);
    }

    void runningJob()
    {
        xdmControl()->setPrintStatus(PrintStatusPrinting);
        FormRig::setJobState("Tips", "1288-2 14800");
        FormRig::setJobState("PrintLayer", 1288);
        FormRig::setJobState("SumLayer", 14800);
        FormRig::setJobState("LeftTime", 359940.0);
        FormRig::setJobState("StartTime", "2026-11-21 07:14");
        homeForm()->msecEvent();
        checkPage("running job", homeForm());
        xdmControl()->setPrintStatus(PrintStatusIdle);
    }

    void bottles()
    {
        Bottles bottles;
        for (size_t slot : {2u, 3u, 4u}) {
            qstrcpy(bottles.cards[slot].type, "MTS7205");
            bottles.cards[slot].rest_weight = 13;
            bottles.cards[slot].weight = 3000;
        }
        mainWindow()->showWidgetInStacked(materialForm());
        materialForm()->refresh(bottles);
        check("bottles", mainWindow()->centralWidget());
    }

    void messages()
    {
        const int buttons[] = {0, 0x200000, 0x14000};
        for (int icon = 1; icon <= 3; ++icon)
            for (int button : buttons) {
                QVERIFY(
                    mainWindow()->showMessageForm(0x14u, EventHandler::eventMessage(0x14), icon, button, {}));
                check(QString("message %1 %2").arg(icon).arg(button, 0, 16), msgForm());
                msgForm()->closeMessageForm();
            }
        QVERIFY(mainWindow()->showProgress("model/ring.tzl", "/media/disk/ring.tzl", 62, 100));
        check("progress", msgForm());
        msgForm()->closeMessageForm();
    }
};

FORM_TEST_MAIN(TestLook)
#include "test_look.moc"
