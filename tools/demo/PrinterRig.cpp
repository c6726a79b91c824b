#include "PrinterRig.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QThread>
#include <QUuid>
#include <utility>

namespace {
constexpr int startLimitMs = 60000; // a loaded two-core machine under a sanitizer
constexpr int pageLimitMs = 30000;
constexpr int questionMs = 5000; // for the board's answer before the question

QProcessEnvironment productEnvironment(const RigOptions &options, const QString &socket)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PELORA_TIME_SCALE", QString::number(options.scale));
    environment.insert("QT_QPA_PLATFORM", options.platform);
    environment.insert("QT_QPA_GENERIC_PLUGINS", "operator");
    environment.insert("QT_PLUGIN_PATH", options.install + "/plugins");
    environment.insert("PELORA_OPERATOR", socket);
    for (const QString &pair : options.environment)
        environment.insert(pair.section('=', 0, 0), pair.section('=', 1));
    return environment;
}
} // namespace

PrinterRig::PrinterRig(const RigOptions &options)
    : m_options(options),
      m_operatorSocket(QDir::tempPath() + "/pelora-op-" + QUuid::createUuid().toString(QUuid::Id128).left(12))
{
}

PrinterRig::~PrinterRig()
{
    for (QProcess *process : {&m_product, &m_machine}) {
        if (process->state() == QProcess::NotRunning)
            continue;
        process->kill();
        process->waitForFinished(10000);
    }
    QFile::remove(m_operatorSocket);
}

bool PrinterRig::fail(const QString &what)
{
    m_error = what;
    return false;
}

bool PrinterRig::startMachine()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PELORA_TIME_SCALE", QString::number(m_options.scale));
    QStringList arguments = QStringList{"--install", m_options.install} + m_options.machineArguments;
    if (!m_options.panelPlatform.isEmpty()) {
        environment.insert("QT_QPA_PLATFORM", m_options.panelPlatform);
        arguments << "--panel";
    }
    m_machine.setProcessEnvironment(environment);
    m_machine.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_machine.setWorkingDirectory(m_options.install);
    m_machine.start(path("pelora-machine"), arguments);
    QByteArray line;
    QElapsedTimer clock;
    for (clock.start(); !line.contains('\n') && clock.elapsed() < startLimitMs;) {
        if (!m_machine.waitForReadyRead(500) && m_machine.state() == QProcess::NotRunning)
            return fail("the simulated machine did not start: " + m_machine.errorString());
        line += m_machine.readAllStandardOutput();
    }
    if (!line.startsWith("ready "))
        return fail("the simulated machine is not ready: " + line);
    QFile settings(path("config/Platform.json"));
    if (!settings.open(QIODevice::ReadOnly))
        return fail("no config/Platform.json");
    const QString control = QJsonDocument::fromJson(settings.readAll())["MachineControl"].toString();
    return m_control.connectTo(control, startLimitMs) || fail("no control socket of the machine: " + control);
}

bool PrinterRig::startProduct()
{
    m_product.setProcessEnvironment(productEnvironment(m_options, m_operatorSocket));
    m_product.setProcessChannelMode(QProcess::MergedChannels);
    m_product.setStandardOutputFile(m_options.install + "/../product-output.txt");
    m_product.setWorkingDirectory(m_options.install);
    m_product.start(path("pelora"), m_options.productArguments);
    if (!m_product.waitForStarted(startLimitMs))
        return fail("the program did not start: " + m_product.errorString());
    if (!m_operator.connectTo(m_operatorSocket, startLimitMs))
        return fail("the operator cannot reach the program");
    // A message may cover the window from the start.
    const auto shown = [this] { return state("pushButton_fileList")["visible"].toBool() || !message().isEmpty(); };
    return waitFor(shown, startLimitMs) || fail("the window did not appear");
}

bool PrinterRig::stopProduct()
{
    operate("close", {}, 2000);
    if (m_product.waitForFinished(10000))
        return true;
    return fail("the program did not end");
}

bool PrinterRig::stopMachine()
{
    machine({"stop"});
    if (m_machine.waitForFinished(60000))
        return true;
    return fail("the simulated machine did not end");
}

QJsonObject PrinterRig::operate(const QString &op, QJsonObject arguments, int timeoutMs)
{
    arguments["op"] = op;
    QElapsedTimer clock;
    clock.start();
    const QJsonObject answer = m_operator.call(arguments, timeoutMs);
    m_slowestAnswerMs = qMax(m_slowestAnswerMs, clock.elapsed());
    if (!answer["ok"].toBool())
        m_error = op + ": " + answer["error"].toString();
    return answer;
}

bool PrinterRig::touch(const QString &op, const QJsonObject &arguments)
{
    bool done = false;
    const auto settled = [&] {
        done = operate(op, arguments)["ok"].toBool();
        return done || !m_error.contains("is covered by") || !message()["buttons"].toArray().isEmpty();
    };
    waitFor(settled, pageLimitMs);
    return done;
}

bool PrinterRig::click(const QString &widget)
{
    return touch("click", {{"widget", widget}});
}

bool PrinterRig::clickCell(const QString &table, int row, int column)
{
    return touch("cell", {{"widget", table}, {"row", row}, {"column", column}});
}

QJsonObject PrinterRig::state(const QString &widget)
{
    return operate("state", {{"widget", widget}})["state"].toObject();
}

QString PrinterRig::text(const QString &widget)
{
    return state(widget)["text"].toString();
}

QStringList PrinterRig::column(const QString &table, int column)
{
    QStringList texts;
    const QJsonArray rows = operate("table", {{"widget", table}})["rows"].toArray();
    for (const QJsonValue &row : rows)
        texts << row.toArray().at(column).toString();
    return texts;
}

QJsonObject PrinterRig::message()
{
    return operate("message")["message"].toObject();
}

bool PrinterRig::answer(const QString &button)
{
    return operate("answer", {{"button", button}})["ok"].toBool();
}

bool PrinterRig::shot(const QString &file)
{
    return operate("shot", {{"file", QFileInfo(file).absoluteFilePath()}})["ok"].toBool();
}

qint64 PrinterRig::takeSlowestAnswer()
{
    return std::exchange(m_slowestAnswerMs, 0);
}

double PrinterRig::peakMemoryMB() const
{
    QFile status(QString("/proc/%1/status").arg(m_product.processId()));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    static const QRegularExpression peak("VmHWM:\\s+(\\d+) kB");
    return peak.match(QString::fromLatin1(status.readAll())).captured(1).toDouble() / 1024;
}

bool PrinterRig::waitFor(const std::function<bool()> &condition, int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > timeoutMs)
            return false;
        QThread::msleep(20);
    }
    return true;
}

QString PrinterRig::waitMessage(const QString &pattern, int timeoutMs)
{
    const QRegularExpression wanted(pattern);
    QString found;
    waitFor(
        [&] {
            const QString text = message()["text"].toString();
            if (wanted.match(text).hasMatch())
                found = text;
            return !found.isEmpty();
        },
        timeoutMs);
    return found;
}

QJsonObject PrinterRig::machine(const QStringList &command)
{
    const QJsonObject answer = m_control.call({{"cmd", QJsonArray::fromStringList(command)}}, 120000);
    if (!answer["ok"].toBool())
        m_error = "machine " + command.join(' ') + ": " + answer["error"].toString();
    return answer;
}

bool PrinterRig::bringFromUsb(const QString &usbFolder, const QString &modelName)
{
    if (!machine({"usb", "plug", usbFolder})["ok"].toBool() || !click("pushButton_fileList"))
        return false;
    const auto usable = [this] {
        const QJsonObject button = state("pushButton_addfile");
        return button["visible"].toBool() && button["enabled"].toBool();
    };
    if (!waitFor(usable, pageLimitMs) || !click("pushButton_addfile"))
        return fail("the USB folder is not offered: " + m_error);
    if (!addMarkedModel(modelName) || !click("pushButton_back"))
        return false;
    const auto queued = [&] { return column("tableView", 1).contains(modelName); };
    return waitFor(queued, pageLimitMs) || fail("the model is not in the queue");
}

bool PrinterRig::addMarkedModel(const QString &modelName)
{
    int row = -1;
    const auto listed = [&] { return (row = column("tableView", 1).indexOf(modelName)) >= 0; };
    const auto onAddPage = [this] { return state("pushButton_back")["visible"].toBool(); };
    if (!waitFor([&] { return onAddPage() && listed(); }, pageLimitMs))
        return fail("the model is not listed on the USB page");
    if (!clickCell("tableView", row, 1) || !click("pushButton_addfile"))
        return false;
    const QString copy = path("model/" + modelName);
    const auto copied = [&] { return QFileInfo::exists(copy + ".ini") && message().isEmpty(); };
    return waitFor(copied, 120000) || fail("the model was not copied");
}

bool PrinterRig::answerQuestion(const QString &pattern)
{
    if (waitMessage(pattern, pageLimitMs).isEmpty())
        return fail("no question " + pattern);
    return answer("Yes");
}

bool PrinterRig::startPrint()
{
    if (!click("pushButton_home"))
        return false;
    const auto ready = [this] { return state("pushButton_printImage")["enabled"].toBool(); };
    // A message that comes between the press and the question swallows it: an operator presses again.
    const auto asked = [this] {
        return click("pushButton_printImage") && !waitMessage("平台是否为空", questionMs).isEmpty();
    };
    if (!waitFor(ready, pageLimitMs) || !waitFor(asked, pageLimitMs))
        return fail("nothing can be started: " + m_error);
    if (!answer("Yes") || !answerQuestion("清空废料箱"))
        return false;
    const auto running = [this] { return state("pushButton_printStop")["enabled"].toBool(); };
    return waitFor(running, pageLimitMs) || fail("the job did not start");
}

PrinterRig::Progress PrinterRig::progress()
{
    static const QRegularExpression tips("^(\\d+)-(\\d+) (\\d+)$");
    const QRegularExpressionMatch match = tips.match(text("label_tips"));
    if (!match.hasMatch())
        return {};
    return {match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt()};
}

QString PrinterRig::waitPrintEnd(int timeoutMs, const std::function<void(const Progress &)> &onProgress)
{
    static const QRegularExpression last("打印完成|停止打印|打印超时|停止运动超时|整平棍转速异常|墨栈光电|配置文件丢失");
    QString end;
    const auto ended = [&] {
        if (onProgress)
            onProgress(progress());
        const QString shown = message()["text"].toString();
        if (last.match(shown).hasMatch())
            end = shown;
        return !end.isEmpty() || !productRuns();
    };
    waitFor(ended, timeoutMs);
    if (end.isEmpty()) {
        fail("the job did not end in time; the screen says: " + message()["text"].toString());
        return {};
    }
    answer("close");
    const auto idle = [this] { return !state("pushButton_printStop")["enabled"].toBool(); };
    if (!waitFor(idle, timeoutMs))
        fail("the Home page is not idle after the job");
    return end;
}

int runProgram(const QString &program, const QStringList &arguments, const QString &folder, QByteArray *output,
               int timeoutMs)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    const bool ended = process.waitForStarted(30000) && process.waitForFinished(timeoutMs);
    if (output)
        *output = process.readAll();
    if (!ended) {
        process.kill();
        process.waitForFinished(10000);
        return -1;
    }
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}
