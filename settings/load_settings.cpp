#include "settings/load_settings.h"

#include "resources/bitmaps.h"
#include "settings/category_props.h"
#include "settings/color_schemes.h"
#include "settings/colors.h"
#include "settings/pretexts.h"
#include "settings/program_files.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"

namespace orvello {
namespace {

// The blanks at their ends are part of them: a person types on.
constexpr TextView kFirstSubjects[] = {
    u"Meet with ",  u"Lunch with ", u"Dinner with ",   u"Visit ",     u"Birthday ",
    u"Call ",       u"Conference ", u"Business Trip ", u"Flight to ", u"Anniversary",
    u"Appointment", u"To Do List",  u"Task",           u"Note",       u"Phone Call",
    u"Travel",      u"Business",    u"Vacation",       u"School",     u"Medical"};

void load_icons(SettingsRecord& settings, const Files& files, bool low) {
  settings.notes_glyph = load_bitmap(low ? kBitmapNotesLow : kBitmapNotesHigh);
  settings.reminder_glyph = load_bitmap(low ? kBitmapReminderLow : kBitmapReminderHigh);
  settings.builtin_icons = load_bitmap(low ? kBitmapIconsLow : kBitmapIconsHigh);
  settings.icon_cell = low ? 9 : 18;

  const Text path = path_beside_program(files, u"icons.bmp");
  std::optional<Image> strip;
  if (FileExists(files, path)) strip = files.load_bitmap(path);
  if (strip && strip->empty()) strip.reset();
  settings.has_user_icons = strip.has_value();
  settings.user_icons = strip ? std::move(*strip) : Image{};

  settings.builtin_icon_count = settings.builtin_icons.width / settings.icon_cell;
  settings.total_icon_count = settings.builtin_icon_count;
  if (settings.has_user_icons)
    settings.total_icon_count += settings.user_icons.width / settings.icon_cell;
}

// A number past both strips, such as of a strip that is gone, shows the slot's own icon.
void keep_icons_in_range(SettingsRecord& settings) {
  for (int slot = 0; slot < kDisplayIconSlots; ++slot)
    if (std::int32_t& icon = settings.displayicon[static_cast<std::size_t>(slot)];
        icon >= settings.total_icon_count)
      icon = slot;
}

// What the volume of a first use lacks; empty when it was made ready, or when that cannot be told.
// Without the subjects it was not: there is none yet, or whoever made it was cut short, and may
// have opened the category properties after that.
std::vector<NewDatabase> missing_at_first_use(const SettingsVolume& volume) {
  bool has_subjects = false, has_properties = false;
  if (FileExists(volume.files, settings_volume_path(volume.files))) {
    const MountedVolume mounted(volume);
    const auto databases = mounted ? volume.databases.enumerate(mounted.id()) : std::nullopt;
    if (!databases) return {};
    for (const DatabaseInfo& one : *databases) {
      has_subjects = has_subjects || one.name == kSubjectPretexts;
      has_properties = has_properties || one.name == kCategoryProps;
    }
  }
  if (has_subjects) return {};
  NewDatabase subjects{Text(kSubjectPretexts), kPretextText, {}};
  for (const TextView subject : kFirstSubjects)
    subjects.records.push_back({{kPretextText, Text(subject)}});
  std::vector<NewDatabase> missing{std::move(subjects)};
  // The category properties come with them: the start is about to open those.
  if (!has_properties) missing.push_back({Text(kCategoryProps), kCategoryLabel, {}});
  return missing;
}

// What the locale says and no default can: settings of an earlier use stay, also where only the
// volume was lost.
void choose_by_locale(SettingsRecord& settings, Registry& registry, const LocaleData& locale) {
  std::int32_t greeting = 1, chosen = -1;
  ReadNumberSetting(registry, kGreetingDue, greeting);
  ReadNumberSetting(registry, u"firstdayofweek", chosen);
  if (greeting != 1 || chosen != -1) return;
  settings.firstdayofweek = locale.monday_first ? 1 : 0;
  WriteNumberSetting(registry, u"firstdayofweek", settings.firstdayofweek);
}

// Likewise, where nobody has chosen any colours.
void choose_dark_colors(SettingsRecord& settings, Registry& registry) {
  std::int32_t greeting = 1;
  ReadNumberSetting(registry, kGreetingDue, greeting);
  if (greeting == 1 && !HasItemColors(registry))
    ChooseItemColors(settings, registry, dark_scheme().colors);
}

// The greeting is noted down first: whoever dies between the two starts all over.
void prepare_first_use(const SettingsVolume& volume, Registry& registry,
                       const std::vector<NewDatabase>& missing) {
  WriteNumberSetting(registry, kGreetingDue, 1);
  FlushSettings(registry);
  const MountedVolume mounted(volume);
  if (!mounted || volume.databases.create_all(mounted.id(), missing)) return;
  // Another process may have been quicker: what it made is as good.
  if (volume.databases.last_error() != DatabaseError::already_exists) reportWriteError(volume, 0);
}

}  // namespace

void compute_time_fractions(SettingsRecord& settings) {
  settings.time_fraction =
      TimeBandBounds(settings.timeA, settings.timeB, settings.timeC, settings.timeD);
}

void load_locale_conventions(SettingsRecord& settings, const LocaleData& locale) {
  settings.locale = locale;
  LoadMonthNames(settings.month_names, locale);
}

void LoadSettings(SettingsRecord& settings, Registry& registry, const SettingsVolume& volume,
                  const Clock& clock, const LocaleData& locale, bool low_resolution,
                  bool dark_desktop) {
  const auto load = [&](LoadStep step) { load_settings_of(step, registry, locale, settings); };
  load(LoadStep::flags);
  compute_time_fractions(settings);
  load(LoadStep::row_colors);
  load_icons(settings, volume.files, low_resolution);
  settings.today = settings.shown = TodayTriple(clock.local_time());
  load(LoadStep::display_icons);
  keep_icons_in_range(settings);
  load(LoadStep::default_times);
  load(LoadStep::views);
  LoadItemColors(settings, registry);
  if (const auto missing = missing_at_first_use(volume); !missing.empty()) {
    choose_by_locale(settings, registry, locale);
    if (dark_desktop) choose_dark_colors(settings, registry);
    prepare_first_use(volume, registry, missing);
  }
  load(LoadStep::day_header);
  load(LoadStep::new_appointments);
}

}  // namespace orvello
