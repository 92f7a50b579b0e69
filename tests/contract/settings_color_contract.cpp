// The Color page and the colour picker.
#include "options/color_rules.h"
#include "ports/messages.h"
#include "resources/color_page_ids.h"
#include "settings/color_schemes.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {
namespace {

constexpr int kAppointmentRow = 3;  // of the group "Daily View"
constexpr Color kChosen = rgb(0x12, 0x34, 0x56);

struct ColorHand {
  // The person, in front of the picker that a tap on the slot's row opens.
  void pick(int row, std::function<void()> acts) {
    int acted = 0;
    desk.bench->in_front([&] {
      ++acted;
      acts();
    });
    desk.bench->tap_row(kColorSlotList, row);
    EXPECT_EQ(acted, 1) << "nobody met the picker";
  }
  void type_hex(TextView hex) { desk.type(kPickerHex, hex); }
  void key(std::uint32_t code) { desk.bench->key(code); }
  void menu(int button, std::uint32_t command) {
    desk.bench->choose_in_menu(command);
    desk.tap(button);
  }
  void open(std::function<void()> acts) { desk.open(kPageColor, std::move(acts)); }
  Color recorded(int slot) const {
    return desk.record().item_colors[static_cast<std::size_t>(slot)];
  }
  std::int32_t stored(int slot) const { return desk.number(format(u"itemcolor%d", slot)); }
  int count_stored() const {
    int count = 0;
    for (int slot = 0; slot < kColorSlots; ++slot) count += stored(slot) != -1;
    return count;
  }

  SettingsDesk& desk;
};

TEST_P(SettingsContract, WhatIsPickedIsACopyUntilTheSheetIsConfirmed) {
  ColorHand hand{*desk};
  const Color before = hand.recorded(17);
  const auto choose = [&] {
    EXPECT_EQ(desk->text(kColorGroupList), u"Month View");
    desk->choose(kColorGroupList, 1);
    hand.pick(kAppointmentRow, [&] {
      EXPECT_EQ(desk->text(0), u"Appointment text");
      EXPECT_EQ(desk->text(kPickerHex), u"#000000");
      hand.type_hex(u"#123456");
      desk->tap(kPickerOk);
    });
    EXPECT_EQ(hand.recorded(17), before);
  };
  hand.open([&] {
    choose();
    desk->cancel();
  });
  EXPECT_EQ(hand.recorded(17), before);
  EXPECT_EQ(hand.count_stored(), 0);
  EXPECT_EQ(desk->number(u"colorselectionmode"), 1) << "also of a sheet that is cancelled";
  EXPECT_EQ(desk->commands.reloads, 0);

  desk->store(u"colorselectionmode", 7u);  // none: the first group
  hand.open([&] {
    choose();
    hand.pick(kAppointmentRow, [&] {
      EXPECT_EQ(desk->text(kPickerHex), u"#123456");
      hand.type_hex(u"#FF0000");
      desk->tap(kPickerCancel);
    });
    desk->ok();
  });
  EXPECT_EQ(hand.recorded(17), kChosen);
  EXPECT_EQ(hand.stored(17), static_cast<std::int32_t>(kChosen));
  EXPECT_EQ(hand.count_stored(), 1) << "what did not change is not written";
  EXPECT_EQ(desk->commands.reloads, 1);
  hand.open([&] {
    EXPECT_EQ(desk->text(kColorGroupList), u"Daily View");
    desk->ok();
  });
  EXPECT_EQ(desk->commands.reloads, 1) << "nothing changed";
}

TEST_P(SettingsContract, SchemesAndResetsChangeWhatTheySay) {
  ColorHand hand{*desk};
  const auto dark = dark_scheme().colors;
  const ItemColors factory = desk->record().item_colors;
  hand.open([&] {
    hand.menu(kColorSchemes, 2);
    desk->ok();
  });
  EXPECT_EQ(desk->record().item_colors, dark);
  EXPECT_EQ(desk->commands.reloads, 1);
  const auto expect_factory = [&](std::uint32_t command, auto meant) {
    desk->settings.item_colors = dark;
    hand.open([&] {
      desk->choose(kColorGroupList, 3);
      desk->dialog().focus(kColorSlotList);
      hand.key(kKeyDown);  // the second slot of the group, 33
      hand.menu(kColorReset, command);
      desk->ok();
    });
    for (int slot = 0; slot < kColorSlots; ++slot) {
      const auto at = static_cast<std::size_t>(slot);
      EXPECT_EQ(hand.recorded(slot), meant(slot) ? factory[at] : dark[at]) << slot;
    }
  };
  expect_factory(1, [](int slot) { return slot == 33; });
  expect_factory(2, [](int slot) { return slot >= 32 && slot <= 35; });
  expect_factory(3, [](int) { return true; });
  EXPECT_EQ(scheme_of(desk->record().item_colors), 0);
}

// The palette, which opens first and where the picker was never used; by pen, then by keys.
TEST_P(SettingsContract, ThePaletteIsChosenFromByPenAndByKeys) {
  ColorHand hand{*desk};
  const auto palette = palette_colors();
  hand.open([&] {
    hand.pick(0, [&] {
      EXPECT_EQ(desk->bench->focused(), kPickerPalette);
      const Rect place = desk->dialog().place(kPickerPalette);
      const Point red = PaletteGrid({place.width, place.height}).cell(9).center();
      desk->bench->pen_down(kPickerPalette, red);
      desk->bench->pen_up(kPickerPalette, red);
      EXPECT_EQ(desk->text(kPickerName), u"Bright red");
      EXPECT_EQ(desk->text(kPickerHex), hex_of(palette[9]));
      desk->tap(kPickerOk);
    });
    desk->dialog().focus(kColorSlotList);
    desk->bench->in_front([&] {
      hand.key(kKeyDown);
      EXPECT_EQ(desk->text(kPickerName), u"Dark red");
      hand.key(kKeyHome);
      EXPECT_EQ(desk->text(kPickerName), u"White");
      hand.key(kKeyEnd);
      hand.key(kKeyReturn);
    });
    hand.key(kKeyReturn);
    desk->ok();
  });
  EXPECT_EQ(hand.recorded(0), palette[47]);
  EXPECT_EQ(desk->number(u"colorpickerselectionmode"), -1) << "still the one that it has anyway";
}

TEST_P(SettingsContract, SlidersAndHexTextSayTheSameAndTheModeIsKept) {
  ColorHand hand{*desk};
  const auto flushed = [&] { return desk->number(u"colorpickerselectionmode"); };
  hand.open([&] {
    hand.pick(0, [&] {
      desk->tap(kPickerRgbToggle);
      hand.type_hex(u"#C8647B");
      desk->bench->slide(kPickerSliders + 2, 0);
      EXPECT_EQ(desk->text(kPickerHex), u"#C86400");
      EXPECT_EQ(desk->text(kPickerSliderValues), u"200");
      desk->tap(kPickerHsvToggle);
      EXPECT_EQ(desk->text(kPickerSliderValues + 3), u"30");
      desk->bench->slide(kPickerSliders + 5, 0);  // black, which has no hue
      EXPECT_EQ(desk->text(kPickerHex), u"#000000");
      desk->bench->slide(kPickerSliders + 5, 100);
      EXPECT_EQ(desk->text(kPickerHex), u"#FF8000") << "the hue was kept";
      hand.type_hex(u"00ff7f");
      EXPECT_EQ(desk->text(kPickerSliderValues + 3), u"150");
      hand.type_hex(u"#00ff");
      desk->dialog().focus(kPickerSliders + 3);
      desk->bench->settle();
      EXPECT_EQ(desk->text(kPickerHex), u"#00FF7F") << "no colour: the last one again";
      desk->tap(kPickerReset);
      EXPECT_EQ(desk->text(kPickerHex), u"#5A5A5A");
      desk->tap(kPickerCancel);
    });
    EXPECT_EQ(flushed(), 2);
    hand.pick(0, [&] { EXPECT_TRUE(desk->checked(kPickerHsvToggle)); });
    desk->store(u"colorpickerselectionmode", 3u);
    hand.pick(0, [&] { EXPECT_TRUE(desk->checked(kPickerPaletteToggle)); });
    desk->store(u"colorpickerselectionmode", Text(600, u'x'));
    hand.pick(0, [&] { EXPECT_TRUE(desk->checked(kPickerPaletteToggle)); });
  });
}

TEST_P(SettingsContract, WarnsOfTextThatCouldNotBeRead) {
  ColorHand hand{*desk};
  hand.open([&] {
    desk->choose(kColorGroupList, 4);
    hand.pick(1, [&] {  // the text on (255, 255, 132)
      EXPECT_FALSE(desk->bench->seen(kPickerWarning));
      hand.type_hex(u"#C0C060");
      EXPECT_TRUE(desk->bench->seen(kPickerWarning));
      EXPECT_EQ(desk->text(kPickerWarning), u"Hard to read with 'Window background'");
      hand.type_hex(u"#404040");
      EXPECT_FALSE(desk->bench->seen(kPickerWarning));
    });
    hand.pick(0, [&] {  // its ground, under that black text
      hand.type_hex(u"#202020");
      EXPECT_TRUE(desk->bench->seen(kPickerWarning));
    });
  });
}

// The program behind it: the preview is drawn by the views' own painters, and the view follows.
TEST_P(SettingsContract, TheViewFollowsWhenTheSheetIsConfirmed) {
  for (const ViewMode view : {ViewMode::day, ViewMode::month}) {
    renew();
    ColorHand hand{*desk};
    desk->start(view);
    hand.open([&] {
      for (int group = 0; group < 5; ++group) desk->choose(kColorGroupList, group);
      hand.menu(kColorSchemes, 2);
      desk->ok();
    });
    EXPECT_EQ(desk->record().item_colors, dark_scheme().colors);
    EXPECT_TRUE(desk->boxes_shown().empty());
  }
}

}  // namespace
}  // namespace orvello::test
