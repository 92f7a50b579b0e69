// Prepared statements. What a statement answers is seen row by row in one way, each(), whose result
// says whether all rows were read and must be looked at: a read that broke off is no end.
#pragma once

#include <cassert>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/text.h"
#include "calendar/seconds.h"

struct sqlite3_stmt;

namespace orvello {

class SqliteConnection;

// Parameters count from 1, columns from 0. One that could not be prepared takes bindings and fails
// when it runs. A column that holds another kind of value than was stored, or a number that does
// not fit, is damage of the file: the walk ends with a failure.
class Statement {
 public:
  Statement(SqliteConnection& db, std::string_view sql);
  explicit Statement(SqliteConnection& db) : db_(db), failed_(true) {}  // why was noted
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  bool prepared() const { return statement_ != nullptr; }

  Statement& bind(int index, std::int64_t value);
  Statement& bind(int index, std::string_view bytes);
  Statement& bind(int index, TextView text) { return bind(index, std::string_view(to_utf8(text))); }
  Statement& bind_blob(int index, std::string_view bytes);
  // As it stands, halves of surrogate pairs too, where the file keeps its texts in UTF-16.
  Statement& bind_utf16(int index, TextView text);
  Statement& bind_null(int index);
  // Every column of another statement's row, in their order.
  Statement& bind_row(Statement& row);

  // Calls visit(row) for each row; one that answers false has failed and said why. Ready for the
  // next use afterwards, with the bindings it has.
  template <typename Visit>
  [[nodiscard]] bool each(Visit visit) {
    while (step()) {
      if constexpr (std::is_void_v<std::invoke_result_t<Visit, Statement&>>)
        visit(*this);
      else if (!visit(*this))
        failed_ = true;
    }
    return end();
  }
  // For a statement that answers no rows, or none that matter.
  [[nodiscard]] bool run() {
    return each([](Statement&) {});
  }

  std::int64_t number(int column);
  std::int32_t small(int column);
  LocalSeconds moment(int column) { return LocalSeconds(number(column)); }
  bool flag(int column) { return number(column) != 0; }
  bool is_null(int column) const;
  // Texts and blobs are valid until the next row; one that is absent is empty.
  std::string_view bytes(int column);
  std::string_view blob(int column);
  std::string string(int column) { return std::string(bytes(column)); }
  Text text(int column) { return to_utf16(bytes(column)); }
  Text utf16(int column);  // in a file of either encoding

  std::vector<std::string> columns() const;  // their names

 private:
  friend class StatementUse;
  Statement& bound(bool good);
  bool step();
  bool end();
  void reset();
  std::string_view column_bytes(int column, int kind);
  void damaged();
  void missed(std::size_t size);

  SqliteConnection& db_;
  sqlite3_stmt* statement_ = nullptr;
  bool failed_ = false;
  bool in_use_ = false;
};

// One use of a shared statement, which is reset when it ends: an open one would hold a lock on the
// file.
class StatementUse {
 public:
  explicit StatementUse(Statement& statement) : statement_(statement) {
    assert(!statement_.in_use_);
    statement_.in_use_ = true;
    statement_.reset();
  }
  ~StatementUse() {
    statement_.reset();
    statement_.in_use_ = false;
  }
  StatementUse(const StatementUse&) = delete;
  StatementUse& operator=(const StatementUse&) = delete;
  Statement* operator->() { return &statement_; }
  Statement& statement() { return statement_; }

 private:
  Statement& statement_;
};

}  // namespace orvello
