#include "options/settings_pages.h"

namespace orvello {
namespace {

class DisplayPage : public DialogProcedure {
 public:
  explicit DisplayPage(const OptionsContext& context) : context_(context) {}
  void handle(Dialog&, const DialogEvent&) override {}

 private:
  [[maybe_unused]] const OptionsContext& context_;
};

}  // namespace

std::unique_ptr<DialogProcedure> make_display_page(const OptionsContext& context) {
  return std::make_unique<DisplayPage>(context);
}

}  // namespace orvello
