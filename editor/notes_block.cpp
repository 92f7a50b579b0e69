#include "editor/notes_block.h"

#include <algorithm>
#include <cmath>

#include "editor/block_bytes.h"

namespace orvello {
namespace {

constexpr std::string_view kNotesMark("OVN\x01", 4);
constexpr float kSteps = 8;                  // of places and widths, a pixel
constexpr std::int64_t kFarthest = 1 << 18;  // of a place, in steps
constexpr unsigned kMostWidth = 1 << 10, kMostPressure = 255;
constexpr unsigned kHasPressure = 1;

unsigned flags_of(const NotesStyle& style) {
  return (style.bold ? 1u : 0) | (style.italic ? 2u : 0) | (style.underline ? 4u : 0) |
         (style.bullet ? 8u : 0);
}

NotesStyle style_of_flags(unsigned flags) {
  return {(flags & 1) != 0, (flags & 2) != 0, (flags & 4) != 0, (flags & 8) != 0};
}

// Only what a reader takes: in order, within the text, neither empty nor plain.
std::vector<NotesRun> tidy_runs(const NotesContent& content) {
  std::vector<NotesRun> runs;
  const int size = static_cast<int>(content.text.size());
  int from = 0;
  for (const NotesRun& run : content.runs) {
    const int start = std::clamp(run.start, from, size);
    const int length = std::min(run.length - (start - run.start), size - start);
    if (length <= 0 || run.style == NotesStyle()) continue;
    runs.push_back({start, length, run.style});
    from = start + length;
  }
  return runs;
}

std::int64_t in_steps(float pixels) {
  if (!(std::abs(pixels) <= kFarthest / kSteps)) return pixels > 0 ? kFarthest : 0;
  return std::lround(pixels * kSteps);
}

unsigned pressure_byte(float pressure) {
  if (!(pressure >= 0)) return 0;
  return static_cast<unsigned>(std::lround(std::min(pressure, 1.0f) * kMostPressure));
}

std::uint64_t width_in_steps(float width) {
  return static_cast<std::uint64_t>(std::max<std::int64_t>(in_steps(width), 0));
}

void write_stroke(BlockWriter& out, const NotesStroke& stroke) {
  const bool presses = std::any_of(
      stroke.points.begin(), stroke.points.end(),
      [](const StrokePoint& point) { return pressure_byte(point.pressure) != kMostPressure; });
  out.fixed(stroke.color & 0xFFFFFF, 3);
  out.number(
      static_cast<std::uint64_t>(std::clamp<std::int64_t>(in_steps(stroke.width), 1, kMostWidth)));
  out.byte(presses ? kHasPressure : 0);
  out.number(stroke.points.size());
  std::int64_t x = 0, y = 0;
  for (const StrokePoint& point : stroke.points) {
    const std::int64_t next_x = in_steps(point.x), next_y = in_steps(point.y);
    out.signed_number(next_x - x);
    out.signed_number(next_y - y);
    if (presses) out.byte(pressure_byte(point.pressure));
    x = next_x;
    y = next_y;
  }
}

// Moves by a step that was read; false when it leaves every page.
bool move_by(std::int64_t& place, std::int64_t step) {
  if (std::abs(step) > 2 * kFarthest) return false;
  place += step;
  return std::abs(place) <= kFarthest;
}

bool read_stroke(BlockReader& in, NotesStroke& stroke) {
  stroke.color = static_cast<Color>(in.fixed(3));
  const std::uint64_t width = in.number();
  const unsigned flags = in.byte();
  const std::uint64_t points = in.number();
  if (width < 1 || width > kMostWidth || flags > kHasPressure || points == 0) return false;
  stroke.width = static_cast<float>(width) / kSteps;
  std::int64_t x = 0, y = 0;
  for (std::uint64_t i = 0; i < points; ++i) {
    if (!move_by(x, in.signed_number()) || !move_by(y, in.signed_number())) return false;
    const unsigned pressure = flags & kHasPressure ? in.byte() : kMostPressure;
    if (!in.good()) return false;
    stroke.points.push_back({static_cast<float>(x) / kSteps, static_cast<float>(y) / kSteps,
                             static_cast<float>(pressure) / kMostPressure});
  }
  return true;
}

bool read_runs(BlockReader& in, NotesContent& content) {
  std::uint64_t at = 0;
  for (std::uint64_t count = in.number(); count > 0; --count) {
    const std::uint64_t gap = in.number(), length = in.number();
    const unsigned flags = in.byte();
    const std::uint64_t room = content.text.size() - at;
    if (!in.good() || gap > room || length == 0 || length > room - gap || flags == 0 || flags > 15)
      return false;
    content.runs.push_back(
        {static_cast<int>(at + gap), static_cast<int>(length), style_of_flags(flags)});
    at += gap + length;
  }
  return in.good();
}

}  // namespace

std::string notes_block(const NotesContent& content) {
  const std::vector<NotesRun> runs = tidy_runs(content);
  std::vector<const NotesStroke*> strokes;
  for (const NotesStroke& stroke : content.strokes)
    if (!stroke.points.empty()) strokes.push_back(&stroke);
  if (runs.empty() && strokes.empty()) return {};
  BlockWriter out(kNotesMark);
  out.bytes(to_utf8(content.text));
  out.number(runs.size());
  int from = 0;
  for (const NotesRun& run : runs) {
    out.number(static_cast<std::uint64_t>(run.start - from));
    out.number(static_cast<std::uint64_t>(run.length));
    out.byte(flags_of(run.style));
    from = run.start + run.length;
  }
  out.number(strokes.size());
  if (!strokes.empty()) out.number(width_in_steps(content.width));
  for (const NotesStroke* stroke : strokes) write_stroke(out, *stroke);
  return std::move(out).sealed();
}

std::optional<NotesContent> read_notes_block(std::string_view block) {
  auto in = BlockReader::opened(block, kNotesMark);
  if (!in) return std::nullopt;
  NotesContent content;
  content.text = to_utf16(in->bytes());
  if (!read_runs(*in, content)) return std::nullopt;
  std::uint64_t count = in->number();
  const std::uint64_t width = count > 0 ? in->number() : 0;
  if (width > kFarthest) return std::nullopt;
  content.width = static_cast<float>(width) / kSteps;
  for (; count > 0; --count) {
    content.strokes.emplace_back();
    if (!read_stroke(*in, content.strokes.back())) return std::nullopt;
  }
  return in->at_end() ? std::optional(std::move(content)) : std::nullopt;
}

}  // namespace orvello
