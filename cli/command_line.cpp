#include "cli/command_line.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include "base/text.h"
#include "calendar/iso_date.h"
#include "resources/strings.h"
#include "store/text_search.h"

namespace orvello {
namespace {

constexpr std::array<const char*, 3> kViews = {"day", "month", "year"};

int view_number(const std::string& name) {
  for (std::size_t i = 0; i < kViews.size(); ++i)
    if (name == kViews[i]) return static_cast<int>(i);
  return -1;
}

// Reads exactly `digits` decimal digits at `at` and moves past them; -1 when there are none such.
int read_digits(const std::string& text, std::size_t& at, int digits) {
  int value = 0;
  for (int i = 0; i < digits; ++i, ++at) {
    if (at >= text.size() || text[at] < '0' || text[at] > '9') return -1;
    value = value * 10 + (text[at] - '0');
  }
  return value;
}

std::optional<Size> parse_screen(const std::string& text) {
  int width = 0, height = 0, used = 0;
  if (std::sscanf(text.c_str(), "%5dx%5d%n", &width, &height, &used) != 2 ||
      used != static_cast<int>(text.size()))
    return std::nullopt;
  if (width < 160 || height < 160 || width > 8192 || height > 8192) return std::nullopt;
  return Size{width, height};
}

std::optional<int> parse_dpi(const std::string& text) {
  std::size_t at = 0;
  const int digits = static_cast<int>(text.size());
  const int value = digits >= 2 && digits <= 3 ? read_digits(text, at, digits) : -1;
  if (value < 72 || value > 600) return std::nullopt;
  return value;
}

std::string language_codes(const char* between) {
  std::string codes;
  for (const LanguageInfo& info : all_languages())
    codes.append(codes.empty() ? "" : between).append(to_utf8(info.code));
  return codes;
}

// Reads words one after the other into a command line; keeps the first fault.
class Parser {
 public:
  Parser(const std::vector<std::string>& words, bool device_store)
      : words_(words), device_store_(device_store) {}

  Result<CommandLine> parse() {
    while (fault_.empty() && at_ < words_.size()) {
      const std::string& word = words_[at_++];
      if (!only_files_ && word == "--") {
        only_files_ = true;
      } else if (!only_files_ && word.size() > 1 && word[0] == '-') {
        option(word);
      } else {
        plain(word);
      }
    }
    if (fault_.empty()) check();
    if (!fault_.empty()) return Result<CommandLine>::failure(fault_);
    return line_;
  }

 private:
  using Command = CommandLine::Command;

  // The value behind `--name VALUE` or in `--name=VALUE`.
  std::string value(const std::string& name) {
    if (has_inline_) return inline_;
    if (at_ < words_.size()) return words_[at_++];
    fail(name + " needs a value");
    return {};
  }

  void option(const std::string& word) {
    const std::size_t equals = word.find('=');
    has_inline_ = equals != std::string::npos;
    inline_ = has_inline_ ? word.substr(equals + 1) : std::string();
    const std::string name = word.substr(0, equals);
    if (name == "--help" || name == "-h") {
      line_.command = Command::help;
    } else if (name == "--version") {
      line_.command = Command::version;
    } else if (name == "--new") {
      line_.new_appointment = true;
    } else if (device_store_ && name == "--device-store") {
      line_.device_store = true;
    } else if (name == "--json") {
      line_.json = true;
    } else if (name == "--list") {
      line_.list = true;
    } else if (name == "--data") {
      line_.data_folder = value(name);
      if (fault_.empty() && line_.data_folder.empty()) fail("--data needs a folder");
    } else if (!date_option(name) && !screen_option(name)) {
      fail("there is no option " + name);
    }
  }

  bool date_option(const std::string& name) {
    if (name == "--now") {
      take(line_.now, parse_iso_moment(value(name)), name, "a moment as YYYY-MM-DDTHH:MM");
    } else if (name == "--date") {
      take(line_.date, parse_iso_date(value(name)), name, "a date as YYYY-MM-DD");
    } else if (name == "--from") {
      take(line_.from, parse_iso_date(value(name)), name, "a date as YYYY-MM-DD");
    } else if (name == "--to") {
      take(line_.to, parse_iso_date(value(name)), name, "a date as YYYY-MM-DD");
    } else {
      return false;
    }
    return true;
  }

  bool screen_option(const std::string& name) {
    if (name == "--view") {
      line_.view = view_number(value(name));
      if (line_.view < 0) fail("--view is day, month or year");
    } else if (name == "--screen") {
      take(line_.screen, parse_screen(value(name)), name, "a size as WxH, 160 to 8192 each");
    } else if (name == "--dpi") {
      std::optional<int> dpi;
      take(dpi, parse_dpi(value(name)), name, "a number from 72 to 600");
      line_.dpi = dpi.value_or(0);
    } else if (name == "--language") {
      line_.language = value(name);
      if (fault_.empty() && !find_language(to_utf16(line_.language)))
        fail("--language is one of " + language_codes(", "));
    } else if (name == "--measure") {
      const std::string what = value(name);
      using Measure = CommandLine::Measure;
      line_.measure = what == "start"  ? Measure::start
                      : what == "turn" ? Measure::turn
                      : what == "edit" ? Measure::edit
                                       : Measure::nothing;
      if (line_.measure == Measure::nothing) fail("--measure knows start, turn and edit");
    } else {
      return false;
    }
    return true;
  }

  template <typename T>
  void take(std::optional<T>& into, std::optional<T> parsed, const std::string& name,
            const char* wanted) {
    if (!parsed) fail(name + " needs " + wanted);
    into = parsed;
  }

  void plain(const std::string& word) {
    if (!command_seen_ && !only_files_) {
      command_seen_ = true;
      if (word == "import") return set(Command::import_files);
      if (word == "export") return set(Command::export_file);
      if (word == "agenda") return set(Command::agenda);
      if (word == "search") return set(Command::search);
      if (word == "render") return set(Command::render);
      if (word == "backup") return set(Command::backup);
      if (word == "restore") return set(Command::restore);
      if (word == "settings") return set(Command::settings);
    }
    command_seen_ = true;
    if (line_.command == Command::settings) return settings_words_.push_back(word);
    if (line_.command == Command::search) {
      line_.search_text += (line_.search_text.empty() ? "" : " ") + word;
      return;
    }
    if (line_.command == Command::restore) {
      if (line_.from) return fail("restore takes one date at most");
      take(line_.from, parse_iso_date(word), "restore", "a date as YYYY-MM-DD");
    } else if (line_.command == Command::agenda) {
      std::optional<MonthDayYear>& day = line_.from ? line_.to : line_.from;
      if (line_.to) return fail("agenda takes two dates at most");
      take(day, parse_iso_date(word), "agenda", "dates as YYYY-MM-DD");
    } else if (line_.command == Command::render && !render_view_seen_) {
      render_view_seen_ = true;
      line_.view = view_number(word);
      if (line_.view < 0) fail("render draws day, month or year, not " + word);
    } else {
      line_.files.push_back(word);
    }
  }

  void set(Command command) {
    if (line_.command == Command::window) line_.command = command;
  }

  void check() {
    const auto files = line_.files.size();
    switch (line_.command) {
      case Command::import_files:
        if (files == 0) fail("import needs a file");
        break;
      case Command::export_file:
        if (files != 1) fail("export needs the name of one file");
        if (fault_.empty() && names_contacts(line_.files[0]) && (line_.from || line_.to))
          fail("--from and --to belong to appointments, and a .vcf file has none");
        break;
      case Command::render:
        if (!render_view_seen_ || files != 1) fail("render needs a view and the name of one file");
        break;
      case Command::settings:
        check_settings();
        break;
      case Command::backup:
        if (files != 0) fail("backup needs no file");
        break;
      case Command::search:
        if (TextQuery(to_utf16(line_.search_text)).empty()) fail("search needs what to look for");
        break;
      case Command::agenda:
        if (line_.from && !line_.to) line_.to = line_.from;
        break;
      default:
        break;
    }
    if (line_.json && line_.command != Command::agenda && line_.command != Command::search &&
        line_.command != Command::help)
      fail("--json belongs to agenda and search");
    if (line_.new_appointment && line_.command != Command::window && line_.command != Command::help)
      fail("--new belongs to the window");
    if (line_.list && line_.command != Command::restore && line_.command != Command::help)
      fail("--list belongs to restore");
    if (line_.from && line_.to && day_of(*line_.from) > day_of(*line_.to))
      fail("the last day lies before the first");
  }

  void check_settings() {
    using Action = CommandLine::SettingsAction;
    struct Form {
      const char* word;
      Action action;
      std::size_t words;
      const char* needed;
    };
    constexpr Form forms[] = {
        {"list", Action::list, 0, "settings list takes nothing more"},
        {"get", Action::get, 1, "settings get needs the name of one setting"},
        {"set", Action::set, 2, "settings set needs the name of a setting and its value"},
        {"export", Action::export_file, 1, "settings export needs the name of one file"},
        {"import", Action::import_file, 1, "settings import needs the name of one file"}};
    for (const Form& form : forms) {
      if (settings_words_.empty() || settings_words_[0] != form.word) continue;
      line_.settings_action = form.action;
      if (settings_words_.size() != form.words + 1) return fail(form.needed);
      const bool file = form.action == Action::export_file || form.action == Action::import_file;
      if (form.words > 0)
        (file ? line_.files.emplace_back() : line_.setting_name) = settings_words_[1];
      if (form.words > 1) line_.setting_value = settings_words_[2];
      return;
    }
    fail("settings knows list, get, set, export and import");
  }

  void fail(std::string reason) {
    if (fault_.empty()) fault_ = std::move(reason);
  }

  const std::vector<std::string>& words_;
  const bool device_store_;
  CommandLine line_;
  std::vector<std::string> settings_words_;  // behind that command
  std::string fault_, inline_;
  std::size_t at_ = 0;
  bool has_inline_ = false, only_files_ = false, command_seen_ = false, render_view_seen_ = false;
};

}  // namespace

Result<CommandLine> parse_command_line(const std::vector<std::string>& words, bool device_store) {
  return Parser(words, device_store).parse();
}

bool names_contacts(const std::string& file) {
  return file.size() > 4 && upper_ascii(to_utf16(file.substr(file.size() - 4))) == u".VCF";
}

std::string usage_text(bool device_store) {
  std::string text = R"(Orvello, a pocket calendar.

  orvello [FILE...]                   open the window; what calendar and contact files, or folders
                                      of them, would bring is shown first, and imported on OK
      --view day|month|year           the view to open
      --date YYYY-MM-DD               the date to show
      --new                           write a new appointment, in the window that is open if one is
      --screen WxH --dpi N            a screen of that size in pixels and that density
      --measure start                 print the time to the first painted view, and end
      --measure turn                  print how fast the Day view goes to the next day, and end
      --measure edit                  print how fast the editor opens and saves, and end; it makes
                                      appointments
  orvello import FILE...              import iCalendar (.ics) and vCalendar (.vcs) files, and
                                      contacts as vCards (.vcf); of a folder, all of these in it
  orvello export FILE [--from D] [--to D]
                                      write the calendar, or the appointments of some days
  orvello export FILE.vcf             write the contacts
  orvello agenda [FROM [TO]] [--json] list the appointments of the days (today without dates)
  orvello search TEXT [--json]        list the appointments of all years with these words: in subject,
                                      place, notes, categories and attendees, as parts of words;
                                      words in quotes stay together
  orvello render day|month|year FILE.png
                                      draw a view into a picture; takes the window's options
  orvello settings list               list every setting with its value, default and meaning
  orvello settings get NAME           print a setting's value
  orvello settings set NAME VALUE     change a setting
  orvello settings export FILE        write settings, colours, icons, profiles and ready-made texts
                                      into a text file
  orvello settings import FILE        take them from such a file: all of it or, if something in it
                                      is wrong, nothing
                                      (a window that is open follows in a moment)
  orvello restore [DATE]              put a copy of the calendar back: the newest, or of that day
  orvello restore --list              list the copies
  orvello backup                      copy the calendar now, if today's copy is due

Every command takes:
      --data DIR                      keep everything under this folder
      --now YYYY-MM-DDTHH:MM          the time it is said to be
      --language CODE                 the language of menus and dates: )";
  text += language_codes(", ");
  if (device_store)
    text += R"(
      --device-store                  take the device's own store in place of the calendar file)";
  return text += R"(
      --help, --version

Ends with 0 on success, 1 on a failure, which it names, and 2 on a wrong command line.
)";
}

}  // namespace orvello
