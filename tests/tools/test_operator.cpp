// The operator plug-in in a small program: it works what a person could work, refuses the rest, and never
// holds the program up.
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QLocalSocket>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

namespace
{
QString socketPath;

/// A client that waits for its answer, for a thread of its own.
QJsonObject blockingCall(QLocalSocket &socket, const QJsonObject &request)
{
    socket.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    while (!socket.canReadLine() && socket.waitForReadyRead(5000)) {
    }
    return QJsonDocument::fromJson(socket.readLine()).object();
}
} // namespace

/// As the program's own message form: full size, raised to show, lowered to hide.
class MsgForm : public QWidget
{
    Q_OBJECT
public:
    explicit MsgForm(QWidget *parent) : QWidget(parent)
    {
        resize(parent->size());
        auto *frame = new QFrame(this);
        frame->setObjectName("frame_msg");
        frame->setGeometry(50, 50, 300, 200);
        int y = 10;
        for (const char *name : {"label_title", "label_text"}) {
            auto *label = new QLabel(frame);
            label->setObjectName(name);
            label->setGeometry(10, y, 280, 20);
            y += 25;
        }
        for (const char *name : {"pushButton_Yes", "pushButton_No", "pushButton_close"}) {
            auto *button = new QPushButton(frame);
            button->setObjectName(name);
            button->setGeometry(10, y, 100, 25);
            y += 30;
            connect(button, &QPushButton::clicked, this, [=] {
                answer = name;
                lower();
                loop.quit();
            });
        }
    }
    void ask(const QString &text)
    {
        findChild<QLabel *>("label_title")->setText("Title");
        findChild<QLabel *>("label_text")->setText(text);
        findChild<QPushButton *>("pushButton_close")->hide();
        raise();
        loop.exec();
    }
    QEventLoop loop;
    QString answer;
};

class TestOperator : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void clicksWhatCanBeSeen();
    void refusesWhatCannot_data();
    void refusesWhatCannot();
    void meansTheOneThatIsSeen();
    void cellsAndTable();
    void types();
    void readsState();
    void answersMessages();
    void waits();
    void takesPictures();
    void badLines();
    void closes();

private:
    QJsonObject call(const QJsonObject &request, int client = 0);
    QString error(const QJsonObject &request) { return call(request)["error"].toString(); }
    bool ok(const QJsonObject &request) { return call(request)["ok"].toBool(); }
    QPushButton *button(const QString &name, QWidget *parent, const QRect &place);

    std::unique_ptr<QMainWindow> m_window;
    QLocalSocket m_clients[2];
    QStringList m_clicked;
    MsgForm *m_message = nullptr;
    QTemporaryDir m_folder;
};

void TestOperator::initTestCase()
{
    QTRY_VERIFY(QFile::exists(socketPath)); // the plug-in listens once the event loop runs
    for (QLocalSocket &client : m_clients) {
        client.connectToServer(socketPath);
        QVERIFY(client.waitForConnected(5000));
    }
}

QPushButton *TestOperator::button(const QString &name, QWidget *parent, const QRect &place)
{
    auto *made = new QPushButton(name, parent);
    made->setObjectName(name);
    made->setGeometry(place);
    connect(made, &QPushButton::clicked, this, [this, name] { m_clicked << name; });
    return made;
}

void TestOperator::init()
{
    m_window = std::make_unique<QMainWindow>();
    m_window->resize(400, 400);
    auto *page = new QWidget;
    m_window->setCentralWidget(page);
    page->resize(400, 400);
    button("free", page, {10, 10, 80, 40});
    button("hidden", page, {100, 10, 80, 40})->hide();
    button("disabled", page, {190, 10, 80, 40})->setEnabled(false);
    button("covered", page, {10, 60, 80, 40});
    auto *cover = new QFrame(page);
    cover->setObjectName("cover");
    cover->setGeometry(40, 70, 30, 20);
    button("outside", page, {500, 10, 80, 40});
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    m_message = new MsgForm(m_window.get());
    m_message->show();
    m_message->lower();
    m_clicked.clear();
}

QJsonObject TestOperator::call(const QJsonObject &request, int client)
{
    QLocalSocket &socket = m_clients[client];
    socket.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    QElapsedTimer clock;
    clock.start();
    while (!socket.canReadLine() && clock.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return QJsonDocument::fromJson(socket.readLine()).object();
}

void TestOperator::clicksWhatCanBeSeen()
{
    QVERIFY(ok({{"op", "click"}, {"widget", "free"}}));
    QTRY_COMPARE(m_clicked, QStringList{"free"});
    QStringList names;
    for (const QJsonValue &widget : call({{"op", "widgets"}})["widgets"].toArray()) {
        names << widget["name"].toString();
        if (names.last() == "free") {
            QCOMPARE(widget["class"].toString(), QString("QPushButton"));
            QCOMPARE(QRect(widget["x"].toInt(), widget["y"].toInt(), widget["width"].toInt(),
                           widget["height"].toInt()),
                     QRect(10, 10, 80, 40));
            QVERIFY(widget["enabled"].toBool());
            QCOMPARE(widget["text"].toString(), QString("free"));
        }
    }
    QVERIFY(names.contains("free") && names.contains("disabled") && names.contains("cover"));
    for (const char *unseen : {"hidden", "covered", "outside", "frame_msg", "pushButton_Yes"})
        QVERIFY2(!names.contains(unseen), unseen);
}

void TestOperator::refusesWhatCannot_data()
{
    QTest::addColumn<QString>("says");
    QTest::newRow("hidden") << "is hidden";
    QTest::newRow("disabled") << "is disabled";
    QTest::newRow("covered") << "is covered by cover";
    QTest::newRow("outside") << "outside";
    QTest::newRow("absent") << "no widget absent";
    QTest::newRow("pushButton_Yes") << "is covered by";
}

void TestOperator::refusesWhatCannot()
{
    QFETCH(QString, says);
    const QString text = error({{"op", "click"}, {"widget", QTest::currentDataTag()}});
    QVERIFY2(text.contains(says), qPrintable(text));
    QCoreApplication::processEvents();
    QVERIFY(m_clicked.isEmpty());
}

void TestOperator::meansTheOneThatIsSeen()
{
    auto *stack = new QStackedWidget(m_window->centralWidget());
    stack->setGeometry(0, 200, 200, 100);
    for (int page = 0; page < 3; ++page) {
        auto *widget = new QWidget;
        stack->addWidget(widget);
        button("pushButton_back", widget, {10, 10, 80, 40})->setText(QString::number(page));
    }
    stack->show();
    stack->setCurrentIndex(1);
    const auto shown = [this] {
        return call({{"op", "state"}, {"widget", "pushButton_back"}})["state"].toObject()["text"].toString();
    };
    QCOMPARE(shown(), QString("1"));
    stack->setCurrentIndex(2);
    QCOMPARE(shown(), QString("2"));
}

void TestOperator::cellsAndTable()
{
    QTableWidget table(40, 3, m_window->centralWidget());
    table.setObjectName("tableView");
    table.setGeometry(0, 150, 390, 200);
    for (int row = 0; row < 40; ++row)
        table.setItem(row, 1, new QTableWidgetItem(QString("model %1").arg(row)));
    table.setColumnHidden(2, true);
    table.show();
    QList<QPoint> touched;
    connect(&table, &QTableWidget::cellClicked, this,
            [&](int row, int column) { touched << QPoint(row, column); });
    const QJsonArray rows = call({{"op", "table"}, {"widget", "tableView"}})["rows"].toArray();
    QCOMPARE(rows.size(), 40);
    QCOMPARE(rows[33].toArray(), (QJsonArray{"", "model 33", ""}));
    for (int row : {0, 33})
        QVERIFY(ok({{"op", "cell"}, {"widget", "tableView"}, {"row", row}, {"column", 1}}));
    QTRY_COMPARE(touched, (QList<QPoint>{{0, 1}, {33, 1}}));
    for (const QPoint &bad : {QPoint(40, 0), QPoint(-1, 0), QPoint(0, 3)})
        QVERIFY(error({{"op", "cell"}, {"widget", "tableView"}, {"row", bad.x()}, {"column", bad.y()}})
                    .contains("no cell"));
    QVERIFY(error({{"op", "cell"}, {"widget", "tableView"}, {"row", 0}, {"column", 2}}).contains("hidden"));
    QVERIFY(error({{"op", "cell"}, {"widget", "free"}, {"row", 0}, {"column", 0}}).contains("no table"));
}

void TestOperator::types()
{
    QLineEdit edit("before", m_window->centralWidget());
    edit.setObjectName("edit");
    edit.setGeometry(10, 150, 200, 30);
    edit.show();
    const QString text = QString::fromUtf8("Wachs 蜡 \"2\"");
    QVERIFY(ok({{"op", "type"}, {"widget", "edit"}, {"text", text}}));
    QTRY_COMPARE(edit.text(), text);
    edit.setEnabled(false);
    QVERIFY(error({{"op", "type"}, {"widget", "edit"}, {"text", "x"}}).contains("disabled"));
}

void TestOperator::readsState()
{
    QProgressBar bar(m_window->centralWidget());
    bar.setObjectName("bar");
    bar.setGeometry(10, 150, 200, 30);
    bar.setRange(2, 50);
    bar.setValue(20);
    bar.show();
    QCheckBox box("on", m_window->centralWidget());
    box.setObjectName("box");
    box.setChecked(true);
    QJsonObject state = call({{"op", "state"}, {"widget", "bar"}})["state"].toObject();
    QVERIFY(state["visible"].toBool() && state["enabled"].toBool() && !state.contains("checked"));
    QVERIFY(state["value"] == 20 && state["minimum"] == 2 && state["maximum"] == 50);
    state = call({{"op", "state"}, {"widget", "box"}})["state"].toObject();
    QVERIFY(!state["visible"].toBool() && state["checked"].toBool() && state["text"] == "on");
}

void TestOperator::answersMessages()
{
    const QJsonObject question{{"op", "message"}};
    QVERIFY(call(question).contains("message") && call(question)["message"].isNull());
    QVERIFY(error({{"op", "answer"}, {"button", "Yes"}}).contains("no message"));
    // The click whose slot asks is answered before the slot has come back, and so is all else while it asks.
    connect(m_window->findChild<QPushButton *>("free"), &QPushButton::clicked, this,
            [this] { m_message->ask("Really?"); });
    QList<QJsonObject> answers;
    std::unique_ptr<QThread> person(QThread::create([&] {
        QLocalSocket socket;
        socket.connectToServer(socketPath);
        socket.waitForConnected(5000);
        for (const QJsonObject &request :
             {QJsonObject{{"op", "click"}, {"widget", "free"}},
              QJsonObject{{"op", "wait"}, {"message", true}, {"text", "^Real"}, {"timeoutMs", 3000}},
              question, QJsonObject{{"op", "answer"}, {"button", "close"}},
              QJsonObject{{"op", "click"}, {"widget", "free"}},
              QJsonObject{{"op", "answer"}, {"button", "No"}}})
            answers << blockingCall(socket, request);
    }));
    person->start();
    QTRY_VERIFY(person->isFinished());
    QTRY_COMPARE(m_message->answer, QString("pushButton_No"));
    QCOMPARE(answers.size(), 6);
    for (int worked : {0, 1, 2, 5})
        QVERIFY2(answers[worked]["ok"].toBool(), qPrintable(answers[worked]["error"].toString()));
    QCOMPARE(answers[2]["message"].toObject(),
             (QJsonObject{{"title", "Title"}, {"text", "Really?"}, {"buttons", QJsonArray{"Yes", "No"}}}));
    QVERIFY(answers[3]["error"].toString().contains("does not offer close"));
    QVERIFY(answers[4]["error"].toString().contains("is covered by"));
    QVERIFY(call(question)["message"].isNull());
}

void TestOperator::waits()
{
    const QJsonObject wait{{"op", "wait"}, {"widget", "hidden"}, {"visible", true}, {"timeoutMs", 4000}};
    m_clients[1].write(QJsonDocument(wait).toJson(QJsonDocument::Compact) + '\n');
    // The other connection is served meanwhile.
    QVERIFY(ok({{"op", "state"}, {"widget", "free"}}));
    QVERIFY(!m_clients[1].canReadLine());
    m_window->findChild<QPushButton *>("hidden")->show();
    QTRY_VERIFY(m_clients[1].canReadLine());
    QVERIFY(m_clients[1].readLine().contains("true"));
    QVERIFY(ok({{"op", "wait"}, {"widget", "free"}, {"text", "^f.ee$"}}));
    QVERIFY(ok({{"op", "wait"}, {"widget", "absent"}, {"visible", false}}));
    QVERIFY(error({{"op", "wait"}, {"widget", "free"}, {"text", "x"}, {"timeoutMs", 60}}).contains("60 ms"));
    QVERIFY(error({{"op", "wait"}, {"widget", "free"}, {"text", "("}}).contains("regular expression"));
    QVERIFY(error({{"op", "wait"}, {"visible", true}}).contains("name a widget"));
    QVERIFY(error({{"op", "wait"}, {"widget", "free"}}).contains("wait for"));
}

void TestOperator::takesPictures()
{
    QVERIFY(ok({{"op", "shot"}, {"file", m_folder.filePath("all.png")}}));
    QCOMPARE(QImage(m_folder.filePath("all.png")).size(), QSize(400, 400));
    QVERIFY(ok({{"op", "shot"}, {"file", m_folder.filePath("one.png")}, {"widget", "free"}}));
    QCOMPARE(QImage(m_folder.filePath("one.png")).size(), QSize(80, 40));
    QVERIFY(error({{"op", "shot"}, {"file", m_folder.filePath("no/such.png")}}).contains("cannot write"));
}

void TestOperator::badLines()
{
    m_clients[0].write("rubbish\n[1]\n");
    QTRY_VERIFY(m_clients[0].bytesAvailable() > 0);
    QTRY_VERIFY(m_clients[0].canReadLine());
    for (int n = 0; n < 2; ++n) {
        QTRY_VERIFY(m_clients[0].canReadLine());
        QVERIFY(m_clients[0].readLine().contains("no JSON object"));
    }
    QVERIFY(error({{"op", "dance"}}).contains("unknown op dance"));
}

void TestOperator::closes()
{
    QVERIFY(ok({{"op", "close"}}));
    QTRY_VERIFY(!m_window->isVisible());
    QVERIFY(error({{"op", "close"}}).contains("no window"));
}

int main(int argc, char **argv)
{
    QTemporaryDir folder;
    socketPath = folder.filePath("operator");
    qputenv("PELORA_OPERATOR", socketPath.toUtf8());
    qputenv("QT_QPA_GENERIC_PLUGINS", "operator");
    qputenv("QT_PLUGIN_PATH", PLUGIN_FOLDER);
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    TestOperator test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_operator.moc"
