#include "hosts/shared/program.h"

#include <iostream>

#include "cli/agenda.h"
#include "cli/command_line.h"
#include "cli/commands.h"
#include "cli/imported_labels.h"
#include "cli/search_command.h"
#include "cli/settings_commands.h"
#include "files/file_lock.h"
#include "files/input_file.h"
#include "files/replace_file.h"
#include "files/system_files.h"
#include "hosts/shared/own_files.h"
#include "hosts/shared/way_back.h"
#include "hosts/shared/way_back_question.h"
#include "hosts/shared/window_program.h"
#include "hosts/shared/written_boxes.h"
#include "settings/new_labels.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"
#include "store/embedded/embedded_store.h"
#include "store/store_session.h"

namespace orvello {
namespace {

using Command = CommandLine::Command;

constexpr std::size_t kLargestSettingsFile = 1 << 20;

// What the program's parts share, opened once.
struct Opened {
  explicit Opened(ProgramSystem& with) : system(with) {}
  ProgramSystem& system;
  Paths paths;
  std::unique_ptr<FileLock> use;
  std::unique_ptr<Clock> clock;
  bool windowed = false;
  std::unique_ptr<RecordCalendarStore> store;  // null: see the reason
  EmbeddedStore* file = nullptr;               // what that is when it is no device's own
  CalendarHealth health = CalendarHealth::good;
  std::string reason;
};

// A desktop's month has room for its appointments, and its first user should see them at once: a
// registry that does not exist yet starts with their bars, the marks of the year, and whole
// subjects and places switched on.
// The end of new appointments is stored, too: the settings' page takes a missing one for noon.
// All of that is one write, so that a process that dies leaves it to the next start.
void prepare_first_start(StoredRegistry& registry) {
  if (!registry.is_new()) return;
  const auto key = registry.create(RegistryRoot::classes_root, kSettingsKey);
  if (!key) return;
  for (const TextView name : {u"showindicator", u"usecategorycolorforbar", u"coloryearview",
                              u"wrapsubject", u"showlocation"})
    WriteNumberSetting(registry, name, 1);
  constexpr TextView end = u"defaultEndTimeIndex";
  WriteNumberSetting(registry, end, find_setting(end)->default_number);
  EnsureShellCalendarKey(registry);  // flushes
}

int failed(const std::string& reason) {
  std::cerr << "orvello: " << reason << "\n";
  return kExitFailure;
}

// Nothing when it worked, else the sentence that says why not.
std::optional<std::string> open_files(const CommandLine& line, Opened& opened) {
  const auto folders = opened.system.open_folders(line.data_folder);
  if (!folders) return folders.reason();
  opened.paths = *folders;
  prepare_first_start(*opened.system.registry(opened.paths));
  opened.clock = opened.system.clock(fixed_time(line));
  return std::nullopt;
}

// A calendar that is missing though there are copies of it is made anew only when that is wanted.
void open_calendar(Opened& opened, bool start_afresh) {
  const std::string path = calendar_file(opened.paths);
  opened.use = std::make_unique<FileLock>(calendar_lock(opened.paths), FileLock::Kind::shared);
  if (!opened.use->granted()) {
    opened.health = CalendarHealth::unreadable;
    opened.reason = path + " is just being replaced by another Orvello.";
    return;
  }
  const auto look = look_at_calendar(opened.paths, TodayTriple(opened.clock->local_time()));
  opened.health = look.health;
  opened.reason = look.reason;
  if (look.health == CalendarHealth::damaged) return;
  if (look.health == CalendarHealth::missing && !start_afresh) return;
  // On a medium that cannot be written it is read all the same; changes fail with the reason.
  const bool only_read =
      status_of_file(path) && !(may_write_file(path) && may_write_file(opened.paths.data));
  auto store = only_read         ? EmbeddedStore::open_to_read(path, *opened.clock)
               : opened.windowed ? EmbeddedStore::open_for_window(path, *opened.clock, kLockWait)
                                 : EmbeddedStore::open(path, *opened.clock);
  if (store) {
    opened.file = store->get();
    opened.store = std::move(*store);
    return;
  }
  opened.reason = store.reason();
  opened.health =
      check_calendar(path, std::chrono::milliseconds(0)).health;  // the store has waited already
}

bool needs_way_back(const Opened& opened) {
  return !opened.store &&
         (opened.health == CalendarHealth::damaged || opened.health == CalendarHealth::missing);
}

int refused(const Opened& opened) {
  failed(opened.reason);
  if (needs_way_back(opened)) std::cerr << "To get a copy of it back: orvello restore\n";
  return kExitFailure;
}

// The window asks; what is said there may be answered by no.
void offer_way_back(const CommandLine& line, Opened& opened) {
  opened.use.reset();
  const WindowParts parts{line, opened.paths, *opened.clock, nullptr, opened.reason};
  const bool restored = ask_for_way_back(opened.system, parts);
  open_calendar(opened, !restored);
}

// What commands need besides the calendar.
struct Shared {
  Shared(const CommandLine& line, const Opened& opened)
      : locale(opened.system.locale(line.language)),
        registry(opened.system.registry(opened.paths)),
        databases(opened.system.databases(path_in(opened.paths.data, "device.db"))),
        files(opened.system.files(opened.paths)) {}
  std::unique_ptr<Locale> locale;
  std::unique_ptr<StoredRegistry> registry;
  std::unique_ptr<RecordDatabases> databases;
  std::unique_ptr<Files> files;
};

// The agenda, or a search.
int print_appointments(const CommandLine& line, Opened& opened) {
  const Shared with(line, opened);
  WrittenBoxes boxes;
  SettingsRecord settings;
  load_agenda_settings(settings, *with.registry, {*with.databases, boxes, *with.files},
                       with.locale->data());
  const auto run = line.command == Command::search ? run_search : run_agenda;
  return run(line, *opened.store, *opened.clock, settings, std::cout, std::cerr);
}

int import(const CommandLine& line, Opened& opened) {
  if (opened.file && !copy_before_change(opened.paths, *opened.clock, std::cerr))
    return kExitFailure;
  const ImportedLabels labels(*opened.store);
  const int code = run_import(line, *opened.store, *opened.clock, std::cout, std::cerr);
  const Shared with(line, opened);
  WrittenBoxes boxes;
  std::vector<CategoryProp> props;
  give_label_colors({*with.databases, boxes, *with.files}, props, labels.fresh());
  return code;
}

// Needs no calendar, so that one that cannot be opened is not in the way.
int settings(const CommandLine& line, const Opened& opened, std::ostream& content) {
  const Shared with(line, opened);
  const auto read = [](const std::string& path) -> Result<std::string> {
    if (path != "-") return read_whole_file(path, kLargestSettingsFile);
    std::string all(kLargestSettingsFile, '\0');
    std::cin.read(all.data(), static_cast<std::streamsize>(all.size()));
    all.resize(static_cast<std::size_t>(std::cin.gcount()));
    if (all.size() == kLargestSettingsFile)
      return Result<std::string>::failure("standard input is too large for settings");
    return all;
  };
  const auto write = [&content](const std::string& path,
                                std::string_view text) -> Result<std::size_t> {
    if (path != "-") return replace_file(path, text);
    content.write(text.data(), static_cast<std::streamsize>(text.size()));
    return text.size();
  };
  const int code = run_settings(
      line, {*with.registry,
             {*with.databases, *with.files, path_in(opened.paths.data, "settings.vol")},
             with.locale->data(),
             read,
             write,
             std::cout,
             std::cerr});
  if (code != kExitSuccess) with.registry->forget_changes();
  return code;
}

int command(const CommandLine& line, Opened& opened, std::ostream& content) {
  if (!opened.store) return refused(opened);
  switch (line.command) {
    case Command::backup:
      return run_backup(opened.paths, *opened.clock, std::cout, std::cerr);
    case Command::import_files:
      return import(line, opened);
    case Command::export_file:
      return run_export(line, *opened.store, *opened.clock, content, std::cerr);
    default:
      return print_appointments(line, opened);
  }
}

// A person who starts the program where no window can open still gets to see the day.
int without_display(CommandLine line, Opened& opened) {
  std::cerr << "orvello: there is no display to open a window on. The start view is drawn into "
               "orvello.png; today's agenda follows.\n";
  if (!opened.store) return refused(opened);
  line.files = {"orvello.png"};
  const WindowParts parts{line,          opened.paths, *opened.clock, opened.store.get(),
                          opened.reason, opened.file};
  const int drawn = run_render(opened.system, parts);
  line.from = line.to = std::nullopt;
  return std::max(drawn, print_appointments(line, opened));
}

// The device's own store in place of the calendar file.
int run_with_device_store(const CommandLine& line, Opened& opened, std::ostream& content) {
  if (line.command == Command::backup || line.command == Command::restore)
    return failed("the device's own store is not this program's to copy.");
  if (line.command == Command::window && !opened.system.can_show_windows())
    return failed("there is no display to open a window on.");
  opened.store =
      opened.system.device_store(*opened.clock, path_in(opened.paths.data, "device.uids"));
  const WindowParts parts{line, opened.paths, *opened.clock, opened.store.get(), ""};
  if (line.command == Command::render) return run_render(opened.system, parts);
  if (line.command == Command::window) return run_window(opened.system, parts);
  WrittenBoxes boxes;  // which say why it cannot be opened
  StoreSession session(*opened.store, boxes);
  return session.Open(nullptr) ? command(line, opened, content) : kExitFailure;
}

}  // namespace

int run_program(const std::vector<std::string>& words, ProgramSystem& system,
                std::ostream& content) {
  const auto line = parse_command_line(words, system.has_device_store());
  if (!line) {
    std::cerr << "orvello: " << line.reason() << "\nTry orvello --help.\n";
    return kExitUsage;
  }
  if (line->command == Command::help) {
    std::cout << usage_text(system.has_device_store());
    return kExitSuccess;
  }
  if (line->command == Command::version) {
    std::cout << "orvello 0.1.0\n";
    return kExitSuccess;
  }
  Opened opened(system);
  if (const auto fault = open_files(*line, opened)) {
    if (line->command != Command::window) return failed(*fault);
    system.tell_start_fault(*fault);
    return kExitFailure;
  }
  // Also for reading: closing a database's file by another way would drop the locks on it.
  if (const auto own = own_file_among(opened.paths, line->files); !own.empty())
    return failed(own + " is one of the calendar's own files.");
  if (line->command == Command::settings) return settings(*line, opened, content);
  if (line->device_store || (system.is_device() && line->data_folder.empty()))
    return run_with_device_store(*line, opened, content);
  if (line->command == Command::restore)
    return run_restore(*line, opened.paths, *opened.clock, std::cout, std::cerr);
  opened.windowed = line->command == Command::window && system.can_show_windows();
  open_calendar(opened, false);
  const bool attended = opened.windowed && line->measure == CommandLine::Measure::nothing;
  if (attended && needs_way_back(opened)) offer_way_back(*line, opened);
  const WindowParts parts{*line,         opened.paths, *opened.clock, opened.store.get(),
                          opened.reason, opened.file};
  if (line->command == Command::render) {
    if (!opened.store) return refused(opened);
    return run_render(opened.system, parts);
  }
  if (line->command != Command::window) return command(*line, opened, content);
  if (!opened.windowed) return without_display(*line, opened);
  return run_window(system, parts);
}

}  // namespace orvello
