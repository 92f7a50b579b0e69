#include "store/embedded/page_rows.h"

#include <cstring>
#include <optional>

#include "store/embedded/sqlite/checked_pages.h"

namespace orvello {
namespace {

constexpr std::size_t kUsualPage = 4096;
constexpr std::uint8_t kTableLeaf = 0x0D, kIndexLeaf = 0x0A, kIndexInner = 0x02;
constexpr std::size_t kMostColumns = 100;

class Pages {
 public:
  explicit Pages(std::string_view file) : file_(file) {
    const std::size_t stored = number(file, 16, 2);
    const std::size_t size = stored == 1 ? 65536 : stored;
    if (size >= 512 && (size & (size - 1)) == 0) size_ = size;
    // The pages themselves say whether they have checksums: the header may be what is damaged.
    for (std::size_t index = 1; index <= count() && !checked_; ++index) {
      checked_ = true;
      checked_ = agrees(index);
    }
  }

  std::size_t count() const { return (file_.size() + size_ - 1) / size_; }
  // From 1, like the file counts them; the last one may be cut off.
  std::string_view page(std::size_t index) const {
    return index == 0 || index > count() ? std::string_view()
                                         : file_.substr((index - 1) * size_, size_);
  }
  std::size_t usable() const { return size_ - (checked_ ? kCheckedBytes : 0); }
  bool agrees(std::size_t index) const {
    const std::string_view bytes = page(index);
    if (bytes.size() != size_) return false;
    if (!checked_) return true;
    std::uint64_t sum = 0;
    std::memcpy(&sum, bytes.data() + usable(), sizeof sum);
    return sum == page_checksum(static_cast<std::uint32_t>(index), bytes.substr(0, usable()));
  }

  static std::uint8_t byte(std::string_view bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<std::uint8_t>(bytes[at]) : 0;
  }
  static std::size_t number(std::string_view bytes, std::size_t at, std::size_t length) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < length; ++i) value = value << 8 | byte(bytes, at + i);
    return value;
  }

 private:
  std::string_view file_;
  std::size_t size_ = kUsualPage;
  bool checked_ = false;
};

// The file's own variable-length numbers; nothing when the bytes end in one.
std::optional<std::uint64_t> take_number(std::string_view bytes, std::size_t& at) {
  std::uint64_t value = 0;
  for (int i = 0; i < 9; ++i) {
    if (at >= bytes.size()) return std::nullopt;
    const auto next = static_cast<std::uint8_t>(bytes[at++]);
    if (i == 8) return value << 8 | next;
    value = value << 7 | (next & 0x7F);
    if (next < 0x80) return value;
  }
  return value;
}

// A row's bytes: what lies in its cell, and the rest in a chain of other pages.
std::optional<std::string> whole_payload(const Pages& pages, std::string_view page, std::size_t at,
                                         std::size_t length, bool table, bool& doubtful) {
  const std::size_t usable = pages.usable();
  const std::size_t most = table ? usable - 35 : (usable - 12) * 64 / 255 - 23;
  std::size_t local = length;
  if (length > most) {
    const std::size_t least = (usable - 12) * 32 / 255 - 23;
    local = least + (length - least) % (usable - 4);
    if (local > most) local = least;
  }
  if (at + local > page.size()) return std::nullopt;
  std::string payload(page.substr(at, local));
  std::size_t next = length > local ? Pages::number(page, at + local, 4) : 0;
  for (std::size_t steps = 0; payload.size() < length; ++steps) {
    const std::string_view more = pages.page(next);
    if (more.size() < 5 || steps > pages.count()) return std::nullopt;
    doubtful = doubtful || !pages.agrees(next);
    payload += more.substr(4, std::min(length - payload.size(), usable - 4));
    next = Pages::number(more, 0, 4);
  }
  return payload;
}

std::optional<RowValue> value_of(std::uint64_t type, std::string_view bytes, std::size_t& at) {
  constexpr std::size_t kSizes[] = {0, 1, 2, 3, 4, 6, 8};
  RowValue value;
  if (type == 0) return value;
  if (type == 7 || type == 10 || type == 11) return std::nullopt;  // the calendar has no such
  if (type == 8 || type == 9) {
    value.type = RowValue::Type::integer;
    value.number = type == 9;
    return value;
  }
  const std::uint64_t size = type < 7 ? kSizes[type] : (type - 12) / 2;
  if (size > bytes.size() - at) return std::nullopt;
  if (type < 7) {
    value.type = RowValue::Type::integer;
    // From the first byte, which carries the sign.
    value.number = static_cast<signed char>(bytes[at]);
    for (std::size_t i = 1; i < size; ++i)
      value.number = static_cast<std::int64_t>(static_cast<std::uint64_t>(value.number) << 8 |
                                               Pages::byte(bytes, at + i));
  } else {
    value.type = type % 2 ? RowValue::Type::text : RowValue::Type::blob;
    value.bytes = bytes.substr(at, size);
  }
  at += size;
  return value;
}

bool decode(std::string_view payload, std::vector<RowValue>& values) {
  std::size_t at = 0;
  const auto header = take_number(payload, at);
  if (!header || *header > payload.size() || *header < at) return false;
  std::size_t body = *header;
  while (at < *header) {
    const auto type = take_number(payload.substr(0, *header), at);
    auto value = type ? value_of(*type, payload, body) : std::nullopt;
    if (!value || values.size() == kMostColumns) return false;
    values.push_back(std::move(*value));
  }
  return body == payload.size();
}

void read_cell(const Pages& pages, std::string_view page, std::size_t at, std::uint8_t kind,
               PageRow&& row, const std::function<void(PageRow&&)>& take) {
  if (kind == kIndexInner) at += 4;
  const auto length = take_number(page, at);
  if (!length || *length > (std::uint64_t{1} << 30)) return;
  if (kind == kTableLeaf) {
    const auto rowid = take_number(page, at);
    if (!rowid) return;
    row.has_rowid = true;
    row.rowid = static_cast<std::int64_t>(*rowid);
  }
  const auto payload = whole_payload(pages, page, at, *length, kind == kTableLeaf, row.doubtful);
  if (payload && decode(*payload, row.values)) take(std::move(row));
}

}  // namespace

void for_each_row(std::string_view file, const std::function<void(PageRow&&)>& take) {
  const Pages pages(file);
  // The first page holds the schema alone.
  for (std::size_t index = 2; index <= pages.count(); ++index) {
    const std::string_view page = pages.page(index);
    const std::uint8_t kind = Pages::byte(page, 0);
    if (kind != kTableLeaf && kind != kIndexLeaf && kind != kIndexInner) continue;
    const std::size_t cells = Pages::number(page, 3, 2), head = kind == kIndexInner ? 12 : 8;
    const bool doubtful = !pages.agrees(index);
    for (std::size_t cell = 0; cell < cells && head + 2 * cell + 1 < page.size(); ++cell) {
      PageRow row;
      row.doubtful = doubtful;
      const std::size_t at = Pages::number(page, head + 2 * cell, 2);
      if (at >= head) read_cell(pages, page, at, kind, std::move(row), take);
    }
  }
}

}  // namespace orvello
