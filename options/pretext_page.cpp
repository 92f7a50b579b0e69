#include "options/settings_pages.h"

namespace orvello {
namespace {

class PretextPage : public DialogProcedure {
 public:
  explicit PretextPage(const OptionsContext& context) : context_(context) {}
  void handle(Dialog&, const DialogEvent&) override {}

 private:
  [[maybe_unused]] const OptionsContext& context_;
};

}  // namespace

std::unique_ptr<DialogProcedure> make_pretext_page(const OptionsContext& context) {
  return std::make_unique<PretextPage>(context);
}

}  // namespace orvello
