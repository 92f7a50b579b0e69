// The platform's objects on this thread: a screen reader's, and those that other ports ask.
#pragma once

#include <windows.h>

// After it.
#include <ole2.h>

namespace orvello {

class ComApartment {
 public:
  ComApartment() : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ~ComApartment() {
    if (entered_) CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  bool entered_;  // else the thread is in one already, or of another kind
};

}  // namespace orvello
