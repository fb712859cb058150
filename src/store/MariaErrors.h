#pragma once
#include <QString>

namespace store {

/// What the client library or the server told of a failure.
struct MariaFailure {
    unsigned code = 0;
    QString message;
};

/// The connection is gone, or its server is of no use at the moment: another one may do.
bool isLost(const MariaFailure& failure);
/// Refused before it was done by a node of a cluster that has lost its majority; isLost as well.
bool isOfMinority(const MariaFailure& failure);
/// Another transaction was in the way.
bool isConflict(const MariaFailure& failure);

/// Throws it as a RunTimeError whose sentence a user can read. The statement goes into the detail, without
/// its values.
[[noreturn]] void throwStoreError(const MariaFailure& failure, const QString& database,
                                  const QString& statement = {});

} // namespace store
