#include "store/appointment_form.h"

#include <array>

namespace orvello {
namespace {

constexpr std::array kListed{BusyStatus::busy, BusyStatus::free, BusyStatus::out_of_office,
                             BusyStatus::tentative};

}  // namespace

BusyStatus busy_status_of(int index) {
  const bool listed = index >= 0 && index < static_cast<int>(kListed.size());
  return listed ? kListed[static_cast<std::size_t>(index)] : BusyStatus::busy;
}

int index_of(BusyStatus status) {
  for (std::size_t i = 0; i < kListed.size(); ++i)
    if (kListed[i] == status) return static_cast<int>(i);
  return 0;
}

}  // namespace orvello
