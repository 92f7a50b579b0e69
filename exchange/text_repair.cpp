#include "exchange/text_repair.h"

#include <algorithm>
#include <optional>

#include "exchange/charset.h"
#include "exchange/content_line.h"

namespace orvello {
namespace {

// One line with its folds.
struct Logical {
  std::vector<std::string_view> pieces;  // physical lines; all but the first begin with a blank
  bool ended = false;                    // by a line break

  std::string unfolded() const {
    std::string whole(pieces.front());
    for (std::size_t i = 1; i < pieces.size(); ++i) whole.append(pieces[i].substr(1));
    return whole;
  }
};

bool next_logical(std::string_view text, std::size_t& at, Logical& line) {
  line.pieces.clear();
  while (at < text.size()) {
    if (!line.pieces.empty() && text[at] != ' ' && text[at] != '\t') break;
    const std::size_t end = std::min(text.find('\n', at), text.size());
    line.pieces.push_back(text.substr(at, end - at));
    line.ended = end < text.size();
    at = end + 1;
  }
  return !line.pieces.empty();
}

enum class Kind { fine, declared, utf8, foreign };

struct Look {
  Kind kind = Kind::fine;
  std::string charset;  // declared
};

Look look_at(const Logical& line) {
  const bool escapes = std::any_of(line.pieces.begin(), line.pieces.end(), [](auto piece) {
    return piece.find('\x1B') != std::string_view::npos;
  });
  if (!escapes && std::all_of(line.pieces.begin(), line.pieces.end(), is_utf8)) return {};
  const std::string whole = line.unfolded();
  Property property;
  std::string charset;
  if (split_property(whole, property)) charset = parameter(property, "CHARSET").value_or("");
  const Utf8Look look = utf8_look(whole);
  if (look.bad_bytes == 0 && !(escapes && look.characters == 0)) return {Kind::utf8, {}};
  const auto decoder = charset.empty() ? std::nullopt : TextDecoder::of(charset);
  if (decoder) return {Kind::declared, charset};
  if (look.bad_bytes == 0) return {};
  return {look.characters >= look.bad_bytes ? Kind::utf8 : Kind::foreign, {}};
}

// The first physical line without its CHARSET parameter, where that stands there as a whole.
std::string without_charset(std::string_view line) {
  Property property;
  if (!split_property(line, property)) return std::string(line);
  const std::string_view all = property.parameters;
  for (std::size_t i = 0; i < all.size();) {
    const std::size_t end = std::min(all.find(';', i + 1), all.size());
    if (equal_ignoring_case(all.substr(i + 1, 8), "CHARSET=")) {
      const auto begin = static_cast<std::size_t>(all.data() - line.data()) + i;
      return std::string(line.substr(0, begin)).append(line.substr(begin + end - i));
    }
    i = end;
  }
  return std::string(line);
}

}  // namespace

bool needs_repair(std::string_view lines) {
  return lines.find('\0') != std::string_view::npos ||
         lines.find('\x1B') != std::string_view::npos || !is_utf8(lines);
}

void collect_foreign(std::string_view lines, std::string& sample) {
  Logical line;
  for (std::size_t at = 0; next_logical(lines, at, line);)
    if (look_at(line).kind == Kind::foreign) sample.append(line.unfolded()).append("\n");
}

LineRepair repair_lines(std::string_view lines, std::string_view guessed_charset) {
  LineRepair repair;
  std::string without_nul;
  if (lines.find('\0') != std::string_view::npos) {
    repair.had_nul = true;
    without_nul = lines;
    std::erase(without_nul, '\0');
    lines = without_nul;
  }
  repair.text.reserve(lines.size() + lines.size() / 8);
  int number = 0;
  Logical line;
  for (std::size_t at = 0; next_logical(lines, at, line);
       number += static_cast<int>(line.pieces.size())) {
    const Look look = look_at(line);
    auto decoder = look.kind == Kind::declared  ? TextDecoder::of(look.charset)
                   : look.kind == Kind::foreign ? TextDecoder::of(guessed_charset)
                                                : std::nullopt;
    if (!decoder) decoder = TextDecoder::of("UTF-8");
    if (look.kind == Kind::foreign && repair.first_foreign < 0) repair.first_foreign = number;
    for (std::size_t i = 0; i < line.pieces.size(); ++i) {
      std::string_view piece = line.pieces[i];
      std::string first;
      if (i > 0) repair.text += '\n';
      if (i == 0 && look.kind == Kind::declared) piece = first = without_charset(piece);
      if (i > 0) repair.text += piece.front(), piece.remove_prefix(1);
      decoder->decode(piece, repair.text);
    }
    decoder->finish(repair.text);
    if (line.ended) repair.text += '\n';
    if (decoder->damaged() > 0 && look.kind != Kind::foreign) repair.damaged.push_back(number);
  }
  return repair;
}

}  // namespace orvello
