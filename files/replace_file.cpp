#include "files/replace_file.h"

#include <cerrno>
#include <chrono>
#include <random>

#include "files/descriptor.h"
#include "files/file_reasons.h"

namespace orvello {
namespace {

constexpr std::string_view kPrefix = ".orvello-", kSuffix = ".part";
constexpr std::size_t kRandomLetters = 6;
constexpr std::chrono::hours kLeftBehind{1};
constexpr int kMostNames = 100;

// Also what a database in the making had beside it.
bool is_ours(std::string_view name) {
  constexpr std::string_view kJournal = "-journal";
  if (name.ends_with(kJournal)) name.remove_suffix(kJournal.size());
  return name.size() == kPrefix.size() + kRandomLetters + kSuffix.size() &&
         name.starts_with(kPrefix) && name.ends_with(kSuffix);
}

// The name, the owner and the age say that it is one of this program's, and the lock that the
// process which made it is gone.
void remove_left_behind(const std::string& folder) {
  const auto names = names_in_folder(folder);
  if (!names) return;
  using std::chrono::system_clock;
  const auto now = system_clock::now().time_since_epoch();
  for (const std::string& name : *names) {
    if (!is_ours(name)) continue;
    const std::string path = path_in(folder, name);
    const Descriptor file(open_file_to_read(path, FileLinks::look_at));
    const auto status = file ? status_of_file(file.number()) : std::nullopt;
    if (!status || status->kind != FileKind::file || !status->is_own || status->names != 1 ||
        now - std::chrono::nanoseconds(status->changed) < kLeftBehind)
      continue;
    if (hold_file(file.number(), FileHold::alone)) remove_file(path);
  }
}

std::string random_name() {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  std::random_device chance;
  std::string name(kPrefix);
  for (std::size_t i = 0; i < kRandomLetters; ++i) name += kLetters[chance() % kLetters.size()];
  return name.append(kSuffix);
}

Result<std::size_t> write_plainly(const std::string& path, std::string_view content) {
  const auto failure = [&path](int error) {
    return Result<std::size_t>::failure(cannot_be_written(path, error));
  };
  Descriptor file(open_channel_to_write(path));
  if (!file && errno == ENXIO)
    return Result<std::size_t>::failure(path + " cannot be written: nobody reads from it.");
  if (!file) return failure(errno);
  if (!write_all(file.number(), content) || !file.close()) return failure(errno);
  return content.size();
}

}  // namespace

FileInTheMaking::FileInTheMaking(const std::string& target) : target_(target) {
  const std::string folder = folder_of(target);
  remove_left_behind(folder);
  for (int i = 0; i < kMostNames && !exists(); ++i) {
    path_ = path_in(folder, random_name());
    file_ = Descriptor(make_new_file(path_));
    if (!exists() && errno != EEXIST) return;
  }
  if (exists()) hold_file(file_.number(), FileHold::alone);
}

FileInTheMaking::~FileInTheMaking() {
  const int error = errno;
  if (!path_.empty() && exists()) remove_file(path_);
  file_.close();
  errno = error;
}

bool FileInTheMaking::put_in_place(TakenName taken) {
  if (!exists() || !sync_file(file_.number()) || !rename_file(path_, target_, taken)) return false;
  path_.clear();
  return true;
}

Result<std::size_t> replace_file(const std::string& path, std::string_view content) {
  const auto failure = [&path](int error) {
    return Result<std::size_t>::failure(cannot_be_written(path, error));
  };
  auto status = status_of_file(path, FileLinks::look_at);
  if (!status && errno != ENOENT) return failure(errno);
  const bool exists = status.has_value(), link = exists && status->is_link;
  if (link) status = status_of_file(path);
  if (link && !status)
    return Result<std::size_t>::failure(path + " cannot be written: it is a link that leads to " +
                                        "no file.");
  if (exists && status->kind == FileKind::folder) return failure(EISDIR);
  if (exists && status->kind == FileKind::channel) return write_plainly(path, content);
  if (exists && status->kind != FileKind::file)
    return Result<std::size_t>::failure(path + " cannot be written: it is no file.");
  // Replacing needs the folder's permission only; a file that is write-protected is meant to stay.
  if (exists && !may_write_file(path)) return failure(errno);
  const std::string target = link ? real_path(path) : path;
  if (target.empty()) return failure(errno);
  FileInTheMaking made(target);
  if (!made.exists() || (exists && !take_over_rights(made.descriptor(), target)) ||
      !write_all(made.descriptor(), content) || !made.put_in_place(TakenName::replace))
    return failure(errno);
  if (!sync_folder(folder_of(target)))
    return Result<std::size_t>::failure(
        path + " was written, but its folder could not be synced: " + reason_of(errno) + ".");
  return content.size();
}

Result<bool> create_whole_file(const std::string& path, std::string_view content) {
  if (status_of_file(path, FileLinks::look_at)) return false;
  FileInTheMaking made(path);
  if (made.exists() && write_all(made.descriptor(), content) &&
      made.put_in_place(TakenName::keep) && sync_folder(folder_of(path)))
    return true;
  if (errno == EEXIST) return false;
  return Result<bool>::failure(cannot_be_written(path, errno));
}

}  // namespace orvello
