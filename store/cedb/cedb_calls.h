// The platform's calls for record databases on volumes, and the structures that they take, declared
// from their public documentation. These are the forms that end in Ex, which every generation of
// the device has; those that end in Ex2 came later and give nothing that is needed here. On the
// device they are looked up when the program starts, so that it also runs where there are none.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <optional>

namespace orvello {

using CeOid = DWORD;  // of a database or a record within its volume; 0 is none

struct CeGuid {
  DWORD data[4];
};
inline constexpr CeGuid kSystemGuid{};  // the object store
inline constexpr CeGuid kInvalidGuid{{0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF}};

struct CeBlob {
  DWORD count;
  BYTE* bytes;
};

struct CePropVal {
  DWORD id;     // (number << 16) | type
  WORD length;  // unused
  WORD flags;
  union {
    std::int16_t short_value;
    std::uint16_t unsigned_short;
    LONG long_value;
    ULONG unsigned_long;
    FILETIME time;
    wchar_t* text;  // in the buffer that the platform allocated
    CeBlob blob;
    BOOL boolean;
    double number;
  };
};
inline constexpr WORD kPropNotFound = 0x0100;

struct CeSortOrder {
  DWORD property;
  DWORD flags;
};

inline constexpr std::size_t kDatabaseNameUnits = 32;  // with the terminator
struct CeDatabaseInfo {
  DWORD flags;  // which of the fields are valid
  wchar_t name[kDatabaseNameUnits];
  DWORD type;
  WORD record_count;
  WORD sort_order_count;
  DWORD size;
  FILETIME last_modified;
  CeSortOrder sort_orders[4];
};
inline constexpr DWORD kValidName = 0x01;
inline constexpr DWORD kValidCreation = 0x17;  // name, type, sort order, database flags

struct CeFileInfo {
  DWORD attributes;
  CeOid parent;
  wchar_t name[MAX_PATH];
  FILETIME last_changed;
  DWORD length;
};

struct CeOidInfo {
  WORD kind;
  WORD padding;
  union {
    CeFileInfo file;  // the largest: the platform may fill as much
    CeDatabaseInfo database;
  };
};
inline constexpr WORD kDatabaseObject = 3;

struct CeNotifyRequest {
  DWORD size;
  HWND window;
  DWORD flags;
  HANDLE heap;
  DWORD parameter;
};

// The device's processors have pointers of four bytes.
static_assert(sizeof(void*) != 4 || (sizeof(CePropVal) == 16 && sizeof(CeNotifyRequest) == 20));
static_assert(sizeof(CeDatabaseInfo) == 120 && sizeof(CeFileInfo) == 540);

inline constexpr DWORD kAutoIncrement = 1;  // of an opening: each read goes on to the next record
inline constexpr DWORD kAllowRealloc =
    1;  // of a read: the platform allocates, or grows, the buffer

// Each call is named after the platform's. Handles of databases and enumerations are closed by
// CloseHandle; a buffer that a read has allocated is freed by LocalFree.
struct CedbCalls {
  std::function<BOOL(CeGuid*, wchar_t* path, DWORD disposition)> CeMountDBVol;
  std::function<BOOL(CeGuid*)> CeUnmountDBVol;
  std::function<BOOL(CeGuid*)> CeFlushDBVol;
  std::function<HANDLE(CeGuid*, DWORD type)> CeFindFirstDatabaseEx;
  std::function<CeOid(HANDLE, CeGuid*)> CeFindNextDatabaseEx;
  std::function<BOOL(CeGuid*, CeOid, CeOidInfo*)> CeOidGetInfoEx;
  std::function<CeOid(CeGuid*, CeDatabaseInfo*)> CeCreateDatabaseEx;
  std::function<BOOL(CeGuid*, CeOid, CeDatabaseInfo*)> CeSetDatabaseInfoEx;
  std::function<BOOL(CeGuid*, CeOid)> CeDeleteDatabaseEx;
  std::function<HANDLE(CeGuid*, CeOid*, wchar_t* name, DWORD sort_property, DWORD flags,
                       CeNotifyRequest*)>
      CeOpenDatabaseEx;
  std::function<CeOid(HANDLE, DWORD flags, WORD* count, DWORD* properties, BYTE** buffer,
                      DWORD* size, HANDLE heap)>
      CeReadRecordPropsEx;
  std::function<CeOid(HANDLE, CeOid, WORD count, CePropVal*)> CeWriteRecordProps;
  std::function<BOOL(HANDLE, CeOid)> CeDeleteRecord;
  std::function<BOOL(HANDLE)> CloseHandle;
  std::function<HLOCAL(HLOCAL)> LocalFree;
  std::function<DWORD()> GetLastError;
  std::function<DWORD()> GetTickCount;
  std::function<void(DWORD milliseconds)> Sleep;
  // One program at a time takes its turn at the volumes; false when none came in that time. A turn
  // of a program that died ends with it.
  std::function<bool(DWORD milliseconds)> take_turn;
  std::function<void()> end_turn;
};

// Gives `calls` their turns, which the programs of one person share; false when the system cannot.
bool add_turns(CedbCalls& calls);

// Nothing on a system without them.
std::optional<CedbCalls> device_cedb_calls();

}  // namespace orvello
