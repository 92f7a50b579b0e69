// Whose file it is, and a disk that is full: the system's call for writing is another one then.
#include <windows.h>

#include <sqlite3.h>

#include "tests/store/embedded/store_file.h"

namespace orvello::test {
namespace {

using StoreProcesses = StoreFile;

LONGLONG room = 0;  // no file may be longer

BOOL WINAPI write_within_room(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written,
                              LPOVERLAPPED place) {
  const LONGLONG at = place ? LONGLONG{place->OffsetHigh} << 32 | place->Offset : 0;
  if (at + count <= room) return WriteFile(file, bytes, count, written, place);
  SetLastError(ERROR_DISK_FULL);
  return FALSE;
}

TEST_F(StoreProcesses, AFullDiskFailsTheChangeAndKeepsTheRest) {
  open()->put(record("before"));
  auto store = open();
  sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
  room = 200000;
  ASSERT_EQ(system->xSetSystemCall(system, "WriteFile",
                                   reinterpret_cast<sqlite3_syscall_ptr>(write_within_room)),
            SQLITE_OK);
  ASSERT_TRUE(store->begin());
  for (int i = 0; i < 5000; ++i)
    if (store->put(record(std::to_string(i))) == 0) break;
  EXPECT_FALSE(store->commit());
  EXPECT_EQ(store->problem(), path + " cannot be written: the disk is full.");
  EXPECT_EQ(store->oids({}, {})->size(), 1u);
  EXPECT_NE(store->put(record("small")), 0) << "there is room for this one";
  system->xSetSystemCall(system, "WriteFile", nullptr);
  EXPECT_EQ(open()->oids({}, {})->size(), 2u);
}

}  // namespace
}  // namespace orvello::test
