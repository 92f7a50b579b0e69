// The three folders of the desktop's base-directory rules, or one folder for everything.
#pragma once

#include <optional>
#include <string>

#include "base/result.h"
#include "hosts/shared/paths.h"

namespace orvello {

// `data_option` puts everything under that one folder. Relative values in the environment are
// ignored, as the rules want. Fails when there is no home folder to start from.
Result<Paths> choose_paths(const std::optional<std::string>& data_option);

// Creates the folders that are missing, for their owner alone, and makes sure that they can be
// written to, or at least read when the calendar is there. The reason names the folder. Folders
// that exist keep their permissions.
Result<Paths> prepare_folders(const Paths& paths);

// From now on, files that this process creates are for their owner alone.
void keep_files_private();

}  // namespace orvello
