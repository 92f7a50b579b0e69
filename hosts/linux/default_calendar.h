// The desktop's default program for calendar files. It is chosen in the person's own lists of
// applications, where this program is put first: what was preferred before stands behind it and is
// preferred again when it goes. A program that nothing has installed gets an entry of its own in
// the person's folder, as long as it is the default.
#pragma once

#include <string>
#include <vector>

#include "base/result.h"
#include "ports/device_shell.h"

namespace orvello {

// The folders of the desktop's base-directory rules; those that are not given are empty.
struct DesktopFolders {
  std::string config;  // the person's, as the next one
  std::string data;
  std::vector<std::string> other_configs;  // in their order
  std::vector<std::string> other_data;
  std::vector<std::string> desktops;  // the names of the desktop, in small letters
};

DesktopFolders desktop_folders();

class DefaultCalendar : public DeviceShell {
 public:
  // `program`: this program's file, empty where that is not known.
  DefaultCalendar(DesktopFolders folders, std::string program)
      : folders_(std::move(folders)), program_(std::move(program)) {}

  std::optional<bool> starts_this_program() const override;
  bool start_this_program(bool wanted) override;

 private:
  std::vector<std::string> lists() const;      // of applications, what counts most first
  std::vector<std::string> own_lists() const;  // the person's among them
  bool is_installed(const std::string& application) const;
  std::string own_entry() const;
  bool write_entry() const;
  bool remove_entry() const;
  enum class Change { prefer, prefer_and_add, remove };
  bool change_list(const std::string& path, Change change) const;

  DesktopFolders folders_;
  std::string program_;
};

// Of the program that runs; empty when the system does not say.
std::string program_file();

}  // namespace orvello
