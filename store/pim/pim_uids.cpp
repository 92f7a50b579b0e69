#include "store/pim/pim_uids.h"

#include <cerrno>
#include <charconv>
#include <utility>

#include "base/hash.h"
#include "files/file_lock.h"
#include "files/input_file.h"
#include "files/replace_file.h"
#include "files/system_files.h"
#include "store/record_rules.h"

namespace orvello {
namespace {

constexpr std::uint64_t kLargestUidFile = 64 << 20;
constexpr std::size_t kDeviceDigits = 16, kSubjectDigits = 8;
constexpr std::string_view kMadeHead = "device-", kMadeTail = "@orvello", kNameLine = "device ";

// A line holds a UID, whatever is in it.
std::string line_of_uid(std::string_view uid) {
  std::string line;
  for (const char c : uid) {
    const auto code = static_cast<unsigned char>(c);
    if (code >= ' ' && c != '%')
      line += c;
    else
      line += {'%', "0123456789ABCDEF"[code >> 4], "0123456789ABCDEF"[code & 15]};
  }
  return line;
}

std::string uid_of_line(std::string_view line) {
  std::string uid;
  for (std::size_t i = 0; i < line.size(); ++i) {
    unsigned code = 0;
    const char* const digits = line.data() + i + 1;
    if (line[i] == '%' && i + 2 < line.size() &&
        std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
      uid += static_cast<char>(code);
      i += 2;
    } else {
      uid += line[i];
    }
  }
  return uid;
}

// The next word of a line; the rest stays.
std::string_view next_word(std::string_view& line) {
  const std::size_t end = line.find(' ');
  const std::string_view word = line.substr(0, end);
  line.remove_prefix(end == line.npos ? line.size() : end + 1);
  return word;
}

template <typename Number>
bool read_digits(std::string_view word, Number& number) {
  const char* const end = word.data() + word.size();
  return !word.empty() && std::from_chars(word.data(), end, number).ptr == end;
}

}  // namespace

PimUids::PimUids(std::string file)
    : file_(std::move(file)), device_(made_up_uid().substr(0, kDeviceDigits)) {}

PimUids::Mark PimUids::mark_of(LocalSeconds start, TextView subject) {
  return {start, StableHash().add(to_utf8(subject)).text(kSubjectDigits)};
}

std::string PimUids::made_of(std::int32_t number) const {
  return std::string(kMadeHead) + std::to_string(number) + "-" + device_ + std::string(kMadeTail);
}

std::string PimUids::of(std::int32_t number) const {
  const auto found = told_.find(number);
  return found == told_.end() ? made_of(number) : found->second.uid;
}

std::int32_t PimUids::number_of(std::string_view uid) const {
  const auto found = numbers_.find(uid);
  if (found != numbers_.end()) return found->second;
  std::int32_t number = 0;
  if (uid.starts_with(kMadeHead))
    std::from_chars(uid.data() + kMadeHead.size(), uid.data() + uid.size(), number);
  return uid == made_of(number) && told_.count(number) == 0 ? number : 0;
}

void PimUids::put(std::int32_t number, Told told) {
  if (const auto other = numbers_.find(told.uid); other != numbers_.end()) forget(other->second);
  forget(number);
  changed_.insert(number);
  numbers_[told.uid] = number;
  told_[number] = std::move(told);
}

void PimUids::name(std::int32_t number, const std::string& uid, const Mark& mark) {
  const auto known = told_.find(number);
  const Told told{uid, mark};
  if (known == told_.end() ? uid != made_of(number) : known->second != told) put(number, told);
}

void PimUids::forget(std::int32_t number) {
  const auto found = told_.find(number);
  if (found == told_.end()) return;
  changed_.insert(number);
  const auto known = numbers_.find(found->second.uid);
  if (known != numbers_.end() && known->second == number) numbers_.erase(known);
  told_.erase(found);
}

bool PimUids::meets(std::int32_t number, const Mark& seen) {
  const auto found = told_.find(number);
  if (found == told_.end()) return true;
  const Mark& kept = found->second.mark;
  const bool same = kept.start == seen.start || kept.subject == seen.subject;
  if (!same) forget(number);
  return same;
}

// A line that says nothing is passed over: what it was about gets a UID made of its number.
void PimUids::take(const std::string& text) {
  for (std::string_view rest = text; !rest.empty();) {
    const std::size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
    if (line.starts_with(kNameLine)) {
      device_ = line.substr(kNameLine.size());
      unnamed_ = false;
      continue;
    }
    std::int32_t number = 0;
    std::int64_t start = 0;
    if (!read_digits(next_word(line), number) || !read_digits(next_word(line), start)) continue;
    const std::string_view subject = next_word(line);
    if (!line.empty())
      put(number, {uid_of_line(line), {LocalSeconds(start), std::string(subject)}});
  }
}

std::string PimUids::text() const {
  std::string text = std::string(kNameLine) + device_ + "\n";
  for (const auto& [number, told] : told_)
    text += std::to_string(number) + " " + std::to_string(told.mark.start.count()) + " " +
            told.mark.subject + " " + line_of_uid(told.uid) + "\n";
  return text;
}

bool PimUids::read() {
  problem_.clear();
  const auto status = file_.empty() ? std::nullopt : status_of_file(file_);
  if (file_.empty() || (!status && errno == ENOENT)) return true;
  if (status && status->changed == time_ && status->size == size_ && !unnamed_) return true;
  const auto read = read_whole_file(file_, kLargestUidFile);
  if (!read) return problem_ = read.reason(), false;
  const auto own = std::exchange(told_, {});
  const auto changed = std::exchange(changed_, {});
  numbers_.clear();
  take(*read);
  changed_.clear();
  for (const std::int32_t number : changed) {
    const auto found = own.find(number);
    if (found != own.end())
      put(number, found->second);
    else
      forget(number);
  }
  changed_ = changed;
  size_ = status ? status->size : 0;
  time_ = status ? status->changed : 0;
  return true;
}

bool PimUids::write() {
  if (file_.empty() || (changed_.empty() && !unnamed_)) return true;
  const FileLock lock(file_ + ".lock", FileHold::alone);
  if (!lock.granted()) return problem_ = file_ + " is just being written.", false;
  if (!read()) return false;
  if (const auto written = replace_file(file_, text()); !written)
    return problem_ = written.reason(), false;
  unnamed_ = false;
  changed_.clear();
  time_ = 0;  // which it has now is seen at the next look
  return true;
}

}  // namespace orvello
