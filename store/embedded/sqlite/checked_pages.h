// A layer below SQLite that keeps a checksum in the last bytes of every page, so that a page which
// the disk gives back otherwise than it was written is an error and never an answer.
//
// The checksum covers the page's content and its number. A page that fails is SQLITE_IOERR_DATA. A
// file is checked from its birth or never: it says so by kCheckedBytes reserved bytes a page (byte
// 20 of its header), and what an interrupted transaction left is then restored without a doubt
// about which of the two it was. Files without them are read and written as SQLite alone would.
#pragma once

#include <cstdint>
#include <string_view>

struct sqlite3;

namespace orvello {

inline constexpr int kCheckedBytes = 8;

// The layer's name for sqlite3_open_v2; over the system's own files. An empty file that is opened
// through it is to be a checked one: see reserve_checked_bytes, or to receive a checked one's
// pages.
const char* checked_pages();

// Before an empty file gets its first table: it will be checked. Every connection that writes sets
// PRAGMA secure_delete, so that freed pages are written as well: one without a checksum would be
// damage to whoever copies the whole file.
bool reserve_checked_bytes(sqlite3* db);

// A number in a file's header, as SQLite stores them.
inline std::uint32_t big_endian(const unsigned char* bytes) {
  return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
         static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

// Of a page's content without its last kCheckedBytes.
std::uint64_t page_checksum(std::uint32_t number, std::string_view content);

}  // namespace orvello
