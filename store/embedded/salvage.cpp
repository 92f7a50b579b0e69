#include "store/embedded/salvage.h"

#include <memory>
#include <set>
#include <vector>

#include "files/input_file.h"
#include "store/embedded/page_rows.h"
#include "store/embedded/sqlite/transaction.h"

namespace orvello {
namespace {

constexpr std::uint64_t kLargestCalendar = std::uint64_t{8} << 30;
constexpr std::chrono::milliseconds kPatience{5000};

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
  std::unique_ptr<Statement> insert;
};

void bind(Statement& statement, int place, const RowValue& value) {
  switch (value.type) {
    case RowValue::Type::null:
      statement.bind_null(place);
      break;
    case RowValue::Type::integer:
      statement.bind(place, value.number);
      break;
    case RowValue::Type::text:
      statement.bind(place, value.bytes);
      break;
    case RowValue::Type::blob:
      statement.bind_blob(place, value.bytes);
  }
}

class Salvage {
 public:
  explicit Salvage(SqliteConnection& fresh) : fresh_(fresh) {}

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
  Statement rowid(fresh_, "SELECT wr = 0 FROM pragma_table_list WHERE name = ?1");
  if (!rowid.bind(1, target.name).each([&](Statement& row) { target.has_rowid = row.flag(0); }))
    return false;
  std::string names, places;
  Statement read(fresh_, "SELECT name, type, \"notnull\", pk FROM pragma_table_info(?1)");
  const bool whole = read.bind(1, target.name).each([&](Statement& row) {
    target.columns.push_back({row.string(1), row.flag(2), row.flag(3) && target.has_rowid});
    names += (names.empty() ? "" : ", ") + row.string(0);
    places += places.empty() ? "?" : ", ?";
  });
  if (!whole) return false;
  target.insert = std::make_unique<Statement>(
      fresh_, "INSERT OR IGNORE INTO " + target.name + " (" + names + ") VALUES (" + places + ")");
  targets_.push_back(std::move(target));
  return targets_.back().insert->prepared();
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
    for (std::size_t i = 0; i < row.values.size(); ++i)
      bind(*target.insert, static_cast<int>(i) + 1, row.values[i]);
    for (std::size_t i = 0; i < row.values.size(); ++i)
      if (target.columns[i].is_rowid) target.insert->bind(static_cast<int>(i) + 1, row.rowid);
    if (!target.insert->run()) return false;
    if (row.doubtful && target.name == "items" && fresh_.changed_rows() > 0)
      doubtful_.insert(row.rowid);
    return true;
  }
  return true;
}

}  // namespace

Result<Salvaged> salvage_calendar(const std::string& damaged, const std::string& fresh) {
  const auto content = read_whole_file(damaged, kLargestCalendar);
  if (!content) return Result<Salvaged>::failure(content.reason());
  SqliteConnection to(fresh, SqliteConnection::Access::read_write, SqliteConnection::PageChecks::on,
                      kPatience);
  const auto failure = [&] { return Result<Salvaged>::failure(sentence_of(to.failure(), fresh)); };
  if (!to.good()) return failure();
  SqliteTransaction change(to, SqliteTransaction::Kind::write);
  if (!change) return failure();
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
  const auto appointments = good ? to.number("SELECT count(*) FROM items") : std::nullopt;
  if (!appointments || !change.commit()) return failure();
  return Salvaged{*appointments, salvage.doubtful()};
}

}  // namespace orvello
