// The client program as a shell runs it.

#include "client/FakeMachine.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>

namespace
{
struct Run {
    int code;
    QString out, err;
};
} // namespace

class TestPeloractl : public QObject
{
    Q_OBJECT

    std::unique_ptr<FakeMachine> m_machine;
    QTemporaryDir m_folder;

    /// With the fake machine as --host, unless `port` names another.
    Run run(const QStringList &arguments, int port = 0, const QString &program = PELORACTL)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PELORA_HOST", "127.0.0.1:" + QString::number(port ? port : m_machine->port()));
        environment.insert("EDITOR", "sed -i s/2.5/3.5/");
        environment.remove("VISUAL");
        process.setProcessEnvironment(environment);
        process.setStandardInputFile(QProcess::nullDevice());
        process.start(program, arguments);
        QEventLoop loop; // the machine answers meanwhile
        connect(&process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &loop,
                &QEventLoop::quit);
        QTimer::singleShot(30000, &loop, &QEventLoop::quit);
        loop.exec();
        const bool ended = process.state() == QProcess::NotRunning;
        const bool orderly = ended && process.exitStatus() == QProcess::NormalExit;
        return {orderly ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    QString write(const QString &name, const QByteArray &bytes)
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName()
                                                                                    : QString();
    }

private slots:
    void init() { m_machine = std::make_unique<FakeMachine>(); }
    void cleanup()
    {
        QCOMPARE(m_machine->outOfStep, 0);
        m_machine.reset();
        QSqlDatabase::removeDatabase("machine");
    }

    void wrongUsageReachesNoMachine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("told");
        const QString folder = QDir::tempPath();
        for (const auto &[line, told] : std::initializer_list<std::pair<QString, QString>>{
                 {"", "Usage"},
                 {"frobnicate", "no command"},
                 {"status --frob", "Unknown option"},
                 {"status --timeout", "needs a value"},
                 {"status --timeout soon", "number"},
                 {"status --port 70000", "65535"},
                 {"status now", "Usage"},
                 {"upload " + folder, "no file"},
                 {"upload a b --name c", "one file"},
                 {"upload a --name ../a", "plain file name"},
                 {"upload a --name x\\a", "plain file name"},
                 {"params set nothing a=1", "no parameters"},
                 {"axis x 0", "home"},
                 {"axis w 1", "Usage"},
                 {"can 2 1FF", "no byte"},
                 {"jets start --jets 012", "0 and 1"},
                 {"temps set measured head1.1=5", "measured"},
                 {"temps set warm head1.1=256", "255"},
                 {"restore " + folder + "/nowhere", "no backup"}})
            QTest::newRow(qUtf8Printable(line)) << line << told;
    }
    void wrongUsageReachesNoMachine()
    {
        QFETCH(QString, line);
        QFETCH(QString, told);
        const Run result = run(line.split(' ', Qt::SkipEmptyParts));
        QCOMPARE(result.code, 2);
        QVERIFY2(result.err.contains(told), qUtf8Printable(result.err));
        QVERIFY(m_machine->frames.isEmpty());
    }

    void everyCommandHasHelpAndCompletion()
    {
        const QString help = run({"--help"}).out;
        const QStringList lines = help.section("Commands:\n", 1).section("\n\n", 0, 0).split('\n');
        QVERIFY(lines.size() > 15);
        for (const QString &line : lines) {
            const QString name = line.trimmed().section(' ', 0, 0);
            const Run result = run({name, "--help"});
            QCOMPARE(result.code, 0);
            QVERIFY2(result.out.contains("Examples:\n  peloractl " + name), qUtf8Printable(name));
        }
        const auto complete = [&](const QString &words) {
            const QString script =
                QStringLiteral("source <(%1 completion bash); COMP_WORDS=(peloractl %2); "
                               "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _peloractl; echo ${COMPREPLY[@]}");
            return run({"-c", script.arg(PELORACTL, words)}, 0, "bash").out.trimmed();
        };
        QCOMPARE(complete("rest"), QString("restore"));
        QCOMPARE(complete("--host up queue re"), QString("reprint"));
        QCOMPARE(complete("params set in"), QString("ink"));
        QCOMPARE(complete("upload --bl"), QString("--block"));
    }

    void faultsHaveTheirExitCodes()
    {
        QTcpServer gone;
        QVERIFY(gone.listen(QHostAddress::LocalHost));
        const int port = gone.serverPort();
        gone.close();
        QCOMPARE(run({"status"}, port).code, 3);
        const QList<std::pair<FakeMachine::Fault, int>> faults{
            {FakeMachine::Silent, 4}, {FakeMachine::HangUp, 3}, {FakeMachine::Nonsense, 1}};
        for (const auto &[fault, code] : faults) {
            m_machine->fault = fault;
            const Run result = run({"status", "--timeout", "0.3"});
            QCOMPARE(result.code, code);
            QCOMPARE(result.err.isEmpty(), false);
        }
    }

    void framesAreAsTheWireHasThem()
    {
        QCOMPARE(run({"ping"}).code, 0);
        QCOMPARE(m_machine->frames.first(), QByteArray("\x5A\xA5\x26\x00\x00\x00\xFF\xFF", 8) +
                                                R"({"Action":"Reply","Title":"HeartBeat"})");
        m_machine->frames.clear();
        QCOMPARE(run({"upload", write("nine.tzl", "123456789")}).code, 0);
        QVERIFY(m_machine->frames.contains(
            QByteArray("\x5A\xA5\x11\0\0\0\x02\0\x09\0\0\0\0\0\0\0nine.tzl\0", 25)));
        QVERIFY(m_machine->frames.contains(QByteArray("\xA5\x5A\x09\0\0\0\0\0\0\0\x26\x39\xF4\xCB"
                                                      "123456789",
                                                      23)));
        QVERIFY(m_machine->frames.contains(QByteArray("\x5A\xA5\0\0\0\0\x02\x01", 8)));
        m_machine->frames.clear();
        QCOMPARE(run({"can", "2", "84"}).out, QString("02 84 00 00 00 00 00 00 00\n"));
        QVERIFY(
            m_machine->frames.contains(QByteArray("\x5A\xA5\x09\0\0\0\xAA\x01\x02\x84\0\0\0\0\0\0\0", 17)));
        QCOMPARE(run({"can", "9", "84"}).code, 1);
    }

    void uploadsAreProvenByTheQueue()
    {
        const QString name = QString::fromUtf8("环'\"; drop table PrintQueue; 戒.tzl");
        QByteArray model(5000, 0);
        for (int i = 0; i < model.size(); ++i)
            model[i] = char(i * 7 / 3);
        const QString path = write(name, model);
        m_machine->refuseBlocks = 2;
        Run result = run({"upload", path, "--block", "1", "--json"});
        QCOMPARE(result.code, 0);
        const QJsonObject told = QJsonDocument::fromJson(result.out.toUtf8())[0].toObject();
        QCOMPARE(told["resent"].toInt(), 2);
        QCOMPARE(told["name"].toString(), name);
        QCOMPARE(m_machine->uploaded, model);
        QCOMPARE(m_machine->column("select ModelName from PrintQueue"), QStringList{name});
        m_machine->refuseBlocks = 1000;
        QCOMPARE(run({"upload", path}).code, 1);
        m_machine->refuseBlocks = 0;
        QCOMPARE(run({"upload", write("empty.tzl", {})}).code, 0);
        m_machine->fault =
            FakeMachine::DropUpload; // the old row of the name must not be taken for the new one's
        result = run({"upload", path});
        QCOMPARE(result.code, 1);
        QVERIFY(result.err.contains("queue"));
    }

    void queueChangesAreLookedUp()
    {
        const QString name = "it's \"b\".tzl";
        m_machine->sql(
            "insert into PrintQueue (ModelName,status,ID) values ('a.tzl',0,1), ('it''s \"b\".tzl',0,2), "
            "('c.tzl',2,3)");
        QCOMPARE(run({"queue", "top", name}).out, QString("it's \"b\".tzl is number 1 of 2.\n"));
        QCOMPARE(run({"queue", "down", name}).code, 1); // this machine only knows the top
        QCOMPARE(run({"queue", "top", "d.tzl"}).code, 1);
        QCOMPARE(run({"queue", "reprint", "c.tzl"}).code, 1); // this machine says yes and does nothing
        QCOMPARE(run({"queue", "delete", name}).code, 2);     // nobody there to ask
        QCOMPARE(run({"queue", "delete", name, "-y"}).code, 0);
        QCOMPARE(m_machine->column("select ModelName from PrintQueue"), (QStringList{"a.tzl", "c.tzl"}));
        const QString listed = run({"queue", "list", "--status", "stopped", "--json"}).out;
        const QJsonDocument rows = QJsonDocument::fromJson(listed.toUtf8());
        QCOMPARE(rows.array().size(), 1);
        QCOMPARE(rows[0]["ModelName"].toString(), QString("c.tzl"));
        QCOMPARE(run({"sql", "select nothing"}).code, 1);
        QCOMPARE(run({"sql", "select ModelName from PrintQueue where 0"}).code, 0);
        QCOMPARE(run({"sql", "update PrintQueue set status=2", "-y"}).out, QString("2 rows changed.\n"));
    }

    void parametersShowTheirDifference()
    {
        const QStringList change{"params", "set", "ink", "Key=-7", "Group.Inner=3"};
        const QString difference = "  Group.Inner  2.5 -> 3\n  Key          1 -> -7\n";
        QCOMPARE(run(change).out, difference);
        QCOMPARE(m_machine->titlesWritten(), QStringList());
        m_machine->fault = FakeMachine::LoseWrites;
        QCOMPARE(run(change + QStringList{"-y"}).code, 1);
        m_machine->fault = FakeMachine::None;
        QCOMPARE(run(change + QStringList{"-y"}).out, difference + "Written.\n");
        const QJsonObject sent{{"Title", "Ink.json"},
                               {"Action", "Write"},
                               {"IsSave", true},
                               {"Key", -7},
                               {"Group", QJsonObject{{"Inner", 3}}},
                               {"Text", "wax"}};
        QCOMPARE(m_machine->files["Ink.json"], sent);
        const QJsonDocument shown = QJsonDocument::fromJson(run({"params", "get", "ink"}).out.toUtf8());
        QCOMPARE(shown.object().keys(), (QStringList{"Group", "Key", "Text"}));
        QCOMPARE(run({"params", "set", "ink", "Key=1", "--try", "-y"}).code, 0);
        QCOMPARE(m_machine->files["Ink.json"], sent);
        QCOMPARE(run({"params", "set", "sys", "Key=much", "-y"}).code, 2);
        QCOMPARE(run({"params", "set", "sys", "New=1", "-y"}).code, 2);
        QCOMPARE(run({"params", "set", "use", "Key=2", "-y"}).code, 2);
        QCOMPARE(run({"params", "set", "settings", "Text=12", "-y"}).code, 0); // a text stays a text
        QCOMPARE(m_machine->files["Settings"]["Text"], QJsonValue("12"));
        QCOMPARE(m_machine->files["Settings"]["Action"], QJsonValue("Save"));
        QCOMPARE(run({"params", "edit", "Fan.json", "-y"}).out,
                 QString("  Group.Inner  2.5 -> 3.5\nWritten.\n"));
    }

    void temperaturesKeepTheirOtherBytes()
    {
        QByteArray wanted = m_machine->temperatures[1];
        wanted[1] = char(200);            // head 1, sensor 1
        wanted[20 + 4 * 10 + 2 + 2] = 71; // board 6, third zone
        QCOMPARE(run({"temps", "set", "printing", "head1.1=200", "head41.3=71", "-y"}).code, 0);
        QCOMPARE(m_machine->temperatures[1], wanted);
        m_machine->temperatures[1][20] = 9; // a board that is not where it should be
        QCOMPARE(run({"temps", "set", "printing", "head1.1=20", "-y"}).code, 1);
    }

    void backupComesBack()
    {
        const QString folder = m_folder.filePath("kept");
        QCOMPARE(run({"backup", folder}).code, 0);
        QCOMPARE(run({"backup", folder}).code, 2); // not empty
        const auto files = m_machine->files;
        const QByteArray warm = m_machine->temperatures[2];
        for (QJsonObject &file : m_machine->files)
            file["Key"] = 5;
        m_machine->temperatures[2][1] = m_machine->temperatures[0][3] = 99;
        QCOMPARE(run({"restore", folder}).code, 2); // nobody there to ask
        m_machine->profile = 1;
        QCOMPARE(run({"restore", folder, "-y"}).code, 1); // it prints
        m_machine->profile = 2;
        const QString stray = folder + "/Stray.json";
        QVERIFY(QFile::copy(folder + "/Sys.json", stray));
        QCOMPARE(run({"restore", folder, "-y"}).code, 2);
        QVERIFY(QFile::remove(stray));
        QCOMPARE(m_machine->titlesWritten(), QStringList());
        QCOMPARE(run({"restore", folder, "-y"}).code, 0);
        QCOMPARE(m_machine->titlesWritten(),
                 (QStringList{"MachineName", "Settings", "Styles", "Materials", "Fan.json", "Sys.json",
                              "Ink.json", "Air.json", "0", "2"}));
        QCOMPARE(m_machine->files["Sys.json"]["Key"], files["Sys.json"]["Key"]);
        QCOMPARE(m_machine->files["UseInfo.json"]["Key"], QJsonValue(5));
        QCOMPARE(m_machine->temperatures[2], warm);
        QCOMPARE(run({"restore", folder, "-y"}).out, QString("Nothing differs.\n"));
        m_machine->fault = FakeMachine::LoseWrites;
        m_machine->files["Fan.json"]["Key"] = 6;
        QCOMPARE(run({"restore", folder, "-y"}).code, 1);
    }
};

QTEST_GUILESS_MAIN(TestPeloractl)
#include "test_peloractl.moc"
