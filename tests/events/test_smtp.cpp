// The SMTP client and the mail tool against a real mail server.

#include "events/Smtp.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSslConfiguration>
#include <QTest>

namespace
{
const QString from = "machine@example.com";
const QString password = "Geheim-wax-7";
const QStringList login{"--login", from + ":" + password};
const QStringList tls{"--tls", "--cert", "cert.pem", "--key", "key.pem"};
const QStringList startTls{"--starttls", "--cert", "cert.pem", "--key", "key.pem"};

/// A mail server of its own process on a loopback port; options are those of smtp_server.py.
struct MailServer : QProcess {
    explicit MailServer(const QStringList &options)
    {
        setProcessChannelMode(ForwardedErrorChannel);
        start(PELORA_PYTHON, QStringList{SMTP_SERVER} + options);
        port = quint16(next()["port"].toInt());
        if (port == 0)
            qFatal("the mail server of the tests does not start: is python3-aiosmtpd installed?");
    }
    ~MailServer() override
    {
        closeWriteChannel();
        waitForFinished(5000);
    }
    /// Other options, apart from TLS, for what connects from now on.
    void set(const QStringList &options)
    {
        write(options.join(' ').toUtf8() + '\n');
        while (!next().contains("set")) // past what earlier sessions have left
            ;
    }
    /// The next mail that it took or login that it saw; empty when none comes.
    QJsonObject next()
    {
        while (!canReadLine() && waitForReadyRead(10000))
            ;
        return QJsonDocument::fromJson(readLine()).object();
    }
    quint16 port = 0;
};

struct Said {
    int code;
    QString text;
};

/// Runs the mail tool on config/email.json and the file body.
Said postrel(const QString &subject = "打印开始", const QStringList &arguments = {})
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start("Postrel/Postrel.exe",
               arguments.isEmpty() ? QStringList{"-a", "config/email.json", "-s", subject, "-b", "body"}
                                   : arguments);
    tool.waitForFinished();
    return {tool.exitCode(), QString::fromUtf8(tool.readAll())};
}

void writeAccount(const QString &host, QJsonObject more = {})
{
    QJsonObject account{
        {"Host", host}, {"From", from}, {"Password", password}, {"Cc", " a@b.example ;; 王@c.example；"}};
    for (auto it = more.begin(); it != more.end(); ++it)
        account[it.key()] = it.value();
    writeFile("config/email.json", QJsonDocument(account).toJson());
}

QString localhost(const MailServer &server)
{
    return QString("localhost:%1").arg(server.port);
}
} // namespace

class TestSmtp : public QObject
{
    Q_OBJECT
    TestInstall m_install;

    static void trust(bool trusted)
    {
        QFile::remove("Postrel/ca.pem");
        if (trusted)
            QFile::copy("cert.pem", "Postrel/ca.pem");
    }

private slots:
    void initTestCase()
    {
        QCOMPARE(QProcess::execute("openssl",
                                   QString("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes "
                                           "-keyout key.pem -out cert.pem -days 2 -subj /CN=localhost "
                                           "-addext subjectAltName=DNS:localhost")
                                       .split(' ')),
                 0);
        QDir().mkpath("Postrel");
        QVERIFY(QFile::copy(POSTREL, "Postrel/Postrel.exe"));
        writeFile("body", "第一行\n.\n.dot\nlast");
        QSslConfiguration ssl = QSslConfiguration::defaultConfiguration();
        ssl.addCaCertificates("cert.pem");
        QSslConfiguration::setDefaultConfiguration(ssl);
        qputenv("ALL_PROXY", "http://127.0.0.1:9"); // the environment of a workshop's computer
    }

    void toolSendsWithAndWithoutTls()
    {
        const QString subject = QString("打印开始 \"x\" ").repeated(20);
        const struct {
            QStringList options;
            bool ssl;
        } table[] = {{{}, false}, {tls, true}, {startTls, false}};
        trust(true);
        for (const auto &row : table) {
            MailServer server(row.options + login);
            writeAccount(localhost(server), {{"SslOnConnect", row.ssl}});
            const Said said = postrel(subject);
            QCOMPARE(said.text, "Sent to a@b.example, 王@c.example by " + localhost(server) + ".\n");
            QCOMPARE(said.code, 0);
            QCOMPARE(server.next()["tried"].toString(), from + ":" + password);
            const QJsonObject mail = server.next();
            QCOMPARE(mail["tls"].toBool(), !row.options.isEmpty());
            QCOMPARE(mail["subject"].toString(), subject);
            QCOMPARE(mail["body"].toString().replace("\r\n", "\n"), QString::fromUtf8(readFile("body")));
            QCOMPARE(mail["defects"].toArray().size(), 0);
            for (const QString &line : mail["message"].toString().split("\r\n"))
                QVERIFY2(line.toUtf8().size() <= 78 && !line.contains('\n'), qPrintable(line));
        }
    }

    void toolTellsWhatFailed()
    {
        MailServer plain({}), tlsOnly(tls), startTlsOnly(startTls);
        const struct {
            MailServer &server;
            QStringList options;
            QJsonObject account;
            int code;
            const char *text;
        } table[] = {
            {tlsOnly, {}, {{"SslOnConnect", true}}, 4, "is not trusted"},
            {startTlsOnly, {}, {}, 4, "is not trusted"},
            {plain, {}, {{"SslOnConnect", true}}, 4, "No TLS"},
            {plain, login, {{"Password", "wrong"}}, 5, "refused the login (535"},
            {plain, login, {{"Password", ""}}, 6, "530"},
            {plain, {}, {{"Host", "localhost:1"}}, 3, "No connection"},
            {plain, {}, {{"Host", "nobody.invalid"}}, 3, "nobody.invalid:587 is not known"},
            {plain, {}, {{"Host", "nobody.invalid"}, {"SslOnConnect", true}}, 3, "invalid:465 is not known"},
            {plain, {"--unknown", "a@b"}, {}, 6, "it refused the recipient a@b.example (550"},
            {plain, {}, {{"Host", ""}}, 2, "No mail server is set"},
            {plain, {}, {{"Host", "smtp://x"}}, 2, "no host name"},
            {plain, {}, {{"Host", "x:70000"}}, 2, "no host name"},
            {plain, {}, {{"From", QJsonValue()}}, 2, "No sender address is set"},
            {plain, {}, {{"Cc", " ; ;"}}, 2, "No recipient is set"},
            {plain, {}, {{"Cc", "a@b.example\nRCPT TO:<c@d>"}}, 2, "no e-mail address"},
        };
        trust(false);
        for (const auto &row : table) {
            row.server.set(row.options);
            writeAccount(localhost(row.server), row.account);
            const Said said = postrel();
            QVERIFY2(said.text.contains(row.text) && said.text.count('\n') == 1, qPrintable(said.text));
            QCOMPARE(said.code, row.code);
            QVERIFY(!said.text.contains(password));
        }
        trust(true);
        writeAccount(QString("127.0.0.1:%1").arg(tlsOnly.port), {{"SslOnConnect", true}});
        QCOMPARE(postrel().code, 4); // trusted, but for another name
        QCOMPARE(postrel("", {"-a", "absent", "-b", "body"}).code, 2);
        QCOMPARE(postrel("", {"-a", "body", "-b", "body"}).code, 2);
        QCOMPARE(postrel("", {"-a", "config/email.json", "-b", "absent"}).code, 2);
        QCOMPARE(postrel("", {"-a", "config/email.json", "-b"}).code, 1);
    }

    void clientSendsWithAndWithoutTls()
    {
        for (const bool ssl : {false, true}) {
            MailServer server((ssl ? tls : QStringList()) + login + QStringList{"--slow", "20"});
            Smtp smtp(from, password);
            QVERIFY(smtp.connectToServer("localhost", server.port, ssl));
            QVERIFY(smtp.send({"a@b.example", "c@d.example"}, "Subject: hi\n\n.\n.dot\n"));
            QCOMPARE(smtp.responses().size(), 9);
            QVERIFY(smtp.responses().first().contains("\n250")); // an answer of several lines
            server.next();
            const QJsonObject mail = server.next();
            QCOMPARE(mail["message"].toString(), QString("Subject: hi\r\n\r\n.\r\n.dot\r\n\r\n"));
            QCOMPARE(mail["to"].toArray().size(), 2);
            QCOMPARE(mail["tls"].toBool(), ssl);
        }
        MailServer slow({"--slow", "5000"});
        QVERIFY(!Smtp(from, password, 100).connectToServer("localhost", slow.port, false));
    }

    void refusalsAndBrokenConnections()
    {
        const struct {
            const char *step;
            int refused, broken; // the client's state; 0: no connection
            int toolCode;        // of the refusal; a broken connection is 3
        } table[] = {{"GREETING", 0, 0, 6}, {"EHLO", 3, 1, 6}, {"AUTH", 3, 2, 5}, {"MAIL", 7, 5, 6},
                     {"RCPT", 7, 6, 6},     {"DATA", 7, 6, 6}, {"TEXT", 7, 7, 6}};
        MailServer server({});
        for (const auto &row : table) {
            for (const bool refuse : {true, false}) {
                server.set(login + QStringList{refuse ? "--refuse" : "--close", row.step});
                Smtp smtp(from, password, 2000);
                const int state = refuse ? row.refused : row.broken;
                QCOMPARE(smtp.connectToServer("localhost", server.port, false), state != 0);
                QVERIFY(!smtp.send({"a@b.example"}, "text"));
                QVERIFY2(state == 0 || smtp.state() == state, row.step);
                writeAccount(localhost(server));
                const Said said = postrel();
                QVERIFY2(said.code == (refuse ? row.toolCode : 3), qPrintable(row.step + said.text));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestSmtp)
#include "test_smtp.moc"
