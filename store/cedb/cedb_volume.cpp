#include "store/cedb/cedb_volume.h"

#include <algorithm>
#include <cstring>

#include "store/cedb/cedb_records.h"

namespace orvello {
namespace {

constexpr DWORD kCedbPatience = 400, kCedbRest = 2000, kCedbPause = 20;

bool same_guid(const CeGuid& a, const CeGuid& b) {
  return std::equal(std::begin(a.data), std::end(a.data), std::begin(b.data));
}

// What the platform hands back is ended by a null unit, or by the end of its field.
Text name_from(const CeDatabaseInfo& info) {
  const auto end = std::find(std::begin(info.name), std::end(info.name), L'\0');
  return Text(std::begin(info.name), end);
}

}  // namespace

DWORD CedbPatience::left() {
  if (!ever_ || calls_.GetTickCount() - last_ > kCedbRest) left_ = kCedbPatience;
  return left_;
}

void CedbPatience::spent(DWORD since) {
  last_ = calls_.GetTickCount();
  ever_ = true;
  left_ -= std::min(left_, last_ - since);
}

bool CedbPatience::wait() {
  if (left() <= kCedbPause) return false;
  const DWORD since = calls_.GetTickCount();
  calls_.Sleep(kCedbPause);
  spent(since);
  // However coarse the clock's ticks are, waiting comes to an end.
  if (last_ == since) left_ -= kCedbPause;
  return true;
}

DatabaseError cedb_reason(const CedbCalls& calls) {
  switch (const DWORD number = calls.GetLastError()) {
    case ERROR_PATH_NOT_FOUND:
      return DatabaseError::file_not_found;
    case ERROR_OUTOFMEMORY:
      return DatabaseError::not_enough_memory;
    case ERROR_WRITE_PROTECT:
      return DatabaseError::access_denied;
    case ERROR_HANDLE_DISK_FULL:
      return DatabaseError::disk_full;
    case ERROR_LOCK_VIOLATION:
      return DatabaseError::sharing_violation;
    case ERROR_DUP_NAME:
      return DatabaseError::already_exists;
    case ERROR_INVALID_HANDLE:
      return DatabaseError::invalid_parameter;
    case ERROR_SUCCESS:  // a failure without a reason
    case ERROR_BAD_FORMAT:
    case ERROR_FILE_CORRUPT:
    case ERROR_KEY_DELETED:  // of a record that is read: nothing tells what it was
      return DatabaseError::damaged;
    default:
      return static_cast<DatabaseError>(number);
  }
}

CedbHandle& CedbHandle::operator=(CedbHandle&& other) noexcept {
  if (this == &other) return *this;
  close();
  calls_ = other.calls_;
  handle_ = std::exchange(other.handle_, INVALID_HANDLE_VALUE);
  return *this;
}

void CedbHandle::close() {
  if (*this) calls_->CloseHandle(handle_);
  handle_ = INVALID_HANDLE_VALUE;
}

std::unique_ptr<CedbVolume> CedbVolume::mount(const CedbCalls& calls, CedbPatience& patience,
                                              TextView path, DatabaseError& error) {
  error = DatabaseError::invalid_parameter;
  std::wstring wide(path.begin(), path.end());
  if (wide.empty() || wide.size() >= MAX_PATH || wide.find(L'\0') != wide.npos) return nullptr;
  auto volume = std::make_unique<CedbVolume>(calls, patience);
  do {
    volume->guid_ = kInvalidGuid;
    if (calls.CeMountDBVol(&volume->guid_, wide.data(), OPEN_ALWAYS) &&
        !same_guid(volume->guid_, kInvalidGuid)) {
      error = DatabaseError::none;
      return volume;
    }
    error = cedb_reason(calls);
  } while (error == DatabaseError::sharing_violation && patience.wait());
  volume->guid_ = kInvalidGuid;
  return nullptr;
}

DatabaseError CedbVolume::unmount() {
  if (is_object_store() || same_guid(guid_, kInvalidGuid)) return DatabaseError::none;
  const bool done = calls_.CeUnmountDBVol(&guid_);
  guid_ = kInvalidGuid;
  return done ? DatabaseError::none : reason();
}

bool CedbVolume::is_object_store() const { return same_guid(guid_, kSystemGuid); }

DatabaseError CedbVolume::info(CeOid database, std::optional<DatabaseInfo>& found) {
  found.reset();
  CeOidInfo info{};
  if (!calls_.CeOidGetInfoEx(&guid_, database, &info)) return reason();
  if (info.kind == kDatabaseObject)
    found = {name_from(info.database), database, info.database.record_count};
  return DatabaseError::none;
}

DatabaseError CedbVolume::list(std::vector<DatabaseInfo>& databases) {
  databases.clear();
  const CedbHandle all(calls_, calls_.CeFindFirstDatabaseEx(&guid_, 0));
  if (!all) return reason();
  while (const CeOid one = calls_.CeFindNextDatabaseEx(all.get(), &guid_)) {
    std::optional<DatabaseInfo> found;
    const DatabaseError error = info(one, found);
    if (error != DatabaseError::none) return error;
    if (found) databases.push_back(std::move(*found));
  }
  return calls_.GetLastError() == ERROR_NO_MORE_ITEMS ? DatabaseError::none : reason();
}

DatabaseError CedbVolume::create(TextView name, PropertyId sort_property, CeOid& made) {
  CeDatabaseInfo info{};
  if (!fits_name(name)) return DatabaseError::invalid_parameter;
  info.flags = kValidCreation;
  std::copy(name.begin(), name.end(), info.name);
  info.sort_order_count = sort_property != 0;
  info.sort_orders[0].property = sort_property;
  made = calls_.CeCreateDatabaseEx(&guid_, &info);
  return made != 0 ? DatabaseError::none : reason();
}

DatabaseError CedbVolume::rename(CeOid database, TextView name) {
  CeDatabaseInfo info{};
  if (!fits_name(name)) return DatabaseError::invalid_parameter;
  info.flags = kValidName;
  std::copy(name.begin(), name.end(), info.name);
  return calls_.CeSetDatabaseInfoEx(&guid_, database, &info) ? DatabaseError::none : reason();
}

DatabaseError CedbVolume::remove(CeOid database) {
  DatabaseError error = DatabaseError::none;
  do {
    if (calls_.CeDeleteDatabaseEx(&guid_, database)) return DatabaseError::none;
    error = reason();
  } while (error == DatabaseError::sharing_violation && patience_.wait());
  return error;
}

DatabaseError CedbVolume::open(TextView name, PropertyId sort_property, CeOid& id,
                               CedbHandle& opened) {
  // A longer name than there can be is that of no database.
  if (id == 0 && !fits_name(name)) return DatabaseError::file_not_found;
  std::wstring wide(name.begin(), name.end());
  CeNotifyRequest no_notifications{};
  no_notifications.size = sizeof no_notifications;
  CeNotifyRequest* request = is_object_store() ? nullptr : &no_notifications;
  const auto open_sorted = [&](PropertyId property) {
    opened = CedbHandle(calls_, calls_.CeOpenDatabaseEx(&guid_, &id, wide.data(), property,
                                                        kAutoIncrement, request));
    return opened ? DatabaseError::none : reason();
  };
  const DatabaseError error = open_sorted(sort_property);
  // The platform refuses an order that the database was not created with.
  if (error == DatabaseError::invalid_parameter && sort_property != 0) return open_sorted(0);
  return error;
}

DatabaseError CedbVolume::flush() {
  // The object store keeps nothing back.
  return is_object_store() || calls_.CeFlushDBVol(&guid_) ? DatabaseError::none : reason();
}

}  // namespace orvello
