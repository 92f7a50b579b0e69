// Rights on what the program makes: for its owner, the system and who looks after the machine.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

namespace orvello {

// For the call that makes something; `folder`: what will be in it, too. As the folder around it
// has them where no rights can be made.
class PrivateRights {
 public:
  enum class Of { file, folder };
  explicit PrivateRights(Of of);
  SECURITY_ATTRIBUTES* attributes() { return descriptor_ ? &attributes_ : nullptr; }

 private:
  struct Free {
    void operator()(void* memory) const { LocalFree(memory); }
  };
  std::unique_ptr<void, Free> descriptor_;
  SECURITY_ATTRIBUTES attributes_{};
};

// The rights of an existing file for an open one, as far as its disk has any and they are ours to
// give.
void copy_rights(const std::wstring& existing, HANDLE file);

}  // namespace orvello
