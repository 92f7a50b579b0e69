#include "store/embedded/calendar_copies.h"

#include <algorithm>
#include <cerrno>
#include <set>
#include <string_view>

#include "calendar/iso_date.h"
#include "files/file_reasons.h"
#include "files/replace_file.h"
#include "store/embedded/calendar_check.h"
#include "store/embedded/sqlite/connection.h"

namespace orvello {
namespace {

constexpr std::string_view kPrefix = "calendar-", kSuffix = ".db";
constexpr std::size_t kDays = 7, kWeeks = 4, kMonths = 6;
constexpr std::chrono::milliseconds kPatience{5000};

std::optional<MonthDayYear> day_of_name(std::string_view name) {
  if (name.size() != kPrefix.size() + 10 + kSuffix.size() || !name.starts_with(kPrefix) ||
      !name.ends_with(kSuffix))
    return std::nullopt;
  return parse_iso_date(name.substr(kPrefix.size(), 10));
}

// A copy keeps the time of change of what it was made from: so it says of which state it is.
std::optional<FileTime> time_of_change(const std::string& path) {
  const auto status = status_of_file(path);
  return status ? std::optional(status->changed) : std::nullopt;
}

std::string failed_step(const std::string& calendar, const std::string& folder,
                        const SqliteFailure& failure) {
  switch (failure.fault) {
    case SqliteFault::full:
    case SqliteFault::write_failed:  // a quota or a limit
      return cannot_be_written(folder, ENOSPC);
    case SqliteFault::busy:
      return sentence_of(failure, calendar);
    default:
      if (is_damage(failure.fault)) return calendar + " is damaged.";
      return calendar + " could not be copied: " + reason_of(failure) + ".";
  }
}

// All pages of one state of the calendar into an empty file; empty when that went well.
std::string copy_to(const std::string& target, const std::string& calendar,
                    const std::string& folder) {
  using Checks = SqliteConnection::PageChecks;
  const auto failed = [&](const SqliteFailure& why) { return failed_step(calendar, folder, why); };
  SqliteConnection from(calendar, SqliteConnection::Access::read_only, Checks::on, kPatience);
  // Whether it has checks is known once the header was read.
  if (!from.good() || !from.number("SELECT count(*) FROM sqlite_schema"))
    return failed(from.failure());
  SqliteConnection to(target, SqliteConnection::Access::read_write,
                      from.has_checked_pages() ? Checks::on : Checks::off, kPatience);
  // Nobody but this process knows the file before it is whole.
  if (!to.good() || !to.run("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF"))
    return failed(to.failure());
  const SqliteFailure failure = copy_pages(from, to);
  return failure.fault == SqliteFault::none ? "" : failed(failure);
}

}  // namespace

std::vector<bool> copies_to_keep(const std::vector<MonthDayYear>& days) {
  std::set<std::int32_t> weeks, months;
  std::vector<bool> keep(days.size());
  for (std::size_t i = 0; i < days.size(); ++i) {
    // Day 2 was a Monday.
    const std::int32_t week = (day_of(days[i]).number() - 2) / 7;
    const std::int32_t month = days[i].year * 12 + days[i].month;
    const bool of_week = weeks.size() < kWeeks && weeks.insert(week).second;
    const bool of_month = months.size() < kMonths && months.insert(month).second;
    keep[i] = i < kDays || of_week || of_month;
  }
  return keep;
}

CalendarCopies::CalendarCopies(std::string calendar)
    : calendar_(std::move(calendar)), folder_(path_in(folder_of(calendar_), "backups")) {}

std::vector<CalendarCopy> CalendarCopies::list(MonthDayYear today) const {
  std::vector<CalendarCopy> copies;
  const auto names = names_in_folder(folder_);
  if (!names) return copies;
  for (const std::string& name : *names)
    if (const auto day = day_of_name(name)) copies.push_back({path_in(folder_, name), *day});
  const Day now = day_of(today);
  std::sort(copies.begin(), copies.end(), [now](const auto& a, const auto& b) {
    const Day first = day_of(a.day), second = day_of(b.day);
    return std::pair(first <= now, first) > std::pair(second <= now, second);
  });
  return copies;
}

bool CalendarCopies::is_due(MonthDayYear today) const {
  const auto changed = time_of_change(calendar_);
  if (!changed) return false;
  const auto copies = list(today);
  if (copies.empty() || day_of(copies[0].day) > day_of(today)) return true;
  if (copies[0].day == today) return false;
  return time_of_change(copies[0].path) != changed;
}

Result<std::optional<CalendarCopy>> CalendarCopies::take(MonthDayYear today) const {
  using Taken = Result<std::optional<CalendarCopy>>;
  const auto changed = time_of_change(calendar_);
  if (!changed || !is_due(today)) return Taken(std::nullopt);
  if (!make_folder(folder_) && errno != EEXIST)
    return Taken::failure(cannot_be_written(folder_, errno));
  const CalendarCopy copy{path_in(folder_, "calendar-" + iso_text(today) + ".db"), today};
  FileInTheMaking made(copy.path);
  if (!made.exists()) return Taken::failure(cannot_be_written(folder_, errno));
  if (auto fault = copy_to(made.path(), calendar_, folder_); !fault.empty())
    return Taken::failure(std::move(fault));
  const CalendarCheck check = check_calendar(made.path());
  if (check.health == CalendarHealth::damaged) return Taken::failure(calendar_ + " is damaged.");
  if (check.health != CalendarHealth::good) return Taken::failure(check.reason);
  if (check.appointments == 0) return Taken(std::nullopt);  // nothing to lose yet
  if (!set_time_of_change(made.descriptor(), *changed) ||
      (!made.put_in_place(TakenName::keep) && errno != EEXIST) || !sync_folder(folder_))
    return Taken::failure(cannot_be_written(folder_, errno));
  thin_out(today);
  return Taken(copy);
}

std::optional<CalendarCopy> CalendarCopies::newest_good(MonthDayYear today) const {
  for (CalendarCopy& copy : list(today))
    if (check_calendar(copy.path).health == CalendarHealth::good) return std::move(copy);
  return std::nullopt;
}

// Those of the future are nobody's to judge.
void CalendarCopies::thin_out(MonthDayYear today) const {
  auto copies = list(today);
  std::erase_if(copies, [&](const auto& copy) { return day_of(copy.day) > day_of(today); });
  std::vector<MonthDayYear> days;
  for (const CalendarCopy& copy : copies) days.push_back(copy.day);
  const auto keep = copies_to_keep(days);
  for (std::size_t i = 0; i < copies.size(); ++i)
    if (!keep[i]) remove_file(copies[i].path);
}

}  // namespace orvello
