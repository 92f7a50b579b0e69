#include <iostream>

#include "hosts/qt/guarded_application.h"
#include "hosts/qt/program.h"

int main(int argc, char** argv) {
  try {
    return orvello::run_program(argc, argv);
  } catch (const std::exception& fault) {
    std::cerr << "orvello: " << orvello::failure_sentence(fault) << std::endl;
  }
  return 1;
}
