// How an appointment leaves this machine: as a calendar file, by the desktop's mail program or into
// a folder.
#pragma once

#include <string>
#include <vector>

#include "base/result.h"
#include "base/text.h"
#include "hosts/shared/departures.h"

namespace orvello {

class Outbox : public Departures {
 public:
  // `folder` takes all files and no mail program is started; empty: the desktop's way, in which
  // the files go to "Orvello" in the documents folder when there is no mail program.
  explicit Outbox(std::string folder) : folder_(std::move(folder)) {}

  Result<HandedOver> hand_over(TextView subject, const std::string& calendar,
                               const std::vector<StoreRecipient>& to = {}) const override;
  std::string run_mailer(std::string_view command, const std::vector<std::string>& more,
                         std::string_view input, std::chrono::milliseconds limit,
                         const std::function<void()>& meanwhile) const override;
  StoreRecipient identity() const override;

 private:
  std::string folder_;
};

// The documents folder as the desktop's configuration, or else the home folder, has it; empty
// without a home.
std::string documents_folder();

}  // namespace orvello
