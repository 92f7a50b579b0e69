#include "hosts/win32/bar_layout.h"

#include <algorithm>

#include "hosts/win32/form_look.h"

namespace orvello {
namespace {

constexpr int kMostTextPadding = 10, kLeastTextPadding = 2;  // either side, design units
constexpr int kWidestImage = 36;
constexpr int kSmallestText = 8;
constexpr int kWidestName = 120;  // of what is highlighted, design units

class BarPlaces {
 public:
  BarPlaces(const std::vector<BarButtonShape>& buttons, const Win32Density& density, Size bar,
            const std::function<int(std::size_t, int)>& text_width)
      : buttons_(buttons), density_(density), bar_(bar), text_width_(text_width) {}

  // Whether all have the room that they need.
  bool lay_out(BarLayout& layout) {
    int images = 0, texts = 0;
    for (const BarButtonShape& button : buttons_)
      if (!button.separator) ++(button.image ? images : texts);
    const int touch = density_.scaled(kTouchHeight), least = density_.scaled(kLeastTextPadding);
    double size = kTextSize;
    int text = fit(density_.scaled(size));
    const auto rest = [&] { return bar_.width - text - images * touch; };
    while (rest() < 2 * texts * least && size > kSmallestText)
      text = fit(density_.scaled(size -= 0.5));
    int padding = density_.scaled(kMostTextPadding);
    if (texts) padding = std::clamp(rest() / (2 * texts), least, std::max(least, padding));
    const int left = rest() - 2 * texts * padding;
    const int most = std::max(touch, density_.scaled(kWidestImage));
    const int image_width = images ? std::min(most, touch + std::max(0, left) / images) : 0;
    layout.text_height = height_;
    place(layout, padding, image_width, images, std::max(0, left - images * (image_width - touch)));
    return left >= 0;
  }

 private:
  int fit(int height) {
    height_ = height;
    int sum = 0;
    for (std::size_t i = 0; i < buttons_.size(); ++i)
      if (!buttons_[i].separator && !buttons_[i].image) sum += text_width_(i, height);
    return sum;
  }

  // A highlighted image's name takes of `left`, the room that nothing else needs.
  int name_width(std::size_t i, int left) const {
    if (!buttons_[i].image || !buttons_[i].named) return 0;
    const int wanted = text_width_(i, height_) + 2 * density_.scaled(kGrid);
    return std::min({left, density_.scaled(kWidestName), wanted});
  }

  void place(BarLayout& layout, int padding, int image_width, int images, int left) const {
    const int line = std::max(1, density_.scaled(1));
    int names = 0;
    for (std::size_t i = 0; i < buttons_.size(); ++i) names += name_width(i, left);
    int x = 0, image_x = bar_.width - images * image_width - names;
    layout.places.assign(buttons_.size(), {});
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
      if (buttons_[i].separator) continue;
      const bool image = buttons_[i].image;
      int& at = image ? image_x : x;
      const int wide =
          image ? image_width + name_width(i, left) : text_width_(i, height_) + 2 * padding;
      layout.places[i] = {at, line, wide, bar_.height - line};
      at += wide;
    }
  }

  const std::vector<BarButtonShape>& buttons_;
  const Win32Density density_;
  const Size bar_;
  const std::function<int(std::size_t, int)>& text_width_;
  int height_ = 0;
};

}  // namespace

BarLayout lay_out_bar(const std::vector<BarButtonShape>& buttons, const Win32Density& density,
                      Size bar, const std::function<int(std::size_t, int)>& text_width) {
  BarLayout layout;
  if (BarPlaces(buttons, density, bar, text_width).lay_out(layout)) return layout;
  // Where texts as large as the desktop's do not fit, they have the usual size.
  Win32Density usual = density;
  usual.text = std::min(1.0, density.text);
  BarPlaces(buttons, usual, bar, text_width).lay_out(layout);
  return layout;
}

}  // namespace orvello
