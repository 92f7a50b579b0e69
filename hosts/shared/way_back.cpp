#include "hosts/shared/way_back.h"

#include <ostream>

#include "calendar/iso_date.h"
#include "cli/commands.h"
#include "exchange/export.h"
#include "exchange/import.h"
#include "files/file_lock.h"
#include "files/input_file.h"
#include "files/replace_file.h"
#include "files/system_files.h"
#include "store/embedded/calendar_restore.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/salvage.h"

namespace orvello {
namespace {

// Read in some milliseconds; of a larger calendar each page is checked when it is met.
constexpr std::int64_t kGlance = 16 << 20;
constexpr int kMostNames = 1000;

// Set when a copy turned out damaged, which is noticed long after the start.
std::string damage_mark(const Paths& paths) {
  return path_in(path_in(paths.data, "backups"), "damaged");
}

// -1: there is none.
std::int64_t size_of_file(const std::string& path) {
  const auto status = status_of_file(path);
  return status ? static_cast<std::int64_t>(status->size) : -1;
}

std::string counted(std::int64_t count) {
  return std::to_string(count) + (count == 1 ? " appointment" : " appointments");
}

Result<CalendarCopy> chosen_copy(const CalendarCopies& copies, std::optional<MonthDayYear> day,
                                 MonthDayYear today) {
  using Chosen = Result<CalendarCopy>;
  if (!day) {
    const auto newest = copies.newest_good(today);
    return newest ? Chosen(*newest) : Chosen::failure("there is no good copy of the calendar.");
  }
  for (const CalendarCopy& copy : copies.list(today))
    if (copy.day == *day) return copy;
  return Chosen::failure("there is no copy of " + iso_text(*day) +
                         "; orvello restore --list shows those that there are.");
}

// A name in the calendar's folder for a file that nobody is to see; gone in the end.
class ScratchFile {
 public:
  explicit ScratchFile(const std::string& beside) : name_(beside) {
    if (name_.exists()) remove_file(name_.path());
  }
  bool exists() const { return name_.exists(); }
  const std::string& path() const { return name_.path(); }

 private:
  FileInTheMaking name_;
};

// Under the first free name; answers it.
Result<std::string> save_text(const Paths& paths, MonthDayYear today, const char* ending,
                              const std::string& text) {
  for (int number = 1; number <= kMostNames; ++number) {
    const std::string path = path_in(paths.data, "calendar-saved-") + iso_text(today) +
                             (number > 1 ? "-" + std::to_string(number) : "") + ending;
    const auto created = create_whole_file(path, text);
    if (!created) return Result<std::string>::failure(created.reason());
    if (*created) return path;
  }
  return Result<std::string>::failure(paths.data + " holds too many files of this kind.");
}

// A calendar of its own in the making, which nobody ever sees but as the text of an export.
Result<bool> save_what_can_be_read(const Paths& paths, const Clock& clock, MonthDayYear today,
                                   Restored& restored) {
  using Saved = Result<bool>;
  const ScratchFile fresh(calendar_file(paths));
  if (!fresh.exists()) return Saved::failure(paths.data + " cannot be written.");
  if (auto made = EmbeddedStore::open(fresh.path(), clock); !made)
    return Saved::failure(made.reason());
  const auto salvaged = salvage_calendar(calendar_file(paths), fresh.path());
  if (!salvaged) return Saved::failure(salvaged.reason());
  auto store = EmbeddedStore::open(fresh.path(), clock);
  if (!store) return Saved::failure(store.reason());
  const auto contacts = export_contacts(**store);
  if (!contacts) return Saved::failure(contacts.reason());
  if (!contacts->empty()) {
    const auto path = save_text(paths, today, ".vcf", *contacts);
    if (!path) return Saved::failure(path.reason());
    restored.saved_contacts = *path;
  }
  if (salvaged->appointments == 0) return true;
  const auto text = export_calendar(**store, std::nullopt, std::nullopt, clock);
  const auto path = text ? save_text(paths, today, ".ics", *text) : text;
  if (!path) return Saved::failure(path.reason());
  restored.saved = *path;
  restored.appointments = salvaged->appointments;
  restored.doubtful = salvaged->doubtful;
  return true;
}

Result<std::string> make_anew(const Paths& paths, const Clock& clock, const Restored& restored,
                              const std::string& keep_as) {
  using Made = Result<std::string>;
  const ScratchFile fresh(calendar_file(paths));
  if (!fresh.exists()) return Made::failure(paths.data + " cannot be written.");
  {
    auto store = EmbeddedStore::open(fresh.path(), clock);
    if (!store) return Made::failure(store.reason());
    std::vector<std::string> files;
    for (const std::string* file : {&restored.saved, &restored.saved_contacts})
      if (!file->empty()) files.push_back(*file);
    const ImportResult imported = import_files(files, open_input_file, **store, clock);
    if (!imported.done) return Made::failure(imported.failure);
  }
  return replace_calendar(calendar_file(paths), fresh.path(), keep_as);
}

}  // namespace

std::string calendar_file(const Paths& paths) { return path_in(paths.data, "calendar.db"); }
std::string calendar_lock(const Paths& paths) { return path_in(paths.data, "calendar.lock"); }

CalendarCheck look_at_calendar(const Paths& paths, MonthDayYear today) {
  const std::string path = calendar_file(paths);
  const std::int64_t size = size_of_file(path);
  if (size <= 0 && size_of_file(path + "-journal") <= 0) {
    if (CalendarCopies(path).list(today).empty()) return {CalendarHealth::good, "", 0};
    return {CalendarHealth::missing,
            path + (size < 0 ? " is missing" : " is empty") + ", but there are copies of it.", 0};
  }
  const bool marked = size_of_file(damage_mark(paths)) >= 0;
  CalendarCheck check = glance_at_calendar(path, marked ? size : kGlance);
  if (!marked) return check;
  check = check_calendar(path);
  if (check.health == CalendarHealth::good) remove_file(damage_mark(paths));
  return check;
}

Result<Restored> restore_calendar(const Paths& paths, std::optional<MonthDayYear> day,
                                  const Clock& clock) {
  using Answer = Result<Restored>;
  const std::string calendar = calendar_file(paths);
  const MonthDayYear today = TodayTriple(clock.local_time());
  const FileLock lock(calendar_lock(paths), FileLock::Kind::alone);
  if (!lock.granted() || is_in_use(calendar))
    return Answer::failure(calendar + " is in use by another Orvello, or its folder is read-only.");
  const CalendarCheck check = check_calendar(calendar);
  const bool damaged = check.health == CalendarHealth::damaged;
  const auto copy = chosen_copy(CalendarCopies(calendar), day, today);
  if (!copy && (day || !damaged)) return Answer::failure(copy.reason());
  if (check.health == CalendarHealth::newer || check.health == CalendarHealth::unreadable)
    return Answer::failure(check.reason);
  Restored restored;
  if (copy) restored.copy = *copy;
  if (damaged) {
    const auto saved = save_what_can_be_read(paths, clock, today, restored);
    if (!saved) return Answer::failure("nothing was restored: " + saved.reason());
  }
  if (!copy && restored.saved.empty() && restored.saved_contacts.empty())
    return Answer::failure(copy.reason() + " Nothing can be read of " + calendar + ".");
  const std::string keep_as = path_in(paths.data, "calendar-replaced-") + iso_text(today);
  const auto kept = copy ? replace_calendar(calendar, copy->path, keep_as)
                         : make_anew(paths, clock, restored, keep_as);
  if (!kept) return Answer::failure(kept.reason());
  restored.kept = *kept;
  remove_file(damage_mark(paths));
  return restored;
}

std::string restored_text(const Restored& restored) {
  std::string text = restored.copy
                         ? "The calendar is the copy of " + iso_text(restored.copy->day) + " now.\n"
                         : "There was no copy; the calendar is made anew of what could be read.\n";
  if (!restored.kept.empty()) text += "The file as it was is kept: " + restored.kept + "\n";
  if (!restored.saved_contacts.empty())
    text += "Contacts could still be read of it: " + restored.saved_contacts + "\n";
  if (restored.saved.empty()) return text;
  text += counted(restored.appointments) + " could still be read of it";
  if (restored.doubtful > 0)
    text += ", " + std::to_string(restored.doubtful) + " of them from damaged pages";
  text += ": " + restored.saved + "\n";
  if (restored.copy) text += "Import that file to have what is newer than the copy.\n";
  return text;
}

int run_restore(const CommandLine& line, const Paths& paths, const Clock& clock, std::ostream& out,
                std::ostream& err) {
  if (line.list) {
    for (const CalendarCopy& copy :
         CalendarCopies(calendar_file(paths)).list(TodayTriple(clock.local_time()))) {
      const CalendarCheck check = check_calendar(copy.path);
      out << iso_text(copy.day) << "  "
          << (check.health == CalendarHealth::good ? counted(check.appointments) : check.reason)
          << "\n";
    }
    return out.flush() ? kExitSuccess : kExitFailure;
  }
  const auto restored = restore_calendar(paths, line.from, clock);
  if (!restored) {
    err << "orvello: " << restored.reason() << "\n";
    return kExitFailure;
  }
  out << restored_text(*restored);
  return out.flush() ? kExitSuccess : kExitFailure;
}

int run_backup(const Paths& paths, const Clock& clock, std::ostream& out, std::ostream& err) {
  const CalendarCopies copies(calendar_file(paths));
  const auto taken = copies.take(TodayTriple(clock.local_time()));
  if (!taken) {
    err << "orvello: no copy was made: " << taken.reason() << "\n";
    if (check_calendar(calendar_file(paths)).health == CalendarHealth::damaged)
      (void)replace_file(damage_mark(paths), "");
    return kExitFailure;
  }
  if (*taken)
    out << (*taken)->path << "\n";
  else
    out << "no copy is due\n";
  return out.flush() ? kExitSuccess : kExitFailure;
}

bool copy_before_change(const Paths& paths, const Clock& clock, std::ostream& err) {
  const CalendarCopies copies(calendar_file(paths));
  const auto taken = copies.take(TodayTriple(clock.local_time()));
  if (taken) return true;
  const bool damaged = check_calendar(calendar_file(paths)).health == CalendarHealth::damaged;
  err << "orvello: " << (damaged ? "nothing was changed: " : "no copy of the calendar was made: ")
      << taken.reason() << "\n";
  return !damaged;
}

}  // namespace orvello
