#include "hosts/qt/program.h"

int main(int argc, char** argv) { return orvello::run_program(argc, argv); }
