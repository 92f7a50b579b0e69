// Paths of this program, UTF-8 everywhere, for the standard library.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace orvello {

inline std::filesystem::path library_path(const std::string& path) {
  return std::filesystem::path(std::u8string(path.begin(), path.end()));
}

// Bytes of a file; -1: there is none, or nothing can be known of it.
inline std::int64_t size_of_file(const std::string& path) {
  std::error_code fault;
  const auto size = std::filesystem::file_size(library_path(path), fault);
  return fault ? -1 : static_cast<std::int64_t>(size);
}

inline bool remove_at(const std::string& path) {
  std::error_code fault;
  return std::filesystem::remove(library_path(path), fault);
}

}  // namespace orvello
