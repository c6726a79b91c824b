#include "Demo.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QSettings>
#include <QTcpServer>
#include <cstdio>
#include <unistd.h>

namespace {
constexpr int printLimitMs = 30 * 60 * 1000;
constexpr int serverLimitMs = 30000;
constexpr int uploadLimitMs = 10 * 60 * 1000;
/// What the program is told to sleep between two sweeps, in ms, besides the model's own wait: Y at rest 30, Y read
/// 20, X read 20, X at rest 20.
constexpr int waitsOfPass = 90;

int say(const QString &text, int result = 0)
{
    std::printf("%s\n", qUtf8Printable(text));
    std::fflush(stdout);
    return result;
}

/// A bar on a terminal, a line each tenth elsewhere.
class ProgressBar
{
public:
    void show(const PrinterRig::Progress &progress)
    {
        if (progress.total <= 0)
            return;
        const int percent = 100 * progress.layer / progress.total;
        if (::isatty(STDOUT_FILENO)) {
            const QString bar = QString(percent / 2, '#').leftJustified(50, '.');
            std::printf("\r  [%s] %3d %%  layer %d of %d ", qUtf8Printable(bar), percent, progress.layer,
                        progress.total);
        } else if (percent / 10 != m_tenth) {
            std::printf("  %3d %%  layer %d of %d\n", percent, progress.layer, progress.total);
        }
        m_tenth = percent / 10;
        std::fflush(stdout);
    }
    void end()
    {
        if (::isatty(STDOUT_FILENO))
            std::printf("\n");
    }

private:
    int m_tenth = -1;
};

QJsonObject readJson(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

bool packModel(const DemoOptions &options, const QString &model)
{
    QByteArray output;
    if (runProgram(options.install + "/tzlpack", {options.mesh, "--out", model}, options.install, &output) == 0)
        return true;
    say("The mesh could not be packed:\n" + QString::fromUtf8(output));
    return false;
}

/// Slices the model once more, apart from the print, and holds the printed layers against it.
bool compareLayers(const DemoOptions &options, const QString &name)
{
    const QString layers = options.out + "/layers";
    QDir(layers).removeRecursively();
    QDir().mkpath(layers);
    QByteArray output;
    if (runProgram(options.install + "/Lamorel/lamorel.exe", {"-X", "model/" + name, "-O", layers},
                   options.install, &output) != 0) {
        say("The model could not be sliced again:\n" + QString::fromUtf8(output.right(500)));
        return false;
    }
    const int code = runProgram(options.install + "/pelora-compare",
                                {"--passes", options.out + "/parts/passes.bin", "--ini",
                                 options.install + "/model/" + name + ".ini", "--layers", layers, "--json",
                                 options.out + "/compare.json"},
                                options.install, &output);
    say("  " + QString::fromUtf8(output).trimmed().replace('\n', "\n  "));
    QDir(layers).removeRecursively();
    return code == 0;
}

bool panelShot(PrinterRig &rig, const QString &folder)
{
    return rig.machine({"picture", folder + "/panel.png"})["ok"].toBool();
}

/// A port that nobody has now, so that two demos, or a demo beside a printer, don't meet.
int freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

/// Tells the program its port; the machine adds its own keys to the same file.
bool configurePort(const DemoOptions &options, int port)
{
    QJsonObject platform = readJson(options.install + "/config/Platform.json");
    platform["RemotePort"] = port;
    QFile file(options.install + "/config/Platform.json");
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(platform).toJson()) > 0;
}

/// As a PC in the network would. Its progress goes to the terminal that the demo has.
bool uploadModel(PrinterRig &rig, const DemoOptions &options, int port, const QString &model)
{
    const QString client = options.install + "/peloractl";
    const QStringList machine{"--host", "127.0.0.1", "--port", QString::number(port)};
    const auto answers = [&] {
        QByteArray output;
        return runProgram(client, machine + QStringList{"ping"}, options.install, &output, serverLimitMs) == 0;
    };
    if (!rig.waitFor(answers, serverLimitMs))
        return false;
    QProcess upload;
    upload.setProcessChannelMode(QProcess::ForwardedChannels);
    upload.start(client, machine + QStringList{"upload", model});
    return upload.waitForFinished(uploadLimitMs) && upload.exitCode() == 0;
}

bool printModel(PrinterRig &rig, const DemoOptions &options, const QString &name)
{
    const int port = freePort();
    if (!configurePort(options, port)) {
        say("config/Platform.json can't be written.");
        return false;
    }
    say("Starting the machine and the program ...");
    QElapsedTimer start;
    if (!rig.startMachine())
        return false;
    start.start();
    if (!rig.startProduct())
        return false;
    say(QString("  window after %1 ms").arg(start.elapsed()));
    say("Uploading with peloractl ...");
    if (!uploadModel(rig, options, port, options.out + "/" + name))
        return false;
    say("Pressing Start ...");
    if (!rig.startPrint())
        return false;
    rig.takeSlowestAnswer();
    ProgressBar bar;
    bool pictured = false;
    const QString end = rig.waitPrintEnd(printLimitMs, [&](const PrinterRig::Progress &progress) {
        bar.show(progress);
        if (!pictured && progress.total > 0 && progress.layer * 2 >= progress.total)
            pictured = rig.shot(options.out + "/home.png") && (!options.panel || panelShot(rig, options.out));
    });
    bar.end();
    say(QString("  slowest answer of the window: %1 ms; peak memory of the program: %2 MB")
            .arg(rig.takeSlowestAnswer())
            .arg(rig.peakMemoryMB(), 0, 'f', 0));
    if (end.isEmpty())
        return false;
    say("  the screen says: " + end);
    return end.contains("打印完成");
}

/// What the job took out of the bottles. False when it was not fed or its heads were not cleaned.
bool tellWax(const QJsonObject &state)
{
    const QJsonObject ink = state["ink"].toObject();
    bool taken = true;
    for (const QString wax : {"structure", "support"}) {
        const auto grams = [&](const char *what) { return ink[what][wax].toDouble(); };
        say(QString("  %1 wax: %2 g from the bottles, %3 g into the heads, %4 g pressed through them, %5 g printed")
                .arg(wax, -9)
                .arg(grams("fed"), 0, 'f', 0)
                .arg(grams("nozzleFed"), 0, 'f', 1)
                .arg(grams("pressed"), 0, 'f', 1)
                .arg(grams("printed"), 0, 'f', 2));
        taken = taken && grams("fed") > 0 && grams("nozzleFed") > 0 && grams("pressed") > 0;
    }
    for (const QJsonValue &bottle : state["bottles"].toArray())
        taken = taken && qAbs(bottle["rest"].toDouble() - bottle["grams"].toDouble()) < 1;
    if (!taken)
        say("  no wax was fed or pressed, or a card does not tell what is in its bottle");
    return taken;
}

int judge(const DemoOptions &options, const QString &name, double seconds, const QJsonObject &state)
{
    const QJsonObject report = readJson(options.out + "/report.json");
    const int violations = report["violations"].toArray().size();
    say(QString("Printed %1 layers in %2 passes, %3 s wall time, %4 s machine time.")
            .arg(report["layers"].toInt())
            .arg(report["passes"].toInt())
            .arg(seconds, 0, 'f', 1)
            .arg(report["machineSeconds"].toDouble(), 0, 'f', 0));
    say(QString("The program itself adds %1 ms between two sweeps (median).")
            .arg(report["programGapMs"].toObject()["median"].toDouble(), 0, 'f', 2));
    const bool fed = tellWax(state);
    say(QString("Violations: %1").arg(violations));
    for (const QJsonValue &violation : report["violations"].toArray())
        say("  " + QString::fromUtf8(QJsonDocument(violation.toObject()).toJson(QJsonDocument::Compact)));
    say("Comparing the printed layers with the slicer's ...");
    const bool equal = compareLayers(options, name);
    say("Report and pictures: " + QDir::toNativeSeparators(options.out));
    if (violations || !equal || !fed || report["layers"].toInt() == 0)
        return say("The demo FAILED.", 1);
    return say("The demo is done: every dot is where the slicer wanted it.");
}
} // namespace

int runDemo(const DemoOptions &options)
{
    const QString name = QFileInfo(options.mesh).completeBaseName() + ".tzl";
    QDir().mkpath(options.out);
    say("Packing " + options.mesh + " ...");
    if (!packModel(options, options.out + "/" + name))
        return 1;
    RigOptions rigOptions;
    rigOptions.install = options.install;
    rigOptions.scale = options.scale;
    rigOptions.machineArguments = QStringList{"--report", options.out + "/report.json",
                                              "--parts",  options.out + "/parts"};
    if (options.panel)
        rigOptions.panelPlatform = rigOptions.platform;
    QElapsedTimer clock;
    clock.start();
    PrinterRig rig(rigOptions);
    if (!printModel(rig, options, name))
        return say("The print failed: " + rig.error() + "\n  the screen says: " + rig.message()["text"].toString(), 1);
    const double seconds = clock.elapsed() / 1000.0;
    const QSettings settings(options.install + "/model/" + name + ".ini", QSettings::IniFormat);
    rig.machine({"stated-sleep", QString::number(waitsOfPass + settings.value("waitXTimeout").toInt())});
    const QJsonObject state = rig.machine({"state"})["state"].toObject();
    if (!rig.stopProduct() || !rig.stopMachine())
        return say(rig.error(), 1);
    return judge(options, name, seconds, state);
}

/// Side by side on a display, else each on a port of its own. False without a display.
static bool placeWindows(RigOptions *options)
{
    const bool x11 = qEnvironmentVariableIsSet("DISPLAY");
    if (!x11 && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) {
        options->platform = "vnc:size=600x1024:addr=127.0.0.1:port=5900";
        options->panelPlatform = "vnc:size=1280x800:addr=127.0.0.1:port=5901";
        return false;
    }
    options->platform = options->panelPlatform = x11 ? "xcb" : "wayland";
    options->productArguments = QStringList{"-qwindowgeometry", "600x1024+0+0"};
    options->machineArguments << "-qwindowgeometry" << "1280x800+620+0";
    return true;
}

int runScreen(const DemoOptions &options)
{
    const QString name = QFileInfo(options.mesh).completeBaseName() + ".tzl";
    QDir().mkpath(options.out + "/usb");
    if (!packModel(options, options.out + "/usb/" + name))
        return 1;
    RigOptions rigOptions;
    rigOptions.install = options.install;
    rigOptions.scale = options.scale;
    const bool display = placeWindows(&rigOptions);
    PrinterRig rig(rigOptions);
    if (!rig.startMachine() || !rig.startProduct())
        return say(rig.error(), 1);
    rig.machine({"usb", "plug", options.out + "/usb"});
    if (!display)
        say("There is no display: point one VNC viewer at 127.0.0.1:5900, the printer's screen, and one at "
            "127.0.0.1:5901, the machine.");
    say("The window is yours: queue page, then the USB button, adds " + name + "; the Home page starts it.");
    say("From the network: " + options.install + "/peloractl upload " + options.out + "/usb/" + name);
    say("Work the machine in its panel, or with " + options.install + "/machinectl --install " + options.install +
        " help. Closing a window ends both.");
    rig.waitFor([&] { return !rig.productRuns() || !rig.machineRuns(); }, std::numeric_limits<int>::max());
    return 0;
}
