#include "hosts/linux/file_registry.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace orvello {
namespace {

constexpr int kLockTries = 100;
constexpr useconds_t kLockPause = 20000;  // microseconds: two seconds in all

// Closes what it holds.
class File {
 public:
  File(const std::string& path, int flags)
      : number_(::open(path.c_str(), flags | O_CLOEXEC, 0600)) {}
  ~File() { close(); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  explicit operator bool() const { return number_ >= 0; }
  int number() const { return number_; }
  bool close() {
    const int number = std::exchange(number_, -1);
    return number < 0 || ::close(number) == 0;
  }

 private:
  int number_;
};

// A missing file is empty; nothing when it is there and cannot be read, so that it is not replaced.
std::optional<std::string> read_file(const std::string& path) {
  const File file(path, O_RDONLY);
  if (!file) return errno == ENOENT ? std::optional<std::string>("") : std::nullopt;
  std::string content;
  char block[4096];
  for (;;) {
    const ssize_t count = ::read(file.number(), block, sizeof block);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) return content;
    content.append(block, static_cast<std::size_t>(count));
  }
}

bool write_all(int file, const std::string& content) {
  for (std::size_t done = 0; done < content.size();) {
    const ssize_t count = ::write(file, content.data() + done, content.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    done += static_cast<std::size_t>(count);
  }
  return true;
}

std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

// Only called under the lock, so one name for the temporary file serves, and what a killed process
// left is overwritten.
bool replace_file(const std::string& path, const std::string& content) {
  const std::string temporary = path + ".new";
  ::unlink(temporary.c_str());
  File file(temporary, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
  const bool written = file && write_all(file.number(), content) && ::fsync(file.number()) == 0 &&
                       file.close() && ::rename(temporary.c_str(), path.c_str()) == 0;
  if (!written) {
    ::unlink(temporary.c_str());
    return false;
  }
  const File folder(folder_of(path), O_RDONLY | O_DIRECTORY);
  return folder && ::fsync(folder.number()) == 0;
}

// The file itself where the path is a link to it: the link is to stay.
std::string resolved(const std::string& path) {
  char* real = ::realpath(path.c_str(), nullptr);
  if (!real) return path;
  std::string result(real);
  std::free(real);
  return result;
}

bool create_private_folder(const std::string& folder) {
  std::error_code fault;
  if (std::filesystem::is_directory(folder, fault)) return true;
  return create_private_folder(folder_of(folder)) &&
         (::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST);
}

bool lock(const File& file) {
  for (int i = 0; file && i < kLockTries; ++i) {
    if (::flock(file.number(), LOCK_EX | LOCK_NB) == 0) return true;
    if (errno != EWOULDBLOCK && errno != EINTR) return false;
    ::usleep(kLockPause);
  }
  return false;
}

// Changes whenever the file is replaced or written to.
std::string stamp_of(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return "-";
  return std::to_string(info.st_dev) + ' ' + std::to_string(info.st_ino) + ' ' +
         std::to_string(info.st_size) + ' ' + std::to_string(info.st_mtim.tv_sec) + ' ' +
         std::to_string(info.st_mtim.tv_nsec);
}

}  // namespace

class FileRegistry::Key : public RegistryKey {
 public:
  Key(FileRegistry& registry, RegistryRoot root, TextView path)
      : registry_(registry), root_(root), path_(path) {}
  std::optional<RegistryValue> query(TextView name) const override {
    return registry_.current().query(root_, path_, name);
  }
  bool set(TextView name, const RegistryValue& value) override {
    return registry_.set({root_, path_, Text(name), value});
  }
  bool flush() override { return registry_.flush(); }

 private:
  FileRegistry& registry_;
  RegistryRoot root_;
  Text path_;
};

FileRegistry::~FileRegistry() { flush(); }

std::unique_ptr<RegistryKey> FileRegistry::open(RegistryRoot root, TextView path) {
  if (!current().has_key(root, path)) return nullptr;
  return std::make_unique<Key>(*this, root, path);
}

std::unique_ptr<RegistryKey> FileRegistry::create(RegistryRoot root, TextView path) {
  if (!current().has_key(root, path) && !set({root, Text(path), std::nullopt, {}})) return nullptr;
  return std::make_unique<Key>(*this, root, path);
}

void FileRegistry::apply_changes(RegistryText& text) const {
  for (const Change& change : changes_) {
    if (change.name)
      text.set(change.root, change.path, *change.name, change.value);
    else
      text.add_key(change.root, change.path);
  }
}

// Reads the file again when another process has replaced it.
const RegistryText& FileRegistry::current() {
  std::string stamp = stamp_of(path_);
  if (stamp == stamp_) return text_;
  text_ = RegistryText::parse(read_file(path_).value_or(""));
  apply_changes(text_);
  stamp_ = std::move(stamp);
  return text_;
}

bool FileRegistry::set(Change change) {
  const std::string folder = folder_of(resolved(path_));
  if (!create_private_folder(folder) || ::access(folder.c_str(), W_OK) != 0) return false;
  current();
  std::erase_if(changes_, [&](const Change& old) {
    return old.root == change.root && old.path == change.path && old.name == change.name;
  });
  changes_.push_back(std::move(change));
  apply_changes(text_);
  return true;
}

bool FileRegistry::flush() {
  if (changes_.empty()) return true;
  const std::string path = resolved(path_);
  const File lock_file(path_ + ".lock", O_RDWR | O_CREAT);
  if (!lock(lock_file)) return false;
  const auto content = read_file(path);
  if (!content) return false;
  RegistryText text = RegistryText::parse(*content);
  apply_changes(text);
  if (!replace_file(path, text.content())) return false;
  changes_.clear();
  text_ = std::move(text);
  stamp_ = stamp_of(path_);
  return true;
}

}  // namespace orvello
