#include "resources/dialog_templates.h"

#include "resources/editor_templates.h"
#include "resources/import_templates.h"
#include "resources/notes_template.h"
#include "resources/settings_templates.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;

// 4 pixels between everything; buttons are 27 high, room for a finger.
constexpr int kGap = 4, kButton = 27, kWidth = 240;

}  // namespace

// The header strip is a little higher than the room above the list: the list covers the rest of it.
DialogTemplate day_view_dialog(Language language) {
  constexpr int height = 291, top = 18;
  DialogTemplate dialog;
  dialog.id = kDialogDayView;
  dialog.title = load_string(StringId::day_view, language);
  dialog.size = {kWidth, height};
  dialog.controls = {
      {Kind::custom, kControlDayHeader, {}, {0, 0, kWidth, top}, Across::stretch},
      {Kind::report,
       kControlDayList,
       {},
       {0, top, kWidth, height - top},
       Across::stretch,
       Down::stretch},
  };
  return dialog;
}

// As large as the text that it holds; a caller sets its place.
DialogTemplate notes_dialog(Language language) {
  DialogTemplate dialog;
  dialog.id = kDialogNotes;
  dialog.title = load_string(StringId::notes, language);
  dialog.full_screen = false;
  dialog.popup = true;
  dialog.press_goes_on = true;
  dialog.size = {80, 46};
  dialog.controls = {
      {Kind::custom, kControlNotes, {}, {0, 0, 80, 46}, Across::stretch, Down::stretch}};
  return dialog;
}

DialogTemplate day_popup_dialog(Language language) {
  constexpr int width = 208, height = 168, top = kButton;
  DialogTemplate dialog;
  dialog.id = kDialogDayPopup;
  dialog.title = load_string(StringId::day_view, language);
  dialog.full_screen = false;
  dialog.popup = true;
  dialog.size = {width, height};
  dialog.controls = {
      {Kind::custom, kControlDayHeader, {}, {0, 0, width, top}, Across::stretch},
      {Kind::report,
       kControlDayList,
       {},
       {0, top, width, height - top},
       Across::stretch,
       Down::stretch},
  };
  return dialog;
}

DialogTemplate delete_dialog(Language language, DeleteChoices choices) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  constexpr int width = 216, inner = width - 2 * kGap;
  DialogTemplate dialog;
  dialog.id = kDialogDelete;
  dialog.title = text(StringId::delete_title);
  dialog.full_screen = false;
  dialog.controls = {
      {Kind::custom, kControlSubject, {}, {0, 0, width, 28}, Across::stretch},
      {Kind::label,
       kControlQuestion,
       u"Delete this Appointment?",
       {2 * kGap, 32, inner - kGap, 24},
       Across::stretch},
  };
  int top = 60;
  if (choices != DeleteChoices::none) {
    for (const auto& [id, name] : {std::pair{kControlOccurrence, StringId::delete_occurrence},
                                   std::pair{kControlFollowing, StringId::delete_following},
                                   std::pair{kControlSeries, StringId::delete_series}}) {
      if (id == kControlFollowing && choices == DeleteChoices::two) continue;
      dialog.controls.push_back({Kind::radio_button,
                                 id,
                                 text(name),
                                 {2 * kGap, top, inner - kGap, kButton},
                                 Across::stretch});
      dialog.controls.back().group = 1;
      top += kButton + kGap;
    }
  }
  // Return takes nothing away.
  dialog.controls.push_back(
      {Kind::default_button, kControlCancel, text(StringId::cancel), {kGap, top, 88, kButton}});
  dialog.controls.push_back({Kind::button,
                             kControlOk,
                             text(StringId::ok),
                             {width - kGap - 88, top, 88, kButton},
                             Across::right});
  dialog.size = {width, top + kButton + kGap};
  return dialog;
}

DialogTemplate date_dialog(Language language) {
  constexpr int width = 224, height = 212;
  DialogTemplate dialog;
  dialog.id = kDialogDate;
  dialog.title = load_string(StringId::choose_date, language);
  dialog.full_screen = false;
  dialog.popup = true;
  dialog.size = {width, height};
  dialog.controls = {{Kind::month_calendar,
                      kControlCalendar,
                      {},
                      {0, 0, width, height},
                      Across::stretch,
                      Down::stretch}};
  return dialog;
}

DialogTemplate greeting_dialog(Language language) {
  constexpr int height = 268, top = height - kGap - kButton, button = 112;
  DialogTemplate dialog;
  dialog.id = kDialogGreeting;
  dialog.title = load_string(StringId::greeting_title, language);
  dialog.size = {kWidth, height};
  dialog.controls = {
      {Kind::custom,
       kControlGreeting,
       {},
       {0, 0, kWidth, top - kGap},
       Across::stretch,
       Down::stretch},
      {Kind::default_button,
       kControlOk,
       load_string(StringId::greeting_ok, language),
       {(kWidth - button) / 2, top, button, kButton},
       Across::center,
       Down::bottom},
  };
  return dialog;
}

DialogTemplate organizer_dialog(Language language) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  constexpr int label = 20, height = 40 + 2 * (label + kButton + kGap) + kButton + 3 * kGap;
  constexpr int inner = kWidth - 2 * kGap, first = 44, second = first + label + kButton + kGap;
  DialogTemplate dialog;
  dialog.id = kDialogOrganizer;
  dialog.title = text(StringId::organizer_title);
  dialog.full_screen = false;
  dialog.size = {kWidth, height};
  const auto edit = [](int id, int top, int limit) {
    ControlTemplate made{Kind::edit, id, {}, {kGap, top, inner, kButton}, Across::stretch};
    made.limit = limit;
    return made;
  };
  dialog.controls = {
      {Kind::label,
       kControlOrganizerText,
       text(StringId::organizer_text),
       {kGap, kGap, inner, 40},
       Across::stretch},
      {Kind::label,
       kControlOrganizerNameLabel,
       text(StringId::organizer_name),
       {kGap, first, inner, label}},
      edit(kControlOrganizerName, first + label, 40),
      {Kind::label,
       kControlOrganizerAddressLabel,
       text(StringId::organizer_address),
       {kGap, second, inner, label}},
      edit(kControlOrganizerAddress, second + label, 254),
      {Kind::button,
       kControlCancel,
       text(StringId::cancel),
       {kGap, height - kGap - kButton, 88, kButton},
       Across::keep,
       Down::bottom},
      {Kind::default_button,
       kControlOk,
       text(StringId::ok),
       {kWidth - kGap - 88, height - kGap - kButton, 88, kButton},
       Across::right,
       Down::bottom},
  };
  return dialog;
}

DialogTemplate search_dialog(Language language) {
  constexpr int height = 291, button = 72, top = 2 * kGap + kButton;
  DialogTemplate dialog;
  dialog.id = kDialogSearch;
  dialog.title = load_string(StringId::search_title, language);
  dialog.size = {kWidth, height};
  dialog.controls = {
      {Kind::edit,
       kControlSearchText,
       {},
       {kGap, kGap, kWidth - button - 3 * kGap, kButton},
       Across::stretch},
      {Kind::default_button,
       kControlOk,
       load_string(StringId::search_open, language),
       {kWidth - button - kGap, kGap, button, kButton},
       Across::right},
      {Kind::report,
       kControlSearchList,
       {},
       {0, top, kWidth, height - top},
       Across::stretch,
       Down::stretch},
  };
  dialog.controls[0].limit = kSearchLength;
  return dialog;
}

std::vector<DialogTemplate> all_dialogs(Language language) {
  std::vector<DialogTemplate> all = settings_pages(language);
  for (DialogTemplate& one : std::vector<DialogTemplate>{
           day_view_dialog(language),
           notes_dialog(language),
           day_popup_dialog(language),
           delete_dialog(language, DeleteChoices::none),
           delete_dialog(language, DeleteChoices::two),
           delete_dialog(language, DeleteChoices::with_following),
           import_dialog(language),
           progress_dialog(load_string(StringId::import_title_reading, language), language),
           date_dialog(language),
           greeting_dialog(language),
           organizer_dialog(language),
           search_dialog(language),
           editor_dialog(language),
           series_question_dialog(language, false),
           series_question_dialog(language, true),
           recurrence_dialog(language),
           notes_pane_dialog(language, false),
           notes_pane_dialog(language, true),
           chooser_dialog(language, false),
           chooser_dialog(language, true),
           color_picker_dialog(language),
           icon_choice_dialog(language)})
    all.push_back(std::move(one));
  return all;
}

}  // namespace orvello
