// What the import's form lists, as rows.
#pragma once

#include <vector>

#include "cli/import_desk.h"
#include "exchange/import_list.h"
#include "ports/report_list.h"

namespace orvello {

// A calendar with its check mark, or a problem.
struct ImportSourceRow {
  Text text;
  ReportMark mark = ReportMark::none;
};
ReportContent import_source_rows(const std::vector<ImportSourceRow>& rows, const ReportPlace& place,
                                 const ImportDesk& desk);

// The first `shown` items, each with a sign for what it is to the calendar, and a row for the
// others.
ReportContent import_item_rows(const std::vector<ImportItem>& items, std::size_t shown,
                               const ReportPlace& place, const ImportDesk& desk);

// What the signs mean, with numbers; empty where all items have one.
Text import_legend(const std::vector<ImportItem>& items, const ImportDesk& desk);

// Lines that a text takes in so much room, nearly.
int lines_of(TextView text, int width, const ImportDesk& desk);

}  // namespace orvello
