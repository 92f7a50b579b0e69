#include "hosts/qt/qt_controls.h"

#include <QPointer>
#include <QSignalBlocker>
#include <algorithm>

#include "hosts/qt/choice_box.h"
#include "hosts/qt/custom_area.h"
#include "hosts/qt/date_picker.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/flat_button.h"
#include "hosts/qt/flat_slider.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/month_calendar.h"
#include "hosts/qt/notes_pane.h"
#include "hosts/qt/qt_report.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/row_list.h"
#include "hosts/qt/touch_menu.h"

namespace orvello {
namespace {

// A widget that may be gone: what it is asked then has an empty answer.
template <typename Widget>
class Handle {
 public:
  explicit Handle(Widget* widget) : guard_(widget), widget_(widget) {}

 protected:
  Widget* get() const { return guard_ ? widget_ : nullptr; }
  template <typename Act>
  auto ask(Act act) const -> decltype(act(std::declval<Widget&>())) {
    if (guard_) return act(*widget_);
    return decltype(act(std::declval<Widget&>()))();
  }

 private:
  QPointer<QWidget> guard_;
  Widget* widget_;
};

class QtChoice : public ChoiceControl, Handle<ChoiceBox> {
 public:
  using Handle::Handle;
  void set_rows(const std::vector<Text>& rows) override {
    ask([&](ChoiceBox& box) { box.set_rows(rows); });
  }
  std::vector<Text> rows() const override {
    return ask([](ChoiceBox& box) { return box.rows(); });
  }
  int selected() const override { return get() ? get()->selected() : -1; }
  void select(int row) override {
    ask([&](ChoiceBox& box) { box.select(row); });
  }
  void open() override {
    if (!get() || !get()->isVisible() || !get()->isEnabled()) return;
    give_focus(*get());
    get()->open();
  }
};

class QtList : public ListControl, Handle<RowList> {
 public:
  using Handle::Handle;
  void set_rows(const std::vector<Text>& rows) override {
    ask([&](RowList& list) { list.set_rows(rows); });
  }
  std::vector<Text> rows() const override {
    return ask([](RowList& list) { return list.rows(); });
  }
  std::vector<int> selected() const override {
    return ask([](RowList& list) { return list.selected(); });
  }
  void select(const std::vector<int>& rows) override {
    ask([&](RowList& list) { list.select(rows); });
  }
  void show_row(int row) override {
    ask([&](RowList& list) { list.show_row(row); });
  }
};

// A date picker or month calendar.
template <typename Widget>
class QtDate : public DateControl, Handle<Widget> {
 public:
  using Handle<Widget>::Handle;
  MonthDayYear date() const override {
    return this->ask([](Widget& date) { return date.date(); });
  }
  void set_date(const MonthDayYear& wanted) override {
    this->ask([&](Widget& date) { date.set_date(wanted); });
  }
  void set_calendar(const MonthDayYear& today, bool monday_first) override {
    this->ask([&](Widget& date) { date.set_calendar(today, monday_first); });
  }
  void set_picture([[maybe_unused]] TextView picture) override {
    // A calendar's heading names the month and the year.
    if constexpr (std::is_same_v<Widget, DatePicker>)
      this->ask([&](Widget& date) { date.set_picture(picture); });
  }
};

class QtRange : public RangeControl, Handle<FlatSlider> {
 public:
  using Handle::Handle;
  void set_range(int least, int most) override {
    const QSignalBlocker silence(get());
    ask([&](FlatSlider& slider) { slider.setRange(least, std::max(least, most)); });
  }
  int position() const override {
    return ask([](FlatSlider& slider) { return slider.value(); });
  }
  void set_position(int position) override {
    const QSignalBlocker silence(get());
    ask([&](FlatSlider& slider) { slider.setValue(position); });
  }
};

class QtNotes : public NotesControl, Handle<NotesPane> {
 public:
  using Handle::Handle;
  NotesContent content() const override {
    return ask([](NotesPane& pane) { return pane.content(); });
  }
  void set_content(const NotesContent& content) override {
    ask([&](NotesPane& pane) { pane.set_content(content); });
  }
  NotesTool tool() const override {
    return ask([](NotesPane& pane) { return pane.tool(); });
  }
  void set_tool(NotesTool tool) override {
    ask([&](NotesPane& pane) { pane.set_tool(tool); });
  }
  NotesStyle style() const override {
    return ask([](NotesPane& pane) { return pane.style(); });
  }
  void set_style(const NotesStyle& style) override {
    ask([&](NotesPane& pane) { pane.set_style(style); });
  }
  bool can_undo() const override {
    return ask([](NotesPane& pane) { return pane.history().can_undo(); });
  }
  bool can_redo() const override {
    return ask([](NotesPane& pane) { return pane.history().can_redo(); });
  }
  bool undo() override {
    return ask([](NotesPane& pane) { return pane.undo_step(); });
  }
  bool redo() override {
    return ask([](NotesPane& pane) { return pane.redo_step(); });
  }
};

class QtReport : public ReportList, Handle<ReportView> {
 public:
  using Handle::Handle;
  void set_content(ReportContent content) override {
    ask([&](ReportView& view) { view.set_content(std::move(content)); });
  }
  ReportPlace place() const override {
    return ask([](ReportView& view) { return view.report_place(); });
  }
  void select(const std::vector<int>& rows) override {
    ask([&](ReportView& view) { view.select_rows(rows); });
  }
  void set_mark(int row, ReportMark mark) override {
    ask([&](ReportView& view) { view.set_mark(row, mark); });
  }
  Rect row_place(int row) const override {
    return ask([&](ReportView& view) { return view.row_place(row); });
  }
  int row_at(Point point) const override { return get() ? get()->row_at(point) : -1; }
  void scroll_by(int pixels) override {
    ask([&](ReportView& view) { view.scroll_pixels(pixels); });
  }
  void show_row(int row) override {
    ask([&](ReportView& view) { view.show_row(row); });
  }
  void glide(int pixels_per_second) override {
    ask([&](ReportView& view) { view.glide(pixels_per_second); });
  }
  bool gliding() const override { return get() && get()->gliding(); }
};

class QtDrawn : public DrawnControl, Handle<QWidget> {
 public:
  QtDrawn(QWidget& widget, const Density& density) : Handle(&widget), density_(density) {}
  void invalidate() override {
    ask([](QWidget& widget) { widget.update(); });
  }
  void set_image(const Image& image) override {
    if (auto* button = dynamic_cast<FlatButton*>(get())) button->set_picture(to_qt(image));
  }
  void set_parts(const std::vector<AccessibleCell>& parts) override {
    if (auto* area = dynamic_cast<CustomArea*>(get())) area->set_parts(parts);
  }
  std::uint32_t track_menu(const std::vector<MenuItem>& items, Point at) override;

 private:
  const Density& density_;
};

std::uint32_t QtDrawn::track_menu(const std::vector<MenuItem>& items, Point at) {
  return get() ? run_menu_at(*get(), at, density_, items) : 0;
}

}  // namespace

ControlHandles make_handles(ControlTemplate::Kind kind, QWidget& widget, const Density& density) {
  using Kind = ControlTemplate::Kind;
  ControlHandles made;
  switch (kind) {
    case Kind::drop_list:
    case Kind::combo:
      made.choice = std::make_unique<QtChoice>(&dynamic_cast<ChoiceBox&>(widget));
      break;
    case Kind::list:
    case Kind::multi_list:
      made.list = std::make_unique<QtList>(&dynamic_cast<RowList&>(widget));
      break;
    case Kind::date_picker:
      made.date = std::make_unique<QtDate<DatePicker>>(&dynamic_cast<DatePicker&>(widget));
      break;
    case Kind::month_calendar:
      made.date = std::make_unique<QtDate<MonthCalendar>>(&dynamic_cast<MonthCalendar&>(widget));
      break;
    case Kind::slider:
      made.range = std::make_unique<QtRange>(&dynamic_cast<FlatSlider&>(widget));
      break;
    case Kind::notes:
      made.notes = std::make_unique<QtNotes>(&dynamic_cast<NotesPane&>(widget));
      break;
    case Kind::report:
      made.report = std::make_unique<QtReport>(&dynamic_cast<ReportView&>(widget));
      [[fallthrough]];
    case Kind::custom:
    case Kind::picture_button:
      made.drawn = std::make_unique<QtDrawn>(widget, density);
      break;
    default:
      break;
  }
  return made;
}

}  // namespace orvello
