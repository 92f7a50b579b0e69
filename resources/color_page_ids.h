// The settings sheet's Color page and the colour picker, and their controls.
#pragma once

namespace orvello {

inline constexpr int kDialogColorPage = 105;

inline constexpr int kColorGroupLabel = 1101;  // names the list to a screen reader
inline constexpr int kColorGroupList = 1102;
inline constexpr int kColorSchemes = 1103;
inline constexpr int kColorReset = 1104;
inline constexpr int kColorSlotList = 1105;
inline constexpr int kColorPreview = 1106;

inline constexpr int kDialogColorPicker = 340;

// Its steps, in the order of the toggles that turn to them. The sliders stand in the order of
// their toggle: red, green, blue and hue, saturation, brightness.
inline constexpr int kPickerPaletteStep = 1, kPickerRgbStep = 2, kPickerHsvStep = 3;
inline constexpr int kPickerPaletteToggle = 341;
inline constexpr int kPickerRgbToggle = 342;
inline constexpr int kPickerHsvToggle = 343;
inline constexpr int kPickerHexLabel = 344;
inline constexpr int kPickerHex = 345;
inline constexpr int kPickerCompare = 346;  // the old and the new colour, side by side
inline constexpr int kPickerName = 347;
inline constexpr int kPickerWarning = 348;  // in the name's place
inline constexpr int kPickerPalette = 349;
inline constexpr int kPickerReset = 350;
inline constexpr int kPickerOk = 351;
inline constexpr int kPickerCancel = 352;
// Three of each kind, for red, green and blue, and then for hue, saturation and brightness.
inline constexpr int kPickerSliderLabels = 360;
inline constexpr int kPickerSliders = 366;
inline constexpr int kPickerSliderValues = 372;
inline constexpr int kPickerSliderCount = 6;

}  // namespace orvello
