#include "settings/load_settings.h"

#include "resources/bitmaps.h"
#include "settings/colors.h"
#include "settings/pretexts.h"
#include "settings/program_files.h"
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
  settings.has_user_icons = strip.has_value();
  settings.user_icons = strip ? std::move(*strip) : Image{};

  settings.builtin_icon_count = settings.builtin_icons.width / settings.icon_cell;
  settings.total_icon_count = settings.builtin_icon_count;
  if (settings.has_user_icons)
    settings.total_icon_count += settings.user_icons.width / settings.icon_cell;
}

// Looks twice on purpose: the message may stay up while another process makes the volume.
void greet_first_use(const SettingsVolume& volume) {
  const Text path = settings_volume_path(volume.files);
  if (FileExists(volume.files, path)) return;
  volume.boxes.show(
      u"Note: To see the month view icons, you will need to assign icons to existing category "
      u"labels in the 'Options->Settings->Icons' screen",
      u"First Time Use", BoxIcon::none, BoxButtons::ok, true);
  if (FileExists(volume.files, path)) return;
  for (const TextView subject : kFirstSubjects) savePreTextToDB(volume, subject, kSubjectPretexts);
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
                  const Clock& clock, const LocaleData& locale, bool low_resolution) {
  const auto load = [&](LoadStep step) { load_settings_of(step, registry, locale, settings); };
  load(LoadStep::flags);
  compute_time_fractions(settings);
  load(LoadStep::row_colors);
  load_icons(settings, volume.files, low_resolution);
  settings.today = settings.shown = TodayTriple(clock.local_time());
  load(LoadStep::display_icons);
  load(LoadStep::default_times);
  load(LoadStep::views);
  LoadItemColors(settings, registry);
  greet_first_use(volume);
  load(LoadStep::day_header);
  load(LoadStep::new_appointments);
}

}  // namespace orvello
