// What the controls of a dialog without a screen hold, by kind.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

#include "hosts/headless/headless_notes.h"
#include "hosts/headless/headless_report.h"
#include "ports/controls.h"
#include "ports/dialog_template.h"

namespace orvello {

// As much of a text as a limit allows, 0 for none, and no half of a pair of surrogates.
TextView within_limit(TextView text, int limit);

// A drop list; with a text of its own a combo.
class HeadlessChoice : public ChoiceControl {
 public:
  explicit HeadlessChoice(std::function<void()> open) : open_(std::move(open)) {}
  HeadlessChoice(std::function<void()> open, Text& text, int limit)
      : open_(std::move(open)), text_(&text), limit_(limit) {}

  void set_rows(const std::vector<Text>& rows) override;
  std::vector<Text> rows() const override { return rows_; }
  int selected() const override { return text_ ? row_of(*text_) : selected_; }
  void select(int row) override;
  void open() override { open_(); }

  Text text() const;
  int row_of(TextView text) const;  // the first one; -1: none

 private:
  std::function<void()> open_;
  Text* text_ = nullptr;
  int limit_ = 0;
  std::vector<Text> rows_;
  int selected_ = -1;
};

class HeadlessList : public ListControl {
 public:
  explicit HeadlessList(bool several) : several_(several) {}

  void set_rows(const std::vector<Text>& rows) override;
  std::vector<Text> rows() const override { return rows_; }
  std::vector<int> selected() const override { return selected_; }
  void select(const std::vector<int>& rows) override;
  void show_row(int row) override { shown_row = row; }

  bool several() const { return several_; }
  Text text() const;
  void select_text(TextView text);

  int shown_row = -1;

 private:
  bool is_row(int row) const { return row >= 0 && row < static_cast<int>(rows_.size()); }
  bool several_;
  std::vector<Text> rows_;
  std::vector<int> selected_;
};

class HeadlessDate : public DateControl {
 public:
  MonthDayYear date() const override { return date_; }
  void set_date(const MonthDayYear& date) override;
  void set_calendar(const MonthDayYear& marked, bool monday) override {
    today = marked;
    monday_first = monday;
  }
  void set_picture(TextView wanted) override { picture = wanted; }

  MonthDayYear today{};
  bool monday_first = false;
  Text picture;

 private:
  MonthDayYear date_{1, 1, 2000};
};

class HeadlessRange : public RangeControl {
 public:
  void set_range(int least, int most) override;
  int position() const override { return position_; }
  void set_position(int position) override;

 private:
  int least_ = 0, most_ = 100, position_ = 0;
};

class HeadlessDrawn : public DrawnControl {
 public:
  using Menu = std::function<std::uint32_t(const std::vector<MenuItem>&)>;
  explicit HeadlessDrawn(Menu menu) : menu_(std::move(menu)) {}

  void invalidate() override { ++invalidations; }
  void set_image(const Image& shown) override { image = shown; }
  void set_parts(const std::vector<AccessibleCell>& told) override { parts = told; }
  std::uint32_t track_menu(const std::vector<MenuItem>& items, Point) override {
    return menu_(items);
  }

  int invalidations = 0;
  Image image;
  std::vector<AccessibleCell> parts;

 private:
  Menu menu_;
};

struct HeadlessControl {
  ControlTemplate made;  // its place as it was set last
  Text text;
  bool checked = false, enabled = true, shown = true;
  int caret = 0, marked = 0;  // the selected text lies between them
  bool left_changed = false;  // by the person, and not taken yet

  std::unique_ptr<HeadlessChoice> choice;
  std::unique_ptr<HeadlessList> list;
  std::unique_ptr<HeadlessDate> date;
  std::unique_ptr<HeadlessRange> range;
  std::unique_ptr<HeadlessNotes> notes;
  std::unique_ptr<HeadlessReport> report;
  std::unique_ptr<HeadlessDrawn> drawn;
};

}  // namespace orvello
