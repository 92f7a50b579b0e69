#include "hosts/shared/fault_teller.h"

#include <iostream>
#include <new>
#include <stdexcept>

namespace orvello {
namespace {

constexpr std::size_t kMostFaults = 100;  // there are not so many different ones

bool is_lack_of_memory() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return true;
  } catch (const std::length_error&) {
    return true;
  } catch (...) {
    return false;
  }
}

std::string words_of_caught() {
  try {
    throw;
  } catch (const std::exception& fault) {
    return fault.what();
  } catch (...) {
    return "an unknown fault";
  }
}

}  // namespace

std::string caught_sentence(bool ends) {
  if (is_lack_of_memory()) return "There is not enough memory to go on. What was saved is safe.";
  return (ends ? "Orvello cannot go on: " : "Something in Orvello went wrong: ") +
         words_of_caught() + ". What was saved is safe.";
}

bool FaultTeller::note(const std::string& sentence) {
  if (known_.size() >= kMostFaults || !known_.insert(sentence).second) return false;
  std::cerr << "orvello: " << sentence << std::endl;
  if (log) log(sentence);
  return true;
}

// While one is told, another has nothing to add.
void FaultTeller::tell_now(const std::string& sentence, bool ends) {
  if (!tell || (telling_ && !ends)) return;
  telling_ = true;
  try {
    tell(sentence, ends);
  } catch (...) {
    take_caught();
  }
  telling_ = ending_ = false;
}

void FaultTeller::take_caught() noexcept {
  const bool ends = is_lack_of_memory();
  if (ending_) return;
  try {
    const std::string sentence = caught_sentence(false);
    if (!note(sentence) && !ends) return;
    ending_ = ends;
    // A box in the middle of a paint or of another's event would find the toolkit unprepared.
    if (later) later([this, sentence, ends] { tell_now(sentence, ends); });
  } catch (...) {  // not even for that
    if (ends && give_up) give_up();
  }
}

bool FaultTeller::guard(const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (...) {
    const std::string sentence = caught_sentence(true);
    note(sentence);
    tell_now(sentence, true);
  }
  return false;
}

}  // namespace orvello
