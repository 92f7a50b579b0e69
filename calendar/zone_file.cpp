#include "calendar/zone_file.h"

#include <algorithm>
#include <map>
#include <utility>

#include "calendar/posix_zone.h"

namespace orvello {
namespace {

constexpr UtcSeconds kUnixEpoch = utc_at_offset(midnight_of(Day(25569)), 0);
// Some writers begin with a change at the beginning of the world.
constexpr UtcSeconds kEarliest = utc_at_offset(midnight_of(Day(-109205)), 0);  // 1 January 1601
constexpr std::size_t kHeader = 44;

class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
  std::int64_t number(std::size_t at, std::size_t size) const {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
      value = value << 8 | static_cast<unsigned char>(bytes_[at + i]);
    if (size == 4) return static_cast<std::int32_t>(value);
    return static_cast<std::int64_t>(value);
  }

 private:
  std::string_view bytes_;
};

// What a header counts, and where its data is.
struct Block {
  std::size_t times = 0, types = 0, leaps = 0;
  std::size_t body = 0, end = 0;
  std::size_t time_size = 0;
};

std::optional<Block> block_at(std::string_view file, std::size_t at, std::size_t time_size) {
  constexpr std::int64_t kMost = 1 << 20;
  if (file.size() < at + kHeader || file.substr(at, 4) != "TZif") return std::nullopt;
  const Bytes bytes(file);
  std::size_t counts[6];
  for (std::size_t i = 0; i < 6; ++i) {
    const std::int64_t count = bytes.number(at + 20 + 4 * i, 4);
    if (count < 0 || count > kMost) return std::nullopt;
    counts[i] = static_cast<std::size_t>(count);
  }
  Block block;
  block.leaps = counts[2], block.times = counts[3], block.types = counts[4];
  block.time_size = time_size;
  block.body = at + kHeader;
  block.end = block.body + block.times * (time_size + 1) + block.types * 6 + counts[5] +
              block.leaps * (time_size + 4) + counts[1] + counts[0];
  if (block.types == 0 || block.end > file.size()) return std::nullopt;
  return block;
}

struct History {
  int first_offset = 0;
  std::vector<ZoneOnset> onsets;
};

std::optional<History> read_history(std::string_view file, const Block& block) {
  const Bytes bytes(file);
  const std::size_t kinds = block.body + block.times * block.time_size;
  const std::size_t types = kinds + block.times;
  const auto offset_of = [&](std::size_t type) {
    return static_cast<int>(bytes.number(types + 6 * type, 4));
  };
  History history;
  history.first_offset = offset_of(0);
  int offset = history.first_offset;
  for (std::size_t i = 0; i < block.times; ++i) {
    const auto type = static_cast<unsigned char>(file[kinds + i]);
    if (type >= block.types) return std::nullopt;
    const int after = offset_of(type);
    const std::int64_t time = bytes.number(block.body + i * block.time_size, block.time_size);
    if (time < kEarliest - kUnixEpoch) {
      history.first_offset = offset = after;
    } else if (after != offset) {
      if (!history.onsets.empty() && kUnixEpoch + time <= history.onsets.back().at)
        return std::nullopt;
      history.onsets.push_back({kUnixEpoch + time, offset, after});
      offset = after;
    }
  }
  return history;
}

int year_of(UtcSeconds at) { return civil_of(day_of(at)).year; }

// Files may list what the rule behind them says as well: the rule is enough. The moment behind
// which the rule holds.
UtcSeconds leave_to_rule(std::vector<ZoneOnset>& onsets, const PosixZone& rule) {
  if (onsets.empty()) return kEarliest;
  std::vector<ZoneOnset> said;
  for (int year = year_of(onsets.front().at) - 1; year <= year_of(onsets.back().at) + 1; ++year)
    for (const ZoneOnset& onset : rule.onsets_in(year)) said.push_back(onset);
  while (!said.empty() && said.back().at > onsets.back().at) said.pop_back();
  UtcSeconds holds = onsets.back().at;
  while (!said.empty() && !onsets.empty() && said.back() == onsets.back()) {
    holds = onsets.back().at - 1;
    said.pop_back(), onsets.pop_back();
  }
  return holds;
}

}  // namespace

std::optional<Zone> zone_from_file(std::string name, std::string_view bytes) {
  auto block = block_at(bytes, 0, 4);
  if (!block) return std::nullopt;
  std::optional<PosixZone> rule;
  if (bytes[4] >= '2') {  // the same again with wide times, and a rule for what comes after
    block = block_at(bytes, block->end, 8);
    if (!block) return std::nullopt;
    const std::string_view footer = bytes.substr(block->end);
    if (const std::size_t end = footer.find('\n', 1);
        footer.starts_with('\n') && end != std::string_view::npos)
      rule = parse_posix_zone(footer.substr(1, end - 1));
  }
  auto history = read_history(bytes, *block);
  if (!history || block->leaps > 0) return std::nullopt;
  auto& onsets = history->onsets;
  const UtcSeconds rule_holds = rule ? leave_to_rule(onsets, *rule) : kEarliest;
  std::map<std::pair<int, int>, Observance> kinds;
  for (const ZoneOnset& onset : onsets) {
    const LocalSeconds local = local_at_offset(onset.at, onset.before);
    const auto [slot, added] = kinds.try_emplace({onset.before, onset.after});
    if (added)
      slot->second = {local, onset.before, onset.after, std::nullopt, {}};
    else
      slot->second.dates.push_back(local);
  }
  std::vector<Observance> observances;
  for (auto& [offsets, observance] : kinds) observances.push_back(std::move(observance));
  if (rule)
    for (Observance& each : rule->observances_after(rule_holds))
      observances.push_back(std::move(each));
  if (observances.empty()) {
    const int offset = history->first_offset;
    observances.push_back({local_at_offset(kEarliest, 0), offset, offset, std::nullopt, {}});
  }
  return Zone(std::move(name), std::move(observances));
}

bool is_zone_name(std::string_view text) {
  constexpr std::size_t kLongest = 64;
  if (text.empty() || text.size() > kLongest || text.front() == '/' || text.back() == '/')
    return false;
  // "posix/" and "right/" hold the zones once more; the device's own is no name for anybody else.
  for (const std::string_view other : {"posix/", "right/"})
    if (text.starts_with(other)) return false;
  if (text == "localtime" || text == "posixrules") return false;
  return text.find("//") == std::string_view::npos &&
         std::all_of(text.begin(), text.end(), [](char c) {
           return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                  c == '/' || c == '_' || c == '-' || c == '+';
         });
}

}  // namespace orvello
