// The numbers of appointments, as this program knows them. The platform gives an appointment that
// is made again another number; here it keeps the one that it had, as long as this lives.
#pragma once

#include <cstdint>
#include <map>

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
  }

 private:
  std::map<std::int32_t, std::int32_t> platform_, known_;  // where they differ
  std::int32_t next_ = 0x7F000000;
};

}  // namespace orvello
