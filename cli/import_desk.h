// What importing from the window stands on.
#pragma once

#include <chrono>

#include "calendar/locale_data.h"
#include "draw/screen_layout.h"
#include "ports/clock.h"
#include "ports/dialog.h"
#include "ports/message_box.h"
#include "resources/strings.h"
#include "store/edit_history.h"
#include "store/record_store.h"

namespace orvello {

struct ImportDesk {
  RecordStore& store;
  EditHistory& history;
  const Clock& clock;
  Dialogs& dialogs;
  MessageBoxes& boxes;
  Language language;
  const LocaleData& locale;
  bool clock24;
  const ScreenLayout& screen;  // of forms
  Canvas& measure;
  // How long the window may stand still before a form tells how far it is.
  std::chrono::milliseconds patience{150};
  // And at a time from then on; one step at least.
  std::chrono::milliseconds slice{15};
};

}  // namespace orvello
