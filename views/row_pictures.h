// The pictures before a day's subjects: each kind has a place of its own, so that bells stand below
// bells and subjects begin below each other.
#pragma once

#include <map>

#include "ports/report_list.h"
#include "settings/settings_record.h"
#include "store/day_agenda.h"

namespace orvello {

class RowPictures {
 public:
  // Only what a row of the agenda shows takes a place. `gap` lies between two of them.
  RowPictures(const DayAgenda& agenda, const SettingsRecord& settings, int gap);

  int width() const;  // of all the places, the gaps between them included; 0: there are none
  // Whether the row's category is to be seen: as a bar, or as an icon.
  bool shows_category(const DayRow& row, Color category) const;
  // Of a row this high on this ground, as indexes of `pictures`, to which it adds. `category` is
  // the colour of the appointment's categories, white without one. A bar goes through all the rows
  // of its appointment and stops short of the `margin` at its first and last edge.
  struct Place {
    int height = 0;
    int margin = 0;
    Color ground = kWhite;
    bool first = true;
    bool last = true;
  };
  std::vector<int> of(const DayRow& row, Color category, const Place& place,
                      std::vector<Image>& pictures);

 private:
  enum Slot { kBarSlot, kNotesSlot, kReminderSlot, kIconSlot, kSlotCount };
  bool has_bar(Color category) const;
  const Image* icon_of(const DayRow& row) const;  // null: it has none
  int bar_of(Color category, const Place& place, std::vector<Image>& pictures);
  int blank_of(int slot, std::vector<Image>& pictures);

  const SettingsRecord& settings_;
  int gap_;
  int widths_[kSlotCount] = {};  // 0: no row needs it
  std::map<Text, Image> icons_;  // by label; empty ones too
  std::map<std::pair<int, Text>, int> glyphs_;
  std::map<std::tuple<Color, Color, int, bool, bool>, int> bars_;
  std::map<int, int> blanks_;
};

}  // namespace orvello
