#include <iostream>

#include "hosts/linux/standard_streams.h"
#include "hosts/qt/qt_system.h"
#include "hosts/shared/fault_teller.h"
#include "hosts/shared/program.h"

namespace orvello {
namespace {

int run(int argc, char** argv) {
  StandardStreams streams;
  const std::vector<std::string> words(argv + 1, argv + argc);  // the toolkit takes some away
  QtSystem system(argc, argv);
  const int code = run_program(words, system, streams.content());
  const auto unwritten = streams.finish();
  if (!unwritten) return code;
  std::cerr << "orvello: " << *unwritten << "\n";
  return 1;
}

}  // namespace
}  // namespace orvello

int main(int argc, char** argv) {
  try {
    return orvello::run(argc, argv);
  } catch (...) {
    std::cerr << "orvello: " << orvello::caught_sentence(true) << std::endl;
  }
  return 1;
}
