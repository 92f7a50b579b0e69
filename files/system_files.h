// What the system does with files, in one form for every system; system_files_SYSTEM.cpp carries it
// out. Paths are UTF-8. What fails leaves why in `errno`, in the numbers that file_reasons.h has
// words for. Open files are numbers, -1 for none; see Descriptor.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvello {

enum class FileKind {
  file,
  folder,
  channel,  // a pipe or a character device that has a place among the files
  other
};

using FileTime = std::int64_t;  // nanoseconds since 1970, in steps that the disk can keep

struct FileStatus {
  FileKind kind = FileKind::other;
  bool is_link = false;    // only where links are not followed
  bool is_own = false;     // of who runs this process
  bool is_hidden = false;  // by more than its name
  unsigned names = 0;
  std::uint64_t size = 0;
  FileTime changed = 0;
  std::uint64_t disk = 0, number = 0;  // both the same: one file
  bool same_file(const FileStatus& other) const {
    return disk == other.disk && number == other.number;
  }
};

enum class FileLinks { follow, look_at };

std::optional<FileStatus> status_of_file(const std::string& path,
                                         FileLinks links = FileLinks::follow);
std::optional<FileStatus> status_of_file(int file);
bool may_read_file(const std::string& path);
bool may_write_file(const std::string& path);  // a folder: make files in it

// A device or a pipe is opened without being waited for, or refused; `look_at` refuses a link.
int open_file_to_read(const std::string& path, FileLinks links = FileLinks::follow);
// For reading as well; made for its owner alone where there is none.
int open_or_make_file(const std::string& path, FileLinks links = FileLinks::follow);
// For reading as well, for its owner alone; never takes a name that is taken (EEXIST).
int make_new_file(const std::string& path);
// Whatever is written goes behind what is there; made for its owner alone where there is none.
int open_file_to_append(const std::string& path);
// A pipe or a device, whose slow readers are waited for. ENXIO: nobody reads.
int open_channel_to_write(const std::string& path);
bool close_descriptor(int file);

// How many bytes were read, 0 at the end, -1.
std::int64_t read_bytes(int file, char* bytes, std::size_t count);
std::int64_t read_bytes_at(int file, void* bytes, std::size_t count, std::uint64_t offset);
bool write_all(int file, std::string_view bytes);  // all of them

enum class FileHold { shared, alone };
// Without waiting; EWOULDBLOCK: somebody else holds it. It ends with the open file.
bool hold_file(int file, FileHold hold);

bool sync_file(int file);
bool sync_folder(const std::string& folder);
bool set_time_of_change(int file, FileTime time);
// Who may do what with an existing file, as far as this process may give that to another.
bool take_over_rights(int file, const std::string& existing);

bool remove_file(const std::string& path);
// In one step, on one disk; `keep` fails with EEXIST when the new name is taken.
enum class TakenName { replace, keep };
bool rename_file(const std::string& from, const std::string& to, TakenName taken);
bool name_file_twice(const std::string& path, const std::string& other);
// For its owner alone.
bool make_folder(const std::string& path);
// With all above it, as far as they are missing; true when it is there in the end.
bool make_folders(const std::string& path);
// The names in a folder, without its own and its parent's; nothing when the list breaks off.
std::optional<std::vector<std::string>> names_in_folder(const std::string& folder);
// The file itself where the path leads over links; empty for one that leads nowhere.
std::string real_path(const std::string& path);
bool disk_is_full(const std::string& folder);

std::string folder_of(const std::string& path);
std::string path_in(const std::string& folder, std::string_view name);
std::string name_in_path(const std::string& path);  // behind its folder
// The same for two names that mean one file here: capitals may not count.
std::string folded_name(std::string name);
bool is_absolute_path(std::string_view path);

// The `errno` for a number that a library got from the system.
int errno_of_system(int error);
// Whether a file that is open here or elsewhere may be given another name or be replaced.
bool open_files_can_move();

}  // namespace orvello
