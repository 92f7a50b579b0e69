// The registry as one text file. What is set is held until a flush, which takes a lock, reads the
// file again, puts the changes in and replaces it whole: other processes' values survive, and a
// reader finds the old file or the new one. Where it cannot be written everything goes on being
// held. Other processes' values are seen as a key is opened.
#pragma once

#include <string>
#include <vector>

#include "hosts/shared/registry_text.h"
#include "hosts/shared/stored_registry.h"

namespace orvello {

class FileRegistry : public StoredRegistry {
 public:
  explicit FileRegistry(std::string path);
  ~FileRegistry() override;  // writes what was not flushed
  FileRegistry(const FileRegistry&) = delete;
  FileRegistry& operator=(const FileRegistry&) = delete;

  Text trouble() const override { return to_utf16(trouble_); }
  bool is_new() const override;
  bool changed_outside() override;
  void forget_changes() override;
  std::unique_ptr<RegistryKey> open(RegistryRoot root, TextView path) override;
  std::unique_ptr<RegistryKey> create(RegistryRoot root, TextView path) override;

 private:
  class Key;
  struct Change {
    RegistryRoot root;
    Text path;
    std::optional<Text> name;  // nothing: the key itself
    RegistryValue value;
  };
  void apply_changes(RegistryText& text) const;
  const RegistryText& current();
  const RegistryText& known();  // as it was when it was looked at last
  void hold(Change change);
  bool flush();
  std::string write();  // why not; empty: written

  std::string path_, trouble_;
  std::vector<Change> changes_;  // not written yet
  RegistryText text_;            // the file as last read, with the changes
  std::string stamp_;            // tells whether the file is another one now
  std::string known_stamp_;      // of what changed_outside() has told, and of own writing
};

}  // namespace orvello
