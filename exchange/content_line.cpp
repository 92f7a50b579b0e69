#include "exchange/content_line.h"

namespace orvello {
namespace {

constexpr int kDeepestNesting = 16;
constexpr std::size_t kFoldAt = 75;

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

bool is_name_char(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '_' || c == '.';
}

}  // namespace

bool equal_ignoring_case(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (upper(a[i]) != upper(b[i])) return false;
  return true;
}

bool Property::named(std::string_view wanted) const { return equal_ignoring_case(name, wanted); }
bool Component::named(std::string_view wanted) const { return equal_ignoring_case(name, wanted); }

const Property* Component::find(std::string_view wanted) const {
  for (const Property& property : properties)
    if (property.named(wanted)) return &property;
  return nullptr;
}

bool next_line(std::string_view text, std::size_t& at, std::string_view& line) {
  if (at >= text.size()) return false;
  std::size_t end = text.find('\n', at);
  if (end == std::string_view::npos) end = text.size();
  line = text.substr(at, end - at);
  at = end + 1;
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return true;
}

void append_lines(std::string& out, std::string_view text) {
  std::size_t at = 0;
  for (std::string_view line; next_line(text, at, line);) out.append(line).append("\r\n");
}

// Where the value begins really: a TZID with an unquoted colon, "TZID=(UTC+01:00) Berlin:20260101",
// would lose its tail to a value that is no date then.
static std::size_t end_of_zone_name(std::string_view line, std::size_t parameters,
                                    std::size_t colon) {
  const std::size_t last = line.rfind(':');
  if (last == colon || last + 8 >= line.size()) return colon;
  for (std::size_t i = last + 1; i <= last + 8; ++i)
    if (line[i] < '0' || line[i] > '9') return colon;
  const std::string_view names = line.substr(parameters, colon - parameters);
  for (std::size_t i = 0; i + 6 <= names.size(); ++i)
    if (names[i] == ';' && equal_ignoring_case(names.substr(i + 1, 5), "TZID=")) return last;
  return colon;
}

bool split_property(std::string_view line, Property& property) {
  std::size_t i = 0;
  while (i < line.size() && is_name_char(line[i])) ++i;
  if (i == 0 || i == line.size() || (line[i] != ':' && line[i] != ';')) return false;
  property.name = line.substr(0, i);
  const std::size_t parameters = i;
  for (bool quoted = false; i < line.size(); ++i) {
    if (line[i] == '"') quoted = !quoted;
    if (line[i] == ':' && !quoted) break;
  }
  // A quote that never closes would swallow the value: then the first colon counts.
  if (i == line.size()) i = line.find(':', parameters);
  if (i == std::string_view::npos) return false;
  i = end_of_zone_name(line, parameters, i);
  property.parameters = line.substr(parameters, i - parameters);
  property.value = line.substr(i + 1);
  return true;
}

struct ParsedComponent::Reader {
  std::string_view text;
  std::deque<std::string>& unfolded;
  std::size_t used = 0;
  std::size_t at = 0;
  int line = 0;

  // One unfolded line; `raw` is all of its physical lines.
  bool logical(std::string_view& whole, std::string_view& raw, int& first) {
    const std::size_t begin = at;
    first = line;
    if (!next_line(text, at, whole)) return false;
    ++line;
    const char* end = whole.data() + whole.size();
    std::string* joined = nullptr;
    for (std::size_t ahead = at; at < text.size(); at = ahead, ++line) {
      std::string_view more;
      if ((text[at] != ' ' && text[at] != '\t') || !next_line(text, ahead, more)) break;
      if (!joined) {
        if (used == unfolded.size()) unfolded.emplace_back();
        joined = &unfolded[used++];
        joined->assign(whole);
      }
      joined->append(more.substr(1));
      end = more.data() + more.size();
    }
    if (joined) whole = *joined;
    raw = text.substr(begin, static_cast<std::size_t>(end - text.data()) - begin);
    return true;
  }

  bool read(Component& component, int depth) {
    std::string_view whole, raw;
    int first = 0;
    while (logical(whole, raw, first)) {
      Property property;
      property.raw = raw;
      property.line = first;
      if (trimmed(whole).empty()) continue;
      if (!split_property(whole, property)) {
        component.garbage.push_back(first);
      } else if (property.named("END")) {
        const char* begin = component.raw.data();
        component.raw = {begin, static_cast<std::size_t>(raw.data() + raw.size() - begin)};
        return equal_ignoring_case(trimmed(property.value), component.name);
      } else if (property.named("BEGIN")) {
        if (depth == kDeepestNesting) return false;
        Component& child = component.children.emplace_back();
        child.name = trimmed(property.value);
        child.raw = raw;
        child.line = first;
        if (!read(child, depth + 1)) return false;
      } else {
        component.properties.push_back(property);
      }
    }
    return false;
  }
};

bool ParsedComponent::parse(std::string_view text, int first_line) {
  root_.properties.clear();
  root_.children.clear();
  root_.garbage.clear();
  Reader reader{text, unfolded_, 0, 0, first_line};
  std::string_view whole, raw;
  Property begin;
  int first = 0;
  if (!reader.logical(whole, raw, first) || !split_property(whole, begin) || !begin.named("BEGIN"))
    return false;
  root_.name = trimmed(begin.value);
  root_.raw = raw;
  root_.line = first;
  return reader.read(root_, 0);
}

std::optional<std::string> parameter(const Property& property, std::string_view wanted) {
  const std::string_view all = property.parameters;
  for (std::size_t i = 0; i < all.size();) {
    std::size_t end = i + 1;
    // Some programs write a parameter as they do a text, with "\;" in it.
    for (bool quoted = false;
         end < all.size() && (quoted || all[end] != ';' || all[end - 1] == '\\'); ++end)
      if (all[end] == '"') quoted = !quoted;
    const std::string_view one = all.substr(i + 1, end - i - 1);
    i = end;
    const std::size_t equals = one.find('=');
    if (equals == std::string_view::npos) {
      // vCalendar 1.0 writes a bare value: QUOTED-PRINTABLE for ENCODING=QUOTED-PRINTABLE.
      if (equal_ignoring_case(trimmed(one), wanted)) return std::string();
      continue;
    }
    if (!equal_ignoring_case(trimmed(one.substr(0, equals)), wanted)) continue;
    std::string value;
    const std::string_view coded = trimmed(one.substr(equals + 1));
    for (std::size_t k = 0; k < coded.size(); ++k) {
      if (coded[k] == '"') continue;
      const char next = coded[k] == '^' && k + 1 < coded.size() ? coded[k + 1] : '\0';
      if (next == 'n' || next == '^' || next == '\'') {
        value += next == 'n' ? '\n' : next == '^' ? '^' : '"';
        ++k;
      } else {
        value += coded[k];
      }
    }
    return value;
  }
  return std::nullopt;
}

std::vector<std::string_view> split_values(std::string_view value, char separator) {
  std::vector<std::string_view> pieces;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] == '\\') {
      ++i;
    } else if (value[i] == separator) {
      pieces.push_back(value.substr(begin, i - begin));
      begin = i + 1;
    }
  }
  pieces.push_back(value.substr(begin));
  return pieces;
}

std::string unescape_text(std::string_view value) {
  std::string text;
  text.reserve(value.size());
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\' || i + 1 == value.size()) {
      text += value[i];
    } else {
      const char next = value[++i];
      text += next == 'n' || next == 'N' ? '\n' : next;
    }
  }
  return text;
}

std::string escape_text(std::string_view text) {
  std::string value;
  value.reserve(text.size() + 8);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r') {  // the editor's line ends are \r\n; a file has one mark for both
      if (i + 1 < text.size() && text[i + 1] == '\n') continue;
      value += "\\n";
    } else if (c == '\n') {
      value += "\\n";
    } else if (c == '\\' || c == ';' || c == ',') {
      value += '\\';
      value += c;
    } else if (static_cast<unsigned char>(c) >= ' ' || c == '\t') {
      value += c;
    }
  }
  return value;
}

std::string parameter_text(std::string_view value) {
  std::string coded;
  bool quote = false;
  for (const char c : value) {
    if (c == '"')
      coded += "^'";
    else if (c == '^')
      coded += "^^";
    else if (c == '\n')
      coded += "^n";
    else if (static_cast<unsigned char>(c) >= ' ')
      coded += c;
    quote = quote || c == ':' || c == ';' || c == ',';
  }
  return quote ? '"' + coded + '"' : coded;
}

void append_folded(std::string& out, std::string_view line) {
  std::size_t room = kFoldAt;
  while (line.size() > room) {
    std::size_t length = room;
    while (length > 1 && (static_cast<unsigned char>(line[length]) & 0xC0) == 0x80) --length;
    out.append(line.substr(0, length)).append("\r\n ");
    line.remove_prefix(length);
    room = kFoldAt - 1;  // the space counts
  }
  out.append(line).append("\r\n");
}

std::string folded(std::string_view line) {
  std::string out;
  append_folded(out, line);
  return out;
}

}  // namespace orvello
