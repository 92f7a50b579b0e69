// Other runs of this program, as the toolkit starts processes.
#pragma once

#include <QString>

#include "hosts/shared/program_system.h"

namespace orvello {

class QtOwnRuns : public OwnRuns {
 public:
  explicit QtOwnRuns(std::string program = "/proc/self/exe") : program_(std::move(program)) {}
  std::unique_ptr<OwnRun> start(const std::vector<std::string>& words, Ended ended) override;

 private:
  std::string program_;
};

}  // namespace orvello
