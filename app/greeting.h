// What a new user sees over the first view: what can be done at once, and how.
#pragma once

#include "draw/screen_layout.h"
#include "ports/dialog.h"
#include "resources/strings.h"

namespace orvello {

// Gone with the first tap on it, its button, Return or Escape.
class GreetingProcedure : public DialogProcedure {
 public:
  GreetingProcedure(Language language, const ScreenLayout& screen, const Dialogs& dialogs);
  void handle(Dialog& dialog, const DialogEvent& event) override;

  // In the largest of the usual sizes in which all of it fits; false when none does.
  bool paint(Canvas& canvas, Size size) const;

 private:
  struct Topic {
    Text heading, text;
  };
  // Paints, or only measures without a canvas to paint on; the height that it takes.
  int lay_out(Canvas& canvas, Size size, int points, bool painted, int gap) const;
  std::vector<Topic> topics_;
  const ScreenLayout& screen_;
  const Dialogs& dialogs_;
};

}  // namespace orvello
