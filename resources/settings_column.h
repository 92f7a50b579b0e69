// Builds a page of settings: one below the other in sections, which stand in two columns on a
// screen that lies and on a desktop.
#pragma once

#include "ports/dialog_template.h"
#include "resources/ids.h"
#include "resources/strings.h"

namespace orvello {

class SettingsColumn {
 public:
  explicit SettingsColumn(Language language) : language_(language) {}

  void start_section() { ++section_; }
  void start_section(StringId title, int id);
  void heading(StringId title, int id);
  void box(int id, StringId text);
  // A drop list or the like below its label.
  ControlTemplate& labelled(ControlTemplate::Kind kind, int id, StringId label, int label_id);
  // Of this height, all across; what is added next stands below it.
  ControlTemplate& area(ControlTemplate::Kind kind, int id, StringId text, int height);

  DialogTemplate dialog(int id, StringId title) &&;

 private:
  ControlTemplate& add(ControlTemplate::Kind kind, int id, StringId text, int height);

  Language language_;
  DialogTemplate made_;
  int section_ = 0;
  int y_ = 4;
};

// The labels of settings.
inline constexpr Color kSettingLabelColor = rgb(0, 0, 153);
}  // namespace orvello
