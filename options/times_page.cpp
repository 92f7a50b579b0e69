#include "options/settings_pages.h"

namespace orvello {
namespace {

class TimesPage : public DialogProcedure {
 public:
  explicit TimesPage(const OptionsContext& context) : context_(context) {}
  void handle(Dialog&, const DialogEvent&) override {}

 private:
  [[maybe_unused]] const OptionsContext& context_;
};

}  // namespace

std::unique_ptr<DialogProcedure> make_times_page(const OptionsContext& context) {
  return std::make_unique<TimesPage>(context);
}

}  // namespace orvello
