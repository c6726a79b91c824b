#include "TestPrinter.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTcpServer>

namespace {
constexpr int pixelsX = 216; // with 20 blank columns at each side 256 pixels wide
constexpr int pictureWidth = 256;
constexpr int settleLimitMs = 60000;
const QString cardsRead = "card[4]=";
constexpr double columnUm = 25400.0 / 600.0;

/// Files are linked, config is copied: it is what a test changes.
void stageInstallation(const QString &target)
{
    const QString stage = PELORA_STAGE;
    QDirIterator files(stage, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString relative = QDir(stage).relativeFilePath(file);
        const QString copy = target + "/" + relative;
        QDir().mkpath(QFileInfo(copy).path());
        if (relative.startsWith("config/"))
            QFile::copy(file, copy);
        else
            QFile::link(file, copy);
    }
}

/// A port that nobody listens on: installations of several tests run at once.
quint16 freePort()
{
    QTcpServer server;
    return server.listen() ? server.serverPort() : 0;
}
} // namespace

TestPrinter::TestPrinter() : m_remotePort(freePort())
{
    stageInstallation(install());
    QDir().mkpath(usb());
    QDir().mkpath(out());
    QFile file(install() + "/config/Sys.json");
    double start = 0;
    if (file.open(QIODevice::ReadOnly))
        start = QJsonDocument::fromJson(file.readAll())["ForwardStartPos"].toDouble();
    file.close();
    configure("Platform.json", {{"RemotePort", m_remotePort}});
    // A reverse page starts at the far edge of this small picture.
    configure("Sys.json", {{"ReverseStartPos", start + (pictureWidth - 1) * columnUm}});
}

bool TestPrinter::makeModel(const QString &name, const QStringList &packOptions, double heightMm,
                            bool (*writeMesh)(const QString &, double))
{
    const QString mesh = m_folder.path() + "/mesh.stl";
    // A narrow picture leaves a long run-out, which the delay before each pass has to cover.
    QStringList arguments{mesh,         "--out", usb() + "/" + name, "--pixels-x", QString::number(pixelsX),
                          "--wait-x", "1000"};
    arguments += packOptions;
    QByteArray output;
    if (writeMesh(mesh, heightMm) && runProgram(install() + "/tzlpack", arguments, install(), &output) == 0)
        return true;
    m_error = QString::fromUtf8(output);
    return false;
}

bool TestPrinter::start(const QStringList &environment, bool withMachine)
{
    RigOptions options;
    options.install = install();
    options.scale = m_scale;
    options.environment = environment;
    options.machineArguments = QStringList{"--report", out() + "/report.json", "--parts", out() + "/parts"};
    m_rig = std::make_unique<PrinterRig>(options);
    return (!withMachine || m_rig->startMachine()) && m_rig->startProduct();
}

bool TestPrinter::settle()
{
    if (m_rig->waitFor([this] { return log().count(cardsRead) > m_cardReads; }, settleLimitMs))
        return true;
    m_error = "the program did not read the bottles: " + m_rig->message()["text"].toString();
    return false;
}

bool TestPrinter::restart()
{
    if (!m_rig->stopProduct())
        return false;
    m_cardReads = log().count(cardsRead);
    return m_rig->startProduct() && settle();
}

bool TestPrinter::print(const QString &name)
{
    return settle() && m_rig->bringFromUsb(usb(), name) && m_rig->startPrint();
}

QJsonObject TestPrinter::stop()
{
    m_rig->stopProduct();
    m_rig->stopMachine();
    QFile report(out() + "/report.json");
    return report.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(report.readAll()).object() : QJsonObject();
}

int TestPrinter::differingDots(const QString &name, const QString &sequence)
{
    const QString layers = out() + "/layers";
    QDir().mkpath(layers);
    QByteArray output;
    if (runProgram(install() + "/Lamorel/lamorel.exe", {"-X", "model/" + name, "-O", layers}, install(), &output))
        return -1;
    const QString result = out() + "/compare.json";
    QStringList arguments{"--passes", out() + "/parts/passes.bin", "--ini", install() + "/model/" + name + ".ini",
                          "--layers", layers, "--json", result};
    if (!sequence.isEmpty())
        arguments << "--sequence" << sequence;
    const int code = runProgram(install() + "/pelora-compare", arguments, install(), &output);
    QFile file(result);
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug().noquote() << output;
        return -1;
    }
    const QJsonDocument report = QJsonDocument::fromJson(file.readAll());
    const int differing = report["differing"].toInt(-1);
    if (differing || code)
        qDebug().noquote() << output;
    return code && !differing ? -1 : differing;
}

QString TestPrinter::violations(const QJsonObject &report)
{
    if (!report.contains("violations"))
        return "no report";
    QStringList lines;
    for (const QJsonValue &violation : report["violations"].toArray())
        lines << QJsonDocument(violation.toObject()).toJson(QJsonDocument::Compact);
    return lines.join('\n');
}

QString TestPrinter::sanitizerReports(const TestPrinter &printer)
{
    QFile output(printer.install() + "/../product-output.txt");
    if (!output.open(QIODevice::ReadOnly))
        return "no output";
    const QString text = QString::fromUtf8(output.readAll());
    const int at = text.indexOf("WARNING: ThreadSanitizer");
    return at < 0 ? QString() : text.mid(at, 8000);
}

bool TestPrinter::configure(const QString &name, const QVariantMap &values)
{
    QFile file(install() + "/config/" + name);
    QVariantMap all;
    if (file.open(QIODevice::ReadOnly))
        all = QJsonDocument::fromJson(file.readAll()).toVariant().toMap();
    file.close();
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (value->isNull())
            all.remove(value.key());
        else
            all[value.key()] = *value;
    }
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(QJsonDocument::fromVariant(all).toJson()) > 0;
}

QList<QVariantMap> TestPrinter::query(const QString &statement)
{
    QList<QVariantMap> rows;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", install());
        database.setDatabaseName(install() + "/pelora.db");
        database.open();
        QSqlQuery query(statement, database);
        while (query.next()) {
            QVariantMap row;
            for (int field = 0; field < query.record().count(); ++field)
                row[query.record().fieldName(field)] = query.value(field);
            rows << row;
        }
    }
    QSqlDatabase::removeDatabase(install());
    return rows;
}

QString TestPrinter::log() const
{
    QString all;
    for (const char *name : {"pelora.log", "event.csv"}) {
        QFile file(m_folder.path() + "/.PeloraTemp/log/" + name);
        if (file.open(QIODevice::ReadOnly))
            all += QString::fromUtf8(file.readAll());
    }
    return all;
}
