// What is wrong with a file, line by line, as long as that is of use to anybody.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "exchange/import.h"

namespace orvello {

class ProblemList {
 public:
  explicit ProblemList(std::string file) : file_(std::move(file)) {}

  void add(int line, std::string text) {
    constexpr std::size_t kMost = 200;
    if (problems_.size() < kMost)
      problems_.push_back({file_, line, std::move(text)});
    else if (problems_.size() == kMost)
      problems_.push_back({file_, line, "more problems from here on are not listed"});
  }
  // Those from a place in the list on belong to what is left out.
  void forget_from(std::size_t place) {
    if (place < problems_.size()) problems_.resize(place);
  }
  const std::vector<ImportProblem>& problems() const { return problems_; }

 private:
  std::string file_;
  std::vector<ImportProblem> problems_;
};

}  // namespace orvello
