#include "options/settings_pages.h"

namespace orvello {
namespace {

class ProfilesPage : public DialogProcedure {
 public:
  explicit ProfilesPage(const OptionsContext& context) : context_(context) {}
  void handle(Dialog&, const DialogEvent&) override {}

 private:
  [[maybe_unused]] const OptionsContext& context_;
};

}  // namespace

std::unique_ptr<DialogProcedure> make_profiles_page(const OptionsContext& context) {
  return std::make_unique<ProfilesPage>(context);
}

}  // namespace orvello
