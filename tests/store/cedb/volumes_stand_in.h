// A device's volumes behind the platform's calls, as far as its documentation tells of them, for
// programs on any Windows. What it leaves open is done in the way that is hardest on a caller:
// orders by a language, properties in any order and of types that nobody asked for, buffers that
// move. Counts what is open and allocated, and fails on demand.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "store/cedb/cedb_calls.h"

namespace orvello {

class VolumesStandIn {
 public:
  // The calls as another program on the device has them.
  CedbCalls program();
  // Its process ends: what it has open is closed, and none of its calls works from then on.
  void kill(std::size_t program_number);
  // The device is switched off and on, and no program lives: all that was not flushed is lost, or
  // the records alone, while databases came into being and took their names.
  enum class Lost { everything, records };
  void lose_power(Lost lost);

  // Asked at each call by its name; other than 0: the call fails so.
  std::function<DWORD(const std::string& call)> fault;
  bool nothing_left() const { return handles_.empty() && mounts_.empty() && blocks_ == 0; }
  std::size_t programs() const { return alive_.size(); }
  DWORD clock = 1000;  // milliseconds; sleeping moves it, unless its ticks are far apart
  bool coarse_clock = false;
  int turn_of = -1;  // the program whose turn it is; -2 is one that is none of these

 private:
  struct Value {
    CePropVal head;
    std::wstring text;
  };
  struct StoredRecord {
    std::map<DWORD, Value> values;
  };
  struct StoredDatabase {
    std::wstring name;
    DWORD sort_property = 0;
    std::map<CeOid, StoredRecord> records;
  };
  struct StoredVolume {
    std::map<CeOid, StoredDatabase> databases, flushed;
  };
  struct OpenHandle {
    std::size_t program;
    std::wstring path;
    CeOid database = 0;  // 0: an enumeration of databases
    std::vector<CeOid> order;
    std::size_t next = 0;
  };

  bool enter(std::size_t program, const std::string& call);
  BOOL fail(DWORD error);
  StoredVolume* volume_at(const CeGuid* guid, std::wstring* path = nullptr);
  StoredDatabase* database_at(const CeGuid* guid, CeOid database);
  StoredDatabase* database_of(HANDLE handle, OpenHandle** opened = nullptr);
  HANDLE keep(OpenHandle handle);
  void add_volume_calls(CedbCalls& calls, std::size_t program);
  void add_database_calls(CedbCalls& calls, std::size_t program);
  void add_record_calls(CedbCalls& calls, std::size_t program);
  void add_system_calls(CedbCalls& calls, std::size_t program);
  BOOL mount(std::size_t program, CeGuid* guid, const wchar_t* path);
  HANDLE open(std::size_t program, const CeGuid* guid, CeOid* id, const wchar_t* name,
              DWORD property);
  CeOid read(HANDLE handle, WORD* count, BYTE** buffer, DWORD* size);
  CeOid write(HANDLE handle, CeOid id, WORD count, const CePropVal* values);

  std::map<std::wstring, StoredVolume> volumes_{{L"", {}}};  // by path; "" is the object store
  std::map<DWORD, std::pair<std::size_t, std::wstring>> mounts_;
  std::map<std::uintptr_t, OpenHandle> handles_;
  std::vector<bool> alive_;
  int blocks_ = 0, turns_ = 0;
  DWORD last_error_ = 0, next_ = 1;
};

}  // namespace orvello
