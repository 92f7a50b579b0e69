#include "store/embedded/salvage.h"

#include <set>
#include <vector>

#include "files/input_file.h"
#include "store/embedded/page_rows.h"
#include "store/embedded/sqlite_connection.h"

namespace orvello {
namespace {

constexpr std::uint64_t kLargestCalendar = std::uint64_t{8} << 30;

// A table as the new calendar has it: how its rows look, and where they go. Columns are in the
// order of the file, which puts the key first where there is no row number.
struct Target {
  struct Column {
    std::string type;
    bool not_null = false, is_rowid = false;
  };
  std::string name;
  bool has_rowid = false;
  std::vector<Column> columns;
  sqlite3_stmt* insert = nullptr;
};

class Salvage {
 public:
  explicit Salvage(SqliteConnection& fresh) : fresh_(fresh) {}
  ~Salvage() {
    for (const Target& target : targets_) sqlite3_finalize(target.insert);
  }
  Salvage(const Salvage&) = delete;
  Salvage& operator=(const Salvage&) = delete;

  bool prepare() {
    // The rest follows from these.
    for (const char* name :
         {"items", "exceptions", "recipients", "zones", "foreign_components", "contacts"})
      if (!add_target(name)) return false;
    return true;
  }
  // False when the new calendar cannot be written.
  bool put(const PageRow& row);
  std::int64_t doubtful() const { return static_cast<std::int64_t>(doubtful_.size()); }

 private:
  bool add_target(const char* name);
  static bool fits(const Target& target, const PageRow& row);

  SqliteConnection& fresh_;
  std::vector<Target> targets_;
  std::set<std::int64_t> doubtful_;
};

bool Salvage::add_target(const char* name) {
  Target target;
  target.name = name;
  target.has_rowid =
      fresh_.number(
          ("SELECT wr = 0 FROM pragma_table_list WHERE name = '" + target.name + "'").c_str()) == 1;
  std::string names, places;
  sqlite3_stmt* read = nullptr;
  sqlite3_prepare_v2(fresh_.db(), "SELECT name, type, \"notnull\", pk FROM pragma_table_info(?1)",
                     -1, &read, nullptr);
  sqlite3_bind_text(read, 1, name, -1, SQLITE_STATIC);
  while (sqlite3_step(read) == SQLITE_ROW) {
    const auto text = [&](int column) {
      return std::string(reinterpret_cast<const char*>(sqlite3_column_text(read, column)));
    };
    const bool key = sqlite3_column_int(read, 3) != 0;
    target.columns.push_back({text(1), sqlite3_column_int(read, 2) != 0, key && target.has_rowid});
    names += (names.empty() ? "" : ", ") + text(0);
    places += places.empty() ? "?" : ", ?";
  }
  sqlite3_finalize(read);
  const std::string sql =
      "INSERT OR IGNORE INTO " + target.name + " (" + names + ") VALUES (" + places + ")";
  const bool good =
      sqlite3_prepare_v2(fresh_.db(), sql.c_str(), -1, &target.insert, nullptr) == SQLITE_OK;
  targets_.push_back(std::move(target));
  return good;
}

bool Salvage::fits(const Target& target, const PageRow& row) {
  if (target.has_rowid != row.has_rowid || target.columns.size() != row.values.size()) return false;
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    const Target::Column& column = target.columns[i];
    const RowValue::Type type = row.values[i].type;
    if (type == RowValue::Type::null) {
      if (column.not_null) return false;
    } else if (column.is_rowid || (column.type == "INTEGER") != (type == RowValue::Type::integer)) {
      return false;
    }
  }
  return true;
}

bool Salvage::put(const PageRow& row) {
  for (const Target& target : targets_) {
    if (!fits(target, row)) continue;
    sqlite3_reset(target.insert);
    for (std::size_t i = 0; i < row.values.size(); ++i) {
      const RowValue& value = row.values[i];
      const int place = static_cast<int>(i) + 1;
      if (target.columns[i].is_rowid)
        sqlite3_bind_int64(target.insert, place, row.rowid);
      else if (value.type == RowValue::Type::integer)
        sqlite3_bind_int64(target.insert, place, value.number);
      else if (value.type == RowValue::Type::text)
        sqlite3_bind_text64(target.insert, place, value.bytes.data(), value.bytes.size(),
                            SQLITE_TRANSIENT, SQLITE_UTF8);
      else if (value.type == RowValue::Type::blob)
        sqlite3_bind_blob64(target.insert, place, value.bytes.data(), value.bytes.size(),
                            SQLITE_TRANSIENT);
      else
        sqlite3_bind_null(target.insert, place);
    }
    if (sqlite3_step(target.insert) != SQLITE_DONE) return false;
    if (row.doubtful && target.name == "items" && sqlite3_changes(fresh_.db()) > 0)
      doubtful_.insert(row.rowid);
    return true;
  }
  return true;
}

}  // namespace

Result<Salvaged> salvage_calendar(const std::string& damaged, const std::string& fresh) {
  const auto content = read_whole_file(damaged, kLargestCalendar);
  if (!content) return Result<Salvaged>::failure(content.reason());
  SqliteConnection to(fresh, SQLITE_OPEN_READWRITE, PageChecks::on);
  const auto failure = [&] {
    return Result<Salvaged>::failure(fresh + " cannot be written: " + sqlite3_errstr(to.code()) +
                                     ".");
  };
  if (!to.good() || !to.run("BEGIN")) return failure();
  Salvage salvage(to);
  bool good = salvage.prepare();
  // Rows of pages that agree with their checksums first: they win over others of the same number.
  for (const bool doubtful : {false, true})
    for_each_row(*content, [&](PageRow&& row) {
      if (row.doubtful == doubtful) good = good && salvage.put(row);
    });
  // What is left of an appointment that is not.
  good = good && to.run(
                     "DELETE FROM exceptions WHERE oid NOT IN (SELECT oid FROM items);"
                     "DELETE FROM recipients WHERE oid NOT IN (SELECT oid FROM items)");
  Salvaged result{to.number("SELECT count(*) FROM items"), salvage.doubtful()};
  if (!good || !to.run("COMMIT")) return failure();
  return result;
}

}  // namespace orvello
