// The small windows over the Day and Month views.
#pragma once

#include "app/list_pointer.h"
#include "app/row_carrier.h"
#include "draw/screen_layout.h"
#include "ports/dialog.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "store/day_agenda.h"
#include "views/day_popup_list.h"
#include "views/notes_bubble.h"

namespace orvello {

inline constexpr int kPopupClosed = 0;
inline constexpr int kPopupOpenDay = 2;  // at the row of key()
inline constexpr int kPopupLeft = 3;     // by a press elsewhere, which goes on there
inline constexpr int kPopupCommand = 4;  // command() was chosen for key()
inline constexpr int kPopupMoved = 5;    // a row was carried to another day

// The notes beside a row: closes when the pen is lifted over it or goes elsewhere, unless it is
// held, which one such event ends.
class NotesProcedure : public DialogProcedure {
 public:
  NotesProcedure(NotesBubble bubble, Text spoken, const ScreenLayout& screen,
                 const ItemColors& colors, bool hold)
      : bubble_(std::move(bubble)),
        spoken_(std::move(spoken)),
        screen_(screen),
        colors_(colors),
        hold_(hold) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  NotesBubble bubble_;
  Text spoken_;
  const ScreenLayout& screen_;
  const ItemColors& colors_;
  bool hold_;
};

// A day's appointments over the Month view. A tapped one opens its day, one that is held has the
// day's menu, and one that is drawn out of the popup is carried to another day.
class DayPopupProcedure : public DialogProcedure {
 public:
  struct Input {
    Text date;
    std::vector<CompactRow> rows;
    const SettingsRecord& settings;
    const ScreenLayout& screen;
    Canvas& measure;
    MonthDayYear day{};
    Language language = Language::english;
    bool can_paste = false;  // something was cut or copied
    bool by_keys = false;    // it was opened by them
    RowCarrier* carrier = nullptr;
  };
  explicit DayPopupProcedure(Input input) : input_(std::move(input)) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;

  // What the result is about; none: the day alone.
  const RowKey& key() const { return key_; }
  std::uint32_t command() const { return command_; }

  // All of it, where there is no dialog to show it.
  void draw(Canvas& canvas) const;

  // What the popup takes of the window, near `beside` and never over its edges.
  Rect place(const Rect& beside) const;

 private:
  ReportContent content(int width) const;
  DayPopupList list() const { return {input_.rows, input_.settings, input_.screen}; }
  int header_height() const;
  int most_height() const;
  void paint_header(Canvas& canvas, Size size) const;

  void show(Dialog& dialog);
  void select(Dialog& dialog, int row);
  void list_event(Dialog& dialog, const DialogEvent& event);
  void take_key(Dialog& dialog, const DialogEvent& event);
  void act(Dialog& dialog, const ListPointer::Action& action);
  void open_day(Dialog& dialog, int row);
  void open_menu(Dialog& dialog, int row, Point at);
  void choose(Dialog& dialog, std::uint32_t command, const RowKey& key);
  bool goes_out(Dialog& dialog, const DialogEvent& event) const;
  bool scrolls(Dialog& dialog) const;
  void carry(Dialog& dialog, Point at);
  void let_go(Dialog& dialog, Point at);
  RowKey key_of(int row) const;
  Point beside(Dialog& dialog, int row) const;
  Point in_window(Dialog& dialog, Point point) const;

  Input input_;
  ListPointer pointer_;
  int row_ = -1;      // that the keyboard stands on
  int pressed_ = -1;  // the row under the pen
  bool carrying_ = false;
  RowKey key_;
  std::uint32_t command_ = 0;
};

// A month to choose a day from.
class DateProcedure : public DialogProcedure {
 public:
  DateProcedure(MonthDayYear date, MonthDayYear today, bool monday_first)
      : date_(date), today_(today), monday_first_(monday_first) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;
  const MonthDayYear& date() const { return date_; }  // the chosen one, when the result was 1

 private:
  MonthDayYear date_;
  MonthDayYear today_;
  bool monday_first_;
};

// Asks before an appointment is deleted. Other results than these two are the modes of deleting.
class DeleteProcedure : public DialogProcedure {
 public:
  static constexpr int kUnreadable = 0, kCancel = 1;

  // `subject_place` is the subject's control, in device pixels.
  DeleteProcedure(Text subject, const Rect& subject_place, const ScreenLayout& screen,
                  const Dialogs& dialogs)
      : subject_(std::move(subject)),
        subject_place_(subject_place),
        screen_(screen),
        dialogs_(dialogs) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  Text subject_;
  Rect subject_place_;
  const ScreenLayout& screen_;
  const Dialogs& dialogs_;
};

}  // namespace orvello
