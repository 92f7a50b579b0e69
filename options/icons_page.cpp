#include "options/settings_pages.h"

namespace orvello {
namespace {

class IconsPage : public DialogProcedure {
 public:
  explicit IconsPage(const OptionsContext& context) : context_(context) {}
  void handle(Dialog&, const DialogEvent&) override {}

 private:
  [[maybe_unused]] const OptionsContext& context_;
};

}  // namespace

std::unique_ptr<DialogProcedure> make_icons_page(const OptionsContext& context) {
  return std::make_unique<IconsPage>(context);
}

}  // namespace orvello
