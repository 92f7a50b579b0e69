#include "resources/settings_templates.h"
#include "resources/times_page_ids.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;

constexpr int kInner = kSettingsPageWidth - 8, kRow = 27, kPitch = 28, kTextHeight = 16;
constexpr int kMarksTop = 20, kMarksLeft = 92, kDiagramLeft = 52;
constexpr int kDefaultsTop = 138, kHalf = (kInner - 4) / 2;
constexpr Color kHeadingColor = rgb(0, 0, 153);
constexpr int kAmountLimit = 79;

class TimesTemplate {
 public:
  explicit TimesTemplate(Language language) : language_(language) {
    dialog_.id = kDialogTimesPage;
    dialog_.title = load_string(StringId::tab_times, language);
    dialog_.size = {kSettingsPageWidth, kSettingsPageHeight};
  }

  DialogTemplate made() {
    section_ = 1;
    marks();
    section_ = 2;
    defaults();
    return std::move(dialog_);
  }

 private:
  ControlTemplate& add(Kind kind, int id, const Rect& place, Across across = Across::keep) {
    dialog_.controls.push_back({kind, id, {}, place, across});
    dialog_.controls.back().section = section_;
    return dialog_.controls.back();
  }
  ControlTemplate& add(Kind kind, int id, StringId text, const Rect& place,
                       Across across = Across::keep) {
    ControlTemplate& control = add(kind, id, place, across);
    control.text = load_string(text, language_);
    return control;
  }

  // Each list behind the name of the period that it begins, which stands half a row lower: between
  // it and the one that ends the period.
  void marks() {
    constexpr StringId kNames[] = {StringId::times_morning, StringId::times_day,
                                   StringId::times_evening};
    add(Kind::label, kTimesHeading, StringId::times_indicator, {4, 2, kInner, kTextHeight},
        Across::stretch)
        .color = kHeadingColor;
    for (int i = 0; i < 4; ++i) {
      const int top = kMarksTop + i * kPitch;
      const int name = top + (kRow + kPitch - kTextHeight) / 2;
      if (i < 3)
        add(Kind::label, kTimesPeriods[i], kNames[i], {4, name, kDiagramLeft - 8, kTextHeight});
      if (i == 0)
        add(Kind::custom, kTimesDiagram, StringId::times_indicator,
            {kDiagramLeft, top, kMarksLeft - kDiagramLeft, 3 * kPitch + kRow});
      add(Kind::drop_list, kTimesMarks[i], {kMarksLeft, top, kInner + 4 - kMarksLeft, kRow},
          Across::stretch);
    }
    add(Kind::custom, kTimesSeparator, {4, kDefaultsTop - 4, kInner, 2}, Across::stretch);
  }

  void defaults() {
    const int names = kDefaultsTop + kTextHeight + 2, times = names + kTextHeight + 1;
    const int reminder = times + kRow + 4, right = 4 + kHalf + 4;
    add(Kind::label, kTimesDefaults, StringId::times_defaults,
        {4, kDefaultsTop, kInner, kTextHeight}, Across::stretch)
        .color = kHeadingColor;
    add(Kind::label, kTimesStartLabel, StringId::times_start, {4, names, kHalf, kTextHeight},
        Across::left_half);
    add(Kind::drop_list, kTimesStart, {4, times, kHalf, kRow}, Across::left_half);
    add(Kind::label, kTimesEndLabel, StringId::times_end, {right, names, kHalf, kTextHeight},
        Across::right_half);
    add(Kind::drop_list, kTimesEnd, {right, times, kHalf, kRow}, Across::right_half);
    add(Kind::check_box, kTimesRemind, StringId::times_remind, {4, reminder, 84, kRow});
    // Never seen: it names the two for a screen reader.
    add(Kind::label, kTimesReminderName, StringId::times_remind, {4, reminder, 84, kRow}).hidden =
        true;
    add(Kind::combo, kTimesAmount, {92, reminder, 58, kRow}).limit = kAmountLimit;
    add(Kind::drop_list, kTimesUnit, {154, reminder, kInner + 4 - 154, kRow}, Across::stretch);
  }

  Language language_;
  DialogTemplate dialog_;
  int section_ = 0;
};

}  // namespace

DialogTemplate times_page_dialog(Language language) { return TimesTemplate(language).made(); }

}  // namespace orvello
