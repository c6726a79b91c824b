#include "pelora.h"

int main(int argc, char **argv)
{
    return execMain(argc, argv);
}
