#include "Demo.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Prints a mesh on the simulated machine and proves every layer.");
    parser.addHelpOption();
    parser.addPositionalArgument("mesh", "STL, OBJ, PLY or 3MF file.");
    parser.addOptions({{"install", "Installation folder.", "folder"},
                       {"out", "Folder for model, report and pictures.", "folder"},
                       {"scale", "How many times faster than real time.", "factor", "100"},
                       {"panel", "Also opens the machine's panel, unseen, and pictures it half way."},
                       {"screen", "Leave the window and the machine to the person."}});
    parser.process(app);
    DemoOptions options;
    options.install = QFileInfo(parser.value("install")).absoluteFilePath();
    options.out = QFileInfo(parser.value("out")).absoluteFilePath();
    options.scale = parser.value("scale").toDouble();
    options.panel = parser.isSet("panel");
    options.screen = parser.isSet("screen");
    if (parser.positionalArguments().size() != 1 || !parser.isSet("install") || !parser.isSet("out"))
        parser.showHelp(2);
    options.mesh = QFileInfo(parser.positionalArguments().first()).absoluteFilePath();
    return options.screen ? runScreen(options) : runDemo(options);
}
