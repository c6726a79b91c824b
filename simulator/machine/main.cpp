#include "MachinePanel.h"
#include "PeloraMachine.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QJsonDocument>
#include <QSocketNotifier>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
int stopPipe[2];

void onSignal(int)
{
    const char byte = 0;
    if (::write(stopPipe[1], &byte, 1) < 0)
        ::_exit(1);
}

/// A parent that holds the other end of our input ends us by closing it. A terminal or a file does not.
bool inputIsPipe()
{
    struct stat status = {};
    return ::fstat(STDIN_FILENO, &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode));
}

QVector<int> numbers(const QString &list)
{
    QVector<int> values;
    for (const QString &word : list.split(',', Qt::SkipEmptyParts))
        values << word.toInt();
    return values;
}

bool readOptions(const QCoreApplication &app, MachineOptions *options)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "The printer's hardware on a desk: boards, head boards and the part being built.");
    parser.addHelpOption();
    parser.addOptions({{"install", "The program's installation folder.", "folder"},
                       {"scale", "Machine time over wall time (PELORA_TIME_SCALE, else 1).", "factor"},
                       {"report", "Writes the JSON report here at the end.", "file"},
                       {"parts", "Writes pictures and passes.bin here at the end.", "folder"},
                       {"layers", "Layers to picture, as 1,50,100.", "list"},
                       {"stated-sleep-ms", "Sleeps stated for one gap between two sweeps (90).", "ms"},
                       {"encoder", "Counts per inch of the X encoder: 25400 or 1200.", "counts", "25400"},
                       {"panel", "Opens a window that shows the machine and works it."},
                       {"seed", "Seed of the noise.", "number", "1"},
                       {"bridge", "Link to the bridge's port.", "path"},
                       {"cards", "Link to the card reader's port.", "path"},
                       {"heads", "Socket of the head boards.", "path"},
                       {"control", "Control socket.", "path"},
                       {"media", "Folder in which volumes appear.", "folder"}});
    parser.process(app);
    const double environmentScale = qEnvironmentVariable("PELORA_TIME_SCALE").toDouble();
    options->scale = parser.isSet("scale") ? parser.value("scale").toDouble() : environmentScale;
    if (options->scale <= 0)
        options->scale = 1;
    options->encoderResolution = parser.value("encoder").toDouble();
    options->seed = parser.value("seed").toUInt();
    options->report.file = parser.value("report");
    options->report.partsFolder = parser.value("parts");
    options->report.layers = numbers(parser.value("layers"));
    if (parser.isSet("stated-sleep-ms"))
        options->report.statedSleepMs = parser.value("stated-sleep-ms").toDouble();
    options->site.install = parser.value("install");
    options->site.bridge = parser.value("bridge");
    options->site.cards = parser.value("cards");
    options->site.heads = parser.value("heads");
    options->site.control = parser.value("control");
    options->site.media = parser.value("media");
    return parser.isSet("install") && options->encoderResolution > 0;
}

/// Only a window needs a display: which kind of application it is must be known before its options are read.
bool wantsPanel(int argc, char **argv)
{
    return std::any_of(argv, argv + argc, [](const char *word) { return !std::strcmp(word, "--panel"); });
}

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv)
{
    if (wantsPanel(argc, argv))
        return std::make_unique<QApplication>(argc, argv);
    return std::make_unique<QCoreApplication>(argc, argv);
}

std::unique_ptr<MachinePanel> openPanel(PeloraMachine &machine)
{
    auto panel = std::make_unique<MachinePanel>(machine.context());
    machine.setPicture([view = panel.get()](const QString &path) { return view->savePicture(path); });
    panel->show();
    return panel;
}
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_NO_GLIB", "1"); // the plain event loop answers sooner
    const bool withPanel = wantsPanel(argc, argv);
    const std::unique_ptr<QCoreApplication> owner = makeApplication(argc, argv);
    QCoreApplication &app = *owner;
    MachineOptions options;
    if (!readOptions(app, &options)) {
        std::fprintf(stderr, "usage: pelora-machine --install DIR [options]; see --help\n");
        return 2;
    }
    PeloraMachine machine(options);
    QString error;
    if (!machine.start(&error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    if (::pipe(stopPipe))
        return 1;
    std::signal(SIGTERM, onSignal);
    std::signal(SIGINT, onSignal);
    std::signal(SIGPIPE, SIG_IGN);
    QSocketNotifier stop(stopPipe[0], QSocketNotifier::Read);
    QObject::connect(&stop, &QSocketNotifier::activated, &app, &QCoreApplication::quit);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    input.setEnabled(inputIsPipe());
    QObject::connect(&input, &QSocketNotifier::activated, &app, [&input] {
        char buffer[256];
        if (::read(STDIN_FILENO, buffer, sizeof buffer) > 0)
            return;
        input.setEnabled(false);
        QCoreApplication::quit();
    });
    const std::unique_ptr<MachinePanel> panel = withPanel ? openPanel(machine) : nullptr;
    std::printf("ready %s\n",
                QJsonDocument(machine.site().toJson()).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
    app.exec();
    return machine.finish().isEmpty() ? 0 : 1;
}
