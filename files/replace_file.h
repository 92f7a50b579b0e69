// Writing whole files, in one way for the entire program.
//
// The content goes into a private file of a random name in the target's folder, is brought to the
// disk, and takes the target's name in one step: whatever happens, the name stands for the old
// content or the new one. A file that exists keeps its mode; a new one is for its owner alone. A
// link is followed to the file it names, since whoever made it wanted the file there. What a killed
// process left behind is removed by the next replacement in that folder, once it is an hour old and
// nobody holds it.
#pragma once

#include <string>
#include <string_view>

#include "base/result.h"
#include "files/descriptor.h"

namespace orvello {

// The value is the number of bytes. Fails with a sentence that names the file and the reason; the
// target is as it was then, unless the sentence says that only its folder could not be synced.
// A pipe or a character device is written to as it is. Folders, disks and sockets are refused.
Result<std::size_t> replace_file(const std::string& path, std::string_view content);

// The same for a name that is free; never takes one that is not. The value is false when it was
// taken.
Result<bool> create_whole_file(const std::string& path, std::string_view content);

// A file in the making, for who writes it by other means: a private name in `target`'s folder,
// locked as long as this lives. `put_in_place` syncs it and gives it the target's name; it is
// removed otherwise.
class FileInTheMaking {
 public:
  explicit FileInTheMaking(const std::string& target);
  ~FileInTheMaking();
  FileInTheMaking(const FileInTheMaking&) = delete;
  FileInTheMaking& operator=(const FileInTheMaking&) = delete;

  bool exists() const { return static_cast<bool>(file_); }
  int descriptor() const { return file_.number(); }
  const std::string& path() const { return path_; }
  // False with `errno` (EEXIST: the name is taken and is to be kept).
  bool put_in_place(TakenName taken);

 private:
  std::string target_, path_;
  Descriptor file_;
};

}  // namespace orvello
