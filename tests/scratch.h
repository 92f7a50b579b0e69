// What tests leave no trace of: a folder of their own, variables of the environment; and whole
// files as strings.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <string>

namespace orvello {

class ScratchFolder {
 public:
  ScratchFolder() {
    std::random_device chance;
    std::filesystem::path made;
    do made = std::filesystem::temp_directory_path() / ("orvello-" + std::to_string(chance()));
    while (!std::filesystem::create_directory(made));
    std::filesystem::permissions(made, std::filesystem::perms::owner_all);
    path_ = made.string();
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const {
    // Also of a name that begins like a whole path.
    return std::filesystem::path(path_ + "/" + name).make_preferred().string();
  }
  std::size_t files() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
  }

 private:
  std::string path_;
};

// Null: without one.
inline void set_variable(const char* name, const char* value) {
#ifdef _WIN32
  ::_putenv_s(name, value ? value : "");
#else
  value ? ::setenv(name, value, 1) : ::unsetenv(name);
#endif
}

class VariableGuard {
 public:
  VariableGuard(const char* name, const std::string& value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    set_variable(name, value.c_str());
  }
  ~VariableGuard() { set_variable(name_, old_ ? old_->c_str() : nullptr); }
  VariableGuard(const VariableGuard&) = delete;
  VariableGuard& operator=(const VariableGuard&) = delete;

 private:
  const char* name_;
  std::optional<std::string> old_;
};

inline std::string content_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void put_content(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

inline unsigned mode_of(const std::string& path) {
  return static_cast<unsigned>(std::filesystem::status(path).permissions());
}

}  // namespace orvello
