// The settings sheet, as the program opens it, and what it asks of the program behind it.
#pragma once

#include "ports/canvas.h"
#include "settings/colors.h"
#include "settings/settings_record.h"
#include "settings/view_mode.h"

namespace orvello {

class SettingsCommands {
 public:
  virtual ~SettingsCommands() = default;
  // Draws a view over the whole canvas as it would be with these settings, on the date that is
  // shown and as today's screen has its sizes. False when the appointments could not be read.
  virtual bool preview(ViewMode view, const SettingsRecord& settings, Canvas& canvas) = 0;
  // A group's view or popup with examples in it, so that each of its colours is seen. The canvas
  // may be small: then what does not fit is cut off below.
  virtual void preview_colors(ColorGroup group, const SettingsRecord& settings, Canvas& canvas) = 0;
  // The view that stands is made from the settings record and the appointments as they are now.
  virtual void reload_view() = 0;
  // The Day view is opened anew, and is the one shown from then on.
  virtual void reopen_day_view() = 0;
  // The menu of profiles, from the settings volume.
  virtual void rebuild_profile_menu() = 0;
};

class SettingsForm {
 public:
  virtual ~SettingsForm() = default;
  // Modal. What is confirmed is in the record and in the registry when it returns.
  virtual void run(SettingsRecord& settings, SettingsCommands& commands) = 0;
};

}  // namespace orvello
