#include "options/settings_pages.h"

namespace orvello {
namespace {

class ColorPage : public DialogProcedure {
 public:
  explicit ColorPage(const OptionsContext& context) : context_(context) {}
  void handle(Dialog&, const DialogEvent&) override {}

 private:
  [[maybe_unused]] const OptionsContext& context_;
};

}  // namespace

std::unique_ptr<DialogProcedure> make_color_page(const OptionsContext& context) {
  return std::make_unique<ColorPage>(context);
}

}  // namespace orvello
