// Where the program's files live.
#pragma once

#include "calendar/locale_data.h"
#include "ports/files.h"

namespace orvello {

// Without a closing backslash, unless it is the root, "\". A module path that a device would cut is
// kept whole: cut, it would name another folder.
void GetProgramDirectory(const Files& files, Text& directory);

// The path of a file beside the program.
Text path_beside_program(const Files& files, TextView name);
Text settings_volume_path(const Files& files);

bool FileExists(const Files& files, TextView path);
bool LocaleUses24HourClock(const LocaleData& locale);

}  // namespace orvello
