#include "resources/editor_templates.h"

#include "resources/notes_template.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;

constexpr int kGap = 4, kTouch = 27, kPitch = 28, kWidth = 240, kHeight = 292;
constexpr int kLabelled = 64, kRight = kWidth - kGap;  // where what has a label stands
constexpr int kDates = 48, kTimes = 164, kTimeEdits = 144;
constexpr std::size_t kSubjectLimit = 4096, kLocationLimit = 1024, kTimeLimit = 79,
                      kAmountLimit = 200;

int row_top(int row) { return kGap + row * kPitch; }

class EditorTemplate {
 public:
  EditorTemplate(Language language, bool low_resolution)
      : language_(language), low_resolution_(low_resolution) {
    dialog_.id = kDialogEditor;
    dialog_.title = u"Appointment";
    dialog_.size = {kWidth, kHeight};
  }

  DialogTemplate made() {
    header();
    section_ = 1;
    what_and_where();
    when();
    section_ = 2;
    kinds();
    reminder();
    labelled_line(8, kLabelCategories, StringId::editor_categories, kLineCategories);
    labelled_line(9, kLabelAttendees, StringId::editor_attendees, kLineAttendees);
    for (ControlTemplate& control : notes_controls(
             language_, {0, row_top(1), kWidth, kHeight - row_top(1)}, low_resolution_)) {
      control.step = kEditorNotesStep;
      dialog_.controls.push_back(std::move(control));
    }
    return std::move(dialog_);
  }

 private:
  ControlTemplate& add(Kind kind, int id, int row, int left, int right,
                       Across across = Across::keep) {
    dialog_.controls.push_back({kind, id, {}, {left, row_top(row), right - left, kTouch}, across});
    dialog_.controls.back().section = section_;
    dialog_.controls.back().step = kEditorFormStep;
    return dialog_.controls.back();
  }
  ControlTemplate& add(Kind kind, int id, StringId text, int row, int left, int right,
                       Across across = Across::keep) {
    ControlTemplate& control = add(kind, id, row, left, right, across);
    control.text = load_string(text, language_);
    return control;
  }
  ControlTemplate& hidden(Kind kind, int id, int row, int left, int right, Across across,
                          std::size_t limit = 0) {
    ControlTemplate& control = add(kind, id, row, left, right, across);
    control.hidden = true;
    control.limit = static_cast<int>(limit);
    return control;
  }
  void labelled_line(int row, int label, StringId text, int line) {
    add(Kind::label, label, text, row, kGap, kLabelled);
    add(Kind::line, line, row, kLabelled, kRight, Across::stretch);
  }

  // On every step. They stand on top, so that they are seen also where the form has to be scrolled.
  void header() {
    add(Kind::default_button, kEditorOk, StringId::ok, 0, kGap, 48).step = 0;
    add(Kind::button, kEditorCancel, StringId::cancel, 0, 52, 112).step = 0;
    add(Kind::button, kEditorNotes, StringId::notes, 0, 116, 172);
    add(Kind::check_box, kEditorPrivate, StringId::editor_private, 0, 176, kRight, Across::right);
  }

  void what_and_where() {
    labelled_line(1, kLabelSubject, StringId::editor_subject, kLineSubject);
    hidden(Kind::combo, kEditSubject, 1, kLabelled, kRight, Across::stretch, kSubjectLimit);
    labelled_line(2, kLabelLocation, StringId::editor_location, kLineLocation);
    hidden(Kind::combo, kEditLocation, 2, kLabelled, kRight, Across::stretch, kLocationLimit);
  }

  void moment(int row, int label, StringId text, int date, int line, int edit, int all_day) {
    add(Kind::label, label, text, row, kGap, kDates);
    add(Kind::date_picker, date, row, kDates, kTimes - kGap, Across::left_half);
    add(Kind::line, line, row, kTimes, kRight, Across::right_half);
    hidden(Kind::combo, edit, row, kTimeEdits, kRight, Across::right_half, kTimeLimit);
    hidden(Kind::label, all_day, row, kDates, kRight, Across::stretch).text = u"All day recurring";
  }

  void when() {
    moment(3, kLabelStart, StringId::editor_start, kStartDate, kLineStartTime, kEditStartTime,
           kAllDayStart);
    moment(4, kLabelEnd, StringId::editor_end, kEndDate, kLineEndTime, kEditEndTime, kAllDayEnd);
    labelled_line(5, kLabelOccurs, StringId::editor_occurs, kLineOccurs);
    hidden(Kind::drop_list, kEditOccurs, 5, kLabelled, kRight, Across::stretch);
  }

  void kinds() {
    add(Kind::check_box, kEditorAllDay, StringId::editor_all_day, 6, kGap, 94);
    constexpr int kStatus = 144;
    add(Kind::label, kLabelStatus, StringId::editor_status, 6, 102, kStatus);
    add(Kind::line, kLineStatus, 6, kStatus, kRight, Across::stretch);
    hidden(Kind::drop_list, kEditStatus, 6, kStatus - 12, kRight, Across::stretch);
  }

  // While one of the two is edited it covers a little of what stands before it.
  void reminder() {
    constexpr int kLabel = 89, kAmount = 142, kUnit = 175;
    add(Kind::check_box, kEditorRemind, StringId::editor_remind, 7, kGap, 83);
    add(Kind::label, kLabelReminder, StringId::editor_reminder, 7, kLabel, kAmount).hidden = true;
    hidden(Kind::line, kLineAmount, 7, kAmount, kUnit, Across::keep);
    hidden(Kind::combo, kEditAmount, 7, kUnit - 72, kUnit, Across::keep, kAmountLimit);
    hidden(Kind::line, kLineUnit, 7, kUnit, kRight, Across::stretch);
    hidden(Kind::drop_list, kEditUnit, 7, kAmount, kRight, Across::stretch);
  }

  Language language_;
  bool low_resolution_;
  DialogTemplate dialog_;
  int section_ = 0;
};

}  // namespace

DialogTemplate editor_dialog(Language language, bool low_resolution) {
  return EditorTemplate(language, low_resolution).made();
}

Rect time_place(int control) {
  const bool starts = control == kLineStartTime || control == kEditStartTime;
  const bool line = control == kLineStartTime || control == kLineEndTime;
  const int left = line ? kTimes : kTimeEdits;
  return {left, row_top(starts ? 3 : 4), kRight - left, kTouch};
}

Rect lone_time_place(int control) {
  Rect place = time_place(control);
  place.x = kDates;
  place.width = kRight - kTimeEdits;
  return place;
}

// A button each, so that one tap answers it.
DialogTemplate series_question_dialog(Language language, bool following) {
  constexpr int width = 216;
  DialogTemplate dialog;
  dialog.id = kDialogSeriesQuestion;
  dialog.title = load_string(StringId::series_title, language);
  dialog.full_screen = false;
  int top = kGap;
  const auto add = [&](Kind kind, int id, StringId text) {
    dialog.controls.push_back({kind,
                               id,
                               load_string(text, language),
                               {2 * kGap, top, width - 4 * kGap, kTouch},
                               Across::stretch});
    top += kTouch + kGap + 1;
  };
  add(Kind::label, kQuestionLabel, StringId::series_question);
  add(Kind::default_button, kChooseOccurrence, StringId::series_occurrence);
  if (following) add(Kind::button, kChooseFollowing, StringId::series_following);
  add(Kind::button, kChooseSeries, StringId::series_whole);
  add(Kind::button, kControlCancel, StringId::cancel);
  dialog.size = {width, top + kGap};
  return dialog;
}

}  // namespace orvello
