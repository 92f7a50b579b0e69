#include "draw/form_layout.h"

#include <gtest/gtest.h>

#include <set>

#include "resources/dialog_templates.h"
// The form itself, as this is another test program.
#include "tests/contract/every_kind.cpp"  // NOLINT

namespace orvello::test {
namespace {

constexpr int kTitle = 28, kLeastTouch = 26;

bool seen_together(const ControlTemplate& a, const ControlTemplate& b) {
  return !a.hidden && !b.hidden && (a.step == 0 || b.step == 0 || a.step == b.step);
}

bool is_touched(Kind kind) { return kind != Kind::label && kind != Kind::custom; }

// Everything is inside the form and large enough for a finger, nothing lies on another, and the
// tab order goes downwards, then to the right, column by column.
void expect_sound(const DialogTemplate& form, const FormLayout& layout, double unit, int step) {
  const int least = static_cast<int>(kLeastTouch * unit) - 1;
  for (std::size_t i = 0; i < form.controls.size(); ++i) {
    const ControlTemplate& control = form.controls[i];
    if (control.step != 0 && control.step != step) continue;
    SCOPED_TRACE("control " + std::to_string(control.id));
    const Rect& place = layout.places[i];
    EXPECT_GE(place.x, 0);
    EXPECT_GE(place.y, 0);
    EXPECT_LE(place.right(), layout.body.width);
    EXPECT_LE(place.bottom(), layout.body.height);
    if (is_touched(control.kind)) {
      EXPECT_GE(std::min(place.width, place.height), least);
    }
    for (std::size_t j = 0; j < i; ++j) {
      const int other = form.controls[j].step;
      if (!seen_together(control, form.controls[j]) || (other != 0 && other != step)) continue;
      const Rect& before = layout.places[j];
      EXPECT_TRUE(intersection(place, before).empty()) << "on " << form.controls[j].id;
      EXPECT_TRUE(place.y > before.y || place.x > before.x) << "before " << form.controls[j].id;
    }
  }
}

std::vector<DialogTemplate> all_forms() {
  std::vector<DialogTemplate> forms;
  for (const LanguageInfo& info : all_languages())
    for (DialogTemplate& form : all_dialogs(info.language)) forms.push_back(std::move(form));
  for (DialogTemplate& page : sheet_pages()) forms.push_back(std::move(page));
  forms.push_back(every_kind_form());
  forms.push_back(step_form());
  return forms;
}

std::set<int> steps_of(const DialogTemplate& form) {
  std::set<int> steps;
  for (const ControlTemplate& control : form.controls) steps.insert(control.step);
  if (steps.size() > 1) steps.erase(0);
  return steps;
}

TEST(FormLayout, EveryDialogIsSoundOnEveryScreen) {
  struct Screen {
    Size size;
    double unit;
  };
  for (const Screen& screen :
       {Screen{{240, 320}, 1}, Screen{{320, 240}, 1}, Screen{{480, 640}, 2}, Screen{{640, 480}, 2},
        Screen{{1000, 700}, 1},
        // With the texts of a desktop that has large ones.
        Screen{{480, 640}, 1.25}, Screen{{480, 640}, 1.5}, Screen{{800, 600}, 1.5},
        Screen{{1000, 700}, 1.5}, Screen{{1280, 800}, 2}}) {
    for (const DialogTemplate& form : all_forms()) {
      SCOPED_TRACE(std::to_string(form.id) + " at " + std::to_string(screen.size.width));
      const int title = form.popup ? 0 : static_cast<int>(kTitle * screen.unit);
      const Rect sheet = sheet_place(form, screen.unit, title, screen.size);
      EXPECT_EQ(intersection(sheet, {0, 0, screen.size.width, screen.size.height}), sheet);
      const Size room{sheet.width, sheet.height - title};
      for (const int step : steps_of(form)) {
        const FormLayout layout = lay_out_form(form, screen.unit, room, 14, step);
        EXPECT_LE(layout.body.width, room.width) << "it need not be scrolled sideways";
        expect_sound(form, layout, screen.unit, step);
      }
    }
  }
}

TEST(FormLayout, RoomGoesWhereTheRulesSay) {
  DialogTemplate form;
  Adder to{form};
  to.add(Kind::label, 1, u"", {8, 8, 60, 20});
  to.add(Kind::edit, 2, u"", {72, 6, 160, 26}, Across::stretch);
  to.add(Kind::edit, 3, u"", {8, 36, 108, 26}, Across::left_half);
  to.add(Kind::label, 4, u"", {120, 36, 20, 26}, Across::after_half);
  to.add(Kind::edit, 5, u"", {144, 36, 88, 26}, Across::right_half);
  to.add(Kind::list, 6, u"", {8, 66, 224, 160}, Across::stretch, Down::stretch);
  to.add(Kind::button, 7, u"", {76, 238, 88, 26}, Across::center, Down::bottom);
  to.add(Kind::button, 8, u"", {168, 238, 64, 26}, Across::right, Down::bottom);
  const auto places = [&](Size available) { return lay_out_form(form, 1, available).places; };
  EXPECT_EQ(places({341, 368}), (std::vector<Rect>{{8, 8, 60, 20},
                                                   {72, 6, 261, 26},
                                                   {8, 36, 158, 26},
                                                   {170, 36, 20, 26},
                                                   {194, 36, 139, 26},
                                                   {8, 66, 325, 260},
                                                   {126, 338, 88, 26},
                                                   {269, 338, 64, 26}}));
  // A low form shrinks the list. Too low a one is scrolled, beside a bar, and then its list is as
  // high as can be seen.
  EXPECT_EQ(places({240, 148})[5], (Rect{8, 66, 224, 40}));
  for (const auto& [height, list] : {std::pair{147, 95}, {100, 48}, {60, 40}}) {
    const FormLayout low = lay_out_form(form, 1, {240, height}, 14);
    EXPECT_EQ(low.body, (Size{226, 268 - 160 + list}));
    EXPECT_EQ(low.places[5], (Rect{8, 66, 210, list}));
  }
}

TEST(FormLayout, SectionsFlowIntoASecondColumnWhereThereIsRoomForIt) {
  DialogTemplate form;
  form.size = {240, 400};
  Adder to{form};
  to.add(Kind::label, 1, u"", {8, 4, 200, 20});
  to.section = 1;
  to.add(Kind::check_box, 2, u"", {8, 30, 144, 100});
  to.section = 2;
  to.add(Kind::check_box, 3, u"", {8, 140, 144, 100});
  to.section = 3;
  to.add(Kind::check_box, 4, u"", {8, 250, 144, 100});
  to.section = 0;
  to.add(Kind::button, 5, u"", {8, 360, 88, 26});
  const auto place = [&](Size available, std::size_t control) {
    return lay_out_form(form, 1, available).places[control];
  };
  // Two sections on the left: that saves as much as two on the right, and comes first.
  EXPECT_EQ(place({500, 500}, 1), (Rect{8, 30, 144, 100}));
  EXPECT_EQ(place({500, 500}, 2).x, 258);
  EXPECT_EQ(place({500, 500}, 2).y, 30);
  EXPECT_EQ(place({500, 500}, 3).y, 140);
  EXPECT_EQ(place({500, 500}, 4).y, 250) << "what follows the sections stands below both columns";
  EXPECT_EQ(place({400, 500}, 2).x, 8) << "too narrow";
  EXPECT_EQ(place({320, 200}, 2).x, 168) << "but it would have to be scrolled otherwise";
  form.controls[2].place.width = 180;
  EXPECT_EQ(place({320, 200}, 2).x, 8) << "where it fits beside the other";
  const Rect sheet = sheet_place(form, 1, kTitle, {1000, 700});
  EXPECT_EQ(sheet.width, 480);
  EXPECT_EQ(sheet.height, 400 - 110 + kTitle);
}

TEST(FormLayout, SectionsThatStretchShareTheRoomWhereTheyStandInOneColumn) {
  DialogTemplate form;
  form.size = {240, 200};
  Adder to{form};
  to.section = 1;
  to.add(Kind::list, 1, u"", {0, 0, 240, 80}, Across::stretch, Down::stretch);
  to.section = 2;
  to.add(Kind::list, 2, u"", {0, 84, 240, 80}, Across::stretch, Down::stretch);
  to.section = 0;
  to.add(Kind::button, 3, u"", {4, 168, 88, 27}, Across::keep, Down::bottom);
  const auto places = [&](Size available) { return lay_out_form(form, 1, available).places; };
  EXPECT_EQ(places({240, 260}),
            (std::vector<Rect>{{0, 0, 240, 110}, {0, 114, 240, 110}, {4, 228, 88, 27}}));
  EXPECT_EQ(places({240, 160}),
            (std::vector<Rect>{{0, 0, 240, 60}, {0, 64, 240, 60}, {4, 128, 88, 27}}));
}

TEST(FormLayout, FillsAHandheldAndIsASheetOnADesktop) {
  DialogTemplate form;
  Adder to{form};
  to.add(Kind::list, 1, u"", {0, 0, 240, 268}, Across::stretch, Down::stretch);
  EXPECT_EQ(sheet_place(form, 1.0, 28, {240, 320}), (Rect{0, 0, 240, 320}));
  EXPECT_EQ(sheet_place(form, 2.0, 56, {480, 640}), (Rect{0, 0, 480, 640}));
  EXPECT_EQ(sheet_place(form, 1.0, 28, {1000, 900}), (Rect{320, 228, 360, 444}));
  form.full_screen = false;
  EXPECT_EQ(sheet_place(form, 1.0, 28, {480, 640}), (Rect{120, 172, 240, 296}));
}

}  // namespace
}  // namespace orvello::test
