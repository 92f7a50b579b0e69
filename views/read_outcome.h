// What came of reading what a view shows.
#pragma once

namespace orvello {

enum class ReadOutcome {
  whole,
  kept,     // failed: what was read before is shown on
  nothing,  // failed, and there was nothing to keep
};

}  // namespace orvello
