// Where the program's files live.
#pragma once

#include <string>

namespace orvello {

// One folder a kind; all three are the same where a person has named one for everything. UTF-8.
struct Paths {
  std::string data;    // settings.vol, calendar.db, icons.bmp
  std::string config;  // the registry file, the window's place
  std::string state;   // diag.txt
};

}  // namespace orvello
