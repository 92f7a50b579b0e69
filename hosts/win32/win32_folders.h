// Where this system keeps a program's files: what belongs to the person goes along from machine to
// machine, what tells of this machine stays.
#pragma once

#include <optional>
#include <string>

#include "base/result.h"
#include "hosts/shared/paths.h"

namespace orvello {

// A person's folder of the system by its number (FOLDERID_...), or what the variable says in its
// place; empty when the system does not say.
enum class PersonFolder { roaming, local, documents };
std::string folder_of_person(PersonFolder folder);

// `chosen` takes everything; empty: the person's own folders. They are made where they are missing,
// for their owner alone, and can be written to, or at least read when the calendar is there. The
// reason names the folder.
Result<Paths> open_win32_folders(const std::string& chosen);

// Whether somebody has named one folder for everything.
inline bool all_in_one_folder(const Paths& paths) { return paths.data == paths.state; }

}  // namespace orvello
