// Several databases of a volume changed as one, on a platform that changes one at a time. The new
// ones are written under names of their own; a plan, itself a database of the volume, says which
// names will change hands; then the old ones step aside and the new ones take their names; and the
// change stands once the plan is deleted. What finds a plan, here after a failure or at the next
// use of the volume after a process that died, puts all names back. So it is all or nothing as far
// as the platform keeps its own promises: one call of it is done or not, and what was flushed
// stays.
#pragma once

#include "store/cedb/cedb_volume.h"

namespace orvello {

// Whether a database of that name belongs to a change under way: nobody else's business.
bool is_of_change(TextView name);

// As RecordDatabases::replace. When `undone` is false afterwards, the names could not all be put
// back, and that must be tried again before anything else is done with the volume.
DatabaseError replace_databases(CedbVolume& volume, const std::vector<Text>& removed,
                                const std::vector<NewDatabase>& databases, bool& undone);
// Puts back what a change that did not end has left.
DatabaseError undo_unfinished_change(CedbVolume& volume);

}  // namespace orvello
