// Writes the program's icon for launchers: export_icon SIZE FILE.png, SIZE a multiple of 16 or 48.
#include <cstdlib>
#include <iostream>

#include "hosts/qt/program_icon.h"

int main(int argc, char** argv) {
  const int size = argc == 3 ? std::atoi(argv[1]) : 0;
  if (size <= 0 || size % 16 != 0) {
    std::cerr << "usage: export_icon SIZE FILE.png\n";
    return 2;
  }
  if (orvello::program_picture(size).save(QString::fromLocal8Bit(argv[2]), "PNG")) return 0;
  std::cerr << "export_icon: " << argv[2] << " could not be written\n";
  return 1;
}
