#include "apps/zvi/Program.h"

int main(int argc, char **argv) {
    return zvi::app::RunProgram(argc, argv);
}
