#include "app/read_trouble.h"

#include <algorithm>

#include "app/own_messages.h"
#include "draw/readable.h"
#include "draw/wrap_text.h"

namespace orvello {
namespace {

constexpr Color kAmber = rgb(255, 196, 40), kRed = rgb(153, 0, 0);
constexpr std::size_t kMostLines = 4;
// Another program's lock is over soon as a rule: only one that lasts is worth a box.
constexpr int kPatience = 5;

}  // namespace

HoverLabel trouble_line(TextView text, const ScreenLayout& screen, const FormColors& colors,
                        Canvas& measure) {
  HoverLabel label;
  label.font = screen.fonts.normal8;
  label.background = mixed(colors.field, kAmber, 48);
  label.text_color = legible_on(label.background, kRed);
  const int margin = 4 * screen.scale;
  const int room = std::max(1, screen.work.width - 2 * margin);
  std::vector<Text> lines = word_wrapped(measure, text, label.font, room);
  if (lines.size() > kMostLines) {
    for (std::size_t i = kMostLines; i < lines.size(); ++i)
      lines[kMostLines - 1] += u" " + lines[i];
    lines.resize(kMostLines);
    lines.back() = shortened(measure, lines.back(), label.font, room);
  }
  for (const Text& line : lines) label.text += (label.text.empty() ? u"" : u"\n") + line;
  const int height =
      measure.measure(u"X", label.font).height * static_cast<int>(lines.size()) + margin;
  label.place = {0, screen.work.height - height, screen.work.width, height};
  return label;
}

void ReadTrouble::note(ReadOutcome outcome, const ScreenLayout& screen, Language language,
                       Canvas& measure) {
  if (outcome == ReadOutcome::whole) return end();
  if (!standing_) begin();
  ++failures_;
  reason_ = session_.problem();
  const StringId words =
      outcome == ReadOutcome::kept ? StringId::shown_as_it_was : StringId::calendar_unreadable;
  show_line(load_string(words, language) + u" " + reason_, screen, measure);
  // What keeps a session from opening was told when that was tried.
  if (session_.logged_on() && (!session_.busy() || failures_ > kPatience))
    tell_once(reason_, language);
}

void ReadTrouble::begin() {
  standing_ = true;
  failures_ = 0;
  modality_.counted().window.start_timer(kTimerReadAgain, kReadAgainMilliseconds);
}

void ReadTrouble::end() {
  if (!std::exchange(standing_, false)) return;
  modality_.counted().window.stop_timer(kTimerReadAgain);
  modality_.counted().window.hide_notice();
}

void ReadTrouble::show_line(const Text& text, const ScreenLayout& screen, Canvas& measure) {
  modality_.counted().window.show_notice(
      trouble_line(text, screen, modality_.counted().dialogs.colors(), measure));
}

void ReadTrouble::tell_once(Text reason, Language language) {
  if (std::find(told_.begin(), told_.end(), reason) != told_.end()) return;
  told_.push_back(reason);
  modality_.when_free([this, reason = std::move(reason), language] {
    if (!standing_) return;
    const Text text = load_string(StringId::calendar_unreadable, language) + u"\n" + reason +
                      u"\n" + load_string(StringId::read_again, language);
    modality_.counted().boxes.show(text, u"Error", BoxIcon::error, BoxButtons::ok, true);
  });
}

}  // namespace orvello
