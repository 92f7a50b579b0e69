#include "hosts/shared/notes_text.h"

#include <algorithm>

namespace orvello {
namespace {

NotesStyle without_bullet(NotesStyle style) {
  style.bullet = false;
  return style;
}

void add_run(std::vector<NotesRun>& runs, int unit, const NotesStyle& style) {
  if (style == NotesStyle{}) return;
  const bool follows =
      !runs.empty() && runs.back().style == style && runs.back().start + runs.back().length == unit;
  if (follows)
    ++runs.back().length;
  else
    runs.push_back({unit, 1, style});
}

}  // namespace

TextChange change_between(TextView before, TextView now, int caret) {
  const auto old_size = static_cast<int>(before.size()), size = static_cast<int>(now.size());
  int behind = size - std::clamp(caret, 0, size);
  const bool ends_at_caret =
      behind <= old_size && before.substr(static_cast<std::size_t>(old_size - behind)) ==
                                now.substr(static_cast<std::size_t>(size - behind));
  if (!ends_at_caret) {
    behind = 0;
    while (behind < std::min(old_size, size) &&
           before[static_cast<std::size_t>(old_size - 1 - behind)] ==
               now[static_cast<std::size_t>(size - 1 - behind)])
      ++behind;
  }
  int start = 0;
  while (start < std::min(old_size, size) - behind &&
         before[static_cast<std::size_t>(start)] == now[static_cast<std::size_t>(start)])
    ++start;
  return {start, old_size - behind - start, size - behind - start};
}

void NotesText::set(const Text& text, const std::vector<NotesRun>& runs) {
  text_ = text;
  letters_.assign(text.size(), {});
  bullets_.assign(1 + static_cast<std::size_t>(std::count(text.begin(), text.end(), u'\n')), false);
  for (const NotesRun& run : runs) {
    const int start = std::clamp(run.start, 0, size());
    const int end = std::clamp(run.start + run.length, start, size());
    if (start == end) continue;
    std::fill(letters_.begin() + start, letters_.begin() + end, without_bullet(run.style));
    if (!run.style.bullet) continue;
    // A run that ends with a paragraph's end does not reach into the next one.
    const bool whole = text[static_cast<std::size_t>(end - 1)] == u'\n';
    for (std::size_t i = paragraph_at(start); i <= paragraph_at(whole ? end - 1 : end); ++i)
      bullets_[i] = true;
  }
}

std::size_t NotesText::paragraph_at(int place) const {
  const auto end = text_.begin() + std::clamp(place, 0, size());
  return static_cast<std::size_t>(std::count(text_.begin(), end, u'\n'));
}

NotesStyle NotesText::letter(std::size_t unit, std::size_t paragraph) const {
  NotesStyle style = unit < letters_.size() ? letters_[unit] : NotesStyle{};
  style.bullet = bullets_[paragraph];
  return style;
}

std::vector<NotesRun> NotesText::runs() const {
  std::vector<NotesRun> runs;
  std::size_t paragraph = 0;
  for (std::size_t i = 0; i < text_.size(); ++i) {
    NotesStyle style = letter(i, paragraph);
    if (text_[i] == u'\n') {
      const bool empty = i == 0 || text_[i - 1] == u'\n';
      const bool next_empty = i + 1 == text_.size() || text_[i + 1] == u'\n';
      const NotesStyle last = empty ? NotesStyle{} : letters_[i - 1];
      const NotesStyle next = next_empty ? NotesStyle{} : letters_[i + 1];
      // An empty paragraph has nothing else to carry its bullet.
      style = {last.bold && next.bold, last.italic && next.italic, last.underline && next.underline,
               bullets_[paragraph] && (empty || bullets_[paragraph + 1])};
      ++paragraph;
    }
    add_run(runs, static_cast<int>(i), style);
  }
  return runs;
}

NotesStyle NotesText::style_of(int unit) const {
  return letter(static_cast<std::size_t>(std::clamp(unit, 0, size())), paragraph_at(unit));
}

bool NotesText::bullet_at(int place) const { return bullets_[paragraph_at(place)]; }

bool NotesText::starts_line(int place) const {
  return place <= 0 || text_[static_cast<std::size_t>(place - 1)] == u'\n';
}

bool NotesText::is_empty_line(int place) const {
  const bool ends = place >= size() || text_[static_cast<std::size_t>(place)] == u'\n';
  return starts_line(place) && ends;
}

void NotesText::replace(const TextChange& change, TextView now, const NotesStyle& style) {
  const auto at = letters_.begin() + change.start;
  letters_.insert(letters_.erase(at, at + change.removed),
                  static_cast<std::size_t>(change.inserted), without_bullet(style));
  const std::size_t paragraph = paragraph_at(change.start);
  const std::size_t gone = paragraph_at(change.start + change.removed) - paragraph;
  text_ = now;
  const std::size_t come = paragraph_at(change.start + change.inserted) - paragraph;
  const auto next = bullets_.begin() + static_cast<std::ptrdiff_t>(paragraph) + 1;
  bullets_.insert(bullets_.erase(next, next + static_cast<std::ptrdiff_t>(gone)), come,
                  bullets_[paragraph]);
}

void NotesText::set_style(int start, int length, const NotesStyle& style) {
  const int first = std::clamp(start, 0, size());
  const int end = std::clamp(start + length, first, size());
  std::fill(letters_.begin() + first, letters_.begin() + end, without_bullet(style));
  for (std::size_t i = paragraph_at(first); i <= paragraph_at(end); ++i) bullets_[i] = style.bullet;
}

}  // namespace orvello
