#include "exchange/zone_names.h"

#include <algorithm>

#include "calendar/zone_aliases.h"
#include "calendar/zone_file.h"

namespace orvello {
namespace {

constexpr std::size_t kLongestName =
    200;                       // of a name that can mean anything; prefixes may be longer
constexpr int kMostSteps = 4;  // "America/Argentina/Buenos_Aires" and one of a prefix

// What stands behind "(GMT-05:00) "; the whole text without that.
std::string_view without_offset(std::string_view text) {
  if (!text.starts_with('(')) return text;
  const std::size_t close = text.find(')');
  return close == std::string_view::npos ? text : trimmed(text.substr(close + 1));
}

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// "europe/berlin", "EUROPE/BERLIN" and "America/New York" as the database spells places.
std::string as_place(std::string_view name) {
  std::string place(name);
  bool begins = true;
  for (char& c : place) {
    if (c == ' ') c = '_';
    const char capital = upper(c);
    c = begins || capital < 'A' || capital > 'Z' ? capital : static_cast<char>(capital + 32);
    begins = c == '/' || c == '_' || c == '-';
  }
  return place;
}

void add(std::vector<std::string>& names, std::string_view name) {
  if (is_zone_name(name)) names.emplace_back(name);
}

void add_aliases(std::vector<std::string>& names, std::string_view name) {
  for (const ZoneAlias& row : kZoneAliases)
    if (equal_ignoring_case(row.name, name)) names.emplace_back(row.place);
}

// "Amsterdam, Berlin, Rome" and "Sarajevo/Warsaw" name towns without their region.
void add_towns(std::vector<std::string>& names, std::string_view list) {
  constexpr std::size_t kMostTowns = 8;
  for (std::size_t at = 0, town = 0; at < list.size() && town < kMostTowns; ++town) {
    const std::size_t end = std::min(list.find_first_of(",/;:", at), list.size());
    std::string place(trimmed(list.substr(at, end - at)));
    at = end + 1;
    for (char& c : place)
      if (c == ' ') c = '_';
    if (place.empty()) continue;
    for (const char* region : {"Europe/", "America/", "Asia/", "Africa/", "Australia/", "Pacific/",
                               "Atlantic/", "Indian/"})
      add(names, region + place);
  }
}

}  // namespace

std::string tzid_text(std::string_view written) {
  std::string text = unescape_text(written);
  std::erase(text, '"');
  return std::string(trimmed(text));
}

std::optional<std::string> tzid_of(const Property& property) {
  if (property.parameters.empty()) return std::nullopt;
  const auto written = parameter(property, "TZID");
  if (!written) return std::nullopt;
  std::string text = tzid_text(*written);
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

std::vector<std::string> zone_name_candidates(std::string_view tzid) {
  std::vector<std::string> names;
  std::string_view rest = trimmed(tzid);
  if (rest.size() <= kLongestName) {
    const std::string_view shown = without_offset(rest);
    add_aliases(names, rest);
    if (shown.size() != rest.size()) add_aliases(names, shown);
    add(names, rest);
    add(names, as_place(rest));
    if (const std::size_t dash = rest.find('-'); rest.find('/') == std::string_view::npos) {
      std::string place(rest);  // "US-Eastern"
      if (dash != std::string_view::npos) place[dash] = '/';
      add_aliases(names, place);
      add(names, place);
    }
    if (shown.size() != rest.size() || shown.find(',') != std::string_view::npos) {
      add_towns(names, shown);
      return names;
    }
  }
  // The last steps of a path, longest first.
  std::size_t begin = rest.size();
  for (int step = 0; step < kMostSteps && begin > 0 && begin != std::string_view::npos; ++step)
    begin = rest.rfind('/', begin - 1);
  if (begin != std::string_view::npos) rest.remove_prefix(begin);
  for (std::size_t slash = rest.find('/'); slash != std::string_view::npos;
       slash = rest.find('/')) {
    rest.remove_prefix(slash + 1);
    add_aliases(names, rest);
    add(names, rest);
    add(names, as_place(rest));
  }
  return names;
}

std::optional<int> offset_in_name(std::string_view tzid) {
  std::string_view text = trimmed(tzid);
  if (text.starts_with('(')) text = trimmed(text.substr(1, text.find(')') - 1));
  const std::string_view word = text.substr(0, 3);
  if (!equal_ignoring_case(word, "GMT") && !equal_ignoring_case(word, "UTC")) return std::nullopt;
  text = trimmed(text.substr(3));
  if (text.empty()) return 0;
  const bool minus = text.front() == '-';
  if (!minus && text.front() != '+') return std::nullopt;
  text = trimmed(text.substr(1));
  std::string digits;
  for (const char c : text) {
    if (c >= '0' && c <= '9')
      digits += c;
    else if ((c != ':' && c != '.') || digits.empty() || digits.size() > 2)
      return std::nullopt;
  }
  if (digits.size() == 1 || digits.size() == 3) digits.insert(0, 1, '0');
  if (digits.size() == 2) digits += "00";
  if (digits.size() != 4) return std::nullopt;
  const int hours = (digits[0] - '0') * 10 + digits[1] - '0';
  const int minutes = (digits[2] - '0') * 10 + digits[3] - '0';
  if (hours > 14 || minutes > 59) return std::nullopt;
  return (hours * 60 + minutes) * (minus ? -60 : 60);
}

bool is_utc_name(std::string_view tzid) {
  constexpr std::string_view kNames[] = {
      "UTC", "Etc/UTC", "Z",        "GMT",     "Etc/GMT",
      "UCT", "Zulu",    "Etc/Zulu", "Etc/UCT", "Coordinated Universal Time"};
  for (const std::string_view name : kNames)
    if (equal_ignoring_case(name, tzid)) return true;
  return false;
}

}  // namespace orvello
