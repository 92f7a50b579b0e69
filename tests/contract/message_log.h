// What arrived at a window's handler.
#pragma once

#include <functional>
#include <vector>

#include "ports/main_window.h"
#include "ports/messages.h"

namespace orvello {

class Recorder : public MessageHandler {
 public:
  bool handle_message(const Message& message) override {
    messages.push_back(message);
    return on_message && on_message(message);
  }
  std::vector<Message> of(std::uint32_t id) const {
    std::vector<Message> found;
    for (const Message& message : messages)
      if (message.id == id) found.push_back(message);
    return found;
  }
  int count(std::uint32_t id) const { return static_cast<int>(of(id).size()); }
  std::vector<Message> messages;
  std::function<bool(const Message&)> on_message;
};

}  // namespace orvello
