#include "hosts/shared/saved_files.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <vector>

#include "files/file_reasons.h"
#include "files/replace_file.h"

namespace orvello {
namespace {

constexpr std::size_t kLongestFileName = 60;
constexpr int kMostSavedNames = 10000;
constexpr std::chrono::hours kKeptForMail{24 * 7};

// The program that starts mail programs writes the path into an argument that each of them takes
// apart in its own way, at commas, quotes or percent signs: of ASCII only what nobody gives a
// meaning. Nor what cannot be seen, or turns the text around it.
bool is_plain_in_names(char16_t unit) {
  if (unit < 0x80)
    return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= u'a' && unit <= u'z') || TextView(u" ._-").find(unit) != TextView::npos;
  const auto within = [unit](char16_t first, char16_t last) {
    return unit >= first && unit <= last;
  };
  return !within(0x80, 0xA0) && !within(0x200B, 0x200F) && !within(0x2028, 0x202F) &&
         !within(0x2060, 0x206F) && unit != 0xFEFF;
}

// Some systems find a device under these names in every folder, whatever ending they have.
bool names_a_device(TextView name) {
  const Text head = upper_ascii(trimmed(name.substr(0, name.find(u'.'))));
  for (const TextView device : {u"CON", u"PRN", u"AUX", u"NUL"})
    if (head == device) return true;
  return head.size() == 4 && (head.starts_with(u"COM") || head.starts_with(u"LPT")) &&
         head[3] >= u'0' && head[3] <= u'9';
}

}  // namespace

std::string safe_file_name(TextView subject) {
  Text name;
  for (const char16_t unit : subject) {
    const char16_t safe = is_plain_in_names(unit) ? unit : u' ';
    // No blanks at the start, none twice; a first dot would hide the file, a dash be an option.
    const bool leading = name.empty() && (safe == u' ' || safe == u'.' || safe == u'-');
    if (leading || (safe == u' ' && name.back() == u' ')) continue;
    name += safe;
  }
  if (name.size() > kLongestFileName) {
    const bool splits_a_pair = name[kLongestFileName] >= 0xDC00 && name[kLongestFileName] < 0xE000;
    name.resize(splits_a_pair ? kLongestFileName - 1 : kLongestFileName);
  }
  while (!name.empty() && (name.back() == u' ' || name.back() == u'.')) name.pop_back();
  if (names_a_device(name)) return "_" + to_utf8(name);
  return name.empty() ? "appointment" : to_utf8(name);
}

Result<std::string> save_under_free_name(const std::string& folder, const std::string& name,
                                         const std::string& ending, const std::string& content) {
  const auto failure = [&folder](int error) {
    return Result<std::string>::failure(folder + ": " + reason_of(error));
  };
  if (!make_folders(folder)) return failure(errno);
  for (int number = 1; number < kMostSavedNames; ++number) {
    const std::string suffix = number > 1 ? "-" + std::to_string(number) : "";
    const std::string path = path_in(folder, name + suffix + ending);
    const auto created = create_whole_file(path, content);
    if (!created) return Result<std::string>::failure(created.reason());
    if (*created) return path;
  }
  return failure(EEXIST);
}

void forget_old_files(const std::string& folder) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  for (const auto& name : names_in_folder(folder).value_or(std::vector<std::string>())) {
    const std::string path = path_in(folder, name);
    const auto status = status_of_file(path, FileLinks::look_at);
    if (status && status->kind == FileKind::file &&
        now - std::chrono::nanoseconds(status->changed) > kKeptForMail)
      remove_file(path);
  }
}

}  // namespace orvello
