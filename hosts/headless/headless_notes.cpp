#include "hosts/headless/headless_notes.h"

#include <algorithm>
#include <utility>

namespace orvello {
namespace {

constexpr float kNear = 4;  // the eraser's half width
constexpr float kPageWidth = 240;

// A style for each unit of the text, and back.
std::vector<NotesStyle> spread_out(const NotesContent& content) {
  std::vector<NotesStyle> styles(content.text.size());
  for (const NotesRun& run : content.runs)
    for (int i = run.start; i < run.start + run.length; ++i)
      styles[static_cast<std::size_t>(i)] = run.style;
  return styles;
}

std::vector<NotesRun> gathered(const std::vector<NotesStyle>& styles) {
  std::vector<NotesRun> runs;
  for (std::size_t i = 0; i < styles.size(); ++i) {
    if (styles[i] == NotesStyle()) continue;
    const int at = static_cast<int>(i);
    if (!runs.empty() && runs.back().start + runs.back().length == at &&
        runs.back().style == styles[i])
      ++runs.back().length;
    else
      runs.push_back({at, 1, styles[i]});
  }
  return runs;
}

// Without runs that lie outside of the text.
NotesContent tidied(NotesContent content) {
  const int size = static_cast<int>(content.text.size());
  for (NotesRun& run : content.runs) {
    run.start = std::clamp(run.start, 0, size);
    run.length = std::clamp(run.length, 0, size - run.start);
  }
  content.runs = gathered(spread_out(content));
  if (content.strokes.empty()) content.width = 0;
  return content;
}

}  // namespace

void HeadlessNotes::set_content(const NotesContent& content) {
  now_ = tidied(content);
  before_.clear();
  after_.clear();
  typing_ = {};
  select(static_cast<int>(now_.text.size()), 0);
}

NotesStyle HeadlessNotes::style() const {
  if (length_ == 0) return typing_;
  return spread_out(now_)[static_cast<std::size_t>(start_)];
}

void HeadlessNotes::set_style(const NotesStyle& style) {
  typing_ = style;
  const NotesContent before = now_;
  std::vector<NotesStyle> styles = spread_out(now_);
  // Bullets are of whole paragraphs.
  const auto is_end = [&](int at) { return now_.text[static_cast<std::size_t>(at)] == u'\n'; };
  int first = start_, last = start_ + length_;
  const int size = static_cast<int>(styles.size());
  while (first > 0 && !is_end(first - 1)) --first;
  while (last < size && !is_end(last)) ++last;
  for (int i = first; i < last; ++i) styles[static_cast<std::size_t>(i)].bullet = style.bullet;
  for (int i = start_; i < start_ + length_; ++i) styles[static_cast<std::size_t>(i)] = style;
  now_.runs = gathered(styles);
  if (now_ == before) return;
  before_.push_back(before);
  after_.clear();
}

bool HeadlessNotes::select(int start, int length) {
  const NotesStyle before = style();
  const int size = static_cast<int>(now_.text.size());
  start_ = std::clamp(start, 0, size);
  length_ = std::clamp(length, 0, size - start_);
  // Letters go on as the one before, in the style of their own paragraph.
  if (length_ > 0 || start_ > 0)
    typing_ = spread_out(now_)[static_cast<std::size_t>(length_ > 0 ? start_ : start_ - 1)];
  return style() != before;
}

bool HeadlessNotes::ends_list(TextView text) const {
  const bool at_line = start_ == 0 || now_.text[static_cast<std::size_t>(start_ - 1)] == u'\n';
  const bool line_ends = start_ == static_cast<int>(now_.text.size()) ||
                         now_.text[static_cast<std::size_t>(start_)] == u'\n';
  return text == u"\n" && length_ == 0 && typing_.bullet && at_line && line_ends;
}

void HeadlessNotes::keep() {
  before_.push_back(now_);
  after_.clear();
}

bool HeadlessNotes::type(TextView text) {
  if (limit_ > 0) {
    const auto kept = now_.text.size() - static_cast<std::size_t>(length_);
    const auto limit = static_cast<std::size_t>(limit_);
    text = TextView(text).substr(0, cut(text, limit > kept ? limit - kept : 0).size());
  }
  if (text.empty() && length_ == 0) return false;
  if (ends_list(text)) {
    NotesStyle plain = typing_;
    plain.bullet = false;
    return set_style(plain), true;
  }
  keep();
  std::vector<NotesStyle> styles = spread_out(now_);
  const auto at = styles.begin() + start_;
  styles.insert(styles.erase(at, at + length_), text.size(), typing_);
  now_.text.replace(static_cast<std::size_t>(start_), static_cast<std::size_t>(length_), text);
  now_.runs = gathered(styles);
  start_ += static_cast<int>(text.size());
  length_ = 0;
  return true;
}

bool HeadlessNotes::draw(const std::vector<Point>& stroke) {
  if (tool_ == NotesTool::eraser) return erase(stroke);
  if (tool_ == NotesTool::text || stroke.empty()) return false;
  keep();
  NotesStroke drawn;
  for (const Point& point : stroke)
    drawn.points.push_back({static_cast<float>(point.x), static_cast<float>(point.y), 1});
  if (now_.strokes.empty()) now_.width = kPageWidth;
  now_.strokes.push_back(std::move(drawn));
  return true;
}

bool HeadlessNotes::erase(const std::vector<Point>& stroke) {
  const auto touched = [&](const NotesStroke& drawn) {
    return std::any_of(stroke.begin(), stroke.end(), [&](Point at) {
      return std::any_of(drawn.points.begin(), drawn.points.end(), [&](const StrokePoint& point) {
        const float dx = point.x - static_cast<float>(at.x);
        const float dy = point.y - static_cast<float>(at.y);
        return dx * dx + dy * dy <= kNear * kNear;
      });
    });
  };
  if (std::none_of(now_.strokes.begin(), now_.strokes.end(), touched)) return false;
  keep();
  now_.strokes.erase(std::remove_if(now_.strokes.begin(), now_.strokes.end(), touched),
                     now_.strokes.end());
  if (now_.strokes.empty()) now_.width = 0;
  return true;
}

bool HeadlessNotes::step(std::vector<NotesContent>& from, std::vector<NotesContent>& to) {
  if (from.empty()) return false;
  to.push_back(std::exchange(now_, std::move(from.back())));
  from.pop_back();
  select(static_cast<int>(now_.text.size()), 0);
  return true;
}

}  // namespace orvello
