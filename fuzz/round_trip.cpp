// Whether what comes in goes out: round_trip FILE_OR_FOLDER... imports each file by itself into a
// store in memory, exports that and compares. Each property of each component must come back in the
// same meaning, or a problem line must name its component; a second round must change nothing.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "exchange/calendar_scanner.h"
#include "exchange/export.h"
#include "exchange/importer.h"
#include "hosts/headless/memory_store.h"
#include "tests/exchange/eastern_clock.h"

namespace {

using namespace orvello;

// One property: what it says, and the lines of the file that its component covers.
struct Said {
  std::string text;
  int first = 0, last = 0;
};

std::string upper(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return result;
}

// Parameters in order, as their order says nothing.
std::string parameters_of(const Property& property) {
  std::multiset<std::string> sorted;
  std::string one;
  bool quoted = false;
  for (const char c : std::string(property.parameters) + ";") {
    if (c == '"') quoted = !quoted;
    if (c == ';' && !quoted) {
      if (!one.empty()) sorted.insert(one);
      one.clear();
    } else {
      one += c;
    }
  }
  std::string joined;
  for (const std::string& parameter : sorted) joined += ";" + parameter;
  return joined;
}

void collect(const Component& component, const std::string& path, int first, int last,
             std::vector<Said>& all) {
  const std::string name = path + "/" + upper(component.name);
  all.push_back({name, first, last});
  for (const Property& property : component.properties) {
    if (trimmed(property.value).empty()) continue;  // says nothing
    all.push_back({name + " " + upper(property.name) + parameters_of(property) + ":" +
                       std::string(trimmed(property.value)),
                   first, last});
  }
  for (const Component& child : component.children) collect(child, name, first, last, all);
}

// A component is known by its UID and, for a change of a series, its RECURRENCE-ID. One that had no
// UID has got one.
std::string id_of(const Component& component) {
  std::string id;
  const Property* uid = component.find("UID");
  if (!component.named("VTIMEZONE") && (!uid || trimmed(uid->value).empty())) return id;
  if (uid && uid->value.find("@orvello") != std::string_view::npos) return id;
  for (const char* name : {"UID", "RECURRENCE-ID", "TZID"})
    if (const Property* property = component.find(name)) id += std::string(property->value) + "|";
  return id;
}

// One that leaves nothing but what it changes, of which each event is told.
bool is_message(const Component& calendar) {
  const Property* method = calendar.find("METHOD");
  const std::string name = method ? upper(trimmed(method->value)) : std::string();
  return !name.empty() && name != "PUBLISH" && name != "REQUEST";
}

std::vector<Said> read_all(const std::string& text) {
  std::vector<Said> all;
  std::istringstream in(text);
  ProblemList ignored("");
  CalendarScanner scanner(in, ignored);
  ScannedCalendar calendar;
  ParsedComponent parsed;
  while (scanner.next(calendar)) {
    const std::string header = "BEGIN:VCALENDAR\n" + calendar.header + "END:VCALENDAR\n";
    const int lines = static_cast<int>(std::count(header.begin(), header.end(), '\n'));
    if (parsed.parse(header, calendar.line) && !is_message(parsed.root()))
      collect(parsed.root(), "", calendar.line, calendar.line + lines, all);
    for (const ScannedComponent& one : calendar.components) {
      const std::string_view body = calendar.text_of(one);
      if (!parsed.parse(body, one.line)) continue;
      const int last = one.line + static_cast<int>(std::count(body.begin(), body.end(), '\n'));
      collect(parsed.root(), id_of(parsed.root()), one.line, last, all);
    }
  }
  return all;
}

bool import_text(MemoryStore& store, const std::string& text, ProblemList& problems) {
  const HeadlessClock clock = eastern_clock();
  Importer importer(store, clock, true);
  std::istringstream in(text);
  ImportCounts counts;
  return importer.import_stream(in, counts, problems) && importer.finish();
}

std::string export_text(MemoryStore& store) {
  const HeadlessClock clock = eastern_clock();
  const auto text = export_calendar(store, {}, {}, clock);
  return text ? *text : std::string();
}

// What `before` says and `after` does not, but for what a problem names.
int report_missing(const std::string& file, const std::vector<Said>& before,
                   const std::vector<Said>& after, const ProblemList& problems) {
  const auto& list = problems.problems();
  const auto told = [&](const Said& one) {
    return std::any_of(list.begin(), list.end(), [&](const ImportProblem& problem) {
      return problem.line >= one.first && problem.line <= one.last;
    });
  };
  // Calendars with the same properties, and zones that stand twice, may come back as one.
  const auto may_merge = [](const Said& one) {
    return one.text.starts_with("/VCALENDAR") || one.text.find("/VTIMEZONE") != std::string::npos;
  };
  std::multiset<std::string> left;
  for (const Said& one : after) left.insert(one.text);
  int lost = 0;
  for (const Said& one : before) {
    if (told(one)) continue;
    const auto found = left.find(one.text);
    if (found == left.end()) {
      ++lost;
      std::printf("%s:%d: lost: %s\n", file.c_str(), one.first, one.text.substr(0, 200).c_str());
    } else if (!may_merge(one)) {
      left.erase(found);
    }
  }
  return lost;
}

int check_file(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const HeadlessClock clock = eastern_clock();
  MemoryStore store(clock);
  ProblemList problems(path.string());
  if (!import_text(store, text, problems))
    return std::printf("%s: failed\n", path.string().c_str());
  const std::string first = export_text(store);
  int lost = 0;
  // The older form comes out in the newer one: its properties are others.
  if (text.find("VERSION:1.0") == std::string::npos)
    lost = report_missing(path.string(), read_all(text), read_all(first), problems);
  MemoryStore again(clock);
  ProblemList none("");
  const std::string second = import_text(again, first, none) ? export_text(again) : std::string();
  lost +=
      report_missing(path.string() + " (second round)", read_all(first), read_all(second), none);
  lost +=
      report_missing(path.string() + " (second round)", read_all(second), read_all(first), none);
  ProblemList repeated("");
  const std::string same = import_text(store, text, repeated) ? export_text(store) : std::string();
  lost += report_missing(path.string() + " (once more)", read_all(first), read_all(same), none);
  const std::size_t before = store.oids({}, {})->size(), after = again.oids({}, {})->size();
  if (before != after)
    lost +=
        std::printf("%s: %zu appointments, then %zu\n", path.string().c_str(), before, after) > 0;
  return lost;
}

}  // namespace

int main(int argc, char** argv) {
  int files = 0, lossy = 0;
  const auto check = [&](const std::filesystem::path& path) {
    ++files;
    lossy += check_file(path) > 0;
  };
  for (int i = 1; i < argc; ++i) {
    if (!std::filesystem::is_directory(argv[i])) {
      check(argv[i]);
      continue;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i]))
      if (entry.is_regular_file()) check(entry.path());
  }
  std::printf("%d files, %d with something lost\n", files, lossy);
  return files > 0 && lossy == 0 ? 0 : 1;
}
