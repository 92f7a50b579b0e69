#include "hosts/linux/mail_identity.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace orvello {
namespace {

std::string said_by(const char* variable_name) {
  const char* value = std::getenv(variable_name);
  return value ? value : "";
}

// The first part of what the accounts' list says of the person; "&" stands for the account's name.
std::string account_name() {
  passwd entry{};
  passwd* found = nullptr;
  std::vector<char> bytes(16384);
  if (::getpwuid_r(::getuid(), &entry, bytes.data(), bytes.size(), &found) != 0 || !found ||
      !found->pw_gecos)
    return {};
  const std::string all = found->pw_gecos;
  return all.substr(0, all.find_first_of(",&"));
}

}  // namespace

StoreRecipient mail_identity() {
  std::string address = said_by("EMAIL"), name;
  if (const std::size_t open = address.find('<'); open != std::string::npos) {
    name = std::string(trimmed(std::string_view(address).substr(0, open)));
    std::erase(name, '"');
    address = address.substr(open + 1, address.find('>') - open - 1);
  }
  if (address.empty()) address = said_by("DEBEMAIL");
  if (name.empty()) name = said_by("DEBFULLNAME");
  if (name.empty()) name = account_name();
  return {to_utf16(name), to_utf16(std::string(trimmed(std::string_view(address))))};
}

}  // namespace orvello
