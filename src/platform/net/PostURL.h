#pragma once
#include <QString>

namespace platform {

struct Services;

/// Asks a server and waits for its answer behind a small dialog, which the user can close to give the request
/// up; "" when it failed. Whoever wants to know why hands in `problem`, which tells it in a sentence, "" for
/// nothing; also of an error page, which is an answer all the same.
QString PostURL(const Services& services, const QString& url, QString* problem = nullptr);

/// A request to the system's server that has to be confirmed.
struct SystemRequest {
    /// What tavolino.ini lacks for it, "" for nothing.
    QString missing;
    /// The script with its values.
    QString script;
    /// What is told when it failed, before the cause.
    QString failed, title;
};

/// Whether the server confirmed; what is wrong has been told.
bool isConfirmed(const Services& services, const SystemRequest& request);

} // namespace platform
