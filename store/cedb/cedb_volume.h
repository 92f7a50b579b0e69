// One mounted volume, or the device's object store, through the platform's calls. Each function
// answers with the reason of its failure, `none` where it worked.
#pragma once

#include <memory>
#include <vector>

#include "ports/record_databases.h"
#include "store/cedb/cedb_calls.h"

namespace orvello {

// How long what another program has locked is waited for: less than half a second in all, and that
// again only after a rest, so that a row of operations on a locked volume does not add up.
class CedbPatience {
 public:
  explicit CedbPatience(const CedbCalls& calls) : calls_(calls) {}
  DWORD left();
  // Rests for a moment; false when patience is at its end.
  bool wait();
  void spent(DWORD since);  // waited from that tick on

 private:
  const CedbCalls& calls_;
  DWORD last_ = 0, left_ = 0;
  bool ever_ = false;
};

// What the platform's last error means here.
DatabaseError cedb_reason(const CedbCalls& calls);

// A handle of a database or an enumeration, closed once.
class CedbHandle {
 public:
  CedbHandle() = default;
  CedbHandle(const CedbCalls& calls, HANDLE handle) : calls_(&calls), handle_(handle) {}
  CedbHandle(CedbHandle&& other) noexcept { *this = std::move(other); }
  CedbHandle& operator=(CedbHandle&& other) noexcept;
  ~CedbHandle() { close(); }
  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE && handle_ != nullptr; }
  HANDLE get() const { return handle_; }
  void close();

 private:
  const CedbCalls* calls_ = nullptr;
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

class CedbVolume {
 public:
  // The object store. `calls` and `patience` live as long as this.
  CedbVolume(const CedbCalls& calls, CedbPatience& patience)
      : calls_(calls), patience_(patience), guid_(kSystemGuid) {}
  // Null with the reason in `error`. Creates a missing volume file.
  static std::unique_ptr<CedbVolume> mount(const CedbCalls& calls, CedbPatience& patience,
                                           TextView path, DatabaseError& error);
  ~CedbVolume() { unmount(); }
  CedbVolume(const CedbVolume&) = delete;
  CedbVolume& operator=(const CedbVolume&) = delete;
  DatabaseError unmount();

  const CedbCalls& calls() const { return calls_; }
  DatabaseError list(std::vector<DatabaseInfo>& databases);
  DatabaseError info(CeOid database, std::optional<DatabaseInfo>& found);
  // Names have 1 to 31 units; the platform would cut a longer one, and then two could be the same.
  DatabaseError create(TextView name, PropertyId sort_property, CeOid& made);
  DatabaseError rename(CeOid database, TextView name);
  DatabaseError remove(CeOid database);
  // By its name where `id` is 0, and gives its id then.
  DatabaseError open(TextView name, PropertyId sort_property, CeOid& id, CedbHandle& opened);
  // What was written is on the disk after that.
  DatabaseError flush();

 private:
  bool is_object_store() const;
  DatabaseError reason() const { return cedb_reason(calls_); }

  const CedbCalls& calls_;
  CedbPatience& patience_;
  CeGuid guid_;
};

}  // namespace orvello
