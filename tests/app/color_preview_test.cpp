// The examples on the Color page: each colour of the group is seen, and with a ready-made scheme
// each text is read on what it was in truth painted on.
#include "app/color_preview.h"

#include <gtest/gtest.h>

#include <set>

#include "draw/readable.h"
#include "hosts/headless/headless_host.h"
#include "hosts/headless/recording_canvas.h"
#include "resources/bitmaps.h"
#include "settings/color_pairs.h"
#include "settings/color_schemes.h"
#include "settings/load_settings.h"

namespace orvello {
namespace {

using Kind = DrawnOperation::Kind;

struct ColorPreviewTest : testing::Test {
  ColorPreviewTest() {
    load_locale_conventions(settings, english_locale());
    LoadMonthNames(settings.month_names, settings.locale);
    state.current = state.today = {11, 21, 2026};
    settings.notes_glyph = settings.reminder_glyph = load_bitmap(kBitmapNotesLow);
  }
  std::vector<DrawnOperation> drawn(int group, Size size) {
    canvas = RecordingCanvas(size);
    draw_color_preview(ColorGroup{group},
                       {settings, state, session, device.clock, Language::english, today_picture},
                       canvas);
    std::vector<DrawnOperation> seen;
    for (const DrawnOperation& one : canvas.operations())
      if (!intersection(one.box, {0, 0, size.width, size.height}).empty()) seen.push_back(one);
    return seen;
  }

  HeadlessHost device;
  StoreSession session{device.store, device.boxes};
  SettingsRecord settings;
  ApplicationState state;
  Image today_picture;
  RecordingCanvas canvas{{1, 1}};
};

TEST_F(ColorPreviewTest, ShowsEachColorOfItsGroupAlsoWhereItIsCutOff) {
  // No two alike, and each text is read on each ground.
  for (int slot = 0; slot < kColorSlots; ++slot) {
    const bool is_text = std::ranges::any_of(
        text_pairs(), [&](const ColorPair& pair) { return pair.front == ColorSlot{slot}; });
    settings.item_colors[static_cast<std::size_t>(slot)] =
        is_text ? rgb(slot, 10, 20) : rgb(255 - slot, 240, 250);
  }
  for (const Size size : {Size{240, 105}, Size{160, 145}, Size{240, 320}}) {
    for (int group = 0; group < 5; ++group) {
      std::set<Color> colors;
      for (const DrawnOperation& one : drawn(group, size))
        colors.insert(one.kind == Kind::text ? one.style.color : one.color);
      for (int slot = 0; slot < kColorSlots; ++slot) {
        const auto at = static_cast<std::size_t>(slot);
        if (color_table()[at].group == ColorGroup{group}) {
          EXPECT_EQ(colors.count(settings.item_colors[at]), 1u)
              << slot << " at " << size.width << "x" << size.height;
        }
      }
    }
  }
}

TEST_F(ColorPreviewTest, EachTextIsReadOnItsGround) {
  int texts = 0;
  for (const ColorScheme& scheme : color_schemes().subspan(1)) {
    settings.item_colors = scheme.colors;
    for (int group = 0; group < 5; ++group) {
      for (const DrawnOperation& one : drawn(group, {240, 320})) {
        if (one.kind != Kind::text) continue;
        // A bubble is no rectangle: what lies below it is not what its text is on.
        const bool in_bubble = group == 4 && one.style.color == scheme.colors[37];
        const auto ground = in_bubble ? scheme.colors[36] : canvas.fill_at(one.box.center());
        if (!ground) continue;
        ++texts;
        EXPECT_GE(contrast(*ground, one.style.color), 4.5)
            << to_utf8(load_string(scheme.name, Language::english)) << ", group " << group << ": "
            << to_utf8(one.text);
      }
    }
  }
  EXPECT_GT(texts, 1000);
}

}  // namespace
}  // namespace orvello
