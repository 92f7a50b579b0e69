#include "tests/store/cedb/volumes_stand_in.h"

#include <algorithm>
#include <cstring>
#include <cwctype>

namespace orvello {
namespace {

constexpr DWORD kFileTimeProperty = 0x7FFF0040;  // which the device keeps beside each record

std::wstring folded(std::wstring text) {
  std::transform(text.begin(), text.end(), text.begin(), [](wchar_t unit) {
    return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(unit)));
  });
  return text;
}

std::wstring field(const wchar_t (&units)[kDatabaseNameUnits]) {
  return std::wstring(units, std::find(units, units + kDatabaseNameUnits, L'\0'));
}

}  // namespace

CedbCalls VolumesStandIn::program() {
  const std::size_t program = alive_.size();
  alive_.push_back(true);
  CedbCalls calls;
  add_volume_calls(calls, program);
  add_database_calls(calls, program);
  add_record_calls(calls, program);
  add_system_calls(calls, program);
  return calls;
}

void VolumesStandIn::kill(std::size_t program) {
  alive_[program] = false;
  std::erase_if(handles_, [&](const auto& entry) { return entry.second.program == program; });
  std::erase_if(mounts_, [&](const auto& entry) { return entry.second.first == program; });
  if (turn_of == static_cast<int>(program)) turn_of = -1, turns_ = 0;
}

void VolumesStandIn::lose_power(Lost lost) {
  for (std::size_t program = 0; program < alive_.size(); ++program) kill(program);
  for (auto& [path, volume] : volumes_) {
    if (path.empty()) continue;
    if (lost == Lost::everything) volume.databases = volume.flushed;
    for (auto& [oid, database] : volume.databases)
      database.records = std::move(volume.flushed[oid].records);
    volume.flushed = volume.databases;
  }
}

BOOL VolumesStandIn::fail(DWORD error) {
  last_error_ = error;
  return FALSE;
}

bool VolumesStandIn::enter(std::size_t program, const std::string& call) {
  const DWORD error = !alive_[program] ? ERROR_INVALID_HANDLE : fault ? fault(call) : 0;
  // A death or a loss of power may have come with the call.
  if (error == 0 && alive_[program]) return true;
  return fail(error == 0 ? ERROR_INVALID_HANDLE : error);
}

VolumesStandIn::StoredVolume* VolumesStandIn::volume_at(const CeGuid* guid, std::wstring* path) {
  const bool system = std::memcmp(guid, &kSystemGuid, sizeof *guid) == 0;
  const auto mounted = mounts_.find(guid->data[0]);
  if (!system && mounted == mounts_.end()) return fail(ERROR_INVALID_PARAMETER), nullptr;
  const std::wstring where = system ? L"" : mounted->second.second;
  if (path) *path = where;
  return &volumes_[where];
}

VolumesStandIn::StoredDatabase* VolumesStandIn::database_at(const CeGuid* guid, CeOid database) {
  StoredVolume* volume = volume_at(guid);
  if (!volume) return nullptr;
  const auto found = volume->databases.find(database);
  if (found == volume->databases.end()) return fail(ERROR_INVALID_PARAMETER), nullptr;
  return &found->second;
}

VolumesStandIn::StoredDatabase* VolumesStandIn::database_of(HANDLE handle, OpenHandle** opened) {
  const auto found = handles_.find(reinterpret_cast<std::uintptr_t>(handle));
  if (found == handles_.end() || found->second.database == 0)
    return fail(ERROR_INVALID_PARAMETER), nullptr;
  if (opened) *opened = &found->second;
  return &volumes_[found->second.path].databases.at(found->second.database);
}

HANDLE VolumesStandIn::keep(OpenHandle handle) {
  handles_.emplace(next_, std::move(handle));
  return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(next_++));
}

BOOL VolumesStandIn::mount(std::size_t program, CeGuid* guid, const wchar_t* path) {
  volumes_[path];
  *guid = {{next_, 0, 0, 1}};
  mounts_[next_++] = {program, path};
  return TRUE;
}

void VolumesStandIn::add_volume_calls(CedbCalls& calls, std::size_t program) {
  calls.CeMountDBVol = [=, this](CeGuid* guid, wchar_t* path, DWORD disposition) {
    if (!enter(program, "CeMountDBVol")) return FALSE;
    return disposition == OPEN_ALWAYS ? mount(program, guid, path) : fail(ERROR_INVALID_PARAMETER);
  };
  calls.CeUnmountDBVol = [=, this](CeGuid* guid) {
    StoredVolume* volume = volume_at(guid);
    if (!volume || !mounts_.erase(guid->data[0])) return fail(ERROR_INVALID_PARAMETER);
    volume->flushed = volume->databases;
    // It is unmounted, and that can still be told as a failure.
    return BOOL{enter(program, "CeUnmountDBVol")};
  };
  calls.CeFlushDBVol = [=, this](CeGuid* guid) {
    if (!enter(program, "CeFlushDBVol")) return FALSE;
    StoredVolume* volume = volume_at(guid);
    if (volume) volume->flushed = volume->databases;
    return BOOL{volume != nullptr};
  };
}

HANDLE VolumesStandIn::open(std::size_t program, const CeGuid* guid, CeOid* id, const wchar_t* name,
                            DWORD property) {
  OpenHandle handle{program, {}, *id, {}, 0};
  StoredVolume* volume = volume_at(guid, &handle.path);
  if (!volume) return INVALID_HANDLE_VALUE;
  for (const auto& [oid, one] : volume->databases)
    if (*id == 0 && one.name == name) handle.database = oid;
  const auto found = volume->databases.find(handle.database);
  if (found == volume->databases.end()) return fail(ERROR_FILE_NOT_FOUND), INVALID_HANDLE_VALUE;
  if (property != 0 && property != found->second.sort_property)
    return fail(ERROR_INVALID_PARAMETER), INVALID_HANDLE_VALUE;
  *id = handle.database;
  // By a language's order, in which letter case counts little, and with what has no key last.
  const auto key = [&](CeOid record) {
    const auto& values = found->second.records.at(record).values;
    const auto value = values.find(property);
    return std::make_pair(value == values.end(),
                          value == values.end() ? std::wstring() : folded(value->second.text));
  };
  for (const auto& record : found->second.records) handle.order.push_back(record.first);
  if (property != 0)
    std::stable_sort(handle.order.begin(), handle.order.end(),
                     [&](CeOid a, CeOid b) { return key(a) < key(b); });
  return keep(std::move(handle));
}

void VolumesStandIn::add_database_calls(CedbCalls& calls, std::size_t program) {
  calls.CeFindFirstDatabaseEx = [=, this](CeGuid* guid, DWORD) -> HANDLE {
    OpenHandle handle{program, {}, 0, {}, 0};
    const StoredVolume* volume =
        enter(program, "CeFindFirstDatabaseEx") ? volume_at(guid, &handle.path) : nullptr;
    if (!volume) return INVALID_HANDLE_VALUE;
    for (const auto& one : volume->databases) handle.order.push_back(one.first);
    return keep(std::move(handle));
  };
  calls.CeFindNextDatabaseEx = [=, this](HANDLE handle, CeGuid*) -> CeOid {
    if (!enter(program, "CeFindNextDatabaseEx")) return 0;
    OpenHandle& all = handles_.at(reinterpret_cast<std::uintptr_t>(handle));
    if (all.next == all.order.size()) return fail(ERROR_NO_MORE_ITEMS), 0;
    return all.order[all.next++];
  };
  calls.CeOidGetInfoEx = [=, this](CeGuid* guid, CeOid id, CeOidInfo* info) {
    const StoredDatabase* found =
        enter(program, "CeOidGetInfoEx") ? database_at(guid, id) : nullptr;
    if (!found) return FALSE;
    std::memset(static_cast<void*>(info), 0xAA, sizeof *info);
    info->kind = kDatabaseObject;
    info->database.record_count = static_cast<WORD>(found->records.size());
    std::copy_n(found->name.c_str(), found->name.size() + 1, info->database.name);
    return TRUE;
  };
  const auto name_taken = [this](const CeGuid* guid, const CeDatabaseInfo* info) {
    const auto& all = volume_at(guid)->databases;
    return std::any_of(all.begin(), all.end(),
                       [&](const auto& one) { return one.second.name == field(info->name); });
  };
  calls.CeCreateDatabaseEx = [=, this](CeGuid* guid, CeDatabaseInfo* info) -> CeOid {
    StoredVolume* volume = enter(program, "CeCreateDatabaseEx") ? volume_at(guid) : nullptr;
    if (!volume) return 0;
    if (info->flags != kValidCreation || info->type != 0 || info->sort_orders[0].flags != 0)
      return fail(ERROR_INVALID_PARAMETER), 0;
    if (name_taken(guid, info)) return fail(ERROR_DUP_NAME), 0;
    volume->databases[next_] = {
        field(info->name), info->sort_order_count ? info->sort_orders[0].property : 0, {}};
    return next_++;
  };
  calls.CeSetDatabaseInfoEx = [=, this](CeGuid* guid, CeOid id, CeDatabaseInfo* info) {
    StoredDatabase* found = enter(program, "CeSetDatabaseInfoEx") ? database_at(guid, id) : nullptr;
    if (!found) return FALSE;
    if (info->flags != kValidName || name_taken(guid, info)) return fail(ERROR_DUP_NAME);
    found->name = field(info->name);
    return TRUE;
  };
  calls.CeDeleteDatabaseEx = [=, this](CeGuid* guid, CeOid id) {
    if (!enter(program, "CeDeleteDatabaseEx") || !database_at(guid, id)) return FALSE;
    for (const auto& entry : handles_)
      if (entry.second.database == id) return fail(ERROR_SHARING_VIOLATION);
    return BOOL{volume_at(guid)->databases.erase(id) != 0};
  };
  calls.CeOpenDatabaseEx = [=, this](CeGuid* guid, CeOid* id, wchar_t* name, DWORD property,
                                     DWORD flags, CeNotifyRequest* request) {
    if (!enter(program, "CeOpenDatabaseEx")) return INVALID_HANDLE_VALUE;
    if (flags != kAutoIncrement ||
        (request && (request->size != sizeof *request || request->window)))
      return fail(ERROR_INVALID_PARAMETER), INVALID_HANDLE_VALUE;
    return open(program, guid, id, name, property);
  };
}

CeOid VolumesStandIn::read(HANDLE handle, WORD* count, BYTE** buffer, DWORD* size) {
  OpenHandle* opened = nullptr;
  StoredDatabase* database = database_of(handle, &opened);
  if (!database) return 0;
  while (opened->next < opened->order.size() &&
         database->records.count(opened->order[opened->next]) == 0)
    ++opened->next;
  if (opened->next == opened->order.size()) return fail(ERROR_NO_MORE_ITEMS), 0;
  const CeOid id = opened->order[opened->next++];
  std::vector<Value> values;
  for (const auto& [property, value] : database->records.at(id).values)
    values.insert(values.begin(), value);
  values.insert(values.begin() + 1, Value{{kFileTimeProperty, 0, 0, {}}, {}});
  DWORD wanted = 0;
  for (const Value& value : values)
    wanted += static_cast<DWORD>(sizeof(CePropVal) + (value.text.size() + 1) * sizeof(wchar_t));
  if (wanted > *size) {
    if (*buffer) ::LocalFree(*buffer), --blocks_;
    *buffer = static_cast<BYTE*>(::LocalAlloc(LMEM_FIXED, wanted));
    *size = wanted;
    ++blocks_;
  }
  std::memset(*buffer, 0xAA, *size);
  auto* heads = reinterpret_cast<CePropVal*>(*buffer);
  auto* units = reinterpret_cast<wchar_t*>(heads + values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    heads[i] = values[i].head;
    if ((heads[i].id & 0xFFFF) != 0x1F) continue;
    heads[i].text = units;
    units = std::copy_n(values[i].text.c_str(), values[i].text.size() + 1, units);
  }
  *count = static_cast<WORD>(values.size());
  return id;
}

CeOid VolumesStandIn::write(HANDLE handle, CeOid id, WORD count, const CePropVal* values) {
  StoredDatabase* database = database_of(handle);
  if (!database) return 0;
  if (id != 0 && database->records.count(id) == 0) return fail(ERROR_INVALID_PARAMETER), 0;
  if (id == 0) id = next_++;
  for (WORD i = 0; i < count; ++i) {
    Value value{values[i], {}};
    if ((values[i].id & 0xFFFF) == 0x1F) value.text = values[i].text;
    database->records[id].values[values[i].id] = value;
  }
  return id;
}

void VolumesStandIn::add_record_calls(CedbCalls& calls, std::size_t program) {
  calls.CeReadRecordPropsEx = [=, this](HANDLE handle, DWORD flags, WORD* count, DWORD* properties,
                                        BYTE** buffer, DWORD* size, HANDLE heap) -> CeOid {
    if (flags != kAllowRealloc || properties || heap) return fail(ERROR_INVALID_PARAMETER), 0;
    if (enter(program, "CeReadRecordPropsEx")) return read(handle, count, buffer, size);
    // The buffer may come into being even so.
    if (!*buffer) *buffer = static_cast<BYTE*>(::LocalAlloc(LMEM_FIXED, *size = 8)), ++blocks_;
    return 0;
  };
  calls.CeWriteRecordProps = [=, this](HANDLE handle, CeOid id, WORD count, CePropVal* values) {
    return enter(program, "CeWriteRecordProps") ? write(handle, id, count, values) : CeOid{0};
  };
  calls.CeDeleteRecord = [=, this](HANDLE handle, CeOid id) {
    StoredDatabase* database = enter(program, "CeDeleteRecord") ? database_of(handle) : nullptr;
    if (!database) return FALSE;
    return database->records.erase(id) != 0 ? TRUE : fail(ERROR_INVALID_PARAMETER);
  };
}

void VolumesStandIn::add_system_calls(CedbCalls& calls, std::size_t program) {
  calls.CloseHandle = [=, this](HANDLE handle) {
    return BOOL{handles_.erase(reinterpret_cast<std::uintptr_t>(handle)) != 0};
  };
  calls.LocalFree = [=, this](HLOCAL block) {
    --blocks_;
    return ::LocalFree(block);
  };
  calls.GetLastError = [this] { return last_error_; };
  calls.GetTickCount = [this] { return clock; };
  calls.Sleep = [this](DWORD milliseconds) { clock += coarse_clock ? 0 : milliseconds; };
  calls.take_turn = [=, this](DWORD milliseconds) {
    const int me = static_cast<int>(program);
    if (turn_of != -1 && turn_of != me) return clock += milliseconds, false;
    turn_of = me;
    ++turns_;
    return true;
  };
  calls.end_turn = [=, this] {
    if (turn_of == static_cast<int>(program) && --turns_ == 0) turn_of = -1;
  };
}

}  // namespace orvello
