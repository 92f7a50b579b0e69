#include "files/private_rights_windows.h"

#include <aclapi.h>
#include <sddl.h>

#include <cstddef>
#include <vector>

namespace orvello {
namespace {

// Who runs this process, as text.
std::wstring own_identity() {
  HANDLE token = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return {};
  DWORD size = 0;
  GetTokenInformation(token, TokenUser, nullptr, 0, &size);
  std::vector<std::max_align_t> bytes(size / sizeof(std::max_align_t) + 1);
  const bool got = GetTokenInformation(token, TokenUser, bytes.data(), size, &size);
  CloseHandle(token);
  LPWSTR text = nullptr;
  if (!got ||
      !ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(bytes.data())->User.Sid, &text))
    return {};
  std::wstring identity(text);
  LocalFree(text);
  return identity;
}

}  // namespace

PrivateRights::PrivateRights(Of of) {
  const std::wstring owner = own_identity();
  if (owner.empty()) return;
  const std::wstring inherited = of == Of::folder ? L"OICI" : L"";
  std::wstring rights = L"D:P";
  for (const std::wstring& who : {owner, std::wstring(L"SY"), std::wstring(L"BA")})
    rights += L"(A;" + inherited + L";FA;;;" + who + L")";
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(rights.c_str(), SDDL_REVISION_1,
                                                            &descriptor, nullptr))
    return;
  descriptor_.reset(descriptor);
  attributes_ = {sizeof attributes_, descriptor, FALSE};
}

void copy_rights(const std::wstring& existing, HANDLE file) {
  constexpr SECURITY_INFORMATION kWhat = DACL_SECURITY_INFORMATION;
  PACL rights = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (GetNamedSecurityInfoW(const_cast<wchar_t*>(existing.c_str()), SE_FILE_OBJECT, kWhat, nullptr,
                            nullptr, &rights, nullptr, &descriptor) != ERROR_SUCCESS)
    return;
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  GetSecurityDescriptorControl(descriptor, &control, &revision);
  // What came from the folder comes from there again.
  const SECURITY_INFORMATION kind = (control & SE_DACL_PROTECTED) != 0
                                        ? PROTECTED_DACL_SECURITY_INFORMATION
                                        : UNPROTECTED_DACL_SECURITY_INFORMATION;
  SetSecurityInfo(file, SE_FILE_OBJECT, kWhat | kind, nullptr, nullptr, rights, nullptr);
  LocalFree(descriptor);
}

}  // namespace orvello
