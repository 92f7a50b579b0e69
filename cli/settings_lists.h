// The lists of the settings volume as a whole: read, and replaced in one step.
#pragma once

#include "cli/settings_document.h"
#include "ports/files.h"
#include "ports/record_databases.h"

namespace orvello {

class VolumeLists {
 public:
  // `name` is what the volume is called in sentences.
  VolumeLists(RecordDatabases& databases, const Files& files, std::string name)
      : databases_(databases), files_(files), name_(std::move(name)) {}

  // What is there; a missing volume has no lists, and is not made. What a list could not be written
  // down as (without text, twice) is left out. Fails with a sentence.
  Result<SettingsLists> read() const;
  // The lists that are there in `lists`, and the profiles of these names, take the others' places,
  // all or none; the rest stays. The value is how many there are.
  Result<int> replace(const SettingsLists& lists) const;
  // Takes such a replacement back; `before` is what was read before it.
  Result<int> put_back(const SettingsLists& before, const SettingsLists& replaced) const;

 private:
  Result<int> replace(const std::vector<Text>& removed,
                      const std::vector<NewDatabase>& databases) const;
  std::string reason() const;
  bool read_list(VolumeId volume, const DatabaseInfo& database, SettingsLists& lists) const;

  RecordDatabases& databases_;
  const Files& files_;
  std::string name_;
};

}  // namespace orvello
