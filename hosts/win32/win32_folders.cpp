#include "hosts/win32/win32_folders.h"

#include <windows.h>

#include <knownfolders.h>
#include <shlobj.h>

#include <cerrno>

#include "files/file_reasons.h"
#include "files/system_files.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

Text variable_text(const wchar_t* name) {
  wchar_t value[32768];
  const DWORD size = GetEnvironmentVariableW(name, value, 32768);
  return size > 0 && size < 32768 ? from_wide({value, size}) : Text();
}

Text known_folder(const KNOWNFOLDERID& id) {
  PWSTR path = nullptr;
  const bool known = SUCCEEDED(SHGetKnownFolderPath(id, KF_FLAG_CREATE, nullptr, &path));
  const Text result = known ? from_wide(path) : Text();
  CoTaskMemFree(path);
  return result;
}

std::string whole_path_of(const std::string& path) {
  const Text text = to_utf16(path);
  wchar_t whole[32768];
  const DWORD size = GetFullPathNameW(wide(text), 32768, whole, nullptr);
  std::string result = size > 0 && size < 32768 ? to_utf8(from_wide({whole, size})) : path;
  while (result.size() > 3 && result.ends_with('\\')) result.pop_back();
  return result;
}

Result<Paths> folder_failure(const char* what, const std::string& folder) {
  return Result<Paths>::failure(std::string(what) + " \"" + folder + "\": " + reason_of(errno));
}

}  // namespace

std::string folder_of_person(PersonFolder folder) {
  const bool roaming = folder == PersonFolder::roaming;
  if (folder == PersonFolder::documents) return to_utf8(known_folder(FOLDERID_Documents));
  const std::string named = to_utf8(variable_text(roaming ? L"APPDATA" : L"LOCALAPPDATA"));
  if (is_absolute_path(named)) return named;
  return to_utf8(known_folder(roaming ? FOLDERID_RoamingAppData : FOLDERID_LocalAppData));
}

Result<Paths> open_win32_folders(const std::string& chosen) {
  Paths paths;
  if (chosen.empty()) {
    const std::string roaming = folder_of_person(PersonFolder::roaming),
                      local = folder_of_person(PersonFolder::local);
    if (roaming.empty() || local.empty())
      return Result<Paths>::failure(
          "there is no folder of yours to keep the calendar in; name one with --data");
    paths.data = paths.config = path_in(roaming, "Orvello");
    paths.state = path_in(local, "Orvello");
  } else {
    paths.data = paths.config = paths.state = whole_path_of(chosen);
  }
  for (const std::string* folder : {&paths.data, &paths.state}) {
    if (!make_folders(*folder)) return folder_failure("cannot create the folder", *folder);
    if (!names_in_folder(*folder)) return folder_failure("cannot read the folder", *folder);
    if (may_write_file(*folder)) continue;
    const int error = errno;
    if (may_read_file(path_in(paths.data, "calendar.db"))) continue;
    errno = error;
    return folder_failure("cannot write to the folder", *folder);
  }
  return paths;
}

}  // namespace orvello
