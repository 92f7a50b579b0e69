#include "options/settings_pages.h"

namespace orvello {
namespace {

class OptionsPage : public DialogProcedure {
 public:
  explicit OptionsPage(const OptionsContext& context) : context_(context) {}
  void handle(Dialog&, const DialogEvent&) override {}

 private:
  [[maybe_unused]] const OptionsContext& context_;
};

}  // namespace

std::unique_ptr<DialogProcedure> make_options_page(const OptionsContext& context) {
  return std::make_unique<OptionsPage>(context);
}

}  // namespace orvello
