#include "app/greeting.h"

#include <algorithm>
#include <array>

#include "draw/wrap_text.h"
#include "resources/ids.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kMargin = 10, kBar = 4, kGap = 8, kLeastGap = 2;  // at 96 dpi
constexpr int kPoints[] = {11, 10, 9, 8, 7, 6};
// A bar before each topic, as the month has them before its appointments.
constexpr std::array<Color, 5> kBars{rgb(119, 119, 255), rgb(96, 200, 96), rgb(255, 176, 98),
                                     rgb(255, 132, 132), rgb(206, 206, 206)};

int line_height(const FontSpec& font) { return font.height * 5 / 4; }

}  // namespace

GreetingProcedure::GreetingProcedure(Language language, const ScreenLayout& screen,
                                     const Dialogs& dialogs)
    : screen_(screen), dialogs_(dialogs) {
  const auto add = [&](StringId heading, StringId text) {
    topics_.push_back({load_string(heading, language), load_string(text, language)});
  };
  add(StringId::greeting_import, StringId::greeting_import_text);
  add(StringId::greeting_month, StringId::greeting_month_text);
  add(StringId::greeting_day, StringId::greeting_day_text);
  add(StringId::greeting_keys, StringId::greeting_keys_text);
  add(StringId::greeting_icons, StringId::greeting_icons_text);
}

int GreetingProcedure::lay_out(Canvas& canvas, Size size, int points, bool painted, int gap) const {
  const int margin = kMargin * screen_.dpi_x / 96, bar = kBar * screen_.dpi_x / 96;
  const FontSpec bold = font_of(points, 700, screen_), normal = font_of(points, 400, screen_);
  const int left = margin + 3 * bar, width = size.width - left - margin;
  const FormColors colors = dialogs_.colors();
  int y = gap;
  for (std::size_t i = 0; i < topics_.size(); ++i) {
    const int top = y;
    const auto put = [&](TextView line, const FontSpec& font, Color color) {
      if (painted) canvas.draw_text(line, {left, y, width, line_height(font)}, {font, color});
      y += line_height(font);
    };
    put(topics_[i].heading, bold, colors.accent);
    for (const Text& line : word_wrapped(canvas, topics_[i].text, normal, width))
      put(line, normal, colors.text);
    if (painted) canvas.fill_rect({margin, top, bar, y - top}, kBars[i % kBars.size()]);
    y += gap;
  }
  return y;
}

bool GreetingProcedure::paint(Canvas& canvas, Size size) const {
  canvas.fill_rect({0, 0, size.width, size.height}, dialogs_.colors().field);
  const int least = kLeastGap * screen_.dpi_y / 96, wished = kGap * screen_.dpi_y / 96;
  int points = kPoints[std::size(kPoints) - 1];
  int height = 0;
  for (const int tried : kPoints) {
    points = tried;
    height = lay_out(canvas, size, points, false, least);
    if (height <= size.height) break;
  }
  // What room is left goes between the topics, within reason.
  const int gaps = static_cast<int>(topics_.size()) + 1;
  const int gap = std::clamp(least + (size.height - height) / gaps, least, 2 * wished);
  lay_out(canvas, size, points, true, gap);
  return height <= size.height;
}

void GreetingProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init: {
      std::vector<AccessibleCell> parts;
      for (const Topic& topic : topics_)
        parts.push_back({topic.heading + u". " + topic.text, {}, false});
      dialog.drawn(kControlGreeting)->set_parts(parts);
      dialog.focus(kControlOk);
      break;
    }
    case Event::paint:
      paint(*event.canvas, event.size);
      break;
    case Event::command:
    case Event::pointer_up:
    case Event::close:
      dialog.close(1);
      break;
    default:
      break;
  }
}

}  // namespace orvello
