// The stand-in slicer: turns a model file into layer files, with lines that tell how far it has come.
#include "SliceJob.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>

namespace
{
constexpr char help[] =
    "lamorel.exe -X MODEL -O FOLDER   slices the model into FOLDER/slice_m<N> and FOLDER/slice_s<N>\n"
    "lamorel.exe -V                   tells the version\n"
    "\n"
    "The environment's PELORA_SLICER_FAULT plays a fault:\n"
    "  die:LAYER     ends with code 3 before it makes the layer\n"
    "  stall:LAYER   hangs before it makes the layer\n"
    "  rubbish       writes lines without sense between the layers\n"
    "  damage:LAYER  leaves the layer's structure file unreadable\n"
    "  slow:MS       takes this much longer for each layer\n";

int fail(const std::string &why)
{
    std::fprintf(stderr, "lamorel: %s\n", why.c_str());
    return 1;
}

int slice(const std::string &path, const std::string &folder)
{
    Fault fault;
    const char *wanted = std::getenv("PELORA_SLICER_FAULT");
    if (wanted && *wanted && !parseFault(wanted, &fault))
        return fail(std::string("no such fault: ") + wanted);
    Model model;
    std::string error;
    if (!readModel(path, &model, &error))
        return fail(error);
    std::error_code ignored; // a folder that is not there shows when the first layer is written
    std::filesystem::create_directories(folder, ignored);
    SliceJob job(model, folder, fault);
    return job.run(&error) ? 0 : fail(error);
}
} // namespace

int main(int argc, char **argv)
{
    std::string model, folder;
    for (int n = 1; n < argc; ++n) {
        const std::string option = argv[n];
        if (option == "--help" || option == "-V") {
            std::fputs(option == "-V" ? "Lamorel vesion: 1.3.2\n" : help, stdout);
            return 0;
        }
        if ((option != "-X" && option != "-O") || n + 1 == argc)
            return fail("unknown or incomplete option " + option + "; --help lists them");
        (option == "-X" ? model : folder) = argv[++n];
    }
    if (model.empty() || folder.empty())
        return fail("-X and -O are both needed; --help lists them");
    try {
        return slice(model, folder);
    } catch (const std::exception &problem) {
        return fail(problem.what());
    }
}
