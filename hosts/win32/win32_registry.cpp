#include "hosts/win32/win32_registry.h"

#include <cstring>
#include <vector>

#include "files/file_reasons.h"
#include "files/system_files.h"
#include "hosts/win32/wide_text.h"
#include "settings/registry_access.h"

namespace orvello {
namespace {

constexpr DWORD kMostBytes = 1 << 20;

class OpenRegistryKey {
 public:
  explicit OpenRegistryKey(HKEY key) : key_(key) {}
  ~OpenRegistryKey() {
    if (key_) RegCloseKey(key_);
  }
  OpenRegistryKey(const OpenRegistryKey&) = delete;
  OpenRegistryKey& operator=(const OpenRegistryKey&) = delete;
  explicit operator bool() const { return key_ != nullptr; }
  HKEY get() const { return key_; }

 private:
  HKEY key_;
};

// What stands in a value of this system's; nothing for a kind that no setting has.
std::optional<RegistryValue> value_of_bytes(DWORD type, const std::vector<BYTE>& bytes) {
  RegistryValue value;
  if (type == REG_DWORD && bytes.size() == sizeof value.number) {
    std::memcpy(&value.number, bytes.data(), sizeof value.number);
    return value;
  }
  if (type != REG_SZ && type != REG_EXPAND_SZ) return std::nullopt;
  value.is_text = true;
  value.text.resize(bytes.size() / sizeof(char16_t));
  std::memcpy(value.text.data(), bytes.data(), value.text.size() * sizeof(char16_t));
  if (!value.text.empty() && value.text.back() == u'\0') value.text.pop_back();
  return value;
}

std::optional<RegistryValue> stored_value_in(HKEY key, TextView name) {
  const Text asked(name);
  DWORD type = 0, size = 256;
  std::vector<BYTE> bytes(size);
  LONG result = ERROR_MORE_DATA;
  // It may grow between two looks at it.
  while (result == ERROR_MORE_DATA && size <= kMostBytes) {
    bytes.resize(size);
    result = RegQueryValueExW(key, wide(asked), nullptr, &type, bytes.data(), &size);
  }
  if (result != ERROR_SUCCESS) return std::nullopt;
  bytes.resize(size);
  return value_of_bytes(type, bytes);
}

// 0: no key.
std::uint64_t time_of_last_write(HKEY key) {
  FILETIME time{};
  if (!key || RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, &time) != ERROR_SUCCESS)
    return 0;
  return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

LONG set_value(HKEY key, const Text& name, const RegistryValue& value) {
  if (!value.is_text)
    return RegSetValueExW(key, wide(name), 0, REG_DWORD,
                          reinterpret_cast<const BYTE*>(&value.number), sizeof value.number);
  const auto bytes = static_cast<DWORD>((value.text.size() + 1) * sizeof(char16_t));
  return RegSetValueExW(key, wide(name), 0, REG_SZ,
                        reinterpret_cast<const BYTE*>(value.text.c_str()), bytes);
}

}  // namespace

class Win32Registry::Key : public RegistryKey {
 public:
  Key(Win32Registry& registry, RegistryRoot root, TextView path, HKEY key)
      : registry_(registry), root_(root), path_(path), key_(key) {}
  ~Key() override {
    if (key_) RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  std::optional<RegistryValue> query(TextView name) const override {
    if (const RegistryValue* held = registry_.held_value(root_, path_, name)) return *held;
    if (key_) return stored_value_in(key_, name);
    const OpenRegistryKey made(registry_.open_key(root_, path_));  // by a flush, meanwhile
    return made ? stored_value_in(made.get(), name) : std::nullopt;
  }
  bool set(TextView name, const RegistryValue& value) override {
    registry_.hold(root_, path_, name, value);
    return true;
  }
  bool flush() override { return registry_.flush(); }

 private:
  Win32Registry& registry_;
  RegistryRoot root_;
  Text path_;
  HKEY key_;
};

RegistryPlaces registry_of_person() {
  return {HKEY_CURRENT_USER, Text(u"Software\\Classes\\"), HKEY_CURRENT_USER, Text()};
}

Win32Registry::Win32Registry(RegistryPlaces places) : places_(std::move(places)) {}

Win32Registry::~Win32Registry() { flush(); }

std::pair<HKEY, Text> Win32Registry::whole_path(RegistryRoot root, TextView path) const {
  const bool classes = root == RegistryRoot::classes_root;
  Text whole = classes ? places_.below_classes : places_.below_machine;
  return {classes ? places_.classes : places_.machine, whole.append(path)};
}

HKEY Win32Registry::open_key(RegistryRoot root, TextView path) const {
  const auto [top, whole] = whole_path(root, path);
  HKEY key = nullptr;
  return RegOpenKeyExW(top, wide(whole), 0, KEY_READ, &key) == ERROR_SUCCESS ? key : nullptr;
}

bool Win32Registry::is_new() const {
  const auto [top, whole] = whole_path(RegistryRoot::classes_root, kSettingsKey);
  HKEY key = nullptr;
  const LONG result = RegOpenKeyExW(top, wide(whole), 0, KEY_READ, &key);
  if (result == ERROR_SUCCESS) RegCloseKey(key);
  return result == ERROR_FILE_NOT_FOUND;
}

std::uint64_t Win32Registry::last_write(const Place& place) const {
  return time_of_last_write(OpenRegistryKey(open_key(place.first, place.second)).get());
}

void Win32Registry::watch(RegistryRoot root, TextView path, HKEY key) {
  const Place place{root, upper_ascii(path)};
  if (!seen_.contains(place)) seen_[place] = time_of_last_write(key);
}

bool Win32Registry::changed_outside() {
  for (auto& [place, seen] : seen_) {
    const std::uint64_t now = last_write(place);
    if (now != seen) changed_ = true;
    seen = now;
  }
  return std::exchange(changed_, false);
}

std::unique_ptr<RegistryKey> Win32Registry::open(RegistryRoot root, TextView path) {
  const HKEY key = open_key(root, path);
  if (!key && !held_.contains({root, upper_ascii(path)})) return nullptr;
  auto opened = std::make_unique<Key>(*this, root, path, key);
  watch(root, path, key);
  return opened;
}

std::unique_ptr<RegistryKey> Win32Registry::create(RegistryRoot root, TextView path) {
  const HKEY key = open_key(root, path);
  auto opened = std::make_unique<Key>(*this, root, path, key);
  watch(root, path, key);
  if (!key) held_[{root, upper_ascii(path)}].path = Text(path);
  return opened;
}

const RegistryValue* Win32Registry::held_value(RegistryRoot root, TextView path,
                                               TextView name) const {
  const auto held = held_.find({root, upper_ascii(path)});
  if (held == held_.end()) return nullptr;
  const auto value = held->second.values.find(upper_ascii(name));
  return value == held->second.values.end() ? nullptr : &value->second.value;
}

void Win32Registry::hold(RegistryRoot root, TextView path, TextView name,
                         const RegistryValue& value) {
  HeldKey& key = held_[{root, upper_ascii(path)}];
  key.path = Text(path);
  key.values[upper_ascii(name)] = {Text(name), value};
}

LONG Win32Registry::write(RegistryRoot root, const HeldKey& held) const {
  const auto [top, whole] = whole_path(root, held.path);
  HKEY made = nullptr;
  if (const LONG fault =
          RegCreateKeyExW(top, wide(whole), 0, nullptr, 0, KEY_WRITE, nullptr, &made, nullptr))
    return fault;
  const OpenRegistryKey key(made);
  for (const auto& [name, value] : held.values)
    if (const LONG fault = set_value(key.get(), value.name, value.value)) return fault;
  return RegFlushKey(key.get());
}

bool Win32Registry::flush() {
  trouble_.clear();
  while (!held_.empty() && trouble_.empty()) {
    const auto held = held_.begin();
    const Place& place = held->first;
    if (const auto seen = seen_.find(place); seen != seen_.end())
      changed_ |= seen->second != last_write(place);
    if (const LONG fault = write(place.first, held->second)) {
      const Text name = whole_path(place.first, held->second.path).second;
      trouble_ = to_utf16(
          cannot_be_written("The registry key " + to_utf8(name), errno_of_system(int(fault))));
    }
    seen_[place] = last_write(place);
    if (trouble_.empty()) held_.erase(held);
  }
  return trouble_.empty();
}

}  // namespace orvello
