#include "cli/settings_document.h"

#include <algorithm>
#include <map>

#include "base/quoted_text.h"
#include "settings/registry_access.h"

namespace orvello {
namespace {

constexpr const char* kValueSections[] = {"settings", "colours", "icons"};
constexpr const char *kSubjects = "subject texts", *kLocations = "location texts",
                     *kCategories = "category colours", *kProfile = "profile";
constexpr std::size_t kMostFaults = 20;
constexpr std::string_view kFlagMark = "flag";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

int section_of(const SettingRow& row) {
  if (row.kind == SettingKind::color) return 1;
  return row.step == LoadStep::display_icons ? 2 : 0;
}

std::string comment_of(const SettingValue& value) {
  return "  ; " + setting_meaning(*value.place.row, value.place.slot);
}

std::string heading(const std::string& name) { return "\n[" + name + "]\n"; }

std::string list_text(const std::string& name, const std::optional<std::vector<Text>>& texts) {
  if (!texts) return {};
  std::string lines = heading(name);
  for (const Text& text : *texts) lines += quoted(text) + "\n";
  return lines;
}

// Reads line after line; a fault is noted with its line, and the next line is read.
class DocumentReader {
 public:
  explicit DocumentReader(const std::string& name) : name_(name) {}

  Result<SettingsDocument> read(std::string_view content) {
    if (content.starts_with(kByteOrderMark)) content.remove_prefix(kByteOrderMark.size());
    while (!content.empty() && faults_ <= kMostFaults) {
      ++line_;
      const std::size_t end = std::min(content.find('\n'), content.size());
      take_line(content.substr(0, end));
      content.remove_prefix(std::min(end + 1, content.size()));
    }
    if (faults_ > 0) return Result<SettingsDocument>::failure(said_);
    return std::move(document_);
  }

 private:
  enum class Section { none, values, subjects, locations, categories, profile };

  void take_line(std::string_view line) {
    if (to_utf8(to_utf16(line)) != line) return fault("this line is not UTF-8");
    rest_ = trimmed(line);
    if (at_end()) return;
    if (rest_.front() == '[') return take_heading();
    switch (section_) {
      case Section::none:
        return fault("a section such as [settings] comes first");
      case Section::values:
        return take_value();
      case Section::categories:
        return take_category();
      case Section::subjects:
        return take_item(*document_.lists.subjects, kLongestText);
      case Section::locations:
        return take_item(*document_.lists.locations, kLongestText);
      case Section::profile:
        break;
    }
    take_item(document_.lists.profiles.back().second, kLabelLength);
  }

  void take_heading() {
    section_ = Section::none;
    rest_.remove_prefix(1);
    const std::size_t name_end = std::min(rest_.find_first_of("]\""), rest_.size());
    const std::string name(trimmed(rest_.substr(0, name_end)));
    rest_.remove_prefix(name_end);
    std::optional<Text> profile;
    if (name.starts_with(kProfile)) {
      profile = take_quoted(rest_);
      if (!profile || name != kProfile) return fault("a profile's section is: [profile \"Name\"]");
    }
    rest_ = trimmed(rest_);
    if (rest_.empty() || rest_.front() != ']') return fault("a section's name ends with ]");
    rest_.remove_prefix(1);
    if (!only_comment()) return;
    if (profile) return begin_profile(std::move(*profile));
    SettingsLists& lists = document_.lists;
    if (std::ranges::find(kValueSections, name) != std::end(kValueSections)) {
      section_ = Section::values;
    } else if (name == kSubjects) {
      begin_list(Section::subjects, lists.subjects);
    } else if (name == kLocations) {
      begin_list(Section::locations, lists.locations);
    } else if (name == kCategories) {
      begin_list(Section::categories, lists.categories);
    } else {
      const std::string near = nearest_word(name, {"settings", "colours", "icons", kSubjects,
                                                   kLocations, kCategories, "profile \"NAME\""});
      fault("there is no section [" + name + "]" +
            (near.empty() ? "" : ": is [" + near + "] meant?"));
    }
  }

  template <typename List>
  void begin_list(Section section, std::optional<List>& list) {
    if (list) return fault("this section stands twice");
    list.emplace();
    seen_.clear();
    section_ = section;
  }

  void begin_profile(Text name) {
    if (name.empty() || name.size() > kProfileNameLength || name == kAllProfile)
      return fault("a profile's name has 1 to 31 characters and is not \"All\"");
    for (const auto& [other, labels] : document_.lists.profiles)
      if (other == name) return fault("this profile stands twice");
    document_.lists.profiles.emplace_back(std::move(name), std::vector<Text>());
    seen_.clear();
    section_ = Section::profile;
  }

  void take_value() {
    const std::size_t sign = rest_.find('=');
    if (sign == std::string_view::npos) return fault("a line is: name = value");
    const std::string_view name = trimmed(rest_.substr(0, sign));
    rest_ = trimmed(rest_.substr(sign + 1));
    const auto place = find_setting_place(name);
    if (!place) return fault(place.reason());
    if (of_this_device(*place->row))
      return fault(name_of(*place) + " is said of one device and is not taken from another");
    const auto value = place->row->kind == SettingKind::text ? take_text_value(*place)
                                                             : parse_setting(*place, take_word());
    if (!value) return fault(value.reason());
    if (!only_comment()) return;
    if (const auto [seen, fresh] = named_.try_emplace(name_of(*place), line_); !fresh)
      return fault(seen->first + " stands in line " + std::to_string(seen->second), " too");
    document_.values.push_back(*value);
  }

  Result<SettingValue> take_text_value(const SettingPlace& place) {
    auto text = take_quoted(rest_);
    if (text) return check_text(place, std::move(*text));
    return Result<SettingValue>::failure(name_of(place) +
                                         " is a text: it stands between quotation marks");
  }

  void take_item(std::vector<Text>& list, std::size_t longest) {
    auto text = take_text();
    if (!text || !only_comment() || !fits(*text, longest)) return;
    list.push_back(std::move(*text));
  }

  void take_category() {
    auto label = take_text();
    if (!label) return;
    rest_ = trimmed(rest_);
    if (rest_.empty() || rest_.front() != '=') return fault("a line is: \"Label\" = #rrggbb");
    rest_ = trimmed(rest_.substr(1));
    const auto color = parse_color(take_word());
    if (!color) return fault("a colour is #rrggbb");
    CategoryProp prop{std::move(*label), static_cast<std::int32_t>(*color), 0};
    if (!rest_.empty() && rest_.front() == ',') {
      rest_ = trimmed(rest_.substr(1));
      const bool named = rest_.starts_with(kFlagMark);
      if (named) rest_ = trimmed(rest_.substr(kFlagMark.size()));
      const auto flag = parse_number(take_word(), INT16_MIN, INT16_MAX);
      if (!named || !flag) return fault("behind the colour stands: flag 0");
      prop.flag = *flag;
    }
    if (!only_comment() || !fits(prop.label, kLabelLength)) return;
    document_.lists.categories->push_back(std::move(prop));
  }

  // New in its list, not empty, and not too long.
  bool fits(const Text& text, std::size_t longest) {
    if (text.empty() || text.size() > longest || text.find(u'\0') != Text::npos)
      return fault("a text here has 1 to " + std::to_string(longest) + " characters"), false;
    if (const auto [seen, fresh] = seen_.try_emplace(text, line_); !fresh)
      return fault("this text stands in line " + std::to_string(seen->second), " too"), false;
    return true;
  }

  std::optional<Text> take_text() {
    rest_ = trimmed(rest_);
    auto text = take_quoted(rest_);
    if (!text) fault("a text stands between quotation marks");
    return text;
  }

  // Up to a blank, a comma or a comment.
  std::string_view take_word() {
    const std::size_t end = std::min(rest_.find_first_of(" \t,;"), rest_.size());
    const std::string_view word = rest_.substr(0, end);
    rest_ = trimmed(rest_.substr(end));
    return word;
  }

  bool at_end() const { return rest_.empty() || rest_.front() == ';'; }

  bool only_comment() {
    rest_ = trimmed(rest_);
    if (!at_end()) fault("nothing is known about: " + std::string(rest_.substr(0, 40)));
    return at_end();
  }

  void fault(const std::string& reason, const char* end = "") {
    if (++faults_ > kMostFaults) {
      said_ += "\n" + name_ + ": and more";
      return;
    }
    said_ +=
        (said_.empty() ? "" : "\n") + name_ + ":" + std::to_string(line_) + ": " + reason + end;
  }

  const std::string& name_;
  SettingsDocument document_;
  Section section_ = Section::none;
  std::string_view rest_;  // of the line
  int line_ = 0;
  std::map<std::string, int> named_;  // where settings stand
  std::map<Text, int> seen_;          // and the texts of this list
  std::string said_;
  std::size_t faults_ = 0;
};

}  // namespace

bool of_this_device(const SettingRow& row) {
  return row.name == u"defaultscalendar" || row.name == u"sendmailcommand";
}

std::string settings_document_text(const SettingsDocument& document) {
  std::string text =
      "; Settings of Orvello, for \"orvello settings import\". Lines may be changed or left out: "
      "what is\n; not here stays as it is, and a list that is here takes the place of the other.\n";
  for (int section = 0; section < 3; ++section) {
    text += heading(kValueSections[section]);
    for (const SettingValue& value : document.values)
      if (section_of(*value.place.row) == section)
        text += name_of(value.place) + " = " + shown_quoted(value) + comment_of(value) + "\n";
  }
  const SettingsLists& lists = document.lists;
  for (const auto& [name, labels] : lists.profiles)
    text += list_text(std::string(kProfile) + " " + quoted(name), labels);
  text += list_text(kSubjects, lists.subjects) + list_text(kLocations, lists.locations);
  if (!lists.categories) return text;
  text += heading(kCategories) + "; flag 1: the colour is not used\n";
  for (const CategoryProp& one : *lists.categories)
    text += quoted(one.label) + " = " + shown_color(static_cast<Color>(one.color)) + ", flag " +
            std::to_string(one.flag) + "\n";
  return text;
}

Result<SettingsDocument> parse_settings_document(std::string_view content,
                                                 const std::string& name) {
  return DocumentReader(name).read(content);
}

}  // namespace orvello
