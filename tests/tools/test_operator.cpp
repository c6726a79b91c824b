// The operator plug-in in a small program: it works what a person could work, refuses the rest, and never
// holds the program up.
#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLocalSocket>
#include <QMainWindow>
#include <QPushButton>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
QString socketPath;

QByteArray line(const QJsonObject &request)
{
    return QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n';
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
        add<QLabel>("label_title", frame, 10)->setText("Title");
        add<QLabel>("label_text", frame, 35)->setText("Really?");
        add<QPushButton>("pushButton_Yes", frame, 60);
        connect(add<QPushButton>("pushButton_No", frame, 90), &QPushButton::clicked, this, &QWidget::lower);
        add<QPushButton>("pushButton_close", frame, 120)->hide();
    }

private:
    template <typename T> T *add(const char *name, QWidget *frame, int y)
    {
        auto *made = new T(frame);
        made->setObjectName(name);
        made->setGeometry(10, y, 200, 20);
        return made;
    }
};

class TestOperator : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void clicksWhatCanBeSeen();
    void refusesWhatCannot();
    void meansTheOneThatIsSeen();
    void answersMessages();
    void waits();
    void badLines();

private:
    QJsonObject call(const QJsonObject &request, int client = 0);
    QString error(const QJsonObject &request) { return call(request)["error"].toString(); }
    bool ok(const QJsonObject &request) { return call(request)["ok"].toBool(); }
    QPushButton *button(const QString &name, QWidget *parent, const QRect &place);

    std::unique_ptr<QMainWindow> m_window;
    QLocalSocket m_clients[2];
    QStringList m_clicked;
    MsgForm *m_message = nullptr;
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
    socket.write(line(request));
    [&] { QTRY_VERIFY(socket.canReadLine()); }();
    return QJsonDocument::fromJson(socket.readLine()).object();
}

void TestOperator::clicksWhatCanBeSeen()
{
    QVERIFY(ok({{"op", "click"}, {"widget", "free"}}));
    QTRY_COMPARE(m_clicked, QStringList{"free"});
    QStringList names;
    for (const QJsonValue &widget : call({{"op", "widgets"}})["widgets"].toArray()) {
        names << widget["name"].toString();
        if (names.last() == "free")
            QVERIFY(widget["x"] == 10 && widget["width"] == 80 && widget["text"] == "free");
    }
    QVERIFY(names.contains("free") && names.contains("disabled") && names.contains("cover"));
    for (const char *unseen : {"hidden", "covered", "outside", "frame_msg", "pushButton_Yes"})
        QVERIFY2(!names.contains(unseen), unseen);
}

void TestOperator::refusesWhatCannot()
{
    for (const auto &[widget, says] : {std::pair{"hidden", "is hidden"},
                                       {"disabled", "is disabled"},
                                       {"covered", "is covered by cover"},
                                       {"outside", "outside"},
                                       {"absent", "no widget absent"},
                                       {"pushButton_Yes", "is covered by"}}) {
        const QString text = error({{"op", "click"}, {"widget", widget}});
        QVERIFY2(text.contains(says), qPrintable(text));
    }
    QVERIFY(error({{"op", "type"}, {"widget", "disabled"}, {"text", "x"}}).contains("disabled"));
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
    for (int page : {1, 2}) {
        stack->setCurrentIndex(page);
        const QJsonObject answer = call({{"op", "state"}, {"widget", "pushButton_back"}});
        QCOMPARE(answer["state"].toObject()["text"].toString(), QString::number(page));
    }
}

void TestOperator::answersMessages()
{
    const QJsonObject question{{"op", "message"}}, click{{"op", "click"}, {"widget", "free"}};
    QVERIFY(call(question).contains("message") && call(question)["message"].isNull());
    QVERIFY(error({{"op", "answer"}, {"button", "Yes"}}).contains("no message"));
    m_message->raise();
    QVERIFY(ok({{"op", "wait"}, {"message", true}, {"text", "^Real"}, {"timeoutMs", 3000}}));
    QCOMPARE(call(question)["message"].toObject(),
             (QJsonObject{{"title", "Title"}, {"text", "Really?"}, {"buttons", QJsonArray{"Yes", "No"}}}));
    QVERIFY(error({{"op", "answer"}, {"button", "close"}}).contains("does not offer close"));
    QVERIFY(error(click).contains("is covered by"));
    QVERIFY(ok({{"op", "answer"}, {"button", "No"}}));
    QTRY_VERIFY(call(question)["message"].isNull());
    // While the slot of a click asks, the program stays at the operator's service.
    QByteArray served;
    connect(m_window->findChild<QPushButton *>("free"), &QPushButton::clicked, this, [&] {
        m_clients[1].write(line(question));
        [&] { QTRY_VERIFY(m_clients[1].canReadLine()); }();
        served = m_clients[1].readLine();
    });
    QVERIFY(ok(click));
    QTRY_VERIFY(served.contains("true"));
}

void TestOperator::waits()
{
    const QJsonObject wait{{"op", "wait"}, {"widget", "hidden"}, {"visible", true}, {"timeoutMs", 4000}};
    m_clients[1].write(line(wait));
    // The other connection is served meanwhile.
    QVERIFY(ok({{"op", "state"}, {"widget", "free"}}));
    QVERIFY(!m_clients[1].canReadLine());
    m_window->findChild<QPushButton *>("hidden")->show();
    QTRY_VERIFY(m_clients[1].canReadLine());
    QVERIFY(m_clients[1].readLine().contains("true"));
    QVERIFY(ok({{"op", "wait"}, {"widget", "absent"}, {"visible", false}}));
    QVERIFY(error({{"op", "wait"}, {"widget", "free"}, {"text", "x"}, {"timeoutMs", 60}}).contains("60 ms"));
}

void TestOperator::badLines()
{
    m_clients[0].write("rubbish\n[1]\n");
    for (int n = 0; n < 2; ++n) {
        QTRY_VERIFY(m_clients[0].canReadLine());
        QVERIFY(m_clients[0].readLine().contains("no JSON object"));
    }
    QVERIFY(error({{"op", "dance"}}).contains("unknown op dance"));
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
