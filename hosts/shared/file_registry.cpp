#include "hosts/shared/file_registry.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>

#include "files/descriptor.h"
#include "files/file_reasons.h"
#include "files/input_file.h"
#include "files/replace_file.h"

namespace orvello {
namespace {

constexpr int kLockTries = 100;
constexpr std::chrono::milliseconds kLockPause{20};  // two seconds in all

constexpr std::uint64_t kLargestRegistry = 16 << 20;

// A missing file is empty; fails when it is there and cannot be read, so that it is not replaced.
Result<std::string> read_file(const std::string& path) {
  auto content = read_whole_file(path, kLargestRegistry);
  return !content && errno == ENOENT ? std::string() : std::move(content);
}

// The folder of the file itself where the path is a link to it.
std::string real_folder_of(const std::string& path) {
  const std::string real = real_path(path);
  return folder_of(real.empty() ? path : real);
}

bool lock(const Descriptor& file) {
  for (int i = 0; file && i < kLockTries; ++i) {
    if (hold_file(file.number(), FileHold::alone)) return true;
    if (errno != EWOULDBLOCK) return false;
    std::this_thread::sleep_for(kLockPause);
  }
  return false;
}

// Changes whenever the file is replaced or written to.
std::string stamp_of(const std::string& path) {
  const auto status = status_of_file(path);
  if (!status) return "-";
  return std::to_string(status->disk) + ' ' + std::to_string(status->number) + ' ' +
         std::to_string(status->size) + ' ' + std::to_string(status->changed);
}

}  // namespace

class FileRegistry::Key : public RegistryKey {
 public:
  Key(FileRegistry& registry, RegistryRoot root, TextView path)
      : registry_(registry), root_(root), path_(path) {}
  std::optional<RegistryValue> query(TextView name) const override {
    return registry_.known().query(root_, path_, name);
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

bool FileRegistry::is_new() const { return !status_of_file(path_) && errno == ENOENT; }

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

// An open key shows what stood there when one was opened last: a file may be slow to look at.
const RegistryText& FileRegistry::known() { return stamp_.empty() ? current() : text_; }

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
  if (!make_folders(folder)) return cannot_be_written(folder, errno);
  const Descriptor lock_file(open_or_make_file(path_ + ".lock"));
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
