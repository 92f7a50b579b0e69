// The one place that knows whether something modal stands. Message boxes and modal dialogs are
// opened through the ports that it lends, which count them. What comes from outside meanwhile, such
// as another process's files or a command that was chosen before, waits here: a dialog of its own
// would open in the middle of what the person is answering.
#pragma once

#include <deque>
#include <functional>

#include "ports/host.h"

namespace orvello {

class Modality {
 public:
  explicit Modality(const Host& host);
  Modality(const Modality&) = delete;
  Modality& operator=(const Modality&) = delete;

  // The host with the counted ports. They are as old as this object.
  const Host& counted() const { return counted_; }

  bool free() const { return standing_ == 0; }
  // Runs the call from the message loop as soon as nothing modal stands. Calls keep their order.
  void when_free(std::function<void()> call);
  // The message that when_free() and the end of something modal post has come.
  void run_next();
  void forget_all() { waiting_.clear(); }

  // Something modal stands as long as this exists; the start-up counts as such.
  class Standing {
   public:
    explicit Standing(Modality& modality) : modality_(modality) { ++modality_.standing_; }
    ~Standing() { modality_.ended(); }
    Standing(const Standing&) = delete;
    Standing& operator=(const Standing&) = delete;

   private:
    Modality& modality_;
  };

 private:
  class Boxes : public MessageBoxes {
   public:
    explicit Boxes(Modality& modality) : modality_(modality) {}
    BoxAnswer show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                   bool owned) override;
    void beep(Beep beep) override;
    Text language() const override { return modality_.host_.boxes.language(); }

   private:
    Modality& modality_;
  };
  class CountedDialogs : public Dialogs {
   public:
    explicit CountedDialogs(Modality& modality) : modality_(modality) {}
    int run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) override;
    std::unique_ptr<Dialog> open_modeless(const DialogTemplate& dialog,
                                          DialogProcedure& procedure) override;
    int run_sheet(TextView title, const std::vector<SheetPage>& pages) override;
    FormColors colors() const override { return modality_.host_.dialogs.colors(); }

   private:
    Modality& modality_;
  };
  void ended();
  void call_later();

  Host host_;
  Boxes boxes_{*this};
  CountedDialogs dialogs_{*this};
  Host counted_;
  int standing_ = 0;
  std::deque<std::function<void()>> waiting_;
};

}  // namespace orvello
