// What a person is told while the calendar cannot be read: a line over the view's lower edge that
// stays as long as that lasts, and a box for each reason, once. A timer has the view read again.
#pragma once

#include <vector>

#include "app/modality.h"
#include "draw/screen_layout.h"
#include "resources/strings.h"
#include "store/store_session.h"
#include "views/read_outcome.h"

namespace orvello {

class ReadTrouble {
 public:
  ReadTrouble(Modality& modality, const StoreSession& session)
      : modality_(modality), session_(session) {}

  void note(ReadOutcome outcome, const ScreenLayout& screen, Language language, Canvas& measure);
  bool standing() const { return standing_; }
  const Text& reason() const { return reason_; }  // of the one that stands

 private:
  void begin();
  void end();
  void show_line(const Text& text, const ScreenLayout& screen, Canvas& measure);
  void tell_once(Text reason, Language language);

  Modality& modality_;
  const StoreSession& session_;
  bool standing_ = false;
  Text reason_;
  int failures_ = 0;        // of this trouble
  std::vector<Text> told_;  // reasons
};

// The line's place and words: at the lower edge, at most four lines.
HoverLabel trouble_line(TextView text, const ScreenLayout& screen, const FormColors& colors,
                        Canvas& measure);

}  // namespace orvello
