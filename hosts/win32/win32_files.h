// The files port on this system: the program's folder is the data folder.
#pragma once

#include "hosts/shared/paths.h"
#include "ports/files.h"

namespace orvello {

class Win32Files : public Files {
 public:
  explicit Win32Files(Paths paths) : paths_(std::move(paths)) {}
  Text module_file_name() const override;
  bool exists(TextView path) const override;
  std::optional<Image> load_bitmap(TextView path) const override;
  bool append_diagnostic_line(TextView line) override;

 private:
  Paths paths_;
};

}  // namespace orvello
