#include "hosts/win32/win32_departures.h"

#include <windows.h>

#include <shellapi.h>
#include <shlwapi.h>

#include <algorithm>

#include "files/system_files.h"
#include "hosts/shared/draft_mail.h"
#include "hosts/shared/saved_files.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_command.h"
#include "hosts/win32/win32_folders.h"

namespace orvello {
namespace {

constexpr wchar_t kMailEnding[] = L".eml";

Text variable_of(const wchar_t* name) {
  wchar_t value[512];
  const DWORD size = GetEnvironmentVariableW(name, value, 512);
  return size > 0 && size < 512 ? from_wide({value, size}) : Text();
}

bool some_program_opens_mail() {
  constexpr ASSOCF kKnownOnly = 0x00000400;  // ASSOCF_INIT_IGNOREUNKNOWN
  wchar_t command[1024];
  DWORD size = 1024;
  return SUCCEEDED(AssocQueryStringW(kKnownOnly, ASSOCSTR_COMMAND, kMailEnding, L"open", command,
                                     &size)) &&
         size > 1;
}

bool open_by_its_program(const std::string& path) {
  const Text name = to_utf16(path);
  SHELLEXECUTEINFOW call{};
  call.cbSize = sizeof call;
  call.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
  call.lpVerb = L"open";
  call.lpFile = wide(name);
  call.nShow = SW_SHOWNORMAL;
  return ShellExecuteExW(&call) != FALSE;
}

std::optional<HandedOver> mail(TextView subject, const std::string& calendar,
                               const std::vector<StoreRecipient>& to) {
  const std::string local = folder_of_person(PersonFolder::local);
  if (local.empty() || !some_program_opens_mail()) return std::nullopt;
  const std::string folder = path_in(path_in(local, "Orvello"), "mail");
  forget_old_files(folder);
  std::vector<std::string> addresses;
  for (const StoreRecipient& one : to) addresses.push_back(to_utf8(one.address));
  HandedOver handed{true, {}, {}};
  const std::string name = safe_file_name(subject);
  const std::string draft = draft_mail(subject, name, calendar, addresses, handed.left_out);
  const auto path = save_under_free_name(folder, name, ".eml", draft);
  if (!path) return std::nullopt;
  handed.path = *path;
  if (open_by_its_program(*path)) return handed;
  remove_file(*path);
  return std::nullopt;
}

}  // namespace

Result<HandedOver> Win32Departures::hand_over(TextView subject, const std::string& calendar,
                                              const std::vector<StoreRecipient>& to) const {
  if (folder_.empty())
    if (auto mailed = mail(subject, calendar, to)) return std::move(*mailed);
  std::string folder = folder_;
  if (folder.empty()) {
    const std::string documents = folder_of_person(PersonFolder::documents);
    if (documents.empty())
      return Result<HandedOver>::failure("There is no folder to save the appointment in.");
    folder = path_in(documents, "Orvello");
  }
  const auto path = save_under_free_name(folder, safe_file_name(subject), ".ics", calendar);
  if (!path) return Result<HandedOver>::failure(path.reason());
  return HandedOver{false, *path, {}};
}

std::string Win32Departures::run_mailer(std::string_view command,
                                        const std::vector<std::string>& more,
                                        std::string_view input, std::chrono::milliseconds limit,
                                        const std::function<void()>& meanwhile) const {
  std::string line(trimmed(command));
  for (const std::string& word : more) line += " " + word;
  return run_command_line(line, input, limit, meanwhile);
}

// As programs for mail are told on other systems; the account's own full name otherwise.
StoreRecipient Win32Departures::identity() const {
  Text address = variable_of(L"EMAIL"), name;
  if (const std::size_t open = address.find(u'<'); open != Text::npos) {
    name = Text(trimmed(TextView(address).substr(0, open)));
    std::erase(name, u'"');
    address = address.substr(open + 1, address.find(u'>') - open - 1);
  }
  if (name.empty()) {
    constexpr int kDisplayName = 3;  // NameDisplay
    using GetName = BOOLEAN(WINAPI*)(int, wchar_t*, ULONG*);
    const HMODULE library = LoadLibraryW(L"secur32.dll");
    const auto get_name = library ? reinterpret_cast<GetName>(reinterpret_cast<void*>(
                                        GetProcAddress(library, "GetUserNameExW")))
                                  : nullptr;
    wchar_t full[256];
    ULONG size = 256;
    if (get_name && get_name(kDisplayName, full, &size) && size < 256)
      name = from_wide({full, size});
    if (library) FreeLibrary(library);
  }
  return {name, Text(trimmed(TextView(address)))};
}

}  // namespace orvello
