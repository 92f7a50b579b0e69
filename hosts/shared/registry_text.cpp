#include "hosts/shared/registry_text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "base/quoted_text.h"

namespace orvello {
namespace {

constexpr std::string_view kNumberMark = "dword:";

Text full_path(RegistryRoot root, TextView path) {
  Text full = root == RegistryRoot::classes_root ? u"HKEY_CLASSES_ROOT" : u"HKEY_LOCAL_MACHINE";
  return full.append(u"\\").append(path);
}

std::optional<std::uint32_t> hexadecimal(std::string_view digits) {
  std::uint32_t value = 0;
  const auto [end, fault] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (fault != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
  return value;
}

bool is_plain_name(TextView name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           c == u'_';
  });
}

std::string value_line(TextView name, const RegistryValue& value) {
  std::string line = is_plain_name(name) ? to_utf8(name) : quoted(name);
  line += '=';
  if (value.is_text) return line + quoted(value.text);
  char digits[16];
  std::snprintf(digits, sizeof digits, "%08x", value.number);
  return line.append(kNumberMark).append(digits);
}

std::optional<Text> take_name(std::string_view& rest) {
  if (!rest.empty() && rest.front() == '"') return take_quoted(rest);
  const std::size_t sign = rest.find('=');
  if (sign == std::string_view::npos) return std::nullopt;
  const Text name = to_utf16(rest.substr(0, sign));
  rest.remove_prefix(sign);
  return is_plain_name(name) ? std::optional(name) : std::nullopt;
}

std::optional<RegistryValue> parse_value(std::string_view rest) {
  if (rest.substr(0, kNumberMark.size()) == kNumberMark) {
    const auto number = hexadecimal(rest.substr(kNumberMark.size()));
    if (!number) return std::nullopt;
    return RegistryValue{false, *number, {}};
  }
  const auto text = take_quoted(rest);
  if (!text || !rest.empty()) return std::nullopt;
  return RegistryValue{true, 0, *text};
}

}  // namespace

RegistryText::Line RegistryText::parse_line(std::string raw, const Text& key) {
  Line line{Line::Kind::other, std::move(raw), key, {}, {}};
  std::string_view rest = line.raw;
  while (!rest.empty() && (rest.back() == '\r' || rest.back() == ' ')) rest.remove_suffix(1);
  if (!rest.empty() && rest.front() == '[') {
    // A damaged heading ends the key before it too: what follows belongs to neither.
    line.kind = Line::Kind::key;
    line.key = rest.back() == ']' ? upper_ascii(to_utf16(rest.substr(1, rest.size() - 2))) : Text();
    return line;
  }
  const auto name = take_name(rest);
  if (!name || rest.empty() || rest.front() != '=') return line;
  rest.remove_prefix(1);
  if (const auto value = parse_value(rest)) {
    line.kind = Line::Kind::value;
    line.name = upper_ascii(*name);
    line.value = *value;
  }
  return line;
}

RegistryText RegistryText::parse(const std::string& content) {
  RegistryText parsed;
  Text key;
  for (std::size_t from = 0; from < content.size();) {
    const std::size_t end = std::min(content.find('\n', from), content.size());
    parsed.lines_.push_back(parse_line(content.substr(from, end - from), key));
    key = parsed.lines_.back().key;
    from = end + 1;
  }
  return parsed;
}

std::string RegistryText::content() const {
  std::string content;
  for (const Line& line : lines_) content += line.raw + '\n';
  return content;
}

bool RegistryText::has_key(RegistryRoot root, TextView path) const {
  const Text key = upper_ascii(full_path(root, path));
  return std::any_of(lines_.begin(), lines_.end(), [&](const Line& line) {
    return line.kind == Line::Kind::key && line.key == key;
  });
}

std::optional<RegistryValue> RegistryText::query(RegistryRoot root, TextView path,
                                                 TextView name) const {
  const Text key = upper_ascii(full_path(root, path)), wanted = upper_ascii(name);
  for (auto line = lines_.rbegin(); line != lines_.rend(); ++line)
    if (line->kind == Line::Kind::value && line->key == key && line->name == wanted)
      return line->value;
  return std::nullopt;
}

void RegistryText::add_key(RegistryRoot root, TextView path) {
  if (has_key(root, path)) return;
  if (!lines_.empty() && !lines_.back().raw.empty())
    lines_.push_back({Line::Kind::other, "", lines_.back().key, {}, {}});
  const Text full = full_path(root, path);
  lines_.push_back({Line::Kind::key, "[" + to_utf8(full) + "]", upper_ascii(full), {}, {}});
}

void RegistryText::set(RegistryRoot root, TextView path, TextView name,
                       const RegistryValue& value) {
  add_key(root, path);
  const Text key = upper_ascii(full_path(root, path)), wanted = upper_ascii(name);
  const Line made{Line::Kind::value, value_line(name, value), key, wanted, value};
  std::size_t behind = 0;  // the place after the key's last line that says something
  for (std::size_t i = lines_.size(); i-- > 0;) {
    if (lines_[i].key != key) continue;
    if (lines_[i].kind == Line::Kind::value && lines_[i].name == wanted) {
      lines_[i] = made;
      return;
    }
    if (behind == 0 && !lines_[i].raw.empty()) behind = i + 1;
  }
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(behind), made);
}

}  // namespace orvello
