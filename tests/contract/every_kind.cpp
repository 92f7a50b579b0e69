#include "tests/contract/every_kind.h"

#include <utility>

namespace orvello::test {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;
using Event = DialogEvent::Kind;

constexpr Color kHeading = rgb(0, 0, 153);

// Adds controls to a form, each with the rules of the one before unless it says otherwise.
struct Adder {
  ControlTemplate& add(Kind kind, int id, TextView text, const Rect& place,
                       Across across = Across::keep, Down down = Down::keep) {
    ControlTemplate control;
    control.kind = kind;
    control.id = id;
    control.text = text;
    control.place = place;
    control.across = across;
    control.down = down;
    control.section = section;
    control.step = step;
    form.controls.push_back(control);
    return form.controls.back();
  }
  DialogTemplate& form;
  int section = 0;
  int step = 0;
};

Image checked_picture() {
  Image image{16, 16, std::vector<Color>(256, kMagenta)};
  for (std::size_t i = 0; i < 256; ++i)
    if ((i / 16 / 4 + i % 16 / 4) % 2 == 0) image.pixels[i] = kHeading;
  return image;
}

std::string name_of(Event kind) {
  switch (kind) {
    case Event::init:
      return "init";
    case Event::command:
      return "command";
    case Event::changed:
      return "changed";
    case Event::taken:
      return "taken";
    case Event::focus_gained:
      return "focus_gained";
    case Event::focus_lost:
      return "focus_lost";
    case Event::timer:
      return "timer";
    case Event::paint:
      return "paint";
    case Event::close:
      return "close";
    case Event::page_shown:
      return "page_shown";
    case Event::page_left:
      return "page_left";
    case Event::page_applied:
      return "page_applied";
    case Event::pointer_down:
      return "pointer_down";
    case Event::pointer_move:
      return "pointer_move";
    case Event::pointer_up:
      return "pointer_up";
    case Event::double_tap:
      return "double_tap";
    case Event::context_menu:
      return "context_menu";
    case Event::wheel:
      return "wheel";
    case Event::key:
      return "key";
  }
  return "?";
}

}  // namespace

DialogTemplate every_kind_form() {
  DialogTemplate form;
  form.id = 590;
  form.title = u"Every kind";
  form.size = {240, 836};
  Adder to{form, 1};
  to.add(Kind::label, kLabel, u"Fields", {8, 4, 224, 18}, Across::stretch).color = kHeading;
  to.add(Kind::line, kLine, u"A line", {8, 26, 224, 26}, Across::stretch);
  to.add(Kind::edit, kLineEdit, u"", {8, 26, 224, 26}, Across::stretch).hidden = true;
  to.add(Kind::edit, kEdit, u"", {8, 56, 224, 26}, Across::stretch).limit = kEditLimit;
  to.add(Kind::multi_line_edit, kMultiLine, u"", {8, 86, 224, 52}, Across::stretch);
  to.section = 2;
  to.add(Kind::drop_list, kDropList, u"", {8, 146, 108, 26}, Across::left_half);
  to.add(Kind::combo, kCombo, u"", {120, 146, 112, 26}, Across::right_half).limit = kComboLimit;
  to.add(Kind::date_picker, kDate, u"", {8, 176, 108, 26}, Across::left_half);
  to.add(Kind::slider, kSlider, u"", {120, 176, 112, 26}, Across::right_half);
  to.add(Kind::check_box, kCheck, u"A box", {8, 206, 108, 26}, Across::left_half);
  to.add(Kind::toggle, kToggle, u"Toggle", {120, 206, 72, 26}, Across::after_half);
  to.add(Kind::picture_button, kPicture, u"Picture", {200, 206, 32, 26}, Across::right).image =
      checked_picture();
  to.add(Kind::radio_button, kRadioOne, u"One", {8, 236, 108, 26}, Across::left_half).group = 1;
  to.add(Kind::radio_button, kRadioTwo, u"Two", {120, 236, 112, 26}, Across::after_half).group = 1;
  to.section = 3;
  to.add(Kind::list, kList, u"", {8, 270, 108, 84}, Across::left_half);
  to.add(Kind::multi_list, kMultiList, u"", {120, 270, 112, 84}, Across::right_half);
  to.add(Kind::report, kReport, u"", {8, 358, 224, 90}, Across::stretch);
  to.section = 4;
  to.add(Kind::month_calendar, kCalendar, u"", {8, 456, 224, 190}, Across::stretch);
  to.add(Kind::notes, kNotes, u"", {8, 650, 224, 100}, Across::stretch, Down::stretch).limit = 40;
  to.add(Kind::custom, kCustom, u"", {8, 754, 224, 40}, Across::stretch, Down::bottom);
  to.section = 0;
  to.add(Kind::button, kButton, u"Button", {8, 802, 88, 27}, Across::keep, Down::bottom);
  to.add(Kind::default_button, kDefault, u"OK", {144, 802, 88, 27}, Across::right, Down::bottom);
  return form;
}

DialogTemplate step_form() {
  DialogTemplate form;
  form.id = 591;
  form.title = u"Steps";
  form.size = {240, 160};
  Adder to{form, 0, 1};
  to.add(Kind::drop_list, kType, u"", {8, 8, 224, 26});
  to.step = 2;
  to.add(Kind::radio_button, kOften, u"Every", {8, 8, 80, 26}).group = 1;
  to.add(Kind::combo, kOftenCount, u"", {92, 8, 140, 26}, Across::stretch);
  to.add(Kind::radio_button, kUntil, u"Until", {8, 38, 80, 26}).group = 2;
  to.add(Kind::date_picker, kUntilDate, u"", {92, 38, 140, 26}, Across::stretch);
  to.add(Kind::radio_button, kSeldom, u"Or", {8, 68, 80, 26}).group = 1;
  to.add(Kind::combo, kSeldomCount, u"", {92, 68, 140, 26}, Across::stretch);
  to.add(Kind::radio_button, kForever, u"For ever", {8, 98, 224, 26}).group = 2;
  to.step = 3;
  to.add(Kind::button, kLast, u"Done", {8, 8, 88, 26});
  to.step = 0;
  to.add(Kind::button, kNext, u"Next", {144, 128, 88, 27}, Across::right, Down::bottom);
  return form;
}

std::vector<DialogTemplate> sheet_pages() {
  std::vector<DialogTemplate> pages;
  for (int i = 0; i < kPages; ++i) {
    DialogTemplate form;
    form.id = 592 + i;
    form.title = i == 0 ? u"First" : i == 1 ? u"Second" : u"Third";
    form.size = {240, 120};
    Adder to{form};
    to.add(Kind::edit, kPageEdit, u"", {8, 8, 224, 26}, Across::stretch);
    to.add(i == 1 ? Kind::default_button : Kind::button, kPageButton, u"Button", {8, 40, 88, 27});
    pages.push_back(std::move(form));
  }
  return pages;
}

void RecordingProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == Event::paint) {
    ++paints;
    return;
  }
  told_inside = told_inside || inside_;
  const bool outer = std::exchange(inside_, true);
  last = event;
  if (event.kind != Event::pointer_move) {
    std::string text = name_ + name_of(event.kind);
    if (event.control != 0) text += " " + std::to_string(event.control);
    const bool again = event.kind == Event::changed && !told_->empty() && told_->back() == text;
    if (!again) told_->push_back(std::move(text));
  }
  if (act) act(dialog, event);
  inside_ = outer;
}

bool RecordingProcedure::may_close(Dialog&) {
  told_->push_back(name_ + "may_close");
  return agrees;
}

bool RecordingProcedure::may_leave(Dialog&) {
  told_->push_back(name_ + "may_leave");
  return agrees;
}

std::vector<std::string> RecordingProcedure::take() { return std::exchange(*told_, {}); }

}  // namespace orvello::test
