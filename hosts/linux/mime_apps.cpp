#include "hosts/linux/mime_apps.h"

#include <algorithm>

namespace orvello {
namespace {

std::string_view trimmed_line(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") + 1 - first);
}

std::vector<std::string> lines_of(std::string_view list) {
  std::vector<std::string> lines;
  while (!list.empty()) {
    const std::size_t end = std::min(list.find('\n'), list.size());
    lines.emplace_back(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return lines;
}

std::string joined(const std::vector<std::string>& lines) {
  std::string list;
  for (const std::string& line : lines) list += line + '\n';
  return list;
}

// Where something of a group stands; -1: nowhere.
struct TypePlace {
  int end_of_group = -1;  // the line behind its last one that says something
  int line = -1;          // of the type
};

TypePlace find_type(const std::vector<std::string>& lines, std::string_view group,
                    std::string_view type) {
  TypePlace place;
  bool inside = false;
  for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
    const std::string_view line = trimmed_line(lines[static_cast<std::size_t>(i)]);
    if (!line.empty() && line.front() == '[') inside = line == "[" + std::string(group) + "]";
    if (!inside || line.empty()) continue;
    place.end_of_group = i + 1;
    if (place.line < 0 && trimmed_line(line.substr(0, line.find('='))) == type &&
        line.find('=') != std::string_view::npos)
      place.line = i;
  }
  return place;
}

std::vector<std::string> values_of(std::string_view line) {
  std::vector<std::string> values;
  line.remove_prefix(line.find('=') + 1);
  while (!line.empty()) {
    const std::size_t end = std::min(line.find(';'), line.size());
    if (const auto value = trimmed_line(line.substr(0, end)); !value.empty())
      values.emplace_back(value);
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  return values;
}

std::string line_of(std::string_view type, const std::vector<std::string>& values) {
  std::string line = std::string(type) + "=";
  for (const std::string& value : values) line += value + ";";
  return line;
}

}  // namespace

std::vector<std::string> applications_for(std::string_view list, std::string_view group,
                                          std::string_view type) {
  const auto lines = lines_of(list);
  const TypePlace place = find_type(lines, group, type);
  if (place.line < 0) return {};
  return values_of(lines[static_cast<std::size_t>(place.line)]);
}

std::string with_first_application(std::string_view list, std::string_view group,
                                   std::string_view type, std::string_view application) {
  auto lines = lines_of(list);
  const TypePlace place = find_type(lines, group, type);
  auto values = applications_for(list, group, type);
  std::erase(values, application);
  values.emplace(values.begin(), application);
  const std::string line = line_of(type, values);
  if (place.line >= 0) {
    lines[static_cast<std::size_t>(place.line)] = line;
  } else if (place.end_of_group >= 0) {
    lines.insert(lines.begin() + place.end_of_group, line);
  } else {
    if (!lines.empty()) lines.emplace_back();
    lines.push_back("[" + std::string(group) + "]");
    lines.push_back(line);
  }
  return joined(lines);
}

std::string without_application(std::string_view list, std::string_view group,
                                std::string_view type, std::string_view application) {
  auto lines = lines_of(list);
  const TypePlace place = find_type(lines, group, type);
  auto values = applications_for(list, group, type);
  if (std::erase(values, application) == 0) return std::string(list);
  auto at = lines.begin() + place.line;
  if (!values.empty()) {
    *at = line_of(type, values);
    return joined(lines);
  }
  at = lines.erase(at);
  // A group that says nothing any more goes, too, with the blank line before it.
  const bool last = place.end_of_group == place.line + 1;
  if (!last || at == lines.begin() || !trimmed_line(*(at - 1)).starts_with('['))
    return joined(lines);
  at = lines.erase(at - 1);
  if (at != lines.begin() && trimmed_line(*(at - 1)).empty()) lines.erase(at - 1);
  return joined(lines);
}

}  // namespace orvello
