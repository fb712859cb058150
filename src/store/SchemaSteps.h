#pragma once
#include "store/Connection.h"
#include <QString>
#include <functional>

namespace store {

/// The way of a main database from the schema of an earlier program to today's. A step is never changed once
/// it has been delivered: what comes next is another one, and kSchemaVersion counts them.

/// Takes the missing steps in one transaction, so that the database is the old or the new one at every
/// instant, and logs it. `keepCopy` is called before, and only where there is a step to take; what it throws
/// leaves the database alone. `waiting` is called now and again; what it throws takes all back.
void BringUpToDate(Connection& connection, const std::function<void()>& keepCopy = {},
                   const Waiting& waiting = {});

} // namespace store
