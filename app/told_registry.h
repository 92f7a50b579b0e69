// The registry as the application lends it: the first time in a session that something could not be
// kept, whoever wanted to keep it, the person is told.
#pragma once

#include <functional>
#include <utility>

#include "ports/registry.h"

namespace orvello {

class ToldRegistry : public Registry {
 public:
  // `tell` is called at most once, with the reason.
  ToldRegistry(Registry& registry, std::function<void(Text)> tell)
      : registry_(registry), tell_(std::move(tell)) {}
  ToldRegistry(const ToldRegistry&) = delete;
  ToldRegistry& operator=(const ToldRegistry&) = delete;

  Text trouble() const override { return registry_.trouble(); }
  std::unique_ptr<RegistryKey> open(RegistryRoot root, TextView path) override;
  std::unique_ptr<RegistryKey> create(RegistryRoot root, TextView path) override;

 private:
  class Key;
  std::unique_ptr<RegistryKey> told(std::unique_ptr<RegistryKey> key);

  Registry& registry_;
  std::function<void(Text)> tell_;
};

}  // namespace orvello
