// Each ready-made scheme keeps its texts readable and its marks apart, pair by pair.
#include "settings/color_schemes.h"

#include <gtest/gtest.h>

#include "draw/readable.h"
#include "resources/strings.h"
#include "settings/color_pairs.h"
#include "settings/colors.h"
#include "views/row_colors.h"

namespace orvello {
namespace {

constexpr double kReadable = 4.5, kEasilyRead = 7, kApart = 3;

Color slot_color(const ColorScheme& scheme, ColorSlot slot) {
  return scheme.colors[static_cast<std::size_t>(slot)];
}

bool is_today(ColorSlot slot) {
  return slot == ColorSlot::month_today_background || slot == ColorSlot::year_today_background;
}

void expect_text(const ColorScheme& scheme, Color text, Color ground, bool today) {
  const bool high = scheme.name == StringId::scheme_contrast_dark ||
                    scheme.name == StringId::scheme_contrast_light;
  // As the views write it there.
  if (today) text = readable_on(ground, text);
  EXPECT_GE(contrast(ground, text), high && !today ? kEasilyRead : kReadable);
}

std::string label_of(ColorSlot slot) {
  const auto& row = color_table()[static_cast<std::size_t>(slot)];
  return to_utf8(row.label) + " (" + std::to_string(static_cast<int>(slot)) + ")";
}

TEST(ColorSchemes, KeepTextsReadableAndMarksApart) {
  const auto schemes = color_schemes();
  ASSERT_GE(schemes.size(), 5u);
  // The factory's are what they are.
  EXPECT_EQ(scheme_of(schemes[0].colors), 0);
  for (const ColorScheme& scheme : schemes.subspan(1)) {
    SCOPED_TRACE(to_utf8(load_string(scheme.name, Language::english)));
    for (const ColorPair& pair : text_pairs()) {
      SCOPED_TRACE(label_of(pair.front) + " on " + label_of(pair.ground));
      expect_text(scheme, slot_color(scheme, pair.front), slot_color(scheme, pair.ground),
                  is_today(pair.ground));
    }
    // Rows of the evening, which have no slot of their own.
    const Color evening = mixed(slot_color(scheme, ColorSlot::day_row_1),
                                slot_color(scheme, ColorSlot::day_line), kEveningShare);
    for (const ColorSlot text : {ColorSlot::day_all_day_text, ColorSlot::day_appointment_text,
                                 ColorSlot::day_location_text, ColorSlot::day_expired_text}) {
      SCOPED_TRACE(label_of(text) + " in the evening");
      expect_text(scheme, slot_color(scheme, text), evening, false);
    }
    for (const ColorPair& pair : mark_pairs()) {
      SCOPED_TRACE(label_of(pair.front) + " beside " + label_of(pair.ground));
      EXPECT_GE(contrast(slot_color(scheme, pair.front), slot_color(scheme, pair.ground)), kApart);
    }
    // What the headers draw in colours of their own: the shown month's line, the style button.
    const Color strip = slot_color(scheme, ColorSlot::month_bar_background);
    EXPECT_GE(contrast(strip, rgb(255, 255, 0)), kApart);
    for (const Color square : {rgb(255, 0, 0), rgb(0, 170, 0), rgb(255, 255, 0), rgb(0, 255, 255)})
      EXPECT_GE(contrast(slot_color(scheme, ColorSlot::day_header_background), square), kApart);
  }
}

TEST(ColorSchemes, EachTextAndGroundIsInAPair) {
  for (int slot = 0; slot < kColorSlots; ++slot) {
    const auto holds = [&](const ColorPair& pair) {
      return pair.front == ColorSlot{slot} || pair.ground == ColorSlot{slot};
    };
    const bool met = std::ranges::any_of(text_pairs(), holds) ||
                     std::ranges::any_of(mark_pairs(), holds) ||
                     ColorSlot{slot} == ColorSlot::day_line;
    EXPECT_TRUE(met) << label_of(ColorSlot{slot});
  }
}

// A bar keeps its colour where it is seen, and is drawn so that it is seen where it is not.
TEST(ColorSchemes, BarsAreSeenOnEachDay) {
  const std::vector<Color> bars = {rgb(32, 74, 156),   rgb(70, 150, 80),  rgb(112, 158, 214),
                                   rgb(136, 68, 156),  rgb(255, 255, 0),  rgb(20, 20, 20),
                                   rgb(250, 250, 250), rgb(255, 214, 57), rgb(128, 128, 128)};
  for (const ColorScheme& scheme : color_schemes()) {
    for (const ColorSlot ground :
         {ColorSlot::month_date_background_1, ColorSlot::month_date_background_2,
          ColorSlot::month_today_background, ColorSlot::month_off_background}) {
      for (const Color bar : bars) {
        const Color seen = visible_on(slot_color(scheme, ground), bar);
        EXPECT_GE(contrast(slot_color(scheme, ground), seen), kApart);
        if (contrast(slot_color(scheme, ground), bar) >= kApart) {
          EXPECT_EQ(seen, bar);
        }
      }
    }
  }
}

}  // namespace
}  // namespace orvello
