// A folder's items, in the order of their numbers or, sorted, of their starts; and a contact.
#pragma once

#include <optional>

#include "store/occurrence_list.h"
#include "store/restriction.h"
#include "tests/win32/standin/standin_object.h"

namespace orvello::test {

class StandinItems final : public StandinObject {
 public:
  explicit StandinItems(int folder);

 protected:
  HRESULT get(int member, VARIANT& answer) override;
  HRESULT put(int member, const VARIANT& value) override;
  HRESULT call(int member, const VARIANT* arguments, VARIANT& answer) override;

 private:
  struct Row {
    std::int32_t oid;
    bool occurrence;
    LocalSeconds start;
    LocalSeconds end;
  };
  struct Found {
    std::vector<Row> rows;
    std::size_t next = 0;
  };

  HRESULT fetch(TextView restriction, std::optional<Found>& found);
  HRESULT whole();
  void contacts(Found& found) const;
  IDispatch* object(const Row& row) const;
  HRESULT next(VARIANT& answer);

  int folder_;
  bool expands_ = false;
  bool sorted_ = false;
  bool descending_ = false;
  DayBounds bounds_;              // of a restricted collection
  std::optional<Found> all_;      // what Count and Item speak of
  std::optional<Found> matches_;  // what Find and FindNext walk
};

class StandinContact final : public StandinObject {
 public:
  explicit StandinContact(StoreContact contact);  // without a number it is new

 protected:
  HRESULT get(int member, VARIANT& answer) override;
  HRESULT put(int member, const VARIANT& value) override;
  HRESULT call(int member, const VARIANT* arguments, VARIANT& answer) override;

 private:
  Text& text(int member);

  StoreContact contact_;  // Save stores it
};

}  // namespace orvello::test
