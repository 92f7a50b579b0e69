// The settings sheet's run.
#include "tests/contract/settings_contract.h"

#include "resources/settings_templates.h"

namespace orvello::test {
namespace {

TEST_P(SettingsContract, OpensOnAllPagesAndEndsAsThePersonSays) {
  const auto pages = settings_pages(Language::english);
  std::vector<Text> titles;
  EXPECT_EQ(desk->open(kPageDisplay,
                       [&] {
                         EXPECT_EQ(desk->bench->title(), u"Orvello");
                         for (int page = 0; page < 8; ++page) {
                           desk->show_page(page);
                           titles.push_back(desk->text(0));
                         }
                         desk->ok();
                       }),
            kSheetOk);
  ASSERT_EQ(titles.size(), pages.size());
  for (std::size_t i = 0; i < pages.size(); ++i) EXPECT_EQ(titles[i], pages[i].title);
  EXPECT_EQ(desk->open(kPageOptions, [&] { desk->cancel(); }), kSheetCancelled);
  desk->start(ViewMode::month);
  EXPECT_EQ(desk->open(kPageIcons, [] {}), kSheetCancelled);
  EXPECT_EQ(desk->program->state().view_mode, ViewMode::month);
  EXPECT_TRUE(desk->boxes_shown().empty());
}

}  // namespace
}  // namespace orvello::test
