// Records and names in the platform's form.
#pragma once

#include "store/cedb/cedb_volume.h"

namespace orvello {

// Whether a database can have that name. The platform's texts end at a null unit.
bool fits_name(TextView name);
// Well formed, and of texts that the platform can hold: without a null unit.
bool fits_record(const Record& record);

// All records from where `database` stands, in the platform's order; properties of other types than
// those of records are left out. After a failure `records` has those before it.
DatabaseError read_records(const CedbCalls& calls, HANDLE database,
                           std::vector<ReadRecord>& records);
// Sets the properties of the record, or of a new one where `id` is 0, and gives its id then.
DatabaseError write_record(const CedbCalls& calls, HANDLE database, CeOid& id,
                           const Record& properties);

}  // namespace orvello
