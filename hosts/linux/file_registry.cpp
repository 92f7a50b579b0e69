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

#include "files/descriptor.h"
#include "files/file_reasons.h"
#include "files/input_file.h"
#include "files/replace_file.h"

namespace orvello {
namespace {

constexpr int kLockTries = 100;
constexpr useconds_t kLockPause = 20000;  // microseconds: two seconds in all

constexpr std::uint64_t kLargestRegistry = 16 << 20;

// A missing file is empty; fails when it is there and cannot be read, so that it is not replaced.
Result<std::string> read_file(const std::string& path) {
  auto content = read_whole_file(path, kLargestRegistry);
  return !content && errno == ENOENT ? std::string() : std::move(content);
}

// The folder of the file itself where the path is a link to it.
std::string real_folder_of(const std::string& path) {
  char* real = ::realpath(path.c_str(), nullptr);
  const std::string result = folder_of(real ? real : path);
  std::free(real);
  return result;
}

bool create_private_folder(const std::string& folder) {
  std::error_code fault;
  if (std::filesystem::is_directory(folder, fault)) return true;
  return create_private_folder(folder_of(folder)) &&
         (::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST);
}

bool lock(const Descriptor& file) {
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
    registry_.hold({root_, path_, Text(name), value});
    return true;
  }
  bool flush() override { return registry_.flush(); }

 private:
  FileRegistry& registry_;
  RegistryRoot root_;
  Text path_;
};

FileRegistry::FileRegistry(std::string path)
    : path_(std::move(path)), known_stamp_(stamp_of(path_)) {}

FileRegistry::~FileRegistry() { flush(); }

bool FileRegistry::is_new() const {
  std::error_code fault;
  return !std::filesystem::exists(path_, fault) && !fault;
}

std::unique_ptr<RegistryKey> FileRegistry::open(RegistryRoot root, TextView path) {
  if (!current().has_key(root, path)) return nullptr;
  return std::make_unique<Key>(*this, root, path);
}

std::unique_ptr<RegistryKey> FileRegistry::create(RegistryRoot root, TextView path) {
  if (!current().has_key(root, path)) hold({root, Text(path), std::nullopt, {}});
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
  const auto content = read_file(path_);
  text_ = RegistryText::parse(content ? *content : std::string());
  apply_changes(text_);
  stamp_ = std::move(stamp);
  return text_;
}

void FileRegistry::hold(Change change) {
  current();
  std::erase_if(changes_, [&](const Change& old) {
    return old.root == change.root && old.path == change.path && old.name == change.name;
  });
  changes_.push_back(std::move(change));
  apply_changes(text_);
}

bool FileRegistry::changed_outside() {
  std::string stamp = stamp_of(path_);
  if (stamp == known_stamp_) return false;
  known_stamp_ = std::move(stamp);
  return true;
}

void FileRegistry::forget_changes() {
  changes_.clear();
  stamp_.clear();
}

bool FileRegistry::flush() {
  trouble_ = changes_.empty() ? std::string() : write();
  return trouble_.empty();
}

std::string FileRegistry::write() {
  const std::string folder = real_folder_of(path_);
  if (!create_private_folder(folder)) return cannot_be_written(folder, errno);
  const Descriptor lock_file(
      ::open((path_ + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600));
  if (!lock_file) return cannot_be_written(path_, errno);
  if (!lock(lock_file)) return path_ + " cannot be written: another Orvello holds it.";
  const auto content = read_file(path_);
  if (!content) return content.reason();
  RegistryText text = RegistryText::parse(*content);
  apply_changes(text);
  if (const auto written = replace_file(path_, text.content()); !written) return written.reason();
  changes_.clear();
  text_ = std::move(text);
  known_stamp_ = stamp_ = stamp_of(path_);
  return {};
}

}  // namespace orvello
