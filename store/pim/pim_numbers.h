// The numbers of appointments, as this program knows them. The platform gives an appointment that
// is made again another number; here it keeps the one that it had, as long as this lives.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace orvello {

class PimNumbers {
 public:
  std::int32_t of_platform(std::int32_t number) const {
    const auto found = platform_.find(number);
    return found == platform_.end() ? number : found->second;
  }
  // The known number of what the platform calls so.
  std::int32_t known(std::int32_t platform) {
    const auto found = known_.find(platform);
    if (found != known_.end()) return found->second;
    // The platform has given a number again that stands for another item here.
    if (platform_.count(platform) != 0) return note(next_++, platform);
    return platform;
  }
  std::int32_t note(std::int32_t number, std::int32_t platform) {
    if (number == platform && platform_.count(number) == 0) return number;
    known_.erase(of_platform(number));
    platform_[number] = platform;
    known_[platform] = number;
    return number;
  }
  void forget(std::int32_t number) {
    known_.erase(of_platform(number));
    platform_.erase(number);
    if (const auto uid = uids_.find(number); uid != uids_.end()) {
      numbers_.erase(uid->second);
      uids_.erase(uid);
    }
  }

  // The platform has no place for an item's UID either: one that was told is known as long as this
  // lives, any other is made of the number.
  void name(std::int32_t number, const std::string& uid) {
    if (uid == made_of(number)) return;
    uids_[number] = uid;
    numbers_[uid] = number;
  }
  std::string uid_of(std::int32_t number) const {
    const auto found = uids_.find(number);
    return found == uids_.end() ? made_of(number) : found->second;
  }
  // 0: no item was called so.
  std::int32_t number_of(std::string_view uid) const;

 private:
  static std::string made_of(std::int32_t number) {
    return "device-" + std::to_string(number) + "@orvello";
  }

  std::map<std::int32_t, std::int32_t> platform_, known_;  // where they differ
  std::map<std::int32_t, std::string> uids_;
  std::map<std::string, std::int32_t, std::less<>> numbers_;
  std::int32_t next_ = 0x7F000000;
};

}  // namespace orvello
