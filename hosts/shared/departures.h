// How appointments leave this machine. User-interface thread.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "base/text.h"
#include "ports/calendar_store.h"

namespace orvello {

struct HandedOver {
  bool mailed = false;                // the mail program was started with it
  std::string path;                   // the file
  std::vector<std::string> left_out;  // to whom the mail program could not be told to send it
};

class Departures {
 public:
  virtual ~Departures() = default;
  // A calendar file for the mail program, or else in a folder; it is named after the subject and
  // never replaces another one. Fails with the reason. With `to`, the mail program is told whom to
  // send it to, and what about.
  virtual Result<HandedOver> hand_over(TextView subject, const std::string& calendar,
                                       const std::vector<StoreRecipient>& to = {}) const = 0;
  // Runs the person's own command for mail, a command line, with `more` words behind it and `input`
  // on its standard input. Empty when it ended with 0, else a sentence; it is given up after
  // `limit`. `meanwhile` is called several times a second.
  virtual std::string run_mailer(std::string_view command, const std::vector<std::string>& more,
                                 std::string_view input, std::chrono::milliseconds limit,
                                 const std::function<void()>& meanwhile) const = 0;
  // Who the person is to those who get mail; name or address may be empty.
  virtual StoreRecipient identity() const = 0;
};

}  // namespace orvello
