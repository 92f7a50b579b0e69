#include "options/settings_pages.h"

namespace orvello {
namespace {

class CategoryPage : public DialogProcedure {
 public:
  explicit CategoryPage(const OptionsContext& context) : context_(context) {}
  void handle(Dialog&, const DialogEvent&) override {}

 private:
  [[maybe_unused]] const OptionsContext& context_;
};

}  // namespace

std::unique_ptr<DialogProcedure> make_category_page(const OptionsContext& context) {
  return std::make_unique<CategoryPage>(context);
}

}  // namespace orvello
