// Who opens calendar files for the person: what the person's own part of the registry says of the
// ending ".ics". A choice that the person has made in the system's own list stands above that, and
// no program may change it.
#pragma once

#include <windows.h>

#include <string>

#include "base/text.h"
#include "ports/device_shell.h"

namespace orvello {

class Win32Shell : public DeviceShell {
 public:
  // `program`: this program's file. `classes` and `choices` are keys below `top`, without a
  // backslash at their end: where file types are described, and where the system keeps what was
  // chosen by hand.
  explicit Win32Shell(
      Text program, HKEY top = HKEY_CURRENT_USER, Text classes = Text(u"Software\\Classes"),
      Text choices = Text(u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts"))
      : program_(std::move(program)),
        top_(top),
        classes_(std::move(classes)),
        choices_(std::move(choices)) {}

  std::optional<bool> starts_this_program() const override;
  // False, too, where another program was chosen by hand: this one is in the list of those to
  // choose from then.
  bool start_this_program(bool wanted) override;

 private:
  struct Answer {
    bool known = false;  // false: it could not be read
    std::optional<Text> text;
  };
  Answer text_at(const Text& key, const wchar_t* name) const;
  bool set_text(const Text& key, const wchar_t* name, const Text& text) const;
  bool remove_text(const Text& key, const wchar_t* name) const;
  Text command() const;
  bool describe_own_type() const;
  bool prefer_own_type(const std::optional<Text>& before) const;
  bool give_back() const;

  Text program_;
  HKEY top_;
  Text classes_, choices_;
};

}  // namespace orvello
