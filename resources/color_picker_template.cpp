// The colour picker: a palette, or sliders for one of two models, between what stands on each.
#include "resources/color_page_ids.h"
#include "resources/dialog_templates.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;

constexpr int kSpace = 4, kFingerSize = 27, kPickerWidth = 240;
constexpr int kSecondRow = kSpace + kFingerSize + kSpace, kSecondHeight = 30;
constexpr int kBodyTop = kSecondRow + kSecondHeight + kSpace, kBodyHeight = 6 * kFingerSize;
constexpr int kLastRow = kBodyTop + kBodyHeight + kSpace;
constexpr int kHexLimit = 7;  // "#RRGGBB"

class PickerTemplate {
 public:
  explicit PickerTemplate(Language language) : language_(language) {
    dialog_.id = kDialogColorPicker;
    dialog_.title = load_string(StringId::picker_title, language);
    dialog_.size = {kPickerWidth, kLastRow + kFingerSize + kSpace};
  }

  DialogTemplate made() {
    head();
    add(Kind::custom, kPickerPalette, StringId::picker_palette,
        {0, kBodyTop, kPickerWidth, kBodyHeight}, Across::stretch, Down::stretch)
        .step = kPickerPaletteStep;
    sliders(kPickerRgbStep, 0,
            {StringId::picker_red, StringId::picker_green, StringId::picker_blue});
    sliders(kPickerHsvStep, 3,
            {StringId::picker_hue, StringId::picker_saturation, StringId::picker_brightness});
    const auto bottom = [&](Kind kind, int id, StringId text, int left, int width, Across across) {
      add(kind, id, text, {left, kLastRow, width, kFingerSize}, across, Down::bottom);
    };
    bottom(Kind::button, kPickerCancel, StringId::cancel, kSpace, 72, Across::keep);
    bottom(Kind::button, kPickerReset, StringId::color_reset, 84, 72, Across::center);
    bottom(Kind::default_button, kPickerOk, StringId::ok, 164, 72, Across::right);
    return std::move(dialog_);
  }

 private:
  ControlTemplate& add(Kind kind, int id, TextView text, const Rect& place,
                       Across across = Across::keep, Down down = Down::keep) {
    dialog_.controls.push_back({kind, id, Text(text), place, across, down});
    return dialog_.controls.back();
  }
  ControlTemplate& add(Kind kind, int id, StringId text, const Rect& place,
                       Across across = Across::keep, Down down = Down::keep) {
    return add(kind, id, load_string(text, language_), place, across, down);
  }

  void head() {
    constexpr int wide = 56, narrow = 38;
    add(Kind::toggle, kPickerPaletteToggle, StringId::picker_palette,
        {kSpace, kSpace, wide, kFingerSize});
    const int second = kSpace + wide + kSpace, third = second + narrow + kSpace;
    add(Kind::toggle, kPickerRgbToggle, u"RGB", {second, kSpace, narrow, kFingerSize});
    add(Kind::toggle, kPickerHsvToggle, u"HSV", {third, kSpace, narrow, kFingerSize});
    const int left = third + narrow + 2 * kSpace;
    const Rect hex{left, kSpace, kPickerWidth - kSpace - left, kFingerSize};
    add(Kind::label, kPickerHexLabel, StringId::picker_hex, hex, Across::stretch).hidden = true;
    add(Kind::edit, kPickerHex, u"", hex, Across::stretch).limit = kHexLimit;
    constexpr int compare = 68, text = kSpace + compare + kSpace;
    add(Kind::custom, kPickerCompare, StringId::picker_compare,
        {kSpace, kSecondRow, compare, kSecondHeight});
    const Rect words{text, kSecondRow, kPickerWidth - kSpace - text, kSecondHeight};
    add(Kind::label, kPickerName, u"", words, Across::stretch);
    ControlTemplate& warning = add(Kind::label, kPickerWarning, u"", words, Across::stretch);
    warning.hidden = true;
    warning.color = rgb(153, 0, 0);
  }

  void sliders(int step, int first, const StringId (&names)[3]) {
    constexpr int label = 84, value = 32;
    for (int i = 0; i < 3; ++i) {
      const int top = kBodyTop + i * (kFingerSize + kSpace);
      const int end = kPickerWidth - kSpace - value;
      const Rect slider{kSpace + label, top, end - kSpace - label - kSpace, kFingerSize};
      add(Kind::label, kPickerSliderLabels + first + i, names[i],
          {kSpace, top, label - kSpace, kFingerSize})
          .step = step;
      add(Kind::slider, kPickerSliders + first + i, names[i], slider, Across::stretch).step = step;
      add(Kind::label, kPickerSliderValues + first + i, u"", {end, top, value, kFingerSize},
          Across::right)
          .step = step;
    }
  }

  Language language_;
  DialogTemplate dialog_;
};

}  // namespace

DialogTemplate color_picker_dialog(Language language) { return PickerTemplate(language).made(); }

}  // namespace orvello
