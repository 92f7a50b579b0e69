#include "settings/program_files.h"

namespace orvello {

void GetProgramDirectory(const Files& files, Text& directory) {
  directory = files.module_file_name();
  const std::size_t last = directory.rfind(u'\\');
  if (last == Text::npos || last == 0)
    directory.assign(1, u'\\');
  else
    directory.resize(last);
}

Text path_beside_program(const Files& files, TextView name) {
  Text path;
  GetProgramDirectory(files, path);
  if (path != u"\\") path += u'\\';
  return path.append(name);
}

Text settings_volume_path(const Files& files) {
  return path_beside_program(files, u"settings.vol");
}

bool FileExists(const Files& files, TextView path) { return files.exists(path); }

bool LocaleUses24HourClock(const LocaleData& locale) {
  return locale.time_format.empty() || locale.time_format.front() != u'0';
}

}  // namespace orvello
