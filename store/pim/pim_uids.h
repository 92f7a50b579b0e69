// The UIDs of the device's appointments. The platform has no place for them: those that were told
// are kept in a file of this program's own, by the platform's numbers, so that a calendar that
// comes again meets the appointments that it made. Any other is made of the number and of a name of
// this device.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "store/appointment_record.h"

namespace orvello {

class PimUids {
 public:
  // Without a file they are known as long as this lives.
  explicit PimUids(std::string file);

  // By what an appointment is told from another one that has its number now: one of these stays
  // when somebody else changes it.
  struct Mark {
    LocalSeconds start;
    std::string subject;  // hashed
    friend bool operator==(const Mark&, const Mark&) = default;
  };
  static Mark mark_of(LocalSeconds start, TextView subject);

  // Brings in what other processes have written. False, with the problem: it cannot be read.
  [[nodiscard]] bool read();
  // Keeps what has changed. False, with the problem: that goes with the next one.
  [[nodiscard]] bool write();
  const std::string& problem() const { return problem_; }

  std::string of(std::int32_t number) const;
  std::int32_t number_of(std::string_view uid) const;  // 0: none was called so
  void name(std::int32_t number, const std::string& uid, const Mark& mark);
  void forget(std::int32_t number);
  // What it is seen to be now: a UID that was another appointment's is forgotten. True: it stays.
  bool meets(std::int32_t number, const Mark& seen);

 private:
  struct Told {
    std::string uid;
    Mark mark;
    friend bool operator==(const Told&, const Told&) = default;
  };
  std::string made_of(std::int32_t number) const;
  void take(const std::string& text);
  void put(std::int32_t number, Told told);
  std::string text() const;

  std::string file_, device_, problem_;
  bool unnamed_ = true;  // no file says the device's name yet
  std::map<std::int32_t, Told> told_;
  std::map<std::string, std::int32_t, std::less<>> numbers_;
  std::set<std::int32_t> changed_;  // since the last write
  std::uint64_t size_ = 0;          // of the file as it was read, as the next
  std::int64_t time_ = 0;
};

}  // namespace orvello
