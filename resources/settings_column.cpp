#include "resources/settings_column.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;

// Narrower than a handheld's screen: it stretches there, and two columns of it stand on one that
// lies, but not on one that stands.
constexpr int kColumnWidth = 176, kColumnMargin = 4;
constexpr int kSettingLabel = 18, kSettingTouch = 27, kSettingGap = 4;
constexpr int kBoxLine = 28, kBoxLines = 32;
constexpr std::size_t kLineOfColumn = 18;  // characters that surely fit beside a box there

}  // namespace

void SettingsColumn::start_section(StringId title, int id) {
  start_section();
  heading(title, id);
}

void SettingsColumn::heading(StringId title, int id) {
  add(Kind::label, id, title, kSettingLabel).color = kSettingLabelColor;
}

void SettingsColumn::box(int id, StringId text) {
  const bool long_text = load_string(text, language_).size() > kLineOfColumn;
  add(Kind::check_box, id, text, long_text ? kBoxLines : kBoxLine);
}

ControlTemplate& SettingsColumn::labelled(Kind kind, int id, StringId label, int label_id) {
  heading(label, label_id);
  ControlTemplate& control = add(kind, id, label, kSettingTouch);
  control.text.clear();
  y_ += kSettingGap;
  return control;
}

ControlTemplate& SettingsColumn::area(Kind kind, int id, StringId text, int height) {
  return add(kind, id, text, height);
}

ControlTemplate& SettingsColumn::add(Kind kind, int id, StringId text, int height) {
  ControlTemplate control;
  control.kind = kind;
  control.id = id;
  control.text = load_string(text, language_);
  control.place = {kColumnMargin, y_, kColumnWidth - 2 * kColumnMargin, height};
  control.across = ControlTemplate::Across::stretch;
  control.section = section_;
  y_ += height;
  return made_.controls.emplace_back(std::move(control));
}

DialogTemplate SettingsColumn::dialog(int id, StringId title) && {
  made_.id = id;
  made_.title = load_string(title, language_);
  made_.size = {kColumnWidth, y_};
  return std::move(made_);
}

}  // namespace orvello
