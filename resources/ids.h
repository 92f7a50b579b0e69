// Numbers of commands, dialogs, menus, strings and bitmaps.
#pragma once

#include <cstdint>

namespace orvello {

// Commands of the menu bar and of the menus.
inline constexpr std::uint32_t kCommandNew = 40001;
inline constexpr std::uint32_t kCommandOptions = 40004;
inline constexpr std::uint32_t kCommandExit = 40008;
inline constexpr std::uint32_t kCommandSettings = 40011;
inline constexpr std::uint32_t kCommandCopy = 40015;
inline constexpr std::uint32_t kCommandDelete = 40017;
inline constexpr std::uint32_t kCommandCut = 40018;
inline constexpr std::uint32_t kCommandEditAppointment = 40019;
inline constexpr std::uint32_t kCommandPaste = 40020;
inline constexpr std::uint32_t kCommandCreate = 40021;
inline constexpr std::uint32_t kCommandBeam = 40027;
inline constexpr std::uint32_t kCommandProfileMenu = 40031;
inline constexpr std::uint32_t kCommandDayView = 40032;
inline constexpr std::uint32_t kCommandMonthView = 40033;
inline constexpr std::uint32_t kCommandYearView = 40035;
// By view mode: Day, Month, Year.
inline constexpr std::uint32_t kViewCommands[] = {kCommandDayView, kCommandMonthView,
                                                  kCommandYearView};
inline constexpr std::uint32_t kCommandMoveTo = 40103;
inline constexpr std::uint32_t kCommandUndo = 40101;
inline constexpr std::uint32_t kCommandRedo = 40102;
inline constexpr std::uint32_t kCommandFirstProfile = 60000;

// Dialog templates.
inline constexpr int kDialogDayView = 106;
inline constexpr int kDialogNotes = 108;
inline constexpr int kDialogDayPopup = 124;
inline constexpr int kDialogDelete = 149;
inline constexpr int kDialogImport = 300;
inline constexpr int kDialogDate = 310;
inline constexpr int kDialogGreeting = 320;
inline constexpr int kDialogOrganizer = 330;

// Controls.
inline constexpr int kControlDayList = 222;
inline constexpr int kControlOk = 1;
inline constexpr int kControlCancel = 2;
inline constexpr int kControlImportText = 301;
inline constexpr int kControlImportFiles = 302;
inline constexpr int kControlNotes = 1013;
inline constexpr int kControlDayHeader = 303;
inline constexpr int kControlCalendar = 311;
inline constexpr int kControlSubject = 312;
inline constexpr int kControlQuestion = 313;
inline constexpr int kControlOccurrence = 314;
inline constexpr int kControlSeries = 315;
inline constexpr int kControlFollowing = 316;
inline constexpr int kControlGreeting = 321;
inline constexpr int kControlOrganizerName = 331;
inline constexpr int kControlOrganizerAddress = 332;
inline constexpr int kControlOrganizerText = 333;
inline constexpr int kControlOrganizerNameLabel = 334;
inline constexpr int kControlOrganizerAddressLabel = 335;

// Bitmaps that depend on the screen's density.
inline constexpr int kBitmapMenuBarLow = 129;
inline constexpr int kBitmapMenuBarHigh = 1590;
inline constexpr int kBitmapTodayLow = 188;
inline constexpr int kBitmapTodayHigh = 187;

enum class StringId : int {
  new_appointment = 40003,
  options = 40006,
  exit = 40010,
  popup = 40014,
  // The program's own, from here on.
  settings = 40011,
  day_view = 40032,
  month_view = 40033,
  year_view = 40035,
  profiles = 40031,
  all_profiles = 60000,
  cut = 40018,
  copy = 40015,
  paste = 40020,
  beam = 40027,
  erase = 40017,
  edit = 40019,
  create = 40021,
  undo = 40101,
  redo = 40102,
  move_to = 40103,
  today = 41000,
  row_colors,
  choose_date,
  delete_title,
  delete_occurrence,
  delete_series,
  delete_following,
  ok,
  notes,
  import_title,
  import_summary,  // %d new, %d updated, %d skipped
  import_file,     // %s file, %d appointments
  import_ok,
  cancel,
  import_done,
  import_failed,
  organizer_title,
  organizer_text,
  organizer_name,
  organizer_address,
  calendar_unreadable,  // sentences; the reason follows
  shown_as_it_was,
  read_again,
  unreadable,  // in the place of appointments
  restore_question,
  rescue_question,
  restored_copy,
  restored_anew,
  restored_kept,
  restored_saved,
  restored_contacts,
  recurrence_rule_question,  // %s the rule in words
  chooser_no_labels,
  chooser_no_contacts,
  greeting_title,
  greeting_import,  // each followed by its text
  greeting_import_text,
  greeting_month,
  greeting_month_text,
  greeting_day,
  greeting_day_text,
  greeting_keys,
  greeting_keys_text,
  greeting_icons,
  greeting_icons_text,
  notes_pen,
  notes_eraser,
  notes_text,
  notes_bold,
  notes_italic,
  notes_underline,
  notes_list,
  notes_back,
  greeting_ok,

  editor_subject = 42000,
  editor_location,
  editor_start,
  editor_end,
  editor_occurs,
  editor_all_day,
  editor_status,
  editor_private,
  editor_remind,
  editor_reminder,
  editor_categories,
  editor_attendees,
  series_title,
  series_question,
  series_occurrence,
  series_following,
  series_whole,
};

}  // namespace orvello
