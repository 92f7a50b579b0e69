#include "store/embedded/sqlite/checked_pages.h"

#include <sqlite3.h>

#include <cstring>
#include <new>

namespace orvello {
namespace {

constexpr int kHeaderSize = 100;
constexpr int kReservedAt = 20;  // in the file's header
constexpr int kPageSizeAt = 16;

constexpr int kLargestPage = 65536;

sqlite3_vfs* system_files() {
  static sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
  return system;
}

// What SQLite sees as its file; the system's own file object stands right behind it.
struct CheckedFile {
  sqlite3_file base;
  int page_size;        // 0: pages are not checked
  bool empty;           // nothing is known of the page size yet
  unsigned char* page;  // kLargestPage bytes, for a read of a part of one
  // Of a journal, what an interrupted transaction is taken back from: SQLite looks at a sample of
  // each page there, and the page would get a new checksum over what is wrong in it.
  CheckedFile* database;
  std::uint32_t number;  // of the page whose copy follows
  sqlite3_file* system() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

CheckedFile& checked(sqlite3_file* file) { return *reinterpret_cast<CheckedFile*>(file); }
sqlite3_file* below(sqlite3_file* file) { return checked(file).system(); }

int stored_page_size(const unsigned char* header) {
  const int size = header[kPageSizeAt] << 8 | header[kPageSizeAt + 1];
  return size == 1 ? 65536 : size;
}

bool is_page_size(int bytes) {
  return bytes >= 512 && bytes <= kLargestPage && (bytes & (bytes - 1)) == 0;
}

// Once a file is checked it stays so: a header that says otherwise is damage.
void learn(CheckedFile& file, const unsigned char* header) {
  file.empty = false;
  if (file.page_size != 0) return;
  const int size = stored_page_size(header);
  file.page_size = header[kReservedAt] == kCheckedBytes && is_page_size(size) ? size : 0;
}

std::uint64_t checksum_of(const unsigned char* page, int size, sqlite3_int64 offset) {
  const auto length = static_cast<std::size_t>(size - kCheckedBytes);
  return page_checksum(static_cast<std::uint32_t>(offset / size + 1),
                       {reinterpret_cast<const char*>(page), length});
}

bool page_is_good(const unsigned char* page, int size, sqlite3_int64 offset) {
  std::uint64_t stored = 0;
  std::memcpy(&stored, page + size - kCheckedBytes, sizeof stored);
  return stored == checksum_of(page, size, offset);
}

int read_file(sqlite3_file* handle, void* bytes, int count, sqlite3_int64 offset) {
  CheckedFile& file = checked(handle);
  auto* out = static_cast<unsigned char*>(bytes);
  const int result = file.system()->pMethods->xRead(file.system(), bytes, count, offset);
  if (result != SQLITE_OK) return result;
  // The header alone is asked for before an interrupted transaction has been taken back: it may be
  // half of one then. Its page is read whole before anything is believed of it.
  if (offset == 0 && count >= kHeaderSize) learn(file, out);
  if (file.page_size == 0 || (offset < kHeaderSize && count <= kHeaderSize)) return SQLITE_OK;
  const sqlite3_int64 start = offset - offset % file.page_size;
  if (offset == start && count == file.page_size)
    return page_is_good(out, count, offset) ? SQLITE_OK : SQLITE_IOERR_DATA;
  if (offset + count > start + file.page_size) return SQLITE_IOERR_DATA;  // no reader does that
  const int whole = file.system()->pMethods->xRead(file.system(), file.page, file.page_size, start);
  if (whole != SQLITE_OK) return whole;
  return page_is_good(file.page, file.page_size, start) ? SQLITE_OK : SQLITE_IOERR_DATA;
}

int write_file(sqlite3_file* handle, const void* bytes, int count, sqlite3_int64 offset) {
  CheckedFile& file = checked(handle);
  const auto* in = static_cast<const unsigned char*>(bytes);
  if (offset == 0 && count >= kHeaderSize) learn(file, in);
  // Of a new file any page may come first.
  const bool checks = file.empty ? is_page_size(count) : count == file.page_size;
  if (!checks || offset % count != 0)
    return file.system()->pMethods->xWrite(file.system(), bytes, count, offset);
  // Into SQLite's own page, so that the copy which a later transaction's journal takes of it is
  // checked as well.
  const std::uint64_t sum = checksum_of(in, count, offset);
  std::memcpy(const_cast<unsigned char*>(in) + count - kCheckedBytes, &sum, sizeof sum);
  return file.system()->pMethods->xWrite(file.system(), bytes, count, offset);
}

int close_file(sqlite3_file* file) {
  delete[] checked(file).page;
  return below(file)->pMethods->xClose(below(file));
}
int truncate_file(sqlite3_file* file, sqlite3_int64 size) {
  return below(file)->pMethods->xTruncate(below(file), size);
}
int sync_file(sqlite3_file* file, int flags) {
  return below(file)->pMethods->xSync(below(file), flags);
}
int size_of_file(sqlite3_file* file, sqlite3_int64* size) {
  return below(file)->pMethods->xFileSize(below(file), size);
}
int lock_file(sqlite3_file* file, int level) {
  return below(file)->pMethods->xLock(below(file), level);
}
int unlock_file(sqlite3_file* file, int level) {
  return below(file)->pMethods->xUnlock(below(file), level);
}
int look_at_lock(sqlite3_file* file, int* reserved) {
  return below(file)->pMethods->xCheckReservedLock(below(file), reserved);
}
int control_file(sqlite3_file* file, int what, void* argument) {
  return below(file)->pMethods->xFileControl(below(file), what, argument);
}
int sector_size(sqlite3_file* file) { return below(file)->pMethods->xSectorSize(below(file)); }
int characteristics(sqlite3_file* file) {
  return below(file)->pMethods->xDeviceCharacteristics(below(file));
}

int read_journal(sqlite3_file* handle, void* bytes, int count, sqlite3_int64 offset) {
  CheckedFile& journal = checked(handle);
  const int result = journal.system()->pMethods->xRead(journal.system(), bytes, count, offset);
  if (result != SQLITE_OK) return result;
  const auto* in = static_cast<const unsigned char*>(bytes);
  if (count == 4) journal.number = big_endian(in);
  const int size = journal.database->page_size;
  if (size == 0 || count != size) return SQLITE_OK;
  return page_is_good(in, size, (sqlite3_int64{journal.number} - 1) * size) ? SQLITE_OK
                                                                            : SQLITE_IOERR_DATA;
}
int write_journal(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
  return below(file)->pMethods->xWrite(below(file), bytes, count, offset);
}

// The first version of the methods has no memory mapping and no shared memory: every page comes
// through here, and there is no write-ahead log whose pages would not.
constexpr sqlite3_io_methods methods(decltype(&read_file) read, decltype(&write_file) write) {
  sqlite3_io_methods methods = {};
  methods.iVersion = 1;
  methods.xClose = close_file;
  methods.xRead = read;
  methods.xWrite = write;
  methods.xTruncate = truncate_file;
  methods.xSync = sync_file;
  methods.xFileSize = size_of_file;
  methods.xLock = lock_file;
  methods.xUnlock = unlock_file;
  methods.xCheckReservedLock = look_at_lock;
  methods.xFileControl = control_file;
  methods.xSectorSize = sector_size;
  methods.xDeviceCharacteristics = characteristics;
  return methods;
}
constexpr sqlite3_io_methods kFileMethods = methods(read_file, write_file);
constexpr sqlite3_io_methods kJournalMethods = methods(read_journal, write_journal);

int open_file(sqlite3_vfs*, const char* name, sqlite3_file* handle, int flags, int* out_flags) {
  sqlite3_vfs* system = system_files();
  const bool is_database = flags & SQLITE_OPEN_MAIN_DB,
             is_journal = flags & SQLITE_OPEN_MAIN_JOURNAL;
  // Scratch files are the system's alone.
  if (!is_database && !is_journal) return system->xOpen(system, name, handle, flags, out_flags);
  auto* file = new (handle) CheckedFile{};
  if (const int result = system->xOpen(system, name, file->system(), flags, out_flags);
      result != SQLITE_OK)
    return result;
  file->base.pMethods = is_database ? &kFileMethods : &kJournalMethods;
  if (is_journal) {
    file->database = &checked(sqlite3_database_file_object(name));
    return SQLITE_OK;
  }
  file->page = new (std::nothrow) unsigned char[kLargestPage];
  sqlite3_int64 size = 0;
  if (!file->page) return SQLITE_NOMEM;  // whoever opened closes
  if (size_of_file(handle, &size) != SQLITE_OK) return SQLITE_IOERR_FSTAT;
  file->empty = size == 0;
  return SQLITE_OK;
}

sqlite3_vfs make_layer() {
  const sqlite3_vfs* system = system_files();
  sqlite3_vfs layer = *system;
  layer.szOsFile = static_cast<int>(sizeof(CheckedFile)) + system->szOsFile;
  layer.zName = "orvello-checked";
  layer.xOpen = open_file;
  return layer;
}

}  // namespace

std::uint64_t page_checksum(std::uint32_t number, std::string_view content) {
  // Two running sums, each of which takes the other in: order and place of every word count. The
  // number makes a page in another's place, and one full of zeros, a wrong page.
  std::uint32_t a = number * 2654435761u + 1, b = ~number;
  for (std::size_t at = 0; at + 8 <= content.size(); at += 8) {
    std::uint32_t words[2];
    std::memcpy(words, content.data() + at, sizeof words);
    a += words[0] + b;
    b += words[1] + a;
  }
  return static_cast<std::uint64_t>(b) << 32 | a;
}

const char* checked_pages() {
  static sqlite3_vfs layer = make_layer();
  static const bool registered = sqlite3_vfs_register(&layer, 0) == SQLITE_OK;
  return registered ? layer.zName : nullptr;
}

bool reserve_checked_bytes(sqlite3* db) {
  int bytes = kCheckedBytes;
  return sqlite3_file_control(db, "main", SQLITE_FCNTL_RESERVE_BYTES, &bytes) == SQLITE_OK;
}

}  // namespace orvello
