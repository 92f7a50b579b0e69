// What the device starts when somebody opens a calendar: the button on its case, a link, a
// calendar file on a desktop. User-interface thread.
#pragma once

#include <optional>

namespace orvello {

class DeviceShell {
 public:
  virtual ~DeviceShell() = default;
  // Whether that is this program now, whoever chose so; nothing when it cannot be found out.
  virtual std::optional<bool> starts_this_program() const = 0;
  // True: it is from now on. False: what it was before is that again, unless another program has
  // been chosen meanwhile, which stays. The answer: whether it worked; else all is as it was.
  virtual bool start_this_program(bool wanted) = 0;
};

}  // namespace orvello
