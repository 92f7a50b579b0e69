#include <iostream>

#include "hosts/qt/guarded_application.h"
#include "hosts/qt/program.h"

int main(int argc, char** argv) {
  try {
    return orvello::run_program(argc, argv);
  } catch (...) {
    std::cerr << "orvello: " << orvello::caught_sentence(true) << std::endl;
  }
  return 1;
}
