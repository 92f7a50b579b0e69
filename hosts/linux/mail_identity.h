// Who the person is to those who get mail.
#pragma once

#include "ports/calendar_store.h"

namespace orvello {

// As the environment says it, in the order of mail programs: EMAIL ("Ann <ann@sample.org>" or an
// address), then DEBEMAIL with DEBFULLNAME; the name may also be that of the account. Either may be
// empty; whether the address is one is for the caller to see.
StoreRecipient mail_identity();

}  // namespace orvello
