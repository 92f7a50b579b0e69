// How an appointment leaves this machine: as a mail that the person's mail program opens, or as a
// calendar file in a folder.
#pragma once

#include <string>
#include <vector>

#include "hosts/shared/departures.h"

namespace orvello {

class Win32Departures : public Departures {
 public:
  // `folder` takes all files and no mail program is started; empty: the person's mail program, or
  // "Orvello" in the documents folder where there is none.
  explicit Win32Departures(std::string folder) : folder_(std::move(folder)) {}

  Result<HandedOver> hand_over(TextView subject, const std::string& calendar,
                               const std::vector<StoreRecipient>& to = {}) const override;
  std::string run_mailer(std::string_view command, const std::vector<std::string>& more,
                         std::string_view input, std::chrono::milliseconds limit,
                         const std::function<void()>& meanwhile) const override;
  StoreRecipient identity() const override;

 private:
  std::string folder_;
};

}  // namespace orvello
